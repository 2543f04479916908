// What logging costs those who log, beside the asynchronous logger of spdlog for the same text. Prints Markdown tables.

#include <windows.h>

#include <malloc.h>
#include <x86intrin.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <new>
#include <spdlog/async.h>
#include <spdlog/sinks/null_sink.h>
#include <spdlog/spdlog.h>
#include <stdexcept>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "NetUtilities/Log.h"
#include "NetUtilities/Logger/Logger.h"
#include "NetUtilities/Logger/LogLine.h"
#include "NetUtilities/Logger/LogPlatform.h"
#include "NetUtilities/Registry/RegistryPlatform.h"
#include "NetUtilities/Registry/TraceFlags.h"

namespace {

std::atomic<size_t> heapBytes{0};  // what is allocated at this moment

}  // namespace

void* operator new(size_t size) {
  void* const block = std::malloc(size);
  if (block == nullptr) throw std::bad_alloc();
  heapBytes += _msize(block);
  return block;
}

void operator delete(void* block) noexcept {
  if (block == nullptr) return;
  heapBytes -= _msize(block);
  std::free(block);
}

void operator delete(void* block, size_t) noexcept { operator delete(block); }

namespace {

constexpr std::wstring_view kText = LR"(Opening the database C:\ProgramData\Ostrel\Wayline\Data\Wayline.db)";
constexpr std::string_view kSameText = R"(Opening the database C:\ProgramData\Ostrel\Wayline\Data\Wayline.db)";
static_assert(kText.size() == kSameText.size());

// Takes the place of the logging service, as the null sink does of a file. While it is shut, messages stay queued.
std::atomic<bool> shut{false};
std::atomic<int64_t> delivered{0};

class NullService : public LogService {
 public:
  int32_t GetGlobalLevel(uint16_t& level) override { return level = 4, S_OK; }
  int32_t GetSourceLevel(uint32_t, uint16_t& level) override { return level = 0, S_OK; }
  int32_t LogMessage(uint32_t, uint16_t, std::wstring_view) override {
    shut.wait(true);
    ++delivered;
    return S_OK;
  }
};

std::unique_ptr<LogService> ConnectNullService(int32_t& result) {
  result = S_OK;
  return std::make_unique<NullService>();
}

// The time-stamp counter is the one clock that costs less than what is measured.
class Clock {
 public:
  Clock() {
    LARGE_INTEGER frequency{};
    QueryPerformanceFrequency(&frequency);
    const double before = Seconds(frequency);
    const uint64_t start = __rdtsc();
    Sleep(500);
    nanosecondsPerTick_ = (Seconds(frequency) - before) * 1e9 / static_cast<double>(__rdtsc() - start);

    std::vector<uint64_t> empty(10'001);
    for (uint64_t& ticks : empty) {
      const uint64_t now = __rdtsc();
      ticks = __rdtsc() - now;
    }
    std::ranges::sort(empty);
    own_ = empty[empty.size() / 2];
  }

  double Nanoseconds(uint64_t ticks) const { return static_cast<double>(ticks) * nanosecondsPerTick_; }
  // What lies between two readings that enclose nothing.
  uint64_t Own() const { return own_; }

 private:
  static double Seconds(const LARGE_INTEGER& frequency) {
    LARGE_INTEGER count{};
    QueryPerformanceCounter(&count);
    return static_cast<double>(count.QuadPart) / static_cast<double>(frequency.QuadPart);
  }

  double nanosecondsPerTick_ = 0;
  uint64_t own_ = 0;
};

const Clock& TheClock() {
  static const Clock clock;
  return clock;
}

using Call = void (*)();

// How messages follow each other on a thread.
struct Pace {
  const char* name;
  int messages;    // back to back
  int groups;      // so often
  DWORD interval;  // milliseconds between the groups
};

constexpr std::array kPaces = {
    Pace{"one every ms", 1, 500, 1},
    Pace{"one every 50 ms", 1, 30, 50},
    Pace{"bursts of 1,000", 1'000, 20, 10},
};

// What each of the calls took its thread, in ticks, appended to `samples`.
void Measure(Call call, int threadCount, const Pace& pace, std::vector<uint64_t>& samples) {
  const auto perThread = static_cast<size_t>(pace.messages) * static_cast<size_t>(pace.groups);
  const size_t first = samples.size();
  samples.resize(first + static_cast<size_t>(threadCount) * perThread);
  std::vector<std::jthread> threads;
  threads.reserve(static_cast<size_t>(threadCount));
  for (int thread = 0; thread < threadCount; ++thread) {
    threads.emplace_back(
        [&, at = samples.begin() + static_cast<ptrdiff_t>(first + static_cast<size_t>(thread) * perThread)]() mutable {
          for (int group = 0; group < pace.groups; ++group) {
            for (int message = 0; message < pace.messages; ++message) {
              const uint64_t start = __rdtsc();
              call();
              const uint64_t ticks = __rdtsc() - start;
              *at++ = ticks - std::min(ticks, TheClock().Own());
            }
            Sleep(pace.interval);
          }
        });
  }
}

struct Percentiles {
  double half;
  double most;
};

Percentiles PercentilesOf(std::vector<uint64_t>& samples) {
  std::ranges::sort(samples);
  return {TheClock().Nanoseconds(samples[samples.size() / 2]),
          TheClock().Nanoseconds(samples[samples.size() * 95 / 100])};
}

void LogOne() { Log(LogLevel::Error, kText); }

std::shared_ptr<spdlog::logger> otherLogger;

void LogOneElsewhere() { otherLogger->error(kSameText); }

void CompareCalls() {
  std::puts(
      "| threads | messages | p50 | p95 | spdlog p50 | spdlog p95 | p50 ratio | p95 ratio |\n"
      "|---:|---|---:|---:|---:|---:|---:|---:|");
  for (const int threads : {1, 4}) {
    for (const Pace& pace : kPaces) {
      // In turns, so that what else the machine does meets both.
      std::vector<uint64_t> own;
      std::vector<uint64_t> other;
      for (int round = 0; round < 5; ++round) {
        Measure(LogOne, threads, pace, own);
        Measure(LogOneElsewhere, threads, pace, other);
      }
      const Percentiles mine = PercentilesOf(own);
      const Percentiles theirs = PercentilesOf(other);
      std::printf("| %d | %s | %.0f ns | %.0f ns | %.0f ns | %.0f ns | %.2f | %.2f |\n", threads, pace.name, mine.half,
                  mine.most, theirs.half, theirs.most, mine.half / theirs.half, mine.most / theirs.most);
    }
  }
}

// The median over many runs of what one call takes, in nanoseconds.
template <typename Body>
double NanosecondsPerCall(Body body) {
  constexpr int kCalls = 10'000;
  std::vector<uint64_t> runs(201);
  for (uint64_t& ticks : runs) {
    const uint64_t start = __rdtsc();
    for (int call = 0; call < kCalls; ++call) body();
    ticks = __rdtsc() - start;
  }
  std::ranges::sort(runs);
  return TheClock().Nanoseconds(runs[runs.size() / 2]) / kCalls;
}

std::atomic<int> registryReads{0};
std::atomic<bool> anyFlag;  // keeps the compiler from leaving calls out

void MeasureSmallCalls() {
  const double filtered = NanosecondsPerCall([] { Log(LogLevel::Trace, kText); });

  registryPlatform.openKey = [](HKEY key, const wchar_t* name, DWORD options, REGSAM access, HKEY* result) {
    ++registryReads;
    return RegOpenKeyExW(key, name, options, access, result);
  };
  IsTraceFlagSet(0);
  const int reads = registryReads;
  const double flag = NanosecondsPerCall([] { anyFlag.store(IsTraceFlagSet(16), std::memory_order_relaxed); });
  const int readsMeanwhile = registryReads - reads;
  const int readsAtFirst = reads;

  std::printf(
      "\n| call | cost | registry reads |\n|---|---:|---:|\n"
      "| message that is filtered out | %.1f ns | |\n"
      "| IsTraceFlagSet, first call for eleven seconds | | %d |\n"
      "| IsTraceFlagSet, 2,010,000 calls after it | %.1f ns | %d |\n",
      filtered, readsAtFirst, flag, readsMeanwhile);
}

void MeasureMemory() {
  constexpr size_t kPlaces = 8'192;
  const size_t beforePool = heapBytes;
  const auto pool = std::make_shared<spdlog::details::thread_pool>(kPlaces, 1);
  const size_t other = (heapBytes - beforePool) / kPlaces;

  constexpr size_t kMessages = 100'000;
  shut = true;
  LogOne();
  Sleep(100);  // its delivery waits now; what follows is queued
  const size_t before = heapBytes;
  for (size_t message = 0; message < kMessages; ++message) LogOne();
  const size_t own = (heapBytes - before) / kMessages;
  shut = false;
  shut.notify_all();

  std::printf(
      "\n| queue | bytes per message |\n|---|---:|\n"
      "| line of %zu characters, queued | %zu |\n"
      "| spdlog: a place in its queue, in use or not | %zu |\n",
      kText.size() + LogLinePrefix({}, 0, 0).size(), own, other);
}

}  // namespace

int main() {  // NOLINT(bugprone-exception-escape): whoever runs it sees how it ends
  UseLogger();
  logPlatform.connect = ConnectNullService;
  spdlog::init_thread_pool(8'192, 1);
  otherLogger = spdlog::create_async<spdlog::sinks::null_sink_mt>("null");
  const LogSession session;  // as while the sheet is open
  LogOne();
  LogOneElsewhere();
  CompareCalls();
  MeasureSmallCalls();
  MeasureMemory();
  otherLogger.reset();
  spdlog::shutdown();
  StopLogger();
  if (delivered == 0) throw std::runtime_error("No message has reached the service.");
  return 0;
}
