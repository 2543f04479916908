// What the FileLogger sends to the debugger: its lines, and reports of what fails.

#include <windows.h>

#include <gmock/gmock.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "NetUtilities/Module/Handle.h"
#include "NetUtilities/Module/ModuleThread.h"
#include "NetUtilities/Registry/RegistryNames.h"
#include "tests/support/DebugRecorder.h"
#include "tests/support/FileLogFiles.h"
#include "tests/support/OwnProcess.h"
#include "tests/support/Substituted.h"
#include "tests/support/TestRegistryKey.h"
#include "tests/support/ThreadStarts.h"

namespace {

using FileLogFiles::Of;
using FileLogFiles::TextOf;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr LogDay kFirstDay{2026, 11, 15};
constexpr LogDay kSecondDay{2026, 11, 16};

// What `_wsopen_s` says of every file that it is denied.
constexpr char kDenied[] = "The given path is a directory, or the file is read-only.";

// Each of these runs in a process of its own, which has not asked for the switch before.
class FileLoggerDebug : public testing::Test {
 protected:
  FileLoggerDebug() {
    FileLogFiles::RemoveAll();
    today = kFirstDay;
    platform->localTime = [](SYSTEMTIME* time) { *time = today.Time(); };
    // Every line is written when Write returns.
    threads->start = RunAtOnce;
    machine.SetDword(kDebugOutputValue, 1);
  }
  ~FileLoggerDebug() override { FileLogFiles::RemoveAll(); }

  // What goes to the debugger while the process does this.
  static std::vector<std::string> SentBy(const std::function<void()>& action) {
    DebugRecorder recorder;
    action();
    return recorder.Take();
  }

  // What goes there while a new logger writes one line and ends, without lines of the log.
  static std::vector<std::string> ReportsOfOneLine() {
    std::vector<std::string> sent = SentBy([] { std::make_shared<ObservedFileLogger>()->Write(L"one\n"); });
    std::erase_if(sent, [](const std::string& text) { return !text.starts_with("TARN: "); });
    return sent;
  }

  static std::string CompleteLog() { return kByteOrderMark + BeginLog() + "one\r\n" + EndLog(); }

  static inline LogDay today;
  const Substituted<FileLogPlatform> platform{fileLogPlatform};
  const Substituted<ThreadPlatform> threads{threadPlatform};
  TestRegistryKey machine{HKEY_LOCAL_MACHINE, kCurrentInstallKey};
};

TEST_F(FileLoggerDebug, LinesGoToTheDebuggerAsTheyAre) {
  InOwnProcess([] {
    const std::string begin = "Begin Log - " + ToUtf8(ModuleFileName(OwnModule())) + '\n';
    const std::string end = "End Log - " + ToUtf8(ModuleFileName(OwnModule())) + '\n';
    std::ofstream(Of(kSecondDay)) << "before\n";
    auto logger = std::make_shared<ObservedFileLogger>();
    EXPECT_THAT(SentBy([&] { logger->Write(L"one\n"); }), ElementsAre(begin, "one\n"));
    EXPECT_THAT(SentBy([&] { logger->Write(L"no end"); }), ElementsAre("no end"));
    today = kSecondDay;
    EXPECT_THAT(SentBy([&] { logger->Write(L"two\n"); }), ElementsAre("two\n", end, "\n", begin));
    EXPECT_THAT(SentBy([&] { logger.reset(); }), ElementsAre(end));
  });
}

TEST_F(FileLoggerDebug, NothingGoesToTheDebuggerWhileItIsSwitchedOff) {
  InOwnProcess([] { EXPECT_THAT(SentBy([] { std::make_shared<FileLogger>()->Write(L"one\n"); }), IsEmpty()); });
}

TEST_F(FileLoggerDebug, NothingGoesToTheDebuggerWithoutTheSwitchForThat) {
  machine.SetDword(kDebugOutputValue, 0);
  InOwnProcess([this] {
    EXPECT_THAT(SentBy([] { std::make_shared<ObservedFileLogger>()->Write(L"one\n"); }), IsEmpty());
    EXPECT_EQ(TextOf(kFirstDay), CompleteLog());
    std::filesystem::remove(Of(kFirstDay));
    platform->openFile = [](int*, const wchar_t*, int, int, int) { return errno_t{EACCES}; };
    EXPECT_THAT(SentBy([] { std::make_shared<ObservedFileLogger>()->Write(L"one\n"); }), IsEmpty());
  });
}

TEST_F(FileLoggerDebug, WritesWithoutTheMutexWhenSomethingElseHasItsName) {
  InOwnProcess([] {
    const Handle event(CreateEventW(nullptr, FALSE, FALSE, L"TarnFileLogger"));
    ASSERT_NE(event, nullptr);
    EXPECT_THAT(ReportsOfOneLine(), ElementsAre(NoMutexReport(ERROR_INVALID_HANDLE)));
    EXPECT_EQ(TextOf(kFirstDay), CompleteLog());
  });
}

TEST_F(FileLoggerDebug, WritesWithoutTheMutexWhenItIsNotGiven) {
  InOwnProcess([this] {
    platform->createMutex = [](SECURITY_ATTRIBUTES*, BOOL, const wchar_t*) -> HANDLE {
      return SetLastError(ERROR_ACCESS_DENIED), nullptr;
    };
    EXPECT_THAT(ReportsOfOneLine(), ElementsAre(NoMutexReport(ERROR_ACCESS_DENIED)));
    EXPECT_EQ(TextOf(kFirstDay), CompleteLog());
  });
}

TEST_F(FileLoggerDebug, LinesWithoutAThreadAreWrittenByTheNextOrAtTheEnd) {
  InOwnProcess([this] {
    auto logger = std::make_shared<ObservedFileLogger>();
    threads->start = StartNoThread;
    EXPECT_THAT(SentBy([&] { logger->Write(L"one\n"); }), ElementsAre(NoThreadReport(ERROR_NOT_ENOUGH_MEMORY)));
    EXPECT_FALSE(exists(Of(kFirstDay)));
    threads->start = RunAtOnce;
    logger->Write(L"two\n");
    EXPECT_EQ(TextOf(kFirstDay), kByteOrderMark + BeginLog() + "one\r\ntwo\r\n");
    threads->start = StartNoThread;
    EXPECT_THAT(SentBy([&] { logger->Write(L"three\n"); }), ElementsAre(NoThreadReport(ERROR_NOT_ENOUGH_MEMORY)));
    logger.reset();
    EXPECT_EQ(TextOf(kFirstDay), kByteOrderMark + BeginLog() + "one\r\ntwo\r\nthree\r\n" + EndLog());
  });
}

TEST_F(FileLoggerDebug, AFolderInThePlaceOfTheFileIsReportedWithEveryLine) {
  InOwnProcess([] {
    const std::filesystem::path file = Of(kFirstDay);
    std::filesystem::create_directory(file);
    const std::string report = NoFileReport(file, kDenied);
    // The empty line before the beginning, the beginning, the line and the end.
    EXPECT_THAT(ReportsOfOneLine(), ElementsAre(report, report, report, report));
    std::filesystem::remove(file);
    EXPECT_THAT(ReportsOfOneLine(), IsEmpty());
    EXPECT_EQ(TextOf(kFirstDay), CompleteLog()) << "The next line tries again.";
  });
}

TEST_F(FileLoggerDebug, AFileThatSomebodyElseWritesIsReported) {
  InOwnProcess([] {
    const std::filesystem::path file = Of(kFirstDay);
    auto logger = std::make_shared<ObservedFileLogger>();
    logger->Write(L"one\n");
    {
      const Handle writer(CreateFileW(file.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                      OPEN_EXISTING, 0, nullptr));
      EXPECT_THAT(SentBy([&] { logger->Write(L"lost\n"); }), ElementsAre("lost\n", NoFileReport(file, kDenied)));
    }
    logger->Write(L"two\n");
    EXPECT_EQ(TextOf(kFirstDay), kByteOrderMark + BeginLog() + "one\r\ntwo\r\n");
  });
}

TEST_F(FileLoggerDebug, AnErrorWithoutATextIsReportedByItsNumber) {
  InOwnProcess([this] {
    platform->openFile = [](int*, const wchar_t*, int, int, int) { return errno_t{99}; };
    const std::string report = NoFileReport(Of(kFirstDay), "99");
    EXPECT_THAT(ReportsOfOneLine(), ElementsAre(report, report, report));
  });
}

TEST_F(FileLoggerDebug, ALineThatCannotBeWrittenIsLostWithoutAWord) {
  InOwnProcess([this] {
    auto logger = std::make_shared<ObservedFileLogger>();
    logger->Write(L"one\n");
    platform->writeFile = [](int, const void*, unsigned) { return errno = ENOSPC, -1; };
    EXPECT_THAT(SentBy([&] { logger->Write(L"lost\n"); }), ElementsAre("lost\n"));
    platform->writeFile = _write;
    logger->Write(L"two\n");
    logger.reset();
    EXPECT_EQ(TextOf(kFirstDay), kByteOrderMark + BeginLog() + "one\r\ntwo\r\n" + EndLog());
  });
}

}  // namespace
