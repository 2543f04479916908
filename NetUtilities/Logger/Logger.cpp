#include "NetUtilities/Logger/Logger.h"

#include <array>
#include <source_location>
#include <thread>
#include <utility>

#include "NetUtilities/Logger/LogLine.h"
#include "NetUtilities/Logger/LogPlatform.h"
#include "NetUtilities/Logger/TraceScope.h"
#include "NetUtilities/Module/Singleton.h"
#include "NetUtilities/Registry/TraceBits.h"
#include "NetUtilities/Text/Format.h"

namespace {

// Starting the Logger may itself fail and log. Such a message is met by the thread that is initializing and must not
// wait for that to end.
thread_local bool initializing = false;

void ReportError(std::wstring_view message, int32_t code) {
  logPlatform.reportToFile(Format(L"Error: {}{}", message, logPlatform.errorSuffix(code)));
}

void ReportDebug(std::wstring_view message) {
  if (logPlatform.isTraceFlagSet(kLoggerTraceFlag)) logPlatform.reportToFile(Format(L"Debug: {}", message));
}

void ReportInformation(std::wstring_view message) { logPlatform.reportToFile(Format(L"Info:  {}", message)); }

bool Failed(int32_t result) { return result < 0; }

// The Logger's own scopes go to the debugger: in the log they would trace themselves.
class LoggerScope : public TraceScope {
 public:
  explicit LoggerScope(const std::wstring& label,
                       const char* function = std::source_location::current().function_name())
      : TraceScope(kLoggerTraceFlag, label, logPlatform.reportToDebugger, TraceTiming::Untimed, function) {}
};

// The start of this thread's lines at this moment. Reading the clock and composing the text cost several times what the
// rest of a message does, so both are done again only when the time may be another: the counter takes half a
// millisecond for these ticks at 1 GHz, and less on faster processors.
std::wstring_view CurrentPrefix() {
  constexpr uint64_t kTicks = 500'000;
  struct Kept {
    uint64_t readAt = 0;
    std::array<wchar_t, kLongestLogLinePrefix> text;
    size_t length = 0;
  };
  thread_local Kept kept;
  const uint64_t now = logPlatform.ticks();
  if (now - kept.readAt > kTicks || kept.length == 0) {
    kept.readAt = now;
    kept.length =
        WriteLogLinePrefix(kept.text, logPlatform.localTime(), logPlatform.processId(), logPlatform.threadId());
  }
  return {kept.text.data(), kept.length};
}

}  // namespace

LogFilter processLogFilter;

const std::shared_ptr<LogQueue>& ProcessLogQueue() {
  static const auto queue = std::make_shared<LogQueue>();
  return queue;
}

Logger::Logger(LogFilter& filter, std::shared_ptr<LogQueue> queue)
    : QueueThread(std::move(queue)), filter_(filter), label_(logPlatform.moduleLabel() + L" Logger") {
  const LoggerScope scope(label_);
}

Logger::~Logger() { const LoggerScope scope(label_); }

bool Logger::Initialize() {
  if (initialized_) return true;
  if (initializing) return false;
  struct Scope {
    Scope() { initializing = true; }
    ~Scope() { initializing = false; }
  } const initialization;
  const LoggerScope scope(label_);
  const uint16_t level = logPlatform.traceLevel();
  uint32_t code = 0;
  {
    const std::scoped_lock lock(initializeMutex_);
    if (initialized_) return true;
    filter_.SetGlobal(level);
    code = StartThread();
    initialized_ = code == 0;
    if (initialized_) filter_.MarkInUse();
  }
  std::this_thread::yield();
  return Started(code);
}

// Reports a thread that could not be started.
bool Logger::Started(uint32_t code) const {
  if (code == 0) return true;
  ReportError(Format(L"Unable to create Logger thread - '{}'", logPlatform.errorText(code)),
              static_cast<int32_t>(code));
  return false;
}

void Logger::Stop() {
  if (!initialized_) return;
  const LoggerScope scope(label_);
  QueueThread::Stop();
}

bool Logger::EnqueueIfRunning(LogQueue& queue, LogSource source, LogLevel level, std::wstring_view message) {
  const std::wstring_view prefix = CurrentPrefix();
  return queue.AddIfRunning([&](LogRecords& records) { records.Add(source, level, prefix, message); });
}

void Logger::Enqueue(LogSource source, LogLevel level, std::wstring_view message) {
  if (message.empty()) return;
  if (!initialized_) Initialize();
  // The level is not known yet to what reading it has to log.
  if (filter_.IsSet() ? !filter_.Passes(source, level) : level > LogLevel::Error) return;
  const std::wstring_view prefix = CurrentPrefix();
  // A thread that Initialize could not start is tried again with the next message, not with this one.
  Started(Push([&](LogRecords& records) { records.Add(source, level, prefix, message); }, initialized_));
}

void Logger::LoggerThread() {
  const LoggerScope scope(label_);
  QueueThread::ThreadBody();
}

bool Logger::BeginThread() {
  const int32_t result = logPlatform.enterServiceThread();
  if (Failed(result)) {
    ReportError(L"Unable to initialize COM for the TraceLogManager!", result);
    return false;
  }
  InitializeLogManager();
  RefreshLevels();
  return true;
}

void Logger::InitializeLogManager() {
  const LoggerScope scope(label_);
  int32_t result = 0;
  service_ = logPlatform.connect(result);
  if (!service_) {
    logPlatform.reportToDebugger(L"Unable to Create Instance of TraceLogManager!" + logPlatform.errorSuffix(result));
  }
}

void Logger::Deliver(LogRecords& records) {
  records.ForEach([this](const LogRecord& record) { Deliver(record); });
  RefreshLevels();
}

void Logger::EndThread() {
  service_.reset();
  logPlatform.leaveServiceThread();
}

void Logger::RefreshLevels() {
  constexpr auto kPeriod = std::chrono::seconds(60);
  if (IsStopping()) return;
  const std::chrono::nanoseconds now = logPlatform.steadyTime();
  // Whole seconds count.
  if (refreshedAt_ && std::chrono::floor<std::chrono::seconds>(now - *refreshedAt_) <= kPeriod) return;
  refreshedAt_ = now;
  if (!service_) return;

  ReportDebug(L"Updating Global log levels from service.");
  uint16_t level = 0;
  if (const int32_t result = service_->GetGlobalLevel(level); Failed(result)) {
    ReportError(L"Unable to get current log level from TraceLogManager!", result);
    level = logPlatform.traceLevel();
  }
  ReportDebug(L"Updating Source log levels from service.");
  for (uint16_t source = 1; source < kLogSourceCount; ++source) {
    uint16_t own = 0;
    if (!Failed(service_->GetSourceLevel(source, own))) filter_.SetSource(source, own);
  }
  ReportDebug(L"Done updating from service.");
  filter_.SetGlobal(level);
}

void Logger::Deliver(const LogRecord& record) {
  const auto source = static_cast<uint16_t>(record.source);
  if (source >= kLogSourceCount) {
    ReportInformation(Format(L"********** Logging source {} out of range! **********", source));
    ReportInformation(record.text);
    return;
  }
  // A missing service is a fault of the installation that must not go unnoticed: nobody catches this, and the process
  // ends.
  if (!service_) throw NoLogService();
  const int32_t result = service_->LogMessage(source, static_cast<uint16_t>(record.level), record.text);
  if (Failed(result)) ReportError(L"Unable to send log message!", result);
}

namespace {

void HandToLogger(LogSource source, LogLevel level, std::wstring_view message) {
  if (message.empty()) return;
  if (processLogFilter.IsInUse()) {
    // Most messages end here, and nearly all others with the next line.
    if (!processLogFilter.Passes(source, level)) return;
    // Nobody delivers it, and what it would be queued in may be gone.
    if (threadPlatform.processEnds()) return;
    if (Logger::EnqueueIfRunning(*ProcessLogQueue(), source, level, message)) return;
  }
  if (threadPlatform.processEnds()) return;
  if (const auto logger = Singleton<Logger>::Get()) logger->Enqueue(source, level, message);
}

}  // namespace

void UseLogger() { logHandler = HandToLogger; }

void StopLogger() {
  if (Singleton<Logger>::Exists()) {
    if (const auto logger = Singleton<Logger>::Get()) logger->Stop();
  }
  // What destructors log from now on must not start a thread.
  ProcessLogQueue()->Close();
}

LogSession::LogSession(std::chrono::milliseconds headStart) : logger_(Singleton<Logger>::Get()) {
  if (logger_) logger_->Hold(headStart);
}

LogSession::~LogSession() {
  // Not for ever, should the service be stuck: the user waits.
  constexpr auto kDeliveryLimit = std::chrono::milliseconds(500);
  if (!logger_) return;
  logger_->Release();
  logger_->Flush(kDeliveryLimit);
}
