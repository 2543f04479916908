#include "TraceLogManager/LevelReport.h"

#include "NetUtilities/Text/Format.h"
#include "NetUtilities/Text/Utf8.h"
#include "TraceLogManager/LogSources.h"

namespace {

std::wstring LevelText(uint16_t level) { return Format(L"{} {}", level, LevelName(level)); }

}  // namespace

std::string LevelReport(uint16_t globalLevel, const SourceLevels& sourceLevels, const std::wstring& logFile) {
  std::wstring text = Format(L"Global level: {}\n", LevelText(globalLevel));
  text += Format(L"Log file:     {}\n\n", logFile);
  text += L"Source  Name           Level\n";
  for (uint32_t source = 0; source < sourceLevels.size(); ++source) {
    const uint16_t level = sourceLevels[source];
    text += Format(L"{:6}  {:13}  {}\n", source, SourceName(source), level == 0 ? L"global" : LevelText(level));
  }
  return ToUtf8(text);
}
