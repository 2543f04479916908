// Several processes that write into the same file at once.

#include <windows.h>

#include <gtest/gtest.h>

#include <chrono>
#include <map>
#include <memory>
#include <sstream>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "NetUtilities/Module/Handle.h"
#include "tests/support/Endurance.h"
#include "tests/support/FileLogFiles.h"
#include "tests/support/OwnProcess.h"
#include "tests/support/Substituted.h"
#include "tests/support/WaitUntil.h"

namespace {

constexpr LogDay kDay{2026, 11, 15};

std::chrono::seconds Limit() { return std::chrono::minutes(FullSize() ? 30 : 1); }

struct Crowd {
  int processes;
  int threads;  // of each process
  int lines;    // of each thread
};

// Lines of many lengths, none of which is a part of another.
std::string Line(int process, int thread, int number) {
  std::ostringstream text;
  text << process << ' ' << thread << ' ' << number << ' ' << std::string(static_cast<size_t>(number % 100), '-')
       << '.';
  return text.str();
}

// Waits until so many processes have come here.
void Meet(int processes) {
  const Handle arrivals(CreateSemaphoreW(nullptr, 0, processes, L"PaviseTestArrivals"));
  const Handle allAreHere(CreateEventW(nullptr, TRUE, FALSE, L"PaviseTestAllAreHere"));
  LONG before = 0;
  ReleaseSemaphore(arrivals.get(), 1, &before);
  if (before + 1 == processes) SetEvent(allAreHere.get());
  EXPECT_EQ(WaitForSingleObject(allAreHere.get(), 30'000), WAIT_OBJECT_0);
}

void WriteLines(const Crowd& crowd, int process) {
  auto logger = std::make_shared<ObservedFileLogger>();
  Meet(crowd.processes);
  {
    std::vector<std::jthread> threads;
    for (int thread = 0; thread < crowd.threads; ++thread) {
      threads.emplace_back([&, thread] {
        for (int number = 0; number < crowd.lines; ++number) {
          logger->Write(FromUtf8(Line(process, thread, number) + '\n'));
        }
      });
    }
  }
  logger.reset();
  EXPECT_TRUE(WaitUntil([] { return EndOfFileLogger::Count() == 1; }, Limit()));
}

// Every line is in the file, once and whole, those of a thread in their order.
void ExpectLines(const Crowd& crowd) {
  std::map<std::pair<int, int>, int> next;
  int begins = 0;
  int ends = 0;
  std::istringstream file(FileLogFiles::TextOf(kDay).substr(std::string_view(kByteOrderMark).size()));
  for (std::string line; std::getline(file, line);) {
    line += '\n';
    if (line == BeginLog()) {
      ++begins;
    } else if (line == EndLog()) {
      ++ends;
    } else if (line != "\r\n") {
      int process = -1;
      int thread = -1;
      std::istringstream(line) >> process >> thread;
      ASSERT_EQ(line, Line(process, thread, next[{process, thread}]++) + "\r\n");
    }
  }
  EXPECT_EQ(begins, crowd.processes);
  EXPECT_EQ(ends, crowd.processes);
  EXPECT_EQ(next.size(), static_cast<size_t>(crowd.processes * crowd.threads));
  for (const auto& [writer, count] : next) EXPECT_EQ(count, crowd.lines) << writer.first << ' ' << writer.second;
}

void WriteAtOnce(const Crowd& crowd) {
  const Substituted<FileLogPlatform> platform(fileLogPlatform);
  platform->localTime = [](SYSTEMTIME* time) { *time = kDay.Time(); };
  if (!IsOwnProcess()) FileLogFiles::RemoveAll();
  InOwnProcesses(
      crowd.processes, [&](int process) { WriteLines(crowd, process); }, Limit());
  if (IsOwnProcess()) return;
  ExpectLines(crowd);
  FileLogFiles::RemoveAll();
}

TEST(FileLoggerProcesses, TwoAtOnceWriteWholeLines) { WriteAtOnce({.processes = 2, .threads = 1, .lines = 200}); }

TEST(FileLoggerProcesses, EightWithManyThreadsLoseNothing) {
  WriteAtOnce({.processes = 8, .threads = 4, .lines = FullSize() ? 5'000 : 75});
}

}  // namespace
