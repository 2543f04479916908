// The small parsers; the first byte of an input says which. Each is compared with a plain way to do the same, or must
// keep what its counterpart has written.

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <vector>

#include "Database/SQLite/DecimalText.h"
#include "NetUtilities/Crash/CrashDumpName.h"
#include "NetUtilities/Text/DecodeText.h"
#include "NetUtilities/Text/Format.h"
#include "NetUtilities/Text/FunctionName.h"
#include "NetUtilities/Text/IgnoringCase.h"
#include "NetUtilities/Text/SplitNonEmpty.h"
#include "NetUtilities/Text/StringToBool.h"
#include "NetUtilities/Text/Utf16.h"
#include "NetUtilities/Text/Utf8.h"
#include "tests/fuzz/DecimalReference.h"
#include "tests/fuzz/FuzzInput.h"
#include "tests/fuzz/Require.h"
#include "TraceLogManager/LevelReport.h"
#include "TraceLogManager/LogFileFormat.h"
#include "TraceLogManager/LogSources.h"
#include "TraceLogManager/LogView.h"
#include "Wayline/ProfileChoice.h"
#include "Wayline/Report.h"

namespace {

void CheckDecimal(FuzzInput& input) {
  const std::u16string text = FuzzInput::Units(input.Rest());
  const DecimalReference number{std::u16string_view(text)};
  Require(ParseInteger64(text) == number.Clamped<int64_t>());
  Require(ParseInteger32(text) == number.Clamped<int32_t>());
}

bool IsSurrogate(uint32_t unit) { return unit >= 0xD800 && unit <= 0xDFFF; }

void CheckUtf16(FuzzInput& input) {
  const std::u16string units = FuzzInput::Units(input.Rest());
  const std::wstring text = FromUtf16(std::u16string_view(units));
  Require(ToUtf16(text) == units);
  const std::u16string beforeZero = units.substr(0, units.find(u'\0'));
  Require(ToUtf16(FromUtf16(static_cast<const void*>(units.c_str()))) == beforeZero);
  std::wstring replaced = text;
  for (wchar_t& character : replaced) {
    if (IsSurrogate(static_cast<uint32_t>(character))) character = L'_';
  }
  Require(FromUtf8(ToUtf8(text)) == replaced);
}

void CheckUtf8(FuzzInput& input) {
  const std::string bytes = input.Rest();
  const std::wstring text = FromUtf8(bytes);
  Require(text.size() <= bytes.size());
  const std::string again = ToUtf8(text);
  Require(FromUtf8(again) == text);
  // Bytes come back unless they were replaced, and each replaced byte becomes three.
  if (text.find(L'\xFFFD') == std::wstring::npos) Require(again == bytes);
  size_t place = 0;
  for (const wchar_t character : text) {
    const std::string encoded = ToUtf8({&character, 1});
    const bool same = bytes.compare(place, encoded.size(), encoded) == 0;
    Require(same || character == L'\xFFFD');
    place += same ? encoded.size() : 1;
  }
  Require(place == bytes.size());
  Require(DecodeText("\xEF\xBB\xBF" + bytes) == text);

  std::string swapped = bytes;
  for (size_t at = 0; at + 1 < swapped.size(); at += 2) std::swap(swapped[at], swapped[at + 1]);
  std::wstring wide = FromUtf16(std::u16string_view(FuzzInput::Units(bytes)));
  for (wchar_t& character : wide) {
    if (IsSurrogate(static_cast<uint32_t>(character))) character = L'\xFFFD';
  }
  if (bytes.size() % 2 != 0) wide += L'\xFFFD';
  Require(DecodeText("\xFF\xFE" + bytes) == wide);
  Require(DecodeText("\xFE\xFF" + swapped) == wide);
}

std::wstring LowerAscii(std::wstring text) {
  for (wchar_t& character : text) {
    if (character >= L'A' && character <= L'Z') character = static_cast<wchar_t>(character - L'A' + L'a');
  }
  return text;
}

void CheckWords(FuzzInput& input) {
  const std::wstring needle = input.WideLine();
  const std::wstring text = input.WideRest();
  const std::wstring lower = LowerAscii(text);
  const std::wstring lowerNeedle = LowerAscii(needle);
  Require(StringToBool(text) == (lower == L"true" || lower == L"yes" || lower == L"y" || lower == L"t"));
  Require(EqualsNoCaseAscii(text, needle) == (lower == lowerNeedle));
  const bool contained = lower.find(lowerNeedle) != std::wstring::npos;
  Require(ContainsNoCaseAscii(text, needle) == (contained && !text.empty()));
  if (contained && !needle.empty()) Require(ContainsNoCase(text, needle));
  if (needle.empty() || text.empty()) Require(!ContainsNoCase(text, needle));

  std::vector<std::wstring> pieces(1);
  for (const wchar_t character : text) {
    if (needle.find(character) == std::wstring::npos) {
      pieces.back() += character;
    } else {
      pieces.emplace_back();
    }
  }
  std::erase(pieces, std::wstring());
  Require(SplitNonEmpty(text, needle) == pieces);
}

bool IsPartOfAWord(char character) {
  return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
         (character >= '0' && character <= '9') || character == '_';
}

void CheckFunctionName(FuzzInput& input) {
  constexpr std::string_view kWord = "__cdecl";
  const std::string name = input.Rest();
  std::string expected;
  for (size_t at = 0; at < name.size();) {
    size_t end = at;
    while (end < name.size() && IsPartOfAWord(name[end])) ++end;
    if (end == at) {
      expected += name[at++];
      continue;
    }
    const std::string word = name.substr(at, end - at);
    at = end;
    if (word != kWord) {
      expected += word;
    } else if (at < name.size() && name[at] == ' ') {
      ++at;
    }
  }
  Require(CleanFunctionName(name) == FromUtf8(expected));
}

void CheckDumpName(FuzzInput& input) {
  std::array<wchar_t, 64> buffer{};
  const std::span<wchar_t> part = std::span(buffer).first(input.Byte() % (buffer.size() + 1));
  const CrashTime time = {
      input.Number<uint16_t>(), input.Byte(), input.Byte(), input.Byte(), input.Byte(), input.Byte()};
  const std::wstring folder = input.WideLine();
  const std::wstring version = input.WideLine();
  const std::wstring path = input.WideRest();

  std::wstring program = path;
  program.erase(0, program.find_last_of(L"\\/") + 1);
  if (const size_t point = program.rfind(L'.'); point != std::wstring::npos) program.erase(point);
  Require(ProgramBaseName(path) == program);

  const auto twoDigits = [](unsigned number) {
    const std::wstring text = std::to_wstring(number);
    return L"_" + (text.size() < 2 ? L"0" + text : text);
  };
  const std::wstring year = std::to_wstring(time.year);
  std::wstring expected =
      folder + program + L"_" + version + L"_" + std::wstring(4 - std::min<size_t>(year.size(), 4), L'0') + year;
  for (const unsigned number : {time.month, time.day, time.hour, time.minute, time.second}) {
    expected += twoDigits(number);
  }
  expected += L".dmp";
  const bool written = WriteCrashDumpName(part, folder, program, version, time);
  Require(written == expected.size() < part.size());
  if (written)
    Require(std::wstring_view(part.data(), expected.size() + 1) ==
            std::wstring_view(expected.c_str(), expected.size() + 1));
}

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

void CheckLogRecord(FuzzInput& input) {
  const uint32_t source = input.Byte() % 100u;
  const uint32_t level = input.Number<uint16_t>();
  const std::wstring text = input.WideRest();
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

void CheckLogView(FuzzInput& input) {
  LogViewFilter filter;
  for (unsigned count = input.Byte() % 4; count > 0; --count) filter.sources.push_back(input.Byte());
  filter.maximumLevel = input.Byte();
  const size_t step = 1u + input.Byte();
  const std::string file = input.Rest();

  // Line by line, whatever the pieces are in which it comes.
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

void CheckSource(FuzzInput& input) {
  const std::wstring text = input.WideRest();
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
  const std::string report = LevelReport(3, {}, text);
  Require(report.starts_with("Global level: 3 Info\nLog file:     " + ToUtf8(text) + "\n\n"));
}

void CheckReport(FuzzInput& input) {
  const auto wanted = input.Byte() % 4 == 0 ? std::nullopt : std::optional<uint32_t>(2000u + input.Byte() % 8u);
  const uint32_t active = 2000u + input.Byte() % 8u;
  ProfileTable profiles;
  while (!input.IsAtEnd()) {
    const uint32_t id = 1996u + input.Byte() % 12u;
    const auto profile = std::make_shared<Profile>(id);
    profile->Columns().hidden = input.Byte() % 4 == 0;
    profile->Columns().linkProfile = input.Number<uint32_t>();
    profile->SetName(input.WideLine());
    profiles[id] = profile;
  }
  const nlohmann::json list = nlohmann::json::parse(ProfileListJson(profiles, active));
  Require(list.size() == profiles.size());
  size_t index = 0;
  for (const auto& [id, profile] : profiles) {
    const auto& shown = list[index++];
    const bool selectable = id > 2000 && !profile->GetHidden() && !profile->GetName().empty();
    Require(shown["id"] == id && shown["name"] == ToUtf8(profile->GetName()) &&
            shown["hidden"] == profile->GetHidden());
    Require(shown["parent"] == profile->GetLinkProfile() && shown["selectable"] == selectable);
    Require(shown["active"] == (id == active));
  }
  const std::string table = ProfileListText(profiles, active);
  Require(static_cast<size_t>(std::ranges::count(table, '\n')) >= profiles.size() + 1);

  std::shared_ptr<Profile> chosen;
  const Failure failure = ChooseProfile(profiles, wanted, active, chosen);
  Require(failure.has_value() == (chosen == nullptr));
  if (!chosen) return;
  Require(chosen->GetProfileId() > 2000 && !chosen->GetHidden() && !chosen->GetName().empty());
  Require(!wanted || chosen->GetProfileId() == *wanted);
}

constexpr std::array kChecks = {CheckDecimal,  CheckUtf16,     CheckUtf8,    CheckWords,  CheckFunctionName,
                                CheckDumpName, CheckLogRecord, CheckLogView, CheckSource, CheckReport};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  FuzzInput input(data, size);
  kChecks[input.Byte() % kChecks.size()](input);
  return 0;
}
