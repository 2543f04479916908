#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "NetUtilities/Logger/LogPlatform.h"
#include "NetUtilities/Text.h"

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
    friend void PrintTo(const Message& message, std::ostream* out) {
      *out << "source " << static_cast<unsigned>(message.source) << ", level " << static_cast<unsigned>(message.level)
           << ": " << ToUtf8(message.text);
    }
  };

  /// The messages so far, in order.
  const std::vector<Message>& Messages() const;

 private:
  LogPlatform previous_;
};
