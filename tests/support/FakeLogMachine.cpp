#include "tests/support/FakeLogMachine.h"

#include <atomic>
#include <utility>

#include "NetUtilities/Registry/TraceBits.h"
#include "NetUtilities/Text/Format.h"

namespace {

FakeLogMachine* machine = nullptr;
uint32_t (*reallyStart)(std::function<void()>) = nullptr;

}  // namespace

template <typename Change>
void FakeLogMachine::Note(Change change) {
  const std::scoped_lock lock(machine->mutex_);
  change();
  machine->noted_.notify_all();
}

class FakeLogMachine::Service : public LogService {
 public:
  ~Service() override {
    Note([] { ++machine->counts_.disconnections; });
  }

  int32_t GetGlobalLevel(uint16_t& level) override {
    Note([] { ++machine->counts_.globalLevelQueries; });
    if (machine->globalLevelResult >= 0) level = machine->globalLevel;
    return machine->globalLevelResult;
  }

  int32_t GetSourceLevel(uint32_t source, uint16_t& level) override {
    Note([source] { machine->counts_.sourceLevelQueries.push_back(source); });
    const auto result = machine->sourceLevelResults.find(source);
    if (result != machine->sourceLevelResults.end()) return result->second;
    level = machine->sourceLevels.at(source);
    return 0;
  }

  int32_t LogMessage(uint32_t source, uint16_t level, std::wstring_view text) override {
    Note([&] { machine->sent_.push_back({source, level, std::wstring(text)}); });
    machine->whenSent();
    return machine->sendResult;
  }
};

FakeLogMachine::FakeLogMachine() {
  machine = this;
  reallyStart = threadPlatform.start;
  threadPlatform.start = [](std::function<void()> body) {
    Note([] { ++machine->counts_.starts; });
    return machine->startResult != 0 ? machine->startResult : reallyStart(std::move(body));
  };
  logPlatform.localTime = [] { return machine->localTime; };
  logPlatform.ticks = [] {
    // Goes on from one machine to the next: threads remember what they have read.
    static std::atomic<uint64_t> ticks = 0;
    return ticks += machine->ticksPerReading;
  };
  logPlatform.processId = [] { return uint32_t{0x1a2}; };
  logPlatform.threadId = [] { return uint32_t{0x3b}; };
  logPlatform.traceLevel = [] { return machine->traceLevel; };
  logPlatform.isTraceFlagSet = [](unsigned bit) { return bit == kLoggerTraceFlag && machine->tracesLogger; };
  logPlatform.steadyTime = [] { return machine->now; };
  logPlatform.enterServiceThread = [] {
    Note([] { ++machine->counts_.enters; });
    return machine->enterResult;
  };
  logPlatform.leaveServiceThread = [] { Note([] { ++machine->counts_.leaves; }); };
  logPlatform.connect = [](int32_t& result) -> std::unique_ptr<LogService> {
    Note([] { ++machine->counts_.connections; });
    result = machine->connectResult;
    if (result < 0) return nullptr;
    return std::make_unique<Service>();
  };
  logPlatform.reportToFile = [](std::wstring_view line) { Note([line] { machine->fileReports_.emplace_back(line); }); };
  logPlatform.reportToDebugger = [](std::wstring_view line) {
    Note([line] { machine->debuggerReports_.emplace_back(line); });
  };
  logPlatform.errorText = [](uint32_t code) { return Format(L"text of {}", code); };
  logPlatform.errorSuffix = [](int32_t code) { return Format(L" Error {}", code); };
  logPlatform.moduleLabel = [] { return std::wstring(L"host.exe -> module.dll"); };
}

FakeLogMachine::~FakeLogMachine() { machine = nullptr; }

std::vector<FakeLogMachine::Sent> FakeLogMachine::AllSent() const {
  const std::scoped_lock lock(mutex_);
  return sent_;
}

std::vector<std::wstring> FakeLogMachine::FileReports() const {
  const std::scoped_lock lock(mutex_);
  return fileReports_;
}

std::vector<std::wstring> FakeLogMachine::DebuggerReports() const {
  const std::scoped_lock lock(mutex_);
  return debuggerReports_;
}

bool FakeLogMachine::WaitForSent(size_t count) const {
  std::unique_lock lock(mutex_);
  return noted_.wait_for(lock, std::chrono::seconds(20), [&] { return sent_.size() >= count; });
}

FakeLogMachine::Counts FakeLogMachine::Happened() const {
  const std::scoped_lock lock(mutex_);
  return counts_;
}
