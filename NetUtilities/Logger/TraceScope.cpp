#include "NetUtilities/Logger/TraceScope.h"

#include <utility>

#include "NetUtilities/Log.h"
#include "NetUtilities/Logger/LogPlatform.h"
#include "NetUtilities/Text/ElapsedText.h"
#include "NetUtilities/Text/Format.h"
#include "NetUtilities/Text/FunctionName.h"

TraceScope::TraceScope(unsigned bit, std::wstring_view extraText, Output output, TraceTiming timing,
                       const char* functionName)
    : active_(logPlatform.isTraceFlagSet(bit)), timing_(timing), output_(std::move(output)) {
  if (!active_) return;
  text_ = Format(L"{}{}{} pid {:05x} tid {:05x}", CleanFunctionName(functionName), extraText.empty() ? L"" : L" -- ",
                 extraText, logPlatform.processId(), logPlatform.threadId());
  output_(L"Enter ==> " + text_);
  if (timing_ == TraceTiming::Timed) start_ = logPlatform.steadyTime();
}

TraceScope::~TraceScope() {
  if (!active_) return;
  const std::wstring elapsed =
      timing_ == TraceTiming::Timed ? L" - Elapsed " + ElapsedText(logPlatform.steadyTime() - start_) : std::wstring();
  output_(L"Exit  <== " + text_ + elapsed);
}

void TraceScope::WriteToLog(std::wstring_view line) { Log(LogSource::General, LogLevel::Trace, line); }
