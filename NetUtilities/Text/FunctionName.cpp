#include "NetUtilities/Text/FunctionName.h"

#include <string>

#include "NetUtilities/Text/Utf8.h"

namespace {

bool IsPartOfAWord(char character) {
  return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
         (character >= '0' && character <= '9') || character == '_';
}

}  // namespace

std::wstring CleanFunctionName(std::string_view functionName) {
  constexpr std::string_view kCallingConvention = "__cdecl";
  std::string name(functionName);
  size_t at = 0;
  while ((at = name.find(kCallingConvention, at)) != std::string::npos) {
    const size_t end = at + kCallingConvention.size();
    const bool startsInside = at > 0 && IsPartOfAWord(name[at - 1]);
    const bool endsInside = end < name.size() && IsPartOfAWord(name[end]);
    if (startsInside || endsInside) {
      at = end;
    } else {
      const bool blankFollows = end < name.size() && name[end] == ' ';
      name.erase(at, kCallingConvention.size() + (blankFollows ? 1 : 0));
    }
  }
  return FromUtf8(name);
}
