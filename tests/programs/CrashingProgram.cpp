// Crashes, with the module's handlers installed, for tests of what is left of it.
//
//   CrashingProgram HOW WHERE [OPTION...]
//
//   HOW     bad-access, stack-overflow, software-exception, cpp-exception; invalid-parameter with the expression alone,
//           invalid-parameter-details with all texts, invalid-parameter-nothing without any
//   WHERE   main or thread: which thread crashes
//   OPTION  unprepared    without the preparation for a crash
//           after-exit    when the handlers were uninstalled and the process-wide objects destroyed
//           fixed-time    at 04:05:06 on 3 February 2031
//           short-dump    with "MDMP" alone for a dump: to write a real one takes Wine seconds
//           crash-again   writing the dump crashes too
//
// Prints "thread ID" of the thread that crashes, "log SOURCE LEVEL TEXT" for each message, and "dump TYPE" for each
// dump that is not real. Ends with 7 when it has survived.

#include <windows.h>

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <limits>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "NetUtilities/Crash/CrashDump.h"
#include "NetUtilities/Crash/CrashHandlers.h"
#include "NetUtilities/Crash/CrashPlatform.h"
#include "NetUtilities/Log.h"
#include "NetUtilities/Module/Handle.h"
#include "NetUtilities/Module/LifetimeTracker.h"
#include "NetUtilities/Module/SimpleSingleton.h"
#include "NetUtilities/Text/Utf8.h"

namespace {

constexpr int kSurvived = 7;
constexpr int kNotUnderstood = 2;

void Print(const std::string& line) {
  const std::string text = line + '\n';
  DWORD written = 0;
  WriteFile(GetStdHandle(STD_OUTPUT_HANDLE), text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
}

void PrintMessage(LogSource source, LogLevel level, std::wstring_view message) {
  Print("log " + std::to_string(static_cast<unsigned>(source)) + ' ' + std::to_string(static_cast<unsigned>(level)) +
        ' ' + ToUtf8(message));
}

// Neither is known to the compiler, which would refuse the code.
int* volatile nothing = nullptr;
volatile int deepest = std::numeric_limits<int>::max();

volatile int sum;

void AccessNothing() { *nothing = 1; }

[[gnu::noinline]] int Recurse(int depth) {
  volatile char room[512];
  room[0] = static_cast<char>(depth);
  if (depth == deepest) return 0;
  sum = Recurse(depth + 1) + room[0];
  return sum;
}

// A stack that grows page by page meets the room that SetThreadStackGuarantee has set aside. Wine commits a stack as a
// whole and guards its last page, which is too little to deliver an exception in: the process would end without one.
// This puts the guard where it is on Windows.
void GuardStack() {
  ULONG guaranteed = 0;
  SetThreadStackGuarantee(&guaranteed);
  MEMORY_BASIC_INFORMATION stack{};
  VirtualQuery(&guaranteed, &stack, sizeof(stack));
  SYSTEM_INFO system{};
  GetSystemInfo(&system);
  char* lowest = static_cast<char*>(stack.AllocationBase);
  MEMORY_BASIC_INFORMATION room{};
  VirtualQuery(lowest + guaranteed, &room, sizeof(room));
  DWORD previous = 0;
  if (room.State == MEM_COMMIT) {
    VirtualProtect(lowest + guaranteed, system.dwPageSize, PAGE_READWRITE | PAGE_GUARD, &previous);
  }
}

void OverflowStack() {
  GuardStack();
  Recurse(0);
}

BOOL WINAPI WriteShortDump(HANDLE, DWORD, HANDLE file, MINIDUMP_TYPE type, PMINIDUMP_EXCEPTION_INFORMATION,
                           PMINIDUMP_USER_STREAM_INFORMATION, PMINIDUMP_CALLBACK_INFORMATION) {
  Print("dump " + std::to_string(type));
  DWORD written = 0;
  return WriteFile(file, "MDMP", 4, &written, nullptr);
}

BOOL WINAPI CrashWhileWriting(HANDLE, DWORD, HANDLE, MINIDUMP_TYPE type, PMINIDUMP_EXCEPTION_INFORMATION,
                              PMINIDUMP_USER_STREAM_INFORMATION, PMINIDUMP_CALLBACK_INFORMATION) {
  Print("dump " + std::to_string(type));
  AccessNothing();
  return FALSE;
}

// As the C runtime does.
void CallInvalidParameterHandler(const wchar_t* expression, const wchar_t* function, const wchar_t* file,
                                 unsigned line) {
  _get_invalid_parameter_handler()(expression, function, file, line, 0);
}

const std::map<std::wstring_view, std::function<void()>> kCrashes = {
    {L"bad-access", AccessNothing},
    {L"stack-overflow", OverflowStack},
    {L"software-exception", [] { RaiseException(kModuleException, 0, 0, nullptr); }},
    {L"cpp-exception", [] { throw std::runtime_error("nobody catches this"); }},
    {L"invalid-parameter", [] { CallInvalidParameterHandler(L"size != 0", nullptr, nullptr, 0); }},
    {L"invalid-parameter-details", [] { CallInvalidParameterHandler(L"size != 0", L"wcscpy_s", L"copy.cpp", 12); }},
    {L"invalid-parameter-nothing", [] { CallInvalidParameterHandler(nullptr, nullptr, nullptr, 0); }},
};

CrashHandlers handlers;

struct Arguments {
  std::function<void()> crash;
  bool onThread;
  std::vector<std::wstring_view> options;

  bool Has(std::wstring_view option) const { return std::ranges::find(options, option) != options.end(); }
};

DWORD WINAPI Crash(void* data) {
  const auto& arguments = *static_cast<const Arguments*>(data);
  handlers.Install();
  if (!arguments.Has(L"unprepared")) PrepareCrashDump();
  if (arguments.Has(L"after-exit")) {
    SimpleSingleton<LifetimeTracker>::Get().DestroyAll();
    handlers.Uninstall();
  }
  Print("thread " + std::to_string(GetCurrentThreadId()));
  arguments.crash();
  return 0;
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
  if (argc < 3 || !kCrashes.contains(argv[1])) return kNotUnderstood;
  Arguments arguments{kCrashes.at(argv[1]), std::wstring_view(argv[2]) == L"thread", {argv + 3, argv + argc}};

  // No debugger, and no message of the system.
  SetErrorMode(SEM_NOGPFAULTERRORBOX | SEM_FAILCRITICALERRORS);
  // Wine reads the symbols of all modules for a dump, which has none of them. This spares it seconds.
  SymSetOptions(SYMOPT_DEFERRED_LOADS);
  logHandler = PrintMessage;
  if (arguments.Has(L"fixed-time")) {
    crashPlatform.localTime = [](SYSTEMTIME* time) { *time = {2031, 2, 1, 3, 4, 5, 6, 7}; };
  }
  if (arguments.Has(L"short-dump")) crashPlatform.writeDump = WriteShortDump;
  if (arguments.Has(L"crash-again")) crashPlatform.writeDump = CrashWhileWriting;
  if (arguments.onThread) {
    const Handle thread(CreateThread(nullptr, 0, Crash, &arguments, 0, nullptr));
    WaitForSingleObject(thread.get(), INFINITE);
  } else {
    Crash(&arguments);
  }
  return kSurvived;
}
