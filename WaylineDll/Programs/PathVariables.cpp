#include "WaylineDll/Programs/PathVariables.h"

#include "NetUtilities/Text/IgnoringCase.h"

std::wstring ReplaceVariable(std::wstring_view text, std::wstring_view variable, std::wstring_view value) {
  if (variable.empty()) return std::wstring(text);
  std::wstring result;
  while (!text.empty()) {
    if (EqualsNoCaseAscii(text.substr(0, variable.size()), variable)) {
      result += value;
      text.remove_prefix(variable.size());
    } else {
      result += text.front();
      text.remove_prefix(1);
    }
  }
  return result;
}
