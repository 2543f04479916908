#include "NetUtilities/FunctionName.h"

#include "NetUtilities/Text.h"

std::wstring CleanFunctionName(std::string_view functionName) {
  constexpr std::string_view kCallingConvention = "__cdecl ";
  std::string name(functionName);
  for (size_t at = name.find(kCallingConvention); at != std::string::npos; at = name.find(kCallingConvention, at)) {
    name.erase(at, kCallingConvention.size());
  }
  return FromUtf8(name);
}
