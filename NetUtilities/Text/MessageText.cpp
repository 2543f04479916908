#include "NetUtilities/Text/MessageText.h"

std::wstring CleanMessageText(std::wstring message) {
  std::erase(message, L'\r');
  while (message.size() > 1 && message.back() == L'\n') message.pop_back();
  return message;
}
