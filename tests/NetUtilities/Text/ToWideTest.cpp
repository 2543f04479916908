#include "NetUtilities/Text/ToWide.h"

#include <windows.h>

#include <gtest/gtest.h>

namespace {

using namespace std::string_view_literals;

// All characters of the ANSI code page that are one byte, in order of the bytes.
std::string SingleBytes() {
  std::string bytes;
  for (int byte = 1; byte < 256; ++byte) {
    if (IsDBCSLeadByte(static_cast<BYTE>(byte)) == FALSE) bytes += static_cast<char>(byte);
  }
  return bytes;
}

std::string ToNarrow(const std::wstring& text) {
  std::string bytes(text.size() * 4, '\0');
  bytes.resize(
      static_cast<size_t>(WideCharToMultiByte(CP_ACP, 0, text.data(), static_cast<int>(text.size()), bytes.data(),
                                              static_cast<int>(bytes.size()), nullptr, nullptr)));
  return bytes;
}

TEST(ToWide, KeepsAscii) { EXPECT_EQ(ToWide("Wayline \t\r\n~"), L"Wayline \t\r\n~"); }

TEST(ToWide, GivesEmptyTextForEmptyText) {
  EXPECT_EQ(ToWide(""), L"");
  EXPECT_EQ(ToWide({}), L"");
}

TEST(ToWide, KeepsZeros) {
  EXPECT_EQ(ToWide("a\0b\0"sv), L"a\0b\0"sv);
  EXPECT_EQ(ToWide("\0"sv), L"\0"sv);
}

TEST(ToWide, TakesOnlyThePartThatItIsGiven) { EXPECT_EQ(ToWide("abc"sv.substr(0, 2)), L"ab"); }

TEST(ToWide, UsesTheAnsiCodePage) {
  if (GetACP() == CP_UTF8) {
    EXPECT_EQ(ToWide("\xc3\xa9\xe2\x82\xac"), L"\u00e9\u20ac");
  } else {
    // The code page has a character for each; that they come back proves that it was used.
    EXPECT_EQ(ToNarrow(ToWide(SingleBytes())), SingleBytes());
  }
  if (GetACP() == 1252) {
    EXPECT_EQ(ToWide("\x80\xe9\xff"), L"\u20ac\u00e9\u00ff");
  }
}

TEST(ToWide, TakesTextsOfAnyLength) { EXPECT_EQ(ToWide(std::string(100'000, 'x')), std::wstring(100'000, L'x')); }

}  // namespace
