#include "NetUtilities/Text/IgnoringCase.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cwctype>
#include <string>
#include <utility>

TEST(ContainsNoCase, FindsANeedleInAnyCase) {
  EXPECT_TRUE(ContainsNoCase(L"C:\\Program Files\\IExplore.EXE", L"iexplore.exe"));
  EXPECT_FALSE(ContainsNoCase(L"firefox", L"iexplore.exe"));
}

TEST(ContainsNoCase, NeverFindsAnEmptyNeedleNorALongerOne) {
  EXPECT_FALSE(ContainsNoCase(L"text", L""));
  EXPECT_FALSE(ContainsNoCase(L"", L""));
  EXPECT_FALSE(ContainsNoCase(L"", L"x"));
  EXPECT_FALSE(ContainsNoCase(L"ab", L"abc"));
}

TEST(ContainsNoCase, FoldsWhatTheWideCharacterRuleFoldsWhereTheAsciiOneDoesNot) {
  const std::string previous = std::setlocale(LC_CTYPE, nullptr);
  // One of these is known to every system.
  ASSERT_TRUE(std::setlocale(LC_CTYPE, "C.UTF-8") || std::setlocale(LC_CTYPE, "English_United States.1252"));
  for (const auto& [capital, small] : {std::pair(L'\u00c4', L'\u00e4'), std::pair(L'\u00d8', L'\u00f8')}) {
    ASSERT_EQ(std::towlower(static_cast<wint_t>(capital)), static_cast<wint_t>(small));
    EXPECT_TRUE(ContainsNoCase(std::wstring(L"x") + capital, std::wstring(1, small)));
    EXPECT_TRUE(ContainsNoCase(std::wstring(L"x") + small, std::wstring(1, capital)));
    EXPECT_FALSE(ContainsNoCaseAscii(std::wstring(L"x") + capital, std::wstring(1, small)));
    EXPECT_FALSE(ContainsNoCaseAscii(std::wstring(L"x") + small, std::wstring(1, capital)));
  }
  EXPECT_FALSE(ContainsNoCase(L"\u00c4", L"a"));
  std::setlocale(LC_CTYPE, previous.c_str());
}

TEST(ContainsNoCaseAscii, FindsAnEmptyNeedleInNonEmptyText) {
  EXPECT_TRUE(ContainsNoCaseAscii(L"text", L""));
  EXPECT_FALSE(ContainsNoCaseAscii(L"", L""));
}

TEST(ContainsNoCaseAscii, FoldsAsciiLettersOnly) {
  EXPECT_TRUE(ContainsNoCaseAscii(L"%WinDir%\\x", L"%windir%"));
  EXPECT_FALSE(ContainsNoCaseAscii(L"\u00c4", L"\u00e4"));
}

TEST(ContainsNoCaseAscii, NeverFindsALongerNeedle) {
  EXPECT_FALSE(ContainsNoCaseAscii(L"ab", L"abc"));
  EXPECT_FALSE(ContainsNoCaseAscii(L"", L"x"));
}
