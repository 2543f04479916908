#include "tests/support/NumberedMessages.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <optional>

#include "TraceLogManager/LogFileFormat.h"

namespace {

struct NumberedMessage {
  std::string name;
  int number;
};

// Time, process and thread: what stands before every message, up to the last colon of it.
bool IsPrefix(std::string_view text) {
  constexpr std::string_view kTime = "00/00 00:00:00.000 ";
  constexpr size_t kFewestDigits = 5;
  if (text.size() < kTime.size()) return false;
  for (size_t index = 0; index < kTime.size(); ++index) {
    const bool isDigit = text[index] >= '0' && text[index] <= '9';
    if (kTime[index] == '0' ? !isDigit : text[index] != kTime[index]) return false;
  }
  const std::string_view ids = text.substr(kTime.size());
  const size_t dash = ids.find('-');
  return dash != std::string_view::npos && dash >= kFewestDigits && ids.size() - dash - 1 >= kFewestDigits &&
         ids.find_first_not_of("0123456789abcdef-") == std::string_view::npos;
}

// Reads a line, given with its line end; nothing when it is not whole.
std::optional<NumberedMessage> Parse(std::string_view line, std::string_view start) {
  constexpr std::string_view kLineEnd = "\r\n";
  constexpr std::string_view kPrefixEnd = ": ";
  if (!line.ends_with(kLineEnd)) return std::nullopt;
  line.remove_suffix(kLineEnd.size());
  const LogFileLine record = ParseLogFileLine(line);
  const size_t prefix = record.text.find(kPrefixEnd);
  if (!record.beginsRecord || prefix == std::string_view::npos || !IsPrefix(record.text.substr(0, prefix))) {
    return std::nullopt;
  }
  const std::string_view message = record.text.substr(prefix + kPrefixEnd.size());
  const size_t blank = message.rfind(' ');
  if (!message.starts_with(start) || blank == std::string_view::npos) return std::nullopt;
  NumberedMessage numbered{std::string(message.substr(0, blank)), 0};
  const char* const end = message.data() + message.size();
  const auto [rest, error] = std::from_chars(message.data() + blank + 1, end, numbered.number);
  if (error != std::errc() || rest != end) return std::nullopt;
  return numbered;
}

}  // namespace

std::map<std::string, int> CountNumberedMessages(const std::string& log, std::string_view start) {
  std::map<std::string, int> counts;
  for (std::string_view rest = log; !rest.empty();) {
    const std::string_view line = rest.substr(0, std::min(rest.find('\n'), rest.size() - 1) + 1);
    rest.remove_prefix(line.size());
    if (line.find(start) == std::string_view::npos) continue;
    if (const auto message = Parse(line, start)) {
      EXPECT_EQ(message->number, counts[message->name]++) << line;
    } else {
      ADD_FAILURE() << "A line is not whole: " << line;
    }
  }
  return counts;
}
