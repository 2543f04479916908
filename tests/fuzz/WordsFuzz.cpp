// What a short text says: a number, yes or no, a word in another text, a list, the name of a function.

#include <string>
#include <vector>

#include "Database/SQLite/DecimalText.h"
#include "NetUtilities/Text/FunctionName.h"
#include "NetUtilities/Text/IgnoringCase.h"
#include "NetUtilities/Text/SplitNonEmpty.h"
#include "NetUtilities/Text/StringToBool.h"
#include "NetUtilities/Text/Utf16.h"
#include "NetUtilities/Text/Utf8.h"
#include "tests/fuzz/DecimalReference.h"
#include "tests/fuzz/FuzzInput.h"
#include "tests/fuzz/LowerAscii.h"
#include "tests/fuzz/Require.h"

namespace {

void CheckDecimal(const std::u16string& text) {
  const DecimalReference number{std::u16string_view(text)};
  Require(ParseInteger64(text) == number.Clamped<int64_t>());
  Require(ParseInteger32(text) == number.Clamped<int32_t>());
}

void CheckWords(const std::wstring& text, const std::wstring& needle) {
  const std::wstring lower = LowerAscii(text);
  const std::wstring lowerNeedle = LowerAscii(needle);
  Require(StringToBool(text) == (lower == L"true" || lower == L"yes" || lower == L"y" || lower == L"t"));
  Require(EqualsNoCaseAscii(text, needle) == (lower == lowerNeedle));
  const bool contained = lower.find(lowerNeedle) != std::wstring::npos;
  Require(ContainsNoCaseAscii(text, needle) == (contained && !text.empty()));
  if (contained && !needle.empty()) Require(ContainsNoCase(text, needle));
  if (needle.empty() || text.empty()) Require(!ContainsNoCase(text, needle));

  std::vector<std::wstring> pieces(1);
  for (const wchar_t character : text) {
    if (needle.find(character) == std::wstring::npos) {
      pieces.back() += character;
    } else {
      pieces.emplace_back();
    }
  }
  std::erase(pieces, std::wstring());
  Require(SplitNonEmpty(text, needle) == pieces);
}

bool IsPartOfAWord(char character) {
  return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
         (character >= '0' && character <= '9') || character == '_';
}

void CheckFunctionName(const std::string& name) {
  constexpr std::string_view kWord = "__cdecl";
  std::string expected;
  for (size_t at = 0; at < name.size();) {
    size_t end = at;
    while (end < name.size() && IsPartOfAWord(name[end])) ++end;
    if (end == at) {
      expected += name[at++];
      continue;
    }
    const std::string word = name.substr(at, end - at);
    at = end;
    if (word != kWord) {
      expected += word;
    } else if (at < name.size() && name[at] == ' ') {
      ++at;
    }
  }
  Require(CleanFunctionName(name) == FromUtf8(expected));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  FuzzInput input(data, size);
  const std::string bytes = FuzzInput(data, size).Rest();
  CheckDecimal(ToUtf16(FuzzInput::Wide(bytes)));
  CheckFunctionName(bytes);
  const std::wstring needle = input.WideLine();
  CheckWords(input.WideRest(), needle);
  return 0;
}
