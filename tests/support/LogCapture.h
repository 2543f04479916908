#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "NetUtilities/Log.h"
#include "NetUtilities/Text/Utf8.h"

/// While it lives, all messages are collected here, of whatever level, instead of being handed to the Logger. One at a
/// time; any thread may log.
class LogCapture {
 public:
  LogCapture();
  ~LogCapture();
  LogCapture(const LogCapture&) = delete;
  LogCapture& operator=(const LogCapture&) = delete;

  struct Message {
    LogSource source;
    LogLevel level;
    std::wstring text;
    bool operator==(const Message&) const = default;
    friend void PrintTo(const Message& message, std::ostream* out) {
      *out << "source " << static_cast<unsigned>(message.source) << ", level " << static_cast<unsigned>(message.level)
           << ": " << ToUtf8(message.text);
    }
  };

  /// The messages so far, in order. To be looked at while nobody logs.
  const std::vector<Message>& Messages() const;

 private:
  LogHandler previous_;
};
