#include "TraceLogManager/LogSources.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <utility>

#include "NetUtilities/Log.h"
#include "NetUtilities/Text/Format.h"
#include "NetUtilities/Text/IgnoringCase.h"
#include "NetUtilities/Text/Utf8.h"

namespace {

constexpr std::pair<LogSource, const wchar_t*> kSourceNames[] = {
    {LogSource::General, L"General"},
    {LogSource::Impersonation, L"Impersonation"},
    {LogSource::Database, L"Database"},
};

constexpr std::pair<LogLevel, const wchar_t*> kLevelNames[] = {
    {LogLevel::Fatal, L"Fatal"},   {LogLevel::Error, L"Error"}, {LogLevel::Info, L"Info"},
    {LogLevel::Detail, L"Detail"}, {LogLevel::Trace, L"Trace"},
};

// The name that a table has for a number; otherwise the number behind a word for its kind.
template <typename Names>
std::wstring NameIn(const Names& names, uint32_t number, const wchar_t* kind) {
  const auto* const found =
      std::ranges::find_if(names, [number](const auto& entry) { return static_cast<uint32_t>(entry.first) == number; });
  return found != std::end(names) ? found->second : Format(L"{} {}", kind, number);
}

}  // namespace

std::wstring SourceName(uint32_t source) { return NameIn(kSourceNames, source, L"Source"); }

std::optional<uint32_t> FindSource(std::wstring_view text) {
  const std::string digits = ToUtf8(text);
  const char* const end = digits.data() + digits.size();
  uint32_t number = kLogSourceCount;
  const auto [rest, error] = std::from_chars(digits.data(), end, number);
  const bool isNumber = error == std::errc() && rest == end;
  for (uint32_t source = 0; source < kLogSourceCount; ++source) {
    if ((isNumber && number == source) || EqualsNoCaseAscii(SourceName(source), text)) return source;
  }
  return std::nullopt;
}

std::wstring LevelName(uint32_t level) { return NameIn(kLevelNames, level, L"Level"); }
