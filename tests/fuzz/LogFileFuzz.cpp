// Log files: a record is read as it was written, a view shows its lines whatever the pieces are in which they come, and
// a source is found by number and name.

#include <algorithm>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "NetUtilities/Log.h"
#include "NetUtilities/Text/Utf8.h"
#include "tests/fuzz/DecimalReference.h"
#include "tests/fuzz/FuzzInput.h"
#include "tests/fuzz/LowerAscii.h"
#include "tests/fuzz/Require.h"
#include "TraceLogManager/LevelReport.h"
#include "TraceLogManager/LogFileFormat.h"
#include "TraceLogManager/LogSources.h"
#include "TraceLogManager/LogView.h"

namespace {

// The lines of a text as the log file should have them.
std::vector<std::wstring> LogLines(const std::wstring& text) {
  constexpr std::wstring_view kBreaks = L"\r\n\v\f\x85\x2028\x2029";
  std::vector<std::wstring> lines(1);
  for (size_t at = 0; at < text.size(); ++at) {
    const wchar_t character = text[at];
    if (kBreaks.find(character) != std::wstring_view::npos) {
      if (character == L'\r' && at + 1 < text.size() && text[at + 1] == L'\n') ++at;
      lines.emplace_back();
    } else {
      const bool control = (character < L' ' && character != L'\t') || character == L'\x7F';
      lines.back() += control ? L'\xFFFD' : character;
    }
  }
  while (lines.size() > 1 && lines.back().empty()) lines.pop_back();
  return lines;
}

void CheckRecord(uint32_t source, uint32_t level, const std::wstring& text) {
  const std::vector<std::wstring> expected = LogLines(text);
  const std::string record = LogFileRecord(source, level, text);
  std::string_view rest = record;
  for (size_t index = 0; index < expected.size(); ++index) {
    const size_t end = rest.find("\r\n");
    Require(end != std::string_view::npos);
    const LogFileLine line = ParseLogFileLine(rest.substr(0, end));
    Require(line.beginsRecord == (index == 0));
    Require(line.source == (index == 0 ? source : 0) && line.level == (index == 0 ? level : 0));
    Require(line.text == ToUtf8(expected[index]));
    rest.remove_prefix(end + 2);
  }
  Require(rest.empty());
}

// Line by line, whatever the pieces are in which it comes.
void CheckView(const LogViewFilter& filter, const std::string& file, size_t step) {
  std::vector<std::string> expected;
  bool passes = true;
  std::string_view rest = file;
  for (size_t end = 0; (end = rest.find('\n')) != std::string_view::npos; rest.remove_prefix(end + 1)) {
    std::string_view text = rest.substr(0, end);
    if (text.ends_with('\r')) text.remove_suffix(1);
    const LogFileLine line = ParseLogFileLine(text);
    Require(text.ends_with(line.text));
    if (line.beginsRecord) passes = filter.Passes(line.source, line.level);
    if (passes) expected.emplace_back(line.text);
  }
  LogView whole(filter);
  const std::vector<std::string> shown = whole.Add(file);
  Require(std::ranges::equal(shown, expected,
                             [](const std::string& line, const std::string& text) { return line.ends_with(text); }));
  LogView pieces(filter);
  std::vector<std::string> joined;
  for (size_t at = 0; at < file.size(); at += step) {
    std::ranges::move(pieces.Add(std::string_view(file).substr(at, step)), std::back_inserter(joined));
  }
  Require(joined == shown);
}

void CheckSource(const std::wstring& text) {
  const std::optional<uint32_t> found = FindSource(text);
  if (found) {
    Require(*found < kLogSourceCount);
    const bool named = LowerAscii(SourceName(*found)) == LowerAscii(text);
    Require(named || (text.find_first_not_of(L"0123456789") == std::wstring::npos &&
                      DecimalReference{std::wstring_view(text)}.value == *found));
  } else {
    for (uint32_t source = 0; source < kLogSourceCount; ++source) {
      Require(text != SourceName(source) && text != std::to_wstring(source));
    }
  }
}

void CheckLevelReport(const std::wstring& logFile) {
  const std::string report = LevelReport(3, {}, logFile);
  Require(report.starts_with("Global level: 3 Info\nLog file:     " + ToUtf8(logFile) + "\n\n"));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  FuzzInput input(data, size);
  const uint32_t source = input.Byte() % 100u;
  const uint32_t level = input.Number<uint16_t>();
  LogViewFilter filter;
  for (unsigned count = input.Byte() % 4; count > 0; --count) filter.sources.push_back(input.Byte());
  filter.maximumLevel = input.Byte();
  const size_t step = 1u + input.Byte();
  const std::string bytes = input.Rest();
  const std::wstring text = FuzzInput::Wide(bytes);
  CheckRecord(source, level, text);
  CheckView(filter, bytes, step);
  CheckSource(text);
  CheckLevelReport(text);
  return 0;
}
