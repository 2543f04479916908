#include "TraceLogManager/LogView.h"

#include <algorithm>

#include "NetUtilities/Text/Format.h"
#include "NetUtilities/Text/Utf8.h"
#include "TraceLogManager/LogSources.h"

namespace {

// The longest names that there are; others move what is behind them.
constexpr size_t kSourceWidth = std::wstring_view(L"Impersonation").size();
constexpr size_t kLevelWidth = std::wstring_view(L"Detail").size();

std::string Shown(const LogFileLine& line) {
  const std::wstring source = line.beginsRecord ? SourceName(line.source) : L"";
  const std::wstring level = line.beginsRecord ? LevelName(line.level) : L"";
  std::string text = ToUtf8(Format(L"{:{}} {:{}} ", source, kSourceWidth, level, kLevelWidth));
  text += line.text;
  return text;
}

}  // namespace

bool LogViewFilter::Passes(uint32_t source, uint32_t level) const {
  return level <= maximumLevel && (sources.empty() || std::ranges::find(sources, source) != sources.end());
}

std::vector<std::string> LogView::Add(std::string_view bytes) {
  std::vector<std::string> shown;
  unfinishedLine_ += bytes;
  std::string_view rest = unfinishedLine_;
  for (size_t end = 0; (end = rest.find('\n')) != std::string_view::npos; rest.remove_prefix(end + 1)) {
    std::string_view text = rest.substr(0, end);
    if (text.ends_with('\r')) text.remove_suffix(1);
    const LogFileLine line = ParseLogFileLine(text);
    if (line.beginsRecord) recordPasses_ = filter_.Passes(line.source, line.level);
    if (recordPasses_) shown.push_back(Shown(line));
  }
  unfinishedLine_.erase(0, unfinishedLine_.size() - rest.size());
  return shown;
}

void LogView::BeginFile() {
  unfinishedLine_.clear();
  recordPasses_ = true;
}
