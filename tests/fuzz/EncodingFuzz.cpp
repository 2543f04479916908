// Bytes as UTF-8 and as UTF-16, which must come back, and as files with and without a mark.

#include <string>
#include <utility>

#include "NetUtilities/Text/DecodeText.h"
#include "NetUtilities/Text/Utf16.h"
#include "NetUtilities/Text/Utf8.h"
#include "tests/fuzz/FuzzInput.h"
#include "tests/fuzz/Require.h"

namespace {

bool IsSurrogate(uint32_t unit) { return unit >= 0xD800 && unit <= 0xDFFF; }

void CheckUtf16(const std::string& bytes) {
  const std::u16string units = FuzzInput::Units(bytes);
  const std::wstring text = FromUtf16(std::u16string_view(units));
  Require(ToUtf16(text) == units);
  const std::u16string beforeZero = units.substr(0, units.find(u'\0'));
  Require(ToUtf16(FromUtf16(static_cast<const void*>(units.c_str()))) == beforeZero);
  std::wstring replaced = text;
  for (wchar_t& character : replaced) {
    if (IsSurrogate(static_cast<uint32_t>(character))) character = L'_';
  }
  Require(FromUtf8(ToUtf8(text)) == replaced);
}

void CheckUtf8(const std::string& bytes) {
  const std::wstring text = FromUtf8(bytes);
  Require(text.size() <= bytes.size());
  const std::string again = ToUtf8(text);
  Require(FromUtf8(again) == text);
  // Bytes come back unless they were replaced, and each replaced byte becomes three.
  if (text.find(L'\xFFFD') == std::wstring::npos) Require(again == bytes);
  size_t place = 0;
  for (const wchar_t character : text) {
    const std::string encoded = ToUtf8({&character, 1});
    const bool same = bytes.compare(place, encoded.size(), encoded) == 0;
    Require(same || character == L'\xFFFD');
    place += same ? encoded.size() : 1;
  }
  Require(place == bytes.size());
}

void CheckByteOrderMarks(const std::string& bytes) {
  Require(DecodeText("\xEF\xBB\xBF" + bytes) == FromUtf8(bytes));

  std::string swapped = bytes;
  for (size_t at = 0; at + 1 < swapped.size(); at += 2) std::swap(swapped[at], swapped[at + 1]);
  std::wstring wide = FromUtf16(std::u16string_view(FuzzInput::Units(bytes)));
  for (wchar_t& character : wide) {
    if (IsSurrogate(static_cast<uint32_t>(character))) character = L'\xFFFD';
  }
  if (bytes.size() % 2 != 0) wide += L'\xFFFD';
  Require(DecodeText("\xFF\xFE" + bytes) == wide);
  Require(DecodeText("\xFE\xFF" + swapped) == wide);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string bytes = FuzzInput(data, size).Rest();
  CheckUtf16(bytes);
  CheckUtf8(bytes);
  CheckByteOrderMarks(bytes);
  return 0;
}
