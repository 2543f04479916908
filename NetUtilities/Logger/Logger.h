#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "NetUtilities/Logger/LogFilter.h"
#include "NetUtilities/Logger/LogRecords.h"
#include "NetUtilities/Logger/LogService.h"
#include "NetUtilities/Module/Mutex.h"
#include "NetUtilities/Module/QueueThread.h"

/// The filter of the process's one Logger: known without it, so that a message that is filtered out costs next to
/// nothing.
extern LogFilter processLogFilter;

/// The queue of the process's one Logger, for the same reason.
using LogQueue = QueueThread<LogRecords>::Queue;
const std::shared_ptr<LogQueue>& ProcessLogQueue();

/// Thrown on the logger thread, where nobody catches it, when there is a message for a service that is not there.
struct NoLogService {};

/// The process-wide logging facility: filters messages by level, stamps them, queues them, and hands them to the
/// client's logging service on a thread of its own, which also asks the service for the levels. Reached through
/// Singleton<Logger>, as Log() does after UseLogger; always owned by a shared pointer.
class Logger : public QueueThread<LogRecords> {
 public:
  /// The process's one.
  Logger() : Logger(processLogFilter, ProcessLogQueue()) {}

  /// One of its own. Filters by `filter`, which must outlive the object.
  explicit Logger(LogFilter& filter, std::shared_ptr<LogQueue> queue = std::make_shared<LogQueue>());
  ~Logger() override;

  /// Starts the logger thread if that has not been done. False when it could not be started: the next message tries
  /// again.
  bool Initialize();

  /// Ends the logger thread after it has delivered what is queued. Later messages are queued and stay so.
  void Stop();

  /// Stamps and queues one message, which must have passed the filter, if the logger thread runs; returns false if not.
  /// The way of nearly all messages: it needs no Logger.
  static bool EnqueueIfRunning(LogQueue& queue, LogSource source, LogLevel level, std::wstring_view message);

  /// Filters, stamps and queues one message; an empty one is dropped before anything else happens.
  void Enqueue(LogSource source, LogLevel level, std::wstring_view message);

 private:
  void ThreadBody() override { LoggerThread(); }
  bool BeginThread() override;
  void Deliver(LogRecords& records) override;
  void EndThread() override;

  bool Started(uint32_t code) const;
  void LoggerThread();
  void InitializeLogManager();
  void RefreshLevels();
  void Deliver(const LogRecord& record);

  LogFilter& filter_;
  const std::wstring label_;  // tells the Logger's own trace lines from those of other modules
  Mutex initializeMutex_;
  std::atomic<bool> initialized_{false};

  // These belong to the logger thread.
  std::unique_ptr<LogService> service_;
  std::optional<std::chrono::nanoseconds> refreshedAt_;
};

/// From now on what this module logs goes to its Logger. Messages that the current level filters out, empty ones, and
/// those that come while the process ends are dropped. For the beginning of a module or program.
void UseLogger();

/// Stops the process's Logger if there is one; none is started later.
void StopLogger();

/// While it lives, the process's Logger keeps its thread and its connection to the service, once it has them. For the
/// time in which messages are to be expected. In the end waits for their delivery, half a second at most: the process
/// may end after it.
///
/// Reaching the service keeps the machine busy for some 20 ms, and slows down whoever opens a window in them. Such a
/// one takes a head start: a thread that is not there yet begins to deliver only after that.
class LogSession {
 public:
  explicit LogSession(std::chrono::milliseconds headStart = {});
  ~LogSession();
  LogSession(const LogSession&) = delete;
  LogSession& operator=(const LogSession&) = delete;

 private:
  std::shared_ptr<Logger> logger_;
};
