#include "TraceLogManager/LogFileFormat.h"

#include <charconv>
#include <optional>

#include "NetUtilities/Text/Format.h"
#include "NetUtilities/Text/Utf8.h"

namespace {

constexpr std::string_view kLineEnd = "\r\n";
// As wide as what stands before the text of a record.
constexpr std::string_view kIndent = "     ";
constexpr size_t kSourceWidth = 2;

bool IsLineBreak(wchar_t character) {
  constexpr std::wstring_view kBreaks = L"\r\n\v\f\x85\x2028\x2029";
  return kBreaks.find(character) != std::wstring_view::npos;
}

bool IsControl(wchar_t character) { return (character < L' ' && character != L'\t') || character == L'\x7F'; }

std::wstring WithoutControls(std::wstring_view text) {
  constexpr wchar_t kReplacementCharacter = L'\xFFFD';
  std::wstring clean(text);
  for (wchar_t& character : clean) {
    if (IsControl(character)) character = kReplacementCharacter;
  }
  return clean;
}

// Takes the first line off `text`.
std::wstring_view TakeLine(std::wstring_view& text) {
  size_t end = 0;
  while (end < text.size() && !IsLineBreak(text[end])) ++end;
  const std::wstring_view line = text.substr(0, end);
  const bool isPair = text.substr(end).starts_with(L"\r\n");
  text.remove_prefix(end + (isPair ? 2 : end < text.size() ? 1 : 0));
  return line;
}

// Takes a number and the blank behind it off `line`.
std::optional<uint32_t> TakeNumber(std::string_view& line) {
  uint32_t number = 0;
  const char* const end = line.data() + line.size();
  const auto [rest, error] = std::from_chars(line.data(), end, number);
  if (error != std::errc() || rest == end || *rest != ' ') return std::nullopt;
  line.remove_prefix(static_cast<size_t>(rest - line.data()) + 1);
  return number;
}

}  // namespace

std::wstring LogFileName(const LogDate& date) {
  return Format(L"TraceLog_{:04}-{:02}-{:02}.log", date.year, date.month, date.day);
}

std::string LogFileRecord(uint32_t source, uint32_t level, std::wstring_view text) {
  while (!text.empty() && IsLineBreak(text.back())) text.remove_suffix(1);
  std::string record = ToUtf8(Format(L"{:2} {} ", source, level) + WithoutControls(TakeLine(text)));
  record += kLineEnd;
  while (!text.empty()) {
    record += kIndent;
    record += ToUtf8(WithoutControls(TakeLine(text)));
    record += kLineEnd;
  }
  return record;
}

LogFileLine ParseLogFileLine(std::string_view line) {
  std::string_view rest = line;
  if (rest.starts_with(' ')) rest.remove_prefix(1);
  const std::optional<uint32_t> source = TakeNumber(rest);
  if (source && line.size() - rest.size() == kSourceWidth + 1) {
    if (const std::optional<uint32_t> level = TakeNumber(rest)) return {true, *source, *level, rest};
  }
  if (line.starts_with(kIndent)) line.remove_prefix(kIndent.size());
  return {false, 0, 0, line};
}
