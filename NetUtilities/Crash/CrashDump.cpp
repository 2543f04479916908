#include "NetUtilities/Crash/CrashDump.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <exception>
#include <string>
#include <string_view>

#include "NetUtilities/Crash/CrashDumpName.h"
#include "NetUtilities/Crash/CrashPlatform.h"
#include "NetUtilities/Files/ClientFolders.h"
#include "NetUtilities/Files/ClientVersion.h"
#include "NetUtilities/Files/PathData.h"
#include "NetUtilities/Module/Handle.h"
#include "NetUtilities/Module/Singleton.h"
#include "NetUtilities/Registry/RegistryKey.h"
#include "NetUtilities/Registry/RegistryNames.h"
#include "NetUtilities/Text/Format.h"

CrashPlatform crashPlatform;

namespace {

// What the filter may take of the stack of a thread whose stack has overflowed. Delivering the exception, the filter
// and the system's own handling after it fit into 12 KB.
constexpr ULONG kFilterStackBytes = 32 * 1024;

// How long a crashed thread waits for another that writes a dump. The process ends after it rather than never: the
// writer may need what the crashed thread holds, such as the lock of the heap or of the loader.
constexpr DWORD kWriterLimitMilliseconds = 60'000;

// A text in a place of its own, apart from the heap that a crash may have damaged.
class FixedText {
 public:
  // False when the text is too long.
  bool Set(std::wstring_view text) {
    if (text.size() > characters_.size()) return false;
    std::ranges::copy(text, characters_.begin());
    length_ = text.size();
    return true;
  }

  std::wstring_view View() const { return {characters_.data(), length_}; }

 private:
  std::array<wchar_t, size_t{2} * MAX_PATH> characters_{};
  size_t length_ = 0;
};

// The parts of a dump's path that do not depend on the time.
struct NameParts {
  FixedText folder;
  FixedText program;
  FixedText version;

  bool LookUp() {
    std::array<wchar_t, MAX_PATH> programData{};
    if (FAILED(crashPlatform.folderPath(nullptr, CSIDL_COMMON_APPDATA | CSIDL_FLAG_CREATE, nullptr, SHGFP_TYPE_CURRENT,
                                        programData.data()))) {
      return false;
    }
    const auto paths = Singleton<PathData>::Get();
    const std::wstring executable = paths ? paths->GetExecutablePath() : std::wstring();
    return folder.Set(Format(L"{}\\{}\\{}\\", programData.data(), kVendorFolder, kProductFolder)) &&
           program.Set(ProgramBaseName(executable)) && version.Set(GetClientVersion());
  }
};

NameParts preparedParts;  // complete once `prepared` is set
std::atomic<bool> prepared{false};

// A thread's crash; without an exception only its wish for a dump.
struct Crash {
  DWORD threadId;
  EXCEPTION_POINTERS* exception;
};

// Not inlined into those who run on the last of a stack: it has long texts.
[[gnu::noinline]] void WriteDump(const Crash& crash) {
  SYSTEMTIME now{};
  crashPlatform.localTime(&now);
  NameParts lookedUp;
  if (!prepared && !lookedUp.LookUp()) return;
  const NameParts& parts = prepared ? preparedParts : lookedUp;
  std::array<wchar_t, size_t{4} * MAX_PATH> name{};
  if (!WriteCrashDumpName(name, parts.folder.View(), parts.program.View(), parts.version.View(),
                          {now.wYear, now.wMonth, now.wDay, now.wHour, now.wMinute, now.wSecond})) {
    return;
  }
  HANDLE opened = crashPlatform.createFile(name.data(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_ALWAYS,
                                           FILE_ATTRIBUTE_NORMAL, nullptr);
  if (opened == INVALID_HANDLE_VALUE) return;
  const Handle file(opened);
  MINIDUMP_EXCEPTION_INFORMATION information{crash.threadId, crash.exception, FALSE};
  const DWORD type = ReadRegistryDword(HKEY_LOCAL_MACHINE, kClientKey, kDumpTypeValue, 0);
  crashPlatform.writeDump(GetCurrentProcess(), GetCurrentProcessId(), file.get(), static_cast<MINIDUMP_TYPE>(type),
                          crash.exception != nullptr ? &information : nullptr, nullptr, nullptr);
}

std::atomic<DWORD> writer{0};  // the id of the thread that is writing a dump

// The debugging library serves one thread at a time, so others that crash meanwhile keep out of it. They must not go
// on either, which would end the process in the middle of the dump, and that one shows them too.
void WriteDumpUnlessAnotherDoes(const Crash& crash) {
  const DWORD self = GetCurrentThreadId();
  DWORD other = 0;
  if (writer.compare_exchange_strong(other, self)) {
    try {
      WriteDump(crash);
    } catch (const std::exception&) {
      // Out of memory: no dump.
    }
    writer = 0;
    return;
  }
  if (other == self) return;  // writing the dump has crashed
  constexpr DWORD kIntervalMilliseconds = 10;
  for (DWORD waited = 0; writer == other && waited < kWriterLimitMilliseconds; waited += kIntervalMilliseconds) {
    Sleep(kIntervalMilliseconds);
  }
}

DWORD WINAPI DumpThread(void* crash) {
  WriteDumpUnlessAnotherDoes(*static_cast<const Crash*>(crash));
  return 0;
}

bool IsStackOverflow(const EXCEPTION_POINTERS* exception) {
  return exception != nullptr && exception->ExceptionRecord->ExceptionCode == EXCEPTION_STACK_OVERFLOW;
}

}  // namespace

void PrepareCrashDump() {
  ULONG size = kFilterStackBytes;
  SetThreadStackGuarantee(&size);
  if (!prepared) prepared = preparedParts.LookUp();
}

int WriteCrashDump(EXCEPTION_POINTERS* exceptionPointers) {
  Crash crash{GetCurrentThreadId(), exceptionPointers};
  // Writing a dump takes more stack, under Wine more than 32 KB, than an overflow leaves. Other crashes are written
  // down where they happened: a new thread could not start while the crashed one holds the loader's lock.
  if (IsStackOverflow(exceptionPointers)) {
    if (const Handle thread{crashPlatform.createThread(nullptr, 0, DumpThread, &crash, 0, nullptr)}) {
      WaitForSingleObject(thread.get(), kWriterLimitMilliseconds);
      return 0;
    }
  }
  WriteDumpUnlessAnotherDoes(crash);
  return 0;
}

LONG WINAPI CrashDumpFilter(EXCEPTION_POINTERS* exceptionPointers) {
  WriteCrashDump(exceptionPointers);
  return EXCEPTION_CONTINUE_SEARCH;
}
