#include "NetUtilities/Logger/LogOutputHelper.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>

#include "NetUtilities/RegistryKey.h"
#include "tests/support/OwnProcess.h"
#include "tests/support/TestRegistryKey.h"

namespace {

// Receives what this process sends to the debugger, as a debug monitor does. A message is there as soon as it
// was sent.
class DebugMonitor {
 public:
  DebugMonitor()
      : ready_(CreateEventW(nullptr, FALSE, TRUE, L"DBWIN_BUFFER_READY")),
        sent_(CreateEventW(nullptr, FALSE, FALSE, L"DBWIN_DATA_READY")),
        section_(
            CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, sizeof(Message), L"DBWIN_BUFFER")),
        message_(static_cast<const Message*>(MapViewOfFile(section_.get(), FILE_MAP_READ, 0, 0, 0))) {}

  // The message that was sent last; nothing when there was none since the call before.
  std::optional<std::string> Receive() {
    if (WaitForSingleObject(sent_.get(), 0) != WAIT_OBJECT_0) return std::nullopt;
    SetEvent(ready_.get());
    return message_->text;
  }

 private:
  struct Message {
    DWORD processId;
    char text[4096 - sizeof(DWORD)];
  };
  struct Close {
    void operator()(void* handle) const { CloseHandle(handle); }
  };
  struct Unmap {
    void operator()(const Message* message) const { UnmapViewOfFile(message); }
  };
  using Handle = std::unique_ptr<void, Close>;

  Handle ready_;
  Handle sent_;
  Handle section_;
  std::unique_ptr<const Message, Unmap> message_;
};

TEST(LogOutputHelper, WritesToTheDebuggerWhileDebugOutputIsOn) {
  TestRegistryKey install(HKEY_LOCAL_MACHINE, kCurrentInstallKey);
  install.SetDword(L"DebugOutput", 1);
  InOwnProcess([] {
    DebugMonitor monitor;
    LogOutputHelper::GetLogOutput(LogOutput::Debugger)(L"hello");
    EXPECT_EQ(monitor.Receive(), "TARN: hello\n");
  });
}

TEST(LogOutputHelper, IsSilentWhileDebugOutputIsOff) {
  TestRegistryKey install(HKEY_LOCAL_MACHINE, kCurrentInstallKey);
  install.SetDword(L"DebugOutput", 0);
  InOwnProcess([] {
    DebugMonitor monitor;
    LogOutputHelper::GetLogOutput(LogOutput::Debugger)(L"hello");
    EXPECT_EQ(monitor.Receive(), std::nullopt);
    OutputDebugStringW(L"heard");
    EXPECT_EQ(monitor.Receive(), "heard");
  });
}

}  // namespace
