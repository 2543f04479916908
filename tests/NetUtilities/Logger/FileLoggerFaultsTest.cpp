// What is left of the FileLogger's lines when calls of the platform fail.

#include <windows.h>

#include <gmock/gmock.h>

#include <atomic>
#include <cerrno>
#include <fstream>
#include <functional>
#include <memory>
#include <mutex>
#include <ostream>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "NetUtilities/Module/ModuleThread.h"
#include "NetUtilities/Registry/RegistryNames.h"
#include "NetUtilities/Text/ErrnoText.h"
#include "tests/support/DebugRecorder.h"
#include "tests/support/FaultPlan.h"
#include "tests/support/FileLogFiles.h"
#include "tests/support/OwnProcess.h"
#include "tests/support/Substituted.h"
#include "tests/support/TestRegistryKey.h"
#include "tests/support/WaitUntil.h"

namespace {

using FileLogFiles::Of;
using FileLogFiles::TextOf;
using testing::UnorderedElementsAreArray;

constexpr LogDay kFirstDay{2026, 11, 15};
constexpr LogDay kSecondDay{2026, 11, 16};

// What a fault loop lets fail.
struct Faults {
  const char* name;
  FaultPlan::Mode mode;
  std::set<std::string> calls;

  friend void PrintTo(const Faults& faults, std::ostream* out) { *out << faults.name; }
};

// A logger writes three lines, the last two on the next day, and ends. Its calls of the platform fail one after the
// other, and all that follow, too, where the loop says so. All goes on in the logger's own thread.
class FileLoggerFaults : public testing::TestWithParam<Faults> {
 protected:
  FileLoggerFaults() {
    machine.SetDword(kDebugOutputValue, 1);
    platform->localTime = [](SYSTEMTIME* time) {
      const LogDay day = attempts < kAttemptsOnFirstDay ? kFirstDay : kSecondDay;
      *time = day.Time();
    };
    platform->createMutex = [](SECURITY_ATTRIBUTES* security, BOOL isOwned, const wchar_t* name) -> HANDLE {
      if (!Fails("createMutex", NoMutexReport(ERROR_ACCESS_DENIED))) return CreateMutexW(security, isOwned, name);
      return SetLastError(ERROR_ACCESS_DENIED), nullptr;
    };
    platform->openFile = [](int* file, const wchar_t* name, int flags, int share, int mode) -> errno_t {
      const int attempt = attempts++;
      if (!Fails("openFile", NoFileReport(name, ToUtf8(ErrnoText(EMFILE))))) {
        return _wsopen_s(file, name, flags, share, mode);
      }
      lost.insert(attempt);
      return EMFILE;
    };
    platform->writeFile = [](int file, const void* data, unsigned size) {
      if (!Fails("writeFile", {})) return _write(file, data, size);
      lost.insert(attempts - 1);
      return errno = ENOSPC, -1;
    };
    static decltype(ThreadPlatform::start) start;
    start = threadPlatform.start;
    threads->start = [](std::function<void()> body) {
      if (!Fails("startThread", NoThreadReport(ERROR_NOT_ENOUGH_MEMORY))) return start(std::move(body));
      return uint32_t{ERROR_NOT_ENOUGH_MEMORY};
    };
  }
  ~FileLoggerFaults() override { FileLogFiles::RemoveAll(); }

  static bool Fails(const char* call, const std::string& report) {
    if (!GetParam().calls.contains(call) || !plan.Fails()) return false;
    const std::scoped_lock lock(mutex);
    if (!report.empty()) reports.push_back(report);
    return true;
  }

  // Runs the scenario and checks what it leaves.
  static void Run(int call) {
    for (const LogDay& day : {kFirstDay, kSecondDay}) {
      std::ofstream(Of(day), std::ios::binary | std::ios::trunc) << "before\r\n";
    }
    attempts = 0;
    lost.clear();
    reports.clear();
    plan.Arm(call, GetParam().mode);

    DebugRecorder recorder;
    const int ended = EndOfFileLogger::Count();
    {
      const auto logger = std::make_shared<ObservedFileLogger>();
      for (const wchar_t* line : {L"one\n", L"two\n", L"three\n"}) logger->Write(line);
    }
    ASSERT_TRUE(WaitUntil([=] { return EndOfFileLogger::Count() > ended; }));

    std::vector<std::string> sent = recorder.Take();
    std::erase_if(sent, [](const std::string& text) { return !text.starts_with("TARN: "); });
    EXPECT_THAT(sent, UnorderedElementsAreArray(reports));
    const std::vector<std::string> lines = {"\r\n", BeginLog(), "one\r\n", EndLog(),  //
                                            "\r\n", BeginLog(), "two\r\n", "three\r\n", EndLog()};
    EXPECT_EQ(attempts, static_cast<int>(lines.size()));
    std::string first = "before\r\n";
    std::string second = first;
    for (int line = 0; line < static_cast<int>(lines.size()); ++line) {
      if (lost.contains(line)) continue;
      (line <= kAttemptsOnFirstDay ? first : second) += lines[static_cast<size_t>(line)];
    }
    EXPECT_EQ(TextOf(kFirstDay), first);
    EXPECT_EQ(TextOf(kSecondDay), second);
  }

  // The second day comes when so many lines have been tried; the one after them ends the first day's file.
  static constexpr int kAttemptsOnFirstDay = 3;

  static inline FaultPlan plan;
  static inline std::atomic<int> attempts;         // to write a line
  static inline std::set<int> lost;                // those that were in vain
  static inline std::mutex mutex;                  // guards `reports`
  static inline std::vector<std::string> reports;  // that the faults so far deserve
  const Substituted<FileLogPlatform> platform{fileLogPlatform};
  const Substituted<ThreadPlatform> threads{threadPlatform};
  TestRegistryKey machine{HKEY_LOCAL_MACHINE, kCurrentInstallKey};
};

TEST_P(FileLoggerFaults, OnlyWhatCannotBeWrittenIsLost) {
  InOwnProcess([] {
    int call = 0;
    do {
      SCOPED_TRACE(++call);
      Run(call);
      if (HasFatalFailure()) return;
    } while (plan.WasHit());
    EXPECT_GT(call, 1) << "Nothing has ever failed.";
  });
}

INSTANTIATE_TEST_SUITE_P(Calls, FileLoggerFaults,
                         testing::Values(Faults{"AnyCallOnce",
                                                FaultPlan::Mode::Once,
                                                {"createMutex", "startThread", "openFile", "writeFile"}},
                                         Faults{"AnyCallFromThenOn",
                                                FaultPlan::Mode::FromThenOn,
                                                {"createMutex", "startThread", "openFile", "writeFile"}},
                                         Faults{"StartThreadFromThenOn", FaultPlan::Mode::FromThenOn, {"startThread"}},
                                         Faults{"OpenFileFromThenOn", FaultPlan::Mode::FromThenOn, {"openFile"}},
                                         Faults{"WriteFileFromThenOn", FaultPlan::Mode::FromThenOn, {"writeFile"}}),
                         [](const testing::TestParamInfo<Faults>& faults) { return faults.param.name; });

}  // namespace
