#include "NetUtilities/Crash/CrashDump.h"

#include <windows.h>

#include <gmock/gmock.h>

#include <atomic>
#include <chrono>
#include <cwchar>
#include <filesystem>
#include <fstream>
#include <memory>
#include <new>
#include <optional>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "NetUtilities/Crash/CrashHandlers.h"
#include "NetUtilities/Crash/CrashPlatform.h"
#include "NetUtilities/Files/ClientVersion.h"
#include "NetUtilities/Module/Handle.h"
#include "NetUtilities/Registry/RegistryNames.h"
#include "NetUtilities/Text/Format.h"
#include "NetUtilities/Text/IgnoringCase.h"
#include "NetUtilities/Text/Utf8.h"
#include "tests/support/FaultPlan.h"
#include "tests/support/FileBytes.h"
#include "tests/support/LogCapture.h"
#include "tests/support/MinidumpFile.h"
#include "tests/support/OwnProcess.h"
#include "tests/support/ResourceCounters.h"
#include "tests/support/Substituted.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TestRegistryKey.h"
#include "tests/support/WaitUntil.h"

namespace {

using std::filesystem::path;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

constexpr DWORD kUncaughtCppException = 0x20474343;  // how the compiler's runtime throws
constexpr DWORD kSurvived = 7;

// How a run of the crashing program ended.
struct Outcome {
  DWORD exitCode = 0;
  DWORD crashedThread = 0;
  std::vector<std::string> messages;  // "SOURCE LEVEL TEXT"
  std::vector<std::string> dumps;     // the types of those that are not real
};

path ThisProgram() {
  wchar_t file[MAX_PATH];
  return std::wstring(file, GetModuleFileNameW(nullptr, file, MAX_PATH));
}

DWORD RunToItsEnd(const path& program, const std::wstring& arguments, const std::wstring& outputFile) {
  SECURITY_ATTRIBUTES inherited{sizeof(inherited), nullptr, TRUE};
  const Handle output(CreateFileW(outputFile.c_str(), GENERIC_WRITE, FILE_SHARE_READ, &inherited, CREATE_ALWAYS,
                                  FILE_ATTRIBUTE_NORMAL, nullptr));
  STARTUPINFOW startup{};
  startup.cb = sizeof(startup);
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdOutput = output.get();
  startup.hStdError = GetStdHandle(STD_ERROR_HANDLE);
  std::wstring command = L'"' + program.wstring() + L"\" " + arguments;
  PROCESS_INFORMATION information{};
  if (CreateProcessW(program.c_str(), command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup,
                     &information) == FALSE) {
    ADD_FAILURE() << "The crashing program cannot be started.";
    return 0;
  }
  const Handle process(information.hProcess);
  const Handle thread(information.hThread);
  constexpr DWORD kLimitMilliseconds = 60'000;
  if (WaitForSingleObject(process.get(), kLimitMilliseconds) != WAIT_OBJECT_0) {
    ADD_FAILURE() << "The crashed program did not end by itself.";
    TerminateProcess(process.get(), WAIT_TIMEOUT);
    WaitForSingleObject(process.get(), INFINITE);
  }
  DWORD code = 0;
  GetExitCodeProcess(process.get(), &code);
  return code;
}

// A folder for program data, and in it that of the client; elsewhere a client with a program that crashes. The
// registry names the folder to every process that is started meanwhile.
class CrashDumpTest : public testing::Test {
 protected:
  CrashDumpTest() {
    create_directories(dumps_);
    create_directories(client_);
    wchar_t installed[MAX_PATH];
    const DWORD length = SearchPathW(nullptr, kClientFileName, nullptr, MAX_PATH, installed, nullptr);
    copy_file(std::wstring(installed, length), client_ / kClientFileName);
    copy_file(ThisProgram().replace_filename(L"CrashingProgram.exe"), program_);
    shellFolders_.SetString(L"Common AppData", programData_.wstring());
    settings_.Remove(kDumpTypeValue);
    debugger_.SetString(L"Debugger", L"none");
  }

  Outcome Run(const std::wstring& arguments) const {
    Outcome outcome;
    const std::wstring output = folder_.File(L"output.txt");
    outcome.exitCode = RunToItsEnd(program_, arguments, output);
    std::istringstream lines(FileBytes(output));
    for (std::string line; std::getline(lines, line);) {
      if (line.starts_with("thread ")) outcome.crashedThread = static_cast<DWORD>(std::stoul(line.substr(7)));
      if (line.starts_with("log ")) outcome.messages.push_back(line.substr(4));
      if (line.starts_with("dump ")) outcome.dumps.push_back(line.substr(5));
    }
    return outcome;
  }

  std::vector<path> Dumps() const {
    std::vector<path> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(programData_)) {
      if (entry.is_regular_file()) files.push_back(entry.path());
    }
    return files;
  }

  // The one file there must be.
  path Dump() const {
    const std::vector<path> files = Dumps();
    EXPECT_THAT(files, SizeIs(1));
    return files.empty() ? path() : files.front();
  }

  path DumpAtFixedTime() const { return dumps_ / L"Crash.Test_" CLIENT_VERSION L"_2031_02_03_04_05_06.dmp"; }

  std::optional<MinidumpFile::Module> FindProgram(const MinidumpFile& dump) const {
    for (const MinidumpFile::Module& module : dump.Modules()) {
      if (EqualsNoCaseAscii(path(module.file).filename().wstring(), program_.filename().wstring())) return module;
    }
    return std::nullopt;
  }

  TemporaryFolder folder_;
  path programData_ = folder_.Path() / L"ProgramData";
  path dumps_ = programData_ / L"Ostrel" / L"Wayline";
  path client_ = folder_.Path() / L"Client";
  path program_ = client_ / L"Crash.Test.exe";
  TestRegistryKey shellFolders_{HKEY_LOCAL_MACHINE,
                                LR"(Software\Microsoft\Windows\CurrentVersion\Explorer\User Shell Folders)"};
  TestRegistryKey settings_{HKEY_LOCAL_MACHINE, kClientKey};
  // Wine starts the debugger, which takes seconds, even for a program that asks to be spared.
  TestRegistryKey debugger_{HKEY_LOCAL_MACHINE, LR"(Software\Microsoft\Windows NT\CurrentVersion\AeDebug)"};
};

struct Way {
  const wchar_t* how;
  const wchar_t* where;
  DWORD code;
  bool inProgram;  // the failing instruction is one of the program itself
};

void PrintTo(const Way& way, std::ostream* out) { *out << ToUtf8(way.how) << " on " << ToUtf8(way.where); }

class EveryCrash : public CrashDumpTest, public testing::WithParamInterface<Way> {};

}  // namespace

TEST_P(EveryCrash, IsInTheDumpWithItsThreadAndModule) {
  const auto& [how, where, code, inProgram] = GetParam();
  const Outcome outcome = Run(Format(L"{} {}", how, where));
  EXPECT_EQ(outcome.exitCode, code);
  const MinidumpFile dump(Dump());
  EXPECT_TRUE(dump.IsMinidump());
  EXPECT_EQ(dump.Type(), ULONG64{MiniDumpNormal});
  EXPECT_THAT(dump.ThreadIds(), Contains(outcome.crashedThread));
  const auto exception = dump.Exception();
  const auto program = FindProgram(dump);
  ASSERT_TRUE(exception && program);
  EXPECT_EQ(exception->ThreadId, outcome.crashedThread);
  EXPECT_EQ(exception->ExceptionRecord.ExceptionCode, code);
  const ULONG64 address = exception->ExceptionRecord.ExceptionAddress;
  EXPECT_EQ(address >= program->base && address < program->base + program->size, inProgram);
}

INSTANTIATE_TEST_SUITE_P(CrashDump, EveryCrash,
                         testing::Values(Way{L"bad-access", L"main", EXCEPTION_ACCESS_VIOLATION, true},
                                         Way{L"bad-access", L"thread", EXCEPTION_ACCESS_VIOLATION, true},
                                         Way{L"stack-overflow", L"main", EXCEPTION_STACK_OVERFLOW, true},
                                         Way{L"stack-overflow", L"thread", EXCEPTION_STACK_OVERFLOW, true},
                                         Way{L"software-exception", L"main", kModuleException, false},
                                         Way{L"software-exception", L"thread", kModuleException, false},
                                         Way{L"invalid-parameter", L"main", kModuleException, false},
                                         Way{L"invalid-parameter", L"thread", kModuleException, false},
                                         // The runtime catches it on the main thread and ends the process itself.
                                         Way{L"cpp-exception", L"main", kModuleException, false},
                                         Way{L"cpp-exception", L"thread", kUncaughtCppException, false}));

TEST_F(CrashDumpTest, IsNamedAfterProgramVersionAndTime) {
  const auto name = [] {
    SYSTEMTIME now{};
    GetLocalTime(&now);
    return Format(L"Crash.Test_{}_{:04}_{:02}_{:02}_{:02}_{:02}_{:02}.dmp", CLIENT_VERSION, now.wYear, now.wMonth,
                  now.wDay, now.wHour, now.wMinute, now.wSecond);
  };
  const std::wstring before = name();
  Run(L"bad-access main short-dump");
  const path dump = Dump();
  EXPECT_EQ(dump.parent_path(), dumps_);
  EXPECT_GE(dump.filename().wstring(), before);
  EXPECT_LE(dump.filename().wstring(), name());
}

TEST_F(CrashDumpTest, HasTheSameNameWithoutPreparation) {
  Run(L"bad-access main short-dump fixed-time unprepared");
  EXPECT_EQ(Dump(), DumpAtFixedTime());
}

TEST_F(CrashDumpTest, IsStillWrittenAfterTheModulesExit) {
  Run(L"bad-access main short-dump fixed-time after-exit");
  EXPECT_EQ(Dump(), DumpAtFixedTime());
}

TEST_F(CrashDumpTest, TwoOfTheSameSecondShareAFile) {
  EXPECT_THAT(Run(L"software-exception main short-dump fixed-time").dumps, SizeIs(1));
  EXPECT_THAT(Run(L"bad-access main short-dump fixed-time").dumps, SizeIs(1));
  EXPECT_EQ(Dump(), DumpAtFixedTime());
}

TEST_F(CrashDumpTest, OverwritesAFileFromItsStartAndLeavesTheRest) {
  std::ofstream(DumpAtFixedTime(), std::ios::binary) << "the dump before";
  Run(L"bad-access main short-dump fixed-time");
  EXPECT_EQ(FileBytes(DumpAtFixedTime()), "MDMPdump before");
}

TEST_F(CrashDumpTest, IsOfTheTypeInTheRegistry) {
  constexpr DWORD kType = MiniDumpWithDataSegs | MiniDumpWithHandleData | MiniDumpWithThreadInfo;
  settings_.SetDword(kDumpTypeValue, kType);
  EXPECT_THAT(Run(L"bad-access main").messages, IsEmpty());
  const MinidumpFile dump(Dump());
  EXPECT_TRUE(dump.IsMinidump());
  EXPECT_EQ(dump.Type(), kType);
}

TEST_F(CrashDumpTest, IsOfTypeNormalUnlessSet) {
  const Outcome outcome = Run(L"bad-access main short-dump");
  EXPECT_THAT(outcome.dumps, ElementsAre("0"));
  EXPECT_THAT(outcome.messages, IsEmpty());
}

TEST_F(CrashDumpTest, IsOfTypeNormalWhenTheTypeCannotBeRead) {
  constexpr ULONGLONG kType = MiniDumpWithHandleData;
  settings_.Set(kDumpTypeValue, REG_QWORD, &kType, sizeof(kType));
  const Outcome outcome = Run(L"bad-access main short-dump");
  EXPECT_THAT(outcome.dumps, ElementsAre("0"));
  EXPECT_THAT(
      outcome.messages,
      ElementsAre(StartsWith(R"(1 2 RegQueryValueEx read DWORD64 HKLM\Software\Ostrel\Wayline\DumpType Error )")));
}

TEST_F(CrashDumpTest, IsNotWrittenAndNothingSaidWithoutTheFolder) {
  remove(dumps_);
  const Outcome outcome = Run(L"bad-access main");
  EXPECT_EQ(outcome.exitCode, DWORD{EXCEPTION_ACCESS_VIOLATION});
  EXPECT_THAT(Dumps(), IsEmpty());
  EXPECT_FALSE(exists(dumps_));
  EXPECT_THAT(outcome.messages, IsEmpty());
}

TEST_F(CrashDumpTest, ThatCrashesItselfIsGivenUp) {
  for (const wchar_t* how : {L"bad-access", L"stack-overflow"}) {
    const Outcome outcome = Run(Format(L"{} main crash-again", how));
    EXPECT_THAT(outcome.dumps, SizeIs(1));
    EXPECT_NE(outcome.exitCode, kSurvived);
    EXPECT_THAT(outcome.messages, IsEmpty());
  }
}

TEST_F(CrashDumpTest, OfAnInvalidParameterComesWithALineOfWhatIsKnown) {
  EXPECT_THAT(Run(L"invalid-parameter main short-dump").messages, ElementsAre("1 1 Expression: size != 0"));
  EXPECT_THAT(Run(L"invalid-parameter-nothing main short-dump").messages, IsEmpty());
  EXPECT_THAT(Run(L"invalid-parameter-details main short-dump").messages,
              ElementsAre("1 1 Invalid parameter detected in function wcscpy_s. File: copy.cpp Line: 12",
                          "1 1 Expression: size != 0"));
}

namespace {

// What a made-up machine was asked for while it wrote a dump.
struct Writing {
  HANDLE process;
  DWORD processId;
  MINIDUMP_TYPE type;
  std::optional<MINIDUMP_EXCEPTION_INFORMATION> exception;
  DWORD threadId;     // of the thread that wrote
  bool fileIsShared;  // somebody else could open it meanwhile
  bool hasMore;       // user streams or a callback
};

// Dumps of this very process, which does not crash. They go to a folder of their own.
class WriteCrashDumpTest : public testing::Test {
 protected:
  WriteCrashDumpTest() {
    create_directories(dumps_);
    programData = folder_.Path();
    writings.clear();
    platform_->folderPath = [](HWND owner, int folder, HANDLE token, DWORD flags, LPWSTR out) -> HRESULT {
      EXPECT_EQ(owner, nullptr);
      EXPECT_EQ(folder, 0x8023);
      EXPECT_EQ(token, nullptr);
      EXPECT_EQ(flags, 0u);
      std::wcscpy(out, programData.c_str());
      return S_OK;
    };
    platform_->localTime = [](SYSTEMTIME* time) { *time = {2031, 2, 1, 3, 4, 5, 6, 7}; };
  }

  void NoteWritings() {
    platform_->writeDump = [](HANDLE process, DWORD processId, HANDLE, MINIDUMP_TYPE type,
                              PMINIDUMP_EXCEPTION_INFORMATION exception, PMINIDUMP_USER_STREAM_INFORMATION streams,
                              PMINIDUMP_CALLBACK_INFORMATION callback) -> BOOL {
      Writing writing{process, processId, type, {}, GetCurrentThreadId(), CanBeOpened(), streams || callback};
      if (exception != nullptr) writing.exception = *exception;
      writings.push_back(writing);
      return FALSE;
    };
  }

  static path DumpFile() {
    const std::wstring name = ThisProgram().stem().wstring() + L"__2031_02_03_04_05_06.dmp";
    return path(programData) / L"Ostrel" / L"Wayline" / name;
  }

  static bool CanBeOpened() {
    return OwnUnlessInvalid(CreateFileW(DumpFile().c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                        OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr)) != nullptr;
  }

  // Needs a stack: the record points into itself.
  struct Exception {
    explicit Exception(DWORD code) {
      record.ExceptionCode = code;
      RtlCaptureContext(&context);
    }
    EXCEPTION_RECORD record{};
    CONTEXT context{};
    EXCEPTION_POINTERS pointers{&record, &context};
  };

  inline static std::wstring programData;
  inline static std::vector<Writing> writings;
  TemporaryFolder folder_;
  path dumps_ = folder_.Path() / L"Ostrel" / L"Wayline";
  Substituted<CrashPlatform> platform_{crashPlatform};
  LogCapture log_;
};

}  // namespace

TEST_F(WriteCrashDumpTest, RecordsNoExceptionWhenThereIsNone) {
  // Wine would read the symbols of all modules, which takes it seconds.
  const DWORD options = SymSetOptions(SYMOPT_DEFERRED_LOADS);
  EXPECT_EQ(WriteCrashDump(nullptr), 0);
  SymSetOptions(options);
  const MinidumpFile dump(DumpFile());
  EXPECT_TRUE(dump.IsMinidump());
  EXPECT_FALSE(dump.Exception());
  EXPECT_THAT(dump.ThreadIds(), Contains(GetCurrentThreadId()));
}

TEST_F(WriteCrashDumpTest, AsksForADumpOfThisProcessAndTheExceptionOfThisThread) {
  NoteWritings();
  Exception exception(EXCEPTION_INT_DIVIDE_BY_ZERO);
  EXPECT_EQ(WriteCrashDump(&exception.pointers), 0);
  ASSERT_THAT(writings, SizeIs(1));
  const Writing& writing = writings.front();
  EXPECT_EQ(writing.process, GetCurrentProcess());
  EXPECT_EQ(writing.processId, GetCurrentProcessId());
  EXPECT_EQ(writing.threadId, GetCurrentThreadId());
  EXPECT_FALSE(writing.hasMore);
  ASSERT_TRUE(writing.exception);
  EXPECT_EQ(writing.exception->ThreadId, GetCurrentThreadId());
  EXPECT_EQ(writing.exception->ExceptionPointers, &exception.pointers);
  EXPECT_FALSE(writing.exception->ClientPointers);
}

TEST_F(WriteCrashDumpTest, HoldsTheFileForItselfUntilItsEnd) {
  NoteWritings();
  WriteCrashDump(nullptr);
  ASSERT_THAT(writings, SizeIs(1));
  EXPECT_FALSE(writings.front().fileIsShared);
  EXPECT_TRUE(CanBeOpened());
}

TEST_F(WriteCrashDumpTest, SaysNothingWhenTheDumpFails) {
  NoteWritings();
  EXPECT_EQ(WriteCrashDump(nullptr), 0);
  EXPECT_THAT(writings, SizeIs(1));
  EXPECT_THAT(log_.Messages(), IsEmpty());
}

TEST_F(WriteCrashDumpTest, SaysNothingWhenTheFolderIsUnknown) {
  NoteWritings();
  platform_->folderPath = [](HWND, int, HANDLE, DWORD, LPWSTR) -> HRESULT { return E_FAIL; };
  EXPECT_EQ(WriteCrashDump(nullptr), 0);
  EXPECT_THAT(writings, IsEmpty());
  EXPECT_THAT(log_.Messages(), IsEmpty());
}

TEST_F(WriteCrashDumpTest, SaysNothingWhenTheFileIsInUse) {
  NoteWritings();
  const Handle user(CreateFileW(DumpFile().c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
  EXPECT_EQ(WriteCrashDump(nullptr), 0);
  EXPECT_THAT(writings, IsEmpty());
  EXPECT_THAT(log_.Messages(), IsEmpty());
}

TEST_F(WriteCrashDumpTest, WhateverFailsIsSilentLeavesNothingOpenAndDoesNotHinderTheNextDump) {
  static FaultPlan plan;
  static int dumps;
  static decltype(platform_->folderPath) folderPath;
  folderPath = platform_->folderPath;
  platform_->createThread = [](LPSECURITY_ATTRIBUTES attributes, SIZE_T stack, LPTHREAD_START_ROUTINE start,
                               LPVOID parameter, DWORD flags, LPDWORD id) -> HANDLE {
    return plan.Fails() ? nullptr : CreateThread(attributes, stack, start, parameter, flags, id);
  };
  platform_->folderPath = [](HWND owner, int folder, HANDLE token, DWORD flags, LPWSTR out) -> HRESULT {
    return plan.Fails() ? E_FAIL : folderPath(owner, folder, token, flags, out);
  };
  platform_->createFile = [](LPCWSTR file, DWORD access, DWORD share, LPSECURITY_ATTRIBUTES attributes, DWORD creation,
                             DWORD flags, HANDLE like) -> HANDLE {
    return plan.Fails() ? INVALID_HANDLE_VALUE : CreateFileW(file, access, share, attributes, creation, flags, like);
  };
  platform_->writeDump = [](HANDLE, DWORD, HANDLE, MINIDUMP_TYPE, PMINIDUMP_EXCEPTION_INFORMATION,
                            PMINIDUMP_USER_STREAM_INFORMATION, PMINIDUMP_CALLBACK_INFORMATION) -> BOOL {
    if (plan.Fails()) return FALSE;
    ++dumps;
    return TRUE;
  };
  Exception exception(EXCEPTION_STACK_OVERFLOW);  // takes most steps
  constexpr int kCalls = 4;
  const auto failEachCall = [&exception](FaultPlan::Mode mode) {
    for (int call = 1; call <= kCalls + 1; ++call) {
      SCOPED_TRACE(testing::Message() << "call " << call << (mode == FaultPlan::Mode::Once ? "" : " and later"));
      dumps = 0;
      plan.Arm(call, mode);
      EXPECT_EQ(WriteCrashDump(&exception.pointers), 0);
      EXPECT_EQ(plan.WasHit(), call <= kCalls);
      const bool onlyTheThread = call == 1 && mode == FaultPlan::Mode::Once;
      EXPECT_EQ(dumps, onlyTheThread || !plan.WasHit() ? 1 : 0);

      plan.Arm(0, mode);
      dumps = 0;
      EXPECT_EQ(WriteCrashDump(nullptr), 0);
      EXPECT_EQ(dumps, 1);
    }
  };
  // In the first round the system makes what it keeps for itself.
  size_t handles = 0;
  for (int round = 1; round <= 3; ++round) {
    for (const FaultPlan::Mode mode : {FaultPlan::Mode::Once, FaultPlan::Mode::FromThenOn}) failEachCall(mode);
    if (round == 1) handles = CountKernelHandles();
  }
  EXPECT_EQ(CountKernelHandles(), handles);
  EXPECT_THAT(log_.Messages(), IsEmpty());
}

TEST_F(WriteCrashDumpTest, SaysNothingWhenMemoryIsShort) {
  platform_->folderPath = [](HWND, int, HANDLE, DWORD, LPWSTR) -> HRESULT { throw std::bad_alloc(); };
  EXPECT_EQ(WriteCrashDump(nullptr), 0);
  EXPECT_THAT(log_.Messages(), IsEmpty());
}

TEST_F(WriteCrashDumpTest, LooksUpNothingOncePrepared) {
  NoteWritings();
  InOwnProcess([this] {
    PrepareCrashDump();
    platform_->folderPath = [](HWND, int, HANDLE, DWORD, LPWSTR) -> HRESULT { return E_FAIL; };
    WriteCrashDump(nullptr);
    PrepareCrashDump();
    WriteCrashDump(nullptr);
    EXPECT_THAT(writings, SizeIs(2));
  });
}

TEST_F(WriteCrashDumpTest, LooksUpWhatThePreparationCouldNot) {
  NoteWritings();
  InOwnProcess([this] {
    const auto folderPath = platform_->folderPath;
    platform_->folderPath = [](HWND, int, HANDLE, DWORD, LPWSTR) -> HRESULT { return E_FAIL; };
    PrepareCrashDump();
    WriteCrashDump(nullptr);
    EXPECT_THAT(writings, IsEmpty());
    platform_->folderPath = folderPath;
    WriteCrashDump(nullptr);
    EXPECT_THAT(writings, SizeIs(1));
    EXPECT_THAT(log_.Messages(), IsEmpty());
  });
}

TEST_F(WriteCrashDumpTest, IsDoneOnAThreadOfItsOwnAfterAStackOverflow) {
  NoteWritings();
  Exception exception(EXCEPTION_STACK_OVERFLOW);
  EXPECT_EQ(WriteCrashDump(&exception.pointers), 0);
  ASSERT_THAT(writings, SizeIs(1));
  EXPECT_NE(writings.front().threadId, GetCurrentThreadId());
  ASSERT_TRUE(writings.front().exception);
  EXPECT_EQ(writings.front().exception->ThreadId, GetCurrentThreadId());
}

TEST_F(WriteCrashDumpTest, IsTriedOnTheSameThreadWhenThereIsNoOther) {
  NoteWritings();
  platform_->createThread = [](LPSECURITY_ATTRIBUTES, SIZE_T, LPTHREAD_START_ROUTINE, LPVOID, DWORD,
                               LPDWORD) -> HANDLE { return nullptr; };
  Exception exception(EXCEPTION_STACK_OVERFLOW);
  EXPECT_EQ(WriteCrashDump(&exception.pointers), 0);
  ASSERT_THAT(writings, SizeIs(1));
  EXPECT_EQ(writings.front().threadId, GetCurrentThreadId());
}

TEST_F(WriteCrashDumpTest, ASecondThreadWaitsForTheDumpOfTheFirst) {
  static std::thread second;
  static std::atomic<bool> secondIsBack;
  static int dumps;
  secondIsBack = false;
  dumps = 0;
  platform_->writeDump = [](HANDLE, DWORD, HANDLE, MINIDUMP_TYPE, PMINIDUMP_EXCEPTION_INFORMATION,
                            PMINIDUMP_USER_STREAM_INFORMATION, PMINIDUMP_CALLBACK_INFORMATION) -> BOOL {
    if (++dumps == 1) {
      second = std::thread([] {
        WriteCrashDump(nullptr);
        secondIsBack = true;
      });
      EXPECT_FALSE(WaitUntil([] { return secondIsBack.load(); }, std::chrono::milliseconds(200)));
    }
    return TRUE;
  };
  WriteCrashDump(nullptr);
  second.join();
  EXPECT_EQ(dumps, 1);
  WriteCrashDump(nullptr);
  EXPECT_EQ(dumps, 2) << "Nobody was writing any more.";
}

TEST_F(WriteCrashDumpTest, TheFilterLeavesTheCrashToTheSystem) {
  NoteWritings();
  Exception exception(EXCEPTION_INT_DIVIDE_BY_ZERO);
  EXPECT_EQ(CrashDumpFilter(&exception.pointers), EXCEPTION_CONTINUE_SEARCH);
  ASSERT_THAT(writings, SizeIs(1));
  EXPECT_EQ(writings.front().exception->ExceptionPointers, &exception.pointers);
}
