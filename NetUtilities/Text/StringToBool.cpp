#include "NetUtilities/Text/StringToBool.h"

#include <algorithm>
#include <array>

#include "NetUtilities/Text/IgnoringCase.h"

bool StringToBool(std::wstring_view text) {
  constexpr std::array<std::wstring_view, 4> kTrueWords = {L"true", L"yes", L"y", L"t"};
  return std::any_of(kTrueWords.begin(), kTrueWords.end(),
                     [text](std::wstring_view word) { return EqualsNoCaseAscii(text, word); });
}
