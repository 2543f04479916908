// What any thread may call, called by eight at once: a million calls, each result checked. Under ThreadSanitizer this
// is the program `threads`.

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

#include "NetUtilities/Files/IniText.h"
#include "NetUtilities/Files/TextFileCache.h"
#include "NetUtilities/Logger/Logger.h"
#include "NetUtilities/Module/Singleton.h"
#include "NetUtilities/Registry/RefreshedDword.h"
#include "NetUtilities/Text/ErrnoText.h"
#include "NetUtilities/Text/Format.h"
#include "NetUtilities/Text/StringToBool.h"
#include "tests/support/FakeLogMachine.h"
#include "tests/support/InThreads.h"
#include "tests/support/OwnProcess.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/WaitUntil.h"

namespace {

using namespace std::chrono_literals;

// Calls per thread.
constexpr int kSingletonTypes = 50;  // each asked for the first time by all threads at once
constexpr int kSingletonCalls = 24'950;
constexpr int kRefreshedDwordCalls = 30'000;
constexpr int kErrnoTextCalls = 25'000;
constexpr int kStringToBoolCalls = 20'000;
constexpr int kIniCalls = 16'000;
constexpr int kLogCalls = 8'000;
constexpr int kTextFileCalls = 1'000;
static_assert(kThreads * (kSingletonTypes + kSingletonCalls + kRefreshedDwordCalls + kErrnoTextCalls +
                          kStringToBoolCalls + kIniCalls + kLogCalls + kTextFileCalls) ==
              1'000'000);

// How many of the calls of `isRight(number of the thread, number of the call)` by eight threads said no.
template <typename Check>
int CountWrong(int callsPerThread, Check isRight) {
  std::atomic<int> wrong = 0;
  InThreads([&](int thread) {
    for (int call = 0; call < callsPerThread; ++call) {
      if (!isRight(thread, call)) ++wrong;
    }
  });
  return wrong;
}

// An object that is easily created twice.
template <int Number>
struct Numbered {
  Numbered() {
    ++created;
    std::this_thread::yield();
    value = Number;
  }
  ~Numbered() { ++destroyed; }
  Numbered(const Numbered&) = delete;
  Numbered& operator=(const Numbered&) = delete;

  int value = -1;
  inline static std::atomic<int> created = 0;
  inline static std::atomic<int> destroyed = 0;
};

// Whether everybody gets the one complete object.
template <int Number>
bool GetsTheOne() {
  static std::atomic<Numbered<Number>*> one = nullptr;
  const auto object = Singleton<Numbered<Number>>::Get();
  if (!object || object->value != Number || !Singleton<Numbered<Number>>::Exists()) return false;
  Numbered<Number>* seen = nullptr;
  return one.compare_exchange_strong(seen, object.get()) || seen == object.get();
}

template <int... Numbers>
constexpr auto TableOfGets(std::integer_sequence<int, Numbers...>) {
  return std::array{GetsTheOne<Numbers>...};
}

template <int... Numbers>
bool AllWereCreatedOnce(std::integer_sequence<int, Numbers...>) {
  return ((Numbered<Numbers>::created == 1) && ...);
}

TEST(Threads, CreateEachSingletonOnce) {
  constexpr std::make_integer_sequence<int, kSingletonTypes> kNumbers;
  static constexpr auto kGets = TableOfGets(kNumbers);
  MeetingPoint together;
  EXPECT_EQ(CountWrong(kSingletonTypes,
                       [&](int, int call) {
                         together.Arrive();
                         return kGets[static_cast<size_t>(call)]();
                       }),
            0);
  EXPECT_TRUE(AllWereCreatedOnce(kNumbers));
}

TEST(Threads, GetTheSameSingleton) {
  EXPECT_EQ(CountWrong(kSingletonCalls, [](int, int) { return GetsTheOne<kSingletonTypes>(); }), 0);
}

TEST(Threads, ReadASwitchThatIsRefreshed) {
  // A clock that goes on by a millisecond whenever it is asked. What is read is a multiple of a number, and grows; what
  // a thread sees need not, for of two that read at the same time the one with the older number may be the last.
  constexpr uint32_t kStep = 7;
  static std::atomic<int64_t> milliseconds;
  static std::atomic<uint32_t> readings;
  milliseconds = 0;
  readings = 0;
  RefreshedDword value([] { return kStep * ++readings; },
                       [] { return std::chrono::steady_clock::time_point(std::chrono::milliseconds(++milliseconds)); });
  EXPECT_EQ(CountWrong(kRefreshedDwordCalls,
                       [&](int, int) {
                         const uint32_t seen = value.Get();
                         return seen > 0 && seen % kStep == 0 && seen <= kStep * readings;
                       }),
            0);
  constexpr int kPeriods = kThreads * kRefreshedDwordCalls / 11'000;
  EXPECT_GE(readings, kPeriods / 2u);
  // Each thread may find it old once in a period; as much again for those that are held up while they read.
  EXPECT_LE(readings, 2u * kThreads * (kPeriods + 1)) << "It is kept for some time.";
}

TEST(Threads, AskForErrnoTexts) {
  EXPECT_EQ(CountWrong(kErrnoTextCalls,
                       [](int, int call) {
                         switch (call % 4) {
                           case 0:
                             return ErrnoText(5) == L"I/O error.";
                           case 1:
                             return ErrnoText(32) == L"Broken pipe.";
                           case 2:
                             return ErrnoText(80) == L"A string copy or concatenation resulted in a truncated string";
                           default:
                             return ErrnoText(call + 100) == std::to_wstring(call + 100);
                         }
                       }),
            0);
}

TEST(Threads, AskWhatTextsMean) {
  EXPECT_EQ(CountWrong(kStringToBoolCalls,
                       [](int, int call) {
                         return call % 2 == 0 ? StringToBool(L"YES") && StringToBool(L"t")
                                              : !StringToBool(L"1") && !StringToBool(L"");
                       }),
            0);
}

TEST(Threads, LookUpIniValues) {
  const std::wstring text = L"; switches\n[Other]\nSwitch=0\n[Misc]\r\nOff = no\r\nSwitch = Yes\r\n";
  EXPECT_EQ(CountWrong(kIniCalls,
                       [&](int, int call) {
                         return call % 2 == 0 ? IsIniSwitchOn(FindIniValue(text, L"misc", L"switch").value_or(L"0"))
                                              : !IsIniSwitchOn(FindIniValue(text, L"misc", L"off").value_or(L"1")) &&
                                                    !FindIniValue(text, L"misc", L"missing");
                       }),
            0);
}

// The text of a file in its n-th version, recognized as complete by its number at both ends.
std::string TextOfVersion(int version) {
  const std::string number = std::to_string(version);
  return number + std::string(300, ' ') + number;
}

// The version of a text; -1 of one that is not complete.
int VersionOf(std::wstring_view text) {
  const size_t numberLength = text.find(L' ');
  const std::wstring number(text.substr(0, numberLength));
  return numberLength != std::wstring_view::npos && text.substr(text.rfind(L' ') + 1) == number ? std::stoi(number)
                                                                                                : -1;
}

TEST(Threads, ReadAFileThatIsRewritten) {
  const TemporaryFolder folder;
  const std::filesystem::path file = folder.Path() / "file.ini";
  int version = 0;
  // Never leaves an incomplete file, although there may be none for a moment. A file that somebody reads just then may
  // refuse to be replaced.
  const auto replace = [&] {
    const std::filesystem::path next = folder.Path() / "next.ini";
    std::ofstream(next, std::ios::binary) << TextOfVersion(version + 1);
    std::error_code refused;
    std::filesystem::rename(next, file, refused);
    if (!refused) ++version;
    return !refused;
  };
  ASSERT_TRUE(replace());

  TextFileCache cache;
  std::array<int, kThreads> lastSeen{};
  int wrong = -1;
  {
    const std::jthread writer([&](const std::stop_token& stop) {
      while (!stop.stop_requested()) {
        replace();
        std::this_thread::yield();
      }
    });
    wrong = CountWrong(kTextFileCalls, [&](int thread, int) {
      const TextFileCache::Text text = cache.TextOf(file);
      if (text->empty()) return true;
      const int seen = VersionOf(*text);
      return seen >= std::exchange(lastSeen[static_cast<size_t>(thread)], seen);
    });
  }
  EXPECT_EQ(wrong, 0) << "A text was incomplete, or older than one before.";
  EXPECT_GT(version, 1) << "The file has never changed.";
  EXPECT_EQ(VersionOf(*cache.TextOf(file)), version);
}

TEST(Threads, Log) {
  FakeLogMachine machine;
  machine.sourceLevels[28] = 5;
  LogFilter filter;
  const auto queue = std::make_shared<LogQueue>();
  const auto logger = std::make_shared<Logger>(filter, queue);
  InThreads([&](int thread) {
    for (int call = 0; call < kLogCalls; ++call) {
      const LogLevel level = call % 2 == 0 ? LogLevel::Error : LogLevel{100};
      const std::wstring message = Format(L"{} {}", thread, call);
      // The short way if it is open, as the product's messages take it.
      if (filter.IsSet() && filter.Passes(LogSource::Database, level) &&
          Logger::EnqueueIfRunning(*queue, LogSource::Database, level, message)) {
        continue;
      }
      logger->Enqueue(LogSource::Database, level, message);
    }
  });
  logger->Stop();
  const std::vector<FakeLogMachine::Sent> sent = machine.AllSent();
  EXPECT_EQ(sent.size(), static_cast<size_t>(kThreads * kLogCalls / 2)) << "The others are filtered out.";
  std::array<int, kThreads> next{};
  for (const FakeLogMachine::Sent& line : sent) {
    const std::wstring text = line.text.substr(line.text.find(L": ") + 2);
    const auto thread = static_cast<size_t>(text.front() - L'0');
    ASSERT_EQ(text, Format(L"{} {}", thread, next.at(thread))) << "The lines of a thread keep their order.";
    next.at(thread) += 2;
  }
}

TEST(Threads, MeetTeardown) {
  InOwnProcess([] {
    constexpr int kTypes = 50;
    constexpr std::make_integer_sequence<int, kTypes> kNumbers;
    static constexpr auto kGets = []<int... Numbers>(std::integer_sequence<int, Numbers...>) {
      return std::array{+[] {
        const auto object = Singleton<Numbered<Numbers>>::Get();
        EXPECT_TRUE(!object || object->value == Numbers);
        return object != nullptr;
      }...};
    }
    (kNumbers);

    std::atomic<int> gone = 0;
    std::atomic<int> asked = 0;
    std::jthread teardown([&] {
      // Half of the objects exist by then, the others are created meanwhile or never.
      WaitUntil([&] { return asked > kThreads * kTypes / 2; });
      SimpleSingleton<LifetimeTracker>::Get().DestroyAll();
    });
    InThreads([&](int) {
      for (size_t type = 0; type < kTypes; ++type) {
        ++asked;
        kGets[type]();
        std::this_thread::yield();
      }
      for (const auto get : kGets) WaitUntil([get] { return !get(); });
      ++gone;
    });
    teardown.join();
    EXPECT_EQ(gone, kThreads);
    for (const auto get : kGets) EXPECT_FALSE(get());
    []<int... Numbers>(std::integer_sequence<int, Numbers...>) {
      EXPECT_TRUE(((Numbered<Numbers>::created <= 1) && ...)) << "None came a second time.";
      EXPECT_TRUE(((Numbered<Numbers>::created == Numbered<Numbers>::destroyed) && ...)) << "None was left over.";
    }
    (kNumbers);
  });
}

}  // namespace
