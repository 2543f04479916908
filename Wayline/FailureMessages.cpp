#include "Wayline/FailureMessages.h"

#include <windows.h>

#include "NetUtilities/Log.h"
#include "WaylineDll/StringDb.h"

namespace {

int ShowBox(const std::wstring& text, UINT style) {
  return MessageBoxW(nullptr, text.c_str(), GetProductDisplayName(false).c_str(), style | MB_SETFOREGROUND);
}

int LogAndShowBox(const std::wstring& text, UINT style) {
  Log(LogLevel::Info, L"Message: " + text);
  return ShowBox(text, style);
}

}  // namespace

Failure AttemptUntilCancelled(const std::function<Failure()>& attempt, const std::wstring& whenCancelled) {
  const std::wstring secondParagraph = whenCancelled.empty() ? L"" : L"\n\n" + whenCancelled;
  Failure failure = attempt();
  while (failure && LogAndShowBox(*failure + secondParagraph, MB_RETRYCANCEL | MB_ICONERROR) == IDRETRY) {
    failure = attempt();
  }
  return failure;
}

void TellFailure(const std::wstring& sentence) { ShowBox(sentence, MB_OK | MB_ICONERROR); }

void TellLost(const std::vector<std::wstring>& sentences) {
  if (sentences.empty()) return;
  std::wstring text;
  for (const std::wstring& sentence : sentences) {
    if (!text.empty()) text += L"\n";
    text += sentence;
  }
  LogAndShowBox(text, MB_OK | MB_ICONWARNING);
}
