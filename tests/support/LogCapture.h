#pragma once

#include <string>
#include <vector>

#include "NetUtilities/Logger/LogPlatform.h"

/// While it lives, lines that pass the log filter are collected here instead of being sent to the logging service.
/// One at a time.
class LogCapture {
 public:
  LogCapture();
  ~LogCapture();
  LogCapture(const LogCapture&) = delete;
  LogCapture& operator=(const LogCapture&) = delete;

  struct Message {
    LogSource source;
    LogLevel level;
    std::wstring text;  // without the line's prefix
    bool operator==(const Message&) const = default;
  };

  /// The messages so far, in order.
  const std::vector<Message>& Messages() const;

 private:
  LogPlatform previous_;
};
