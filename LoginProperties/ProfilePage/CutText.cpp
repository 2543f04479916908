#include "LoginProperties/ProfilePage/CutText.h"

#include "NetUtilities/Text/Surrogates.h"

std::wstring CutText(std::wstring text, size_t longest) {
  if (text.size() <= longest) return text;
  const bool cutsCharacter = longest > 0 && IsHighSurrogate(static_cast<uint32_t>(text[longest - 1])) &&
                             IsLowSurrogate(static_cast<uint32_t>(text[longest]));
  text.resize(cutsCharacter ? longest - 1 : longest);
  return text;
}
