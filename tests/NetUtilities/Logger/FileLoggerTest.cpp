// What the FileLogger writes, into which file, and how it shares the file with others.

#include "NetUtilities/Logger/FileLogger.h"

#include <windows.h>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <share.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <string>
#include <sys/stat.h>
#include <thread>
#include <utility>
#include <vector>

#include "NetUtilities/Module/Handle.h"
#include "NetUtilities/Module/ModuleThread.h"
#include "tests/support/FileLogFiles.h"
#include "tests/support/InThreads.h"
#include "tests/support/Substituted.h"
#include "tests/support/ThreadStarts.h"
#include "tests/support/WaitUntil.h"

namespace {

using FileLogFiles::Of;
using FileLogFiles::TextOf;
using std::filesystem::exists;
using testing::ElementsAre;

constexpr LogDay kOctober15{2026, 10, 15};
constexpr LogDay kNovember15{2026, 11, 15};
constexpr LogDay kNovember16{2026, 11, 16};

const std::string kBlank = "\r\n";

// A handle on today's file; it lets others do with the file what they want.
Handle Open(DWORD access) {
  constexpr DWORD kAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  return OwnUnlessInvalid(CreateFileW(Of(kNovember15).c_str(), access, kAll, nullptr, OPEN_EXISTING, 0, nullptr));
}

// The mutex of all processes; there is one while a logger lives.
Handle FileMutex() { return Handle(OpenMutexW(SYNCHRONIZE | MUTEX_MODIFY_STATE, FALSE, L"TarnFileLogger")); }

// The days are the test's own.
class FileLoggerInItsThread : public testing::Test {
 protected:
  FileLoggerInItsThread() {
    FileLogFiles::RemoveAll();
    today = kNovember15;
    platform->localTime = [](SYSTEMTIME* time) { *time = today.Time(); };
    NewLogger();
  }
  ~FileLoggerInItsThread() override {
    EndLogger();
    FileLogFiles::RemoveAll();
  }

  void NewLogger() { logger = std::make_shared<ObservedFileLogger>(); }

  // Waits until it has written everything.
  void EndLogger() {
    if (!logger) return;
    const int before = EndOfFileLogger::Count();
    logger.reset();
    EXPECT_TRUE(WaitUntil([=] { return EndOfFileLogger::Count() == before + 1; }));
  }

  static inline LogDay today;
  std::shared_ptr<FileLogger> logger;
  const Substituted<FileLogPlatform> platform{fileLogPlatform};
};

// Here every line is written when Write returns.
class FileLoggerTest : public FileLoggerInItsThread {
 protected:
  FileLoggerTest() {
    starts = 0;
    threads->start = [](std::function<void()> body) {
      ++starts;
      return RunAtOnce(std::move(body));
    };
  }
  ~FileLoggerTest() override { EndLogger(); }

  static inline int starts = 0;
  const Substituted<ThreadPlatform> threads{threadPlatform};
};

TEST_F(FileLoggerTest, BeginsAndEndsTheFileOfTheDay) {
  logger->Write(L"one\n");
  EXPECT_EQ(TextOf(kNovember15), kByteOrderMark + BeginLog() + "one\r\n");
  logger->Write(L"two\n");
  EndLogger();
  EXPECT_EQ(TextOf(kNovember15), kByteOrderMark + BeginLog() + "one\r\ntwo\r\n" + EndLog());
}

TEST_F(FileLoggerTest, NamesTheFileByModuleAndDate) {
  today = {2027, 3, 4};
  logger->Write(L"one\n");
  EXPECT_TRUE(exists(FileLogFiles::Folder() / (OwnModuleBaseName() + L"_2027-03-04.log")));
  const std::string module = ToUtf8(OwnModuleBaseName());
  EXPECT_EQ(BeginLog(), "Begin Log - " + module + ".exe\r\n");
}

TEST_F(FileLoggerTest, DoesNothingBeforeTheFirstLine) {
  EXPECT_EQ(starts, 0);
  EndLogger();
  EXPECT_EQ(starts, 0);
  EXPECT_FALSE(exists(Of(kNovember15)));
}

TEST_F(FileLoggerTest, SeparatesItsLinesFromThoseOfAnother) {
  logger->Write(L"one\n");
  EndLogger();
  NewLogger();
  logger->Write(L"two\n");
  EndLogger();
  EXPECT_EQ(TextOf(kNovember15),
            kByteOrderMark + BeginLog() + "one\r\n" + EndLog() + kBlank + BeginLog() + "two\r\n" + EndLog());
}

TEST_F(FileLoggerTest, PutsNoByteOrderMarkIntoAFileThatIsThere) {
  std::ofstream(Of(kNovember15), std::ios::binary) << "before\r\n";
  logger->Write(L"one\n");
  EXPECT_EQ(TextOf(kNovember15), "before\r\n" + kBlank + BeginLog() + "one\r\n");
}

TEST_F(FileLoggerTest, ANewDayEndsTheFileAndBeginsAnother) {
  logger->Write(L"late\n");
  today = kNovember16;
  logger->Write(L"early\n");
  EXPECT_EQ(TextOf(kNovember15), kByteOrderMark + BeginLog() + "late\r\n" + EndLog());
  EXPECT_EQ(TextOf(kNovember16), kByteOrderMark + BeginLog() + "early\r\n");
}

TEST_F(FileLoggerTest, ANewDaySeparatesItsLinesFromWhatItsFileHolds) {
  std::ofstream(Of(kNovember16), std::ios::binary) << "before\r\n";
  logger->Write(L"late\n");
  today = kNovember16;
  logger->Write(L"early\n");
  EXPECT_EQ(TextOf(kNovember15), kByteOrderMark + BeginLog() + "late\r\n" + EndLog());
  EXPECT_EQ(TextOf(kNovember16), "before\r\n" + kBlank + BeginLog() + "early\r\n");
}

TEST_F(FileLoggerTest, ANewDayDoesNotBringBackAFileThatWasDeleted) {
  logger->Write(L"late\n");
  std::filesystem::remove(Of(kNovember15));
  today = kNovember16;
  logger->Write(L"early\n");
  EXPECT_FALSE(exists(Of(kNovember15)));
  EXPECT_EQ(TextOf(kNovember16), kByteOrderMark + BeginLog() + "early\r\n");
}

TEST_F(FileLoggerTest, TheSameDayOfAnotherMonthKeepsTheFile) {
  today = kOctober15;
  logger->Write(L"october\n");
  today = kNovember15;
  logger->Write(L"november\n");
  EXPECT_EQ(TextOf(kOctober15), kByteOrderMark + BeginLog() + "october\r\nnovember\r\n");
  EXPECT_FALSE(exists(Of(kNovember15)));

  today = kNovember16;
  logger->Write(L"next day\n");
  EXPECT_EQ(TextOf(kOctober15), kByteOrderMark + BeginLog() + "october\r\nnovember\r\n" + EndLog());
  EXPECT_EQ(TextOf(kNovember16), kByteOrderMark + BeginLog() + "next day\r\n");
}

TEST_F(FileLoggerTest, TheEndOnALaterDayStandsInThatDaysFile) {
  logger->Write(L"late\n");
  today = kNovember16;
  EndLogger();
  EXPECT_EQ(TextOf(kNovember15), kByteOrderMark + BeginLog() + "late\r\n" + EndLog());
  EXPECT_EQ(TextOf(kNovember16), kByteOrderMark + BeginLog() + EndLog());
}

TEST_F(FileLoggerTest, IsSwitchedOffAtFirst) {
  const auto off = std::make_shared<FileLogger>();
  off->Write(L"lost\n");
  EXPECT_EQ(starts, 1) << "The lines are taken all the same.";
  EXPECT_FALSE(exists(Of(kNovember15)));
  off->SetEnabled(true);
  off->Write(L"one\n");
  EXPECT_EQ(TextOf(kNovember15), std::string(kByteOrderMark) + "one\r\n") << "What was queued before is gone.";
}

TEST_F(FileLoggerTest, SwitchedOnOnALaterDayItBeginsTheFile) {
  logger->SetEnabled(false);
  logger->Write(L"lost\n");
  today = kNovember16;
  logger->SetEnabled(true);
  logger->Write(L"one\n");
  EXPECT_FALSE(exists(Of(kNovember15)));
  EXPECT_EQ(TextOf(kNovember16), kByteOrderMark + BeginLog() + "one\r\n");
}

TEST_F(FileLoggerTest, SwitchedOffAgainItWritesNothingMore) {
  logger->Write(L"one\n");
  logger->SetEnabled(false);
  logger->Write(L"lost\n");
  today = kNovember16;
  logger->Write(L"lost\n");
  EndLogger();
  EXPECT_EQ(TextOf(kNovember15), kByteOrderMark + BeginLog() + "one\r\n");
  EXPECT_FALSE(exists(Of(kNovember16)));
}

TEST_F(FileLoggerTest, WritesUtf8) {
  logger->Write(L"\x00E4 \x20AC \xD83D\xDE00\n");
  EXPECT_EQ(TextOf(kNovember15), kByteOrderMark + BeginLog() + "\xC3\xA4 \xE2\x82\xAC \xF0\x9F\x98\x80\r\n");
}

TEST_F(FileLoggerTest, WritesLinesAsTheyAreGiven) {
  logger->Write(L"first\nsecond\n");
  logger->Write(L"no end");
  logger->Write(L"");
  logger->Write(L", now\n");
  logger->Write(L"\n");
  EXPECT_EQ(TextOf(kNovember15), kByteOrderMark + BeginLog() + "first\r\nsecond\r\nno end, now\r\n\r\n");
}

TEST_F(FileLoggerTest, WritesALongLineInOneCall) {
  static int calls;
  calls = 0;
  platform->writeFile = [](int file, const void* data, unsigned size) { return ++calls, _write(file, data, size); };
  const std::wstring text(1'048'576, L'x');
  logger->Write(text + L'\n');
  EXPECT_EQ(calls, 2) << "the beginning of the file, and the line";
  EXPECT_EQ(TextOf(kNovember15), kByteOrderMark + BeginLog() + ToUtf8(text) + "\r\n");
}

TEST_F(FileLoggerTest, OpensTheFileForAppendingTextAndDeniesWritingToOthers) {
  static std::vector<int> opened;
  opened.clear();
  platform->openFile = [](int* file, const wchar_t* name, int flags, int share, int mode) -> errno_t {
    EXPECT_EQ(name, Of(kNovember15).wstring());
    opened = {flags, share, mode};
    return _wsopen_s(file, name, flags, share, mode);
  };
  logger->Write(L"one\n");
  EXPECT_THAT(opened,
              ElementsAre(_O_WRONLY | _O_APPEND | _O_CREAT | _O_TEXT | _O_U8TEXT, _SH_DENYWR, _S_IREAD | _S_IWRITE));
}

TEST_F(FileLoggerTest, OthersMayReadWhileItWritesButNotWrite) {
  platform->writeFile = [](int file, const void* data, unsigned size) {
    EXPECT_NE(Open(GENERIC_READ), nullptr);
    EXPECT_EQ(Open(GENERIC_WRITE), nullptr);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_SHARING_VIOLATION});
    return _write(file, data, size);
  };
  logger->Write(L"one\n");
  EXPECT_NE(Open(GENERIC_WRITE), nullptr) << "Between two lines it does not hold the file.";
  EXPECT_EQ(TextOf(kNovember15), kByteOrderMark + BeginLog() + "one\r\n");
}

TEST_F(FileLoggerTest, HoldsTheMutexOfAllProcessesWhileItWrites) {
  static const auto askFromAnotherThread = [] {
    DWORD answer = WAIT_FAILED;
    std::jthread([&answer] {
      const Handle mutex = FileMutex();
      answer = WaitForSingleObject(mutex.get(), 0);
      if (answer == WAIT_OBJECT_0) ReleaseMutex(mutex.get());
    }).join();
    return answer;
  };
  platform->writeFile = [](int file, const void* data, unsigned size) {
    EXPECT_EQ(askFromAnotherThread(), DWORD{WAIT_TIMEOUT});
    return _write(file, data, size);
  };
  EXPECT_EQ(askFromAnotherThread(), WAIT_OBJECT_0);
  logger->Write(L"one\n");
  EXPECT_EQ(askFromAnotherThread(), WAIT_OBJECT_0);
}

TEST_F(FileLoggerTest, MakesTheMutexForAllWithoutTakingIt) {
  platform->createMutex = [](SECURITY_ATTRIBUTES* security, BOOL isOwned, const wchar_t* name) {
    EXPECT_EQ(security, nullptr);
    EXPECT_EQ(isOwned, FALSE);
    EXPECT_EQ(name, std::wstring(L"TarnFileLogger"));
    return CreateMutexW(security, isOwned, name);
  };
  EndLogger();
  NewLogger();
  EXPECT_NE(FileMutex(), nullptr);
}

TEST_F(FileLoggerTest, TakesOverTheMutexOfAProcessThatEndedInTheMiddle) {
  std::jthread([] { EXPECT_EQ(WaitForSingleObject(FileMutex().get(), 0), WAIT_OBJECT_0); }).join();
  logger->Write(L"one\n");
  EXPECT_EQ(TextOf(kNovember15), kByteOrderMark + BeginLog() + "one\r\n");
}

TEST_F(FileLoggerInItsThread, TheCallerDoesNotWaitForTheFile) {
  const Handle mutex = FileMutex();
  ASSERT_EQ(WaitForSingleObject(mutex.get(), 0), WAIT_OBJECT_0);
  std::string lines;
  for (int number = 0; number < 100; ++number) {
    logger->Write(Format(L"{}\n", number));
    lines += std::to_string(number) + "\r\n";
  }
  EXPECT_FALSE(exists(Of(kNovember15))) << "The file belongs to who has the mutex.";
  ReleaseMutex(mutex.get());
  EndLogger();
  EXPECT_EQ(TextOf(kNovember15), kByteOrderMark + BeginLog() + lines + EndLog());
}

TEST_F(FileLoggerInItsThread, FirstLinesFromManyThreadsBeginTheFileOnce) {
  InThreads([this](int) { logger->Write(L"x\n"); });
  EndLogger();
  std::string lines;
  for (int thread = 0; thread < kThreads; ++thread) lines += "x\r\n";
  EXPECT_EQ(TextOf(kNovember15), kByteOrderMark + BeginLog() + lines + EndLog());
}

}  // namespace
