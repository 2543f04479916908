#include "Wayline/FailureMessages.h"

#include <windows.h>

#include "NetUtilities/Log.h"
#include "WaylineDll/StringDb.h"

namespace {

int ShowBox(const std::wstring& text, UINT style) {
  Log(LogLevel::Info, L"Message: " + text);
  return MessageBoxW(nullptr, text.c_str(), GetProductDisplayName(false).c_str(), style | MB_SETFOREGROUND);
}

}  // namespace

Failure AttemptUntilCancelled(const std::function<Failure()>& attempt) {
  Failure failure = attempt();
  while (failure && ShowBox(*failure, MB_RETRYCANCEL | MB_ICONERROR) == IDRETRY) failure = attempt();
  return failure;
}

void TellLost(const std::vector<std::wstring>& sentences) {
  if (sentences.empty()) return;
  std::wstring text;
  for (const std::wstring& sentence : sentences) {
    if (!text.empty()) text += L"\n";
    text += sentence;
  }
  ShowBox(text, MB_OK | MB_ICONWARNING);
}
