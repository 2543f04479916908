#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "NetUtilities/Log.h"

/// One message on its way to the logging service.
struct LogRecord {
  LogSource source;
  LogLevel level;
  std::wstring_view text;  // the complete line: prefix and message, without a line end
};

/// Records in the order in which they came. They lie side by side in memory that is used again and again, so that
/// adding one takes none from the heap as a rule.
class LogRecords {
 public:
  /// Adds a record whose text is `prefix` and `message`.
  void Add(LogSource source, LogLevel level, std::wstring_view prefix, std::wstring_view message) {
    // What may fail for want of memory comes first: a head without its text would spoil all that follow.
    const size_t length = prefix.size() + message.size();
    texts_.reserve(texts_.size() + length);
    heads_.push_back({source, level, length});
    texts_.append(prefix).append(message);
  }

  /// Hands each record to `receive`, oldest first. Its text is valid for the length of that call.
  template <typename Receive>
  void ForEach(Receive receive) const {
    const wchar_t* text = texts_.data();
    for (const Head& head : heads_) {
      receive(LogRecord{head.source, head.level, {text, head.length}});
      text += head.length;
    }
  }

  // As the standard containers name them.
  bool empty() const { return heads_.empty(); }  // NOLINT(readability-identifier-naming)
  void swap(LogRecords& other) noexcept {        // NOLINT(readability-identifier-naming)
    heads_.swap(other.heads_);
    texts_.swap(other.texts_);
  }

  /// Forgets the records. Memory is kept for the next ones, except what an unusual number of them has needed.
  void clear() {  // NOLINT(readability-identifier-naming)
    constexpr size_t kKeptCharacters = size_t{256} * 1024;
    if (texts_.capacity() > kKeptCharacters) {
      *this = {};
    } else {
      heads_.clear();
      texts_.clear();
    }
  }

 private:
  struct Head {
    LogSource source;
    LogLevel level;
    size_t length;
  };

  std::vector<Head> heads_;
  std::wstring texts_;
};
