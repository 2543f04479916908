#include "NetUtilities/Logger/LogOutputHelper.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <string>

#include "NetUtilities/Log.h"
#include "NetUtilities/Logger/LogPlatform.h"
#include "NetUtilities/Module/ModuleThread.h"
#include "NetUtilities/Registry/RegistryKey.h"
#include "NetUtilities/Registry/RegistryNames.h"
#include "tests/support/DebugMonitor.h"
#include "tests/support/FileLogFiles.h"
#include "tests/support/OwnProcess.h"
#include "tests/support/Substituted.h"
#include "tests/support/TestRegistryKey.h"
#include "tests/support/ThreadStarts.h"

namespace {

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

TEST(LogOutputHelper, ASwitchThatCannotBeReadIsOffWhileItsFailureIsLogged) {
  TestRegistryKey install(HKEY_LOCAL_MACHINE, kCurrentInstallKey);
  install.Set(L"DebugOutput", REG_QWORD, "\x01\0\0\0\0\0\0", 8);
  InOwnProcess([] {
    DebugMonitor monitor;
    // Every line asks for the switch, that of the failure too.
    const Substituted<LogHandler> handler(logHandler);
    static int lines;
    logHandler = [](LogSource, LogLevel, std::wstring_view message) {
      ++lines;
      LogOutputHelper::GetLogOutput(LogOutput::Debugger)(message);
    };
    Log(LogLevel::Error, L"hello");
    EXPECT_EQ(lines, 2);
    EXPECT_EQ(monitor.Receive(), std::nullopt);
  });
}

TEST(LogOutputHelper, WritesToTheFileBehindTheModuleAndThePrefixOfLogLines) {
  InOwnProcess([] {
    FileLogFiles::RemoveAll();
    const Substituted<LogPlatform> log(logPlatform);
    log->localTime = [] { return LogTime{1, 3, 9, 5, 7, 4}; };
    log->processId = [] { return uint32_t{0x1a2}; };
    log->threadId = [] { return uint32_t{0x3b}; };
    const Substituted<ThreadPlatform> threads(threadPlatform);
    threads->start = RunAtOnce;
    const Substituted<FileLogPlatform> files(fileLogPlatform);
    static constexpr LogDay kDay{2026, 1, 3};
    files->localTime = [](SYSTEMTIME* time) { *time = kDay.Time(); };

    Singleton<FileLogger>::Get()->SetEnabled(true);
    const auto write = LogOutputHelper::GetLogOutput(LogOutput::File);
    write(L"without an end");
    write(L"with its end\n");
    const std::string start = '[' + ToUtf8(OwnModuleBaseName()) + "] 01/03 09:05:07.004 001a2-0003b: ";
    EXPECT_EQ(FileLogFiles::TextOf(kDay),
              kByteOrderMark + BeginLog() + start + "without an end\r\n" + start + "with its end\r\n");
    FileLogFiles::RemoveAll();
  });
}

}  // namespace
