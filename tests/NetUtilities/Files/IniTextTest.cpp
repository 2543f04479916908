#include "NetUtilities/Files/IniText.h"

#include <gtest/gtest.h>

#include "NetUtilities/Text/DecodeText.h"

TEST(IniText, FindsAKeyOfItsSectionInAnyCase) {
  const wchar_t* text = L"[Other]\r\nSwitch=0\r\n[GINA]\r\nfirst=a\r\nSWITCH = 1 \r\n";
  EXPECT_EQ(FindIniValue(text, L"gina", L"switch"), L"1");
  EXPECT_EQ(FindIniValue(text, L"OTHER", L"Switch"), L"0");
}

TEST(IniText, TakesTheFirstOfSeveral) {
  EXPECT_EQ(FindIniValue(L"[a]\nk=1\nk=2\n[a]\nk=3\n", L"a", L"k"), L"1");
  EXPECT_EQ(FindIniValue(L"[a]\nk=1\n[a]\nother=3\n", L"a", L"other"), std::nullopt) << "The second [a] is no part.";
}

TEST(IniText, HasNothingForMissingSectionsAndKeys) {
  EXPECT_EQ(FindIniValue(L"", L"a", L"k"), std::nullopt);
  EXPECT_EQ(FindIniValue(L"k=1\n[a]\n[b]\nk=2\n", L"a", L"k"), std::nullopt);
  EXPECT_EQ(FindIniValue(L"[a]\nkey=1\n", L"a", L"k"), std::nullopt);
}

TEST(IniText, HasNothingBeforeTheFirstSection) {
  EXPECT_EQ(FindIniValue(L"k=1\n[a]\n", L"", L"k"), std::nullopt);
  EXPECT_EQ(FindIniValue(L"k=1\n[]\nk=2\n", L"", L"k"), L"2") << "A section may have an empty name.";
}

TEST(IniText, PassesOverCommentsBlankLinesAndBrokenLines) {
  EXPECT_EQ(FindIniValue(L"\n; k=0\n[ a ]\n# k=0\n;k=0\n\n \t\r\nnonsense\n  k  =  v  \n", L"a", L"k"), L"v");
  EXPECT_EQ(FindIniValue(L"[a\nk=1\n", L"a", L"k"), std::nullopt);
  EXPECT_EQ(FindIniValue(L"[\n[a]\nk=1", L"a", L"k"), L"1");
}

TEST(IniText, LeavesOutWhiteSpaceAroundNamesAndValuesOnly) {
  EXPECT_EQ(FindIniValue(L" \t[\t my section ] \r\n\tmy key\t=\tmy  value\t\r\n", L"My Section", L"My Key"),
            L"my  value");
}

TEST(IniText, KeepsEqualsSignsAndCommentSignsInValuesAndKnowsEmptyValues) {
  EXPECT_EQ(FindIniValue(L"[a]\nk=x=y\n", L"a", L"k"), L"x=y");
  EXPECT_EQ(FindIniValue(L"[a]\nk=x ; y # z\n", L"a", L"k"), L"x ; y # z");
  EXPECT_EQ(FindIniValue(L"[a]\nk=\n", L"a", L"k"), L"");
  EXPECT_EQ(FindIniValue(L"[a]\nk= \t \n", L"a", L"k"), L"");
}

TEST(IniText, NeedsNoLineEndAtTheEnd) {
  EXPECT_EQ(FindIniValue(L"[a]\nk=v", L"a", L"k"), L"v");
  EXPECT_EQ(FindIniValue(L"[a]\nk=", L"a", L"k"), L"");
  EXPECT_EQ(FindIniValue(L"[a]", L"a", L"k"), std::nullopt);
}

TEST(IniText, TakesLinesOfAnyLength) {
  const std::wstring value(1'000'000, L'v');
  const std::wstring text =
      L"; " + value + L"\n[" + value + L"]\n" + value + L"=0\n[a]\r\n" + value + L"\r\nk=" + value + L"\r\nl=x";
  EXPECT_EQ(FindIniValue(text, L"a", L"k"), value);
  EXPECT_EQ(FindIniValue(text, L"a", L"l"), L"x");
  EXPECT_EQ(FindIniValue(text, value, value), L"0");
}

TEST(IniText, IsFoundInEveryEncodingOfAFile) {
  using namespace std::string_view_literals;
  constexpr std::string_view kFiles[] = {
      "[a]\r\nk=\xC3\xA9"sv,
      "\xEF\xBB\xBF[a]\nk=\xC3\xA9"sv,
      "\xFF\xFE[\0a\0]\0\r\0\n\0k\0=\0\xE9\0"sv,
      "\xFE\xFF\0[\0a\0]\0\r\0\n\0k\0=\0\xE9"sv,
  };
  for (const std::string_view file : kFiles) EXPECT_EQ(FindIniValue(DecodeText(file), L"a", L"k"), L"\u00e9");
}

TEST(IniSwitch, IsOnForOneTrueAndYes) {
  for (const wchar_t* value : {L"1", L"true", L"T", L"Yes", L"y", L"10"}) EXPECT_TRUE(IsIniSwitchOn(value)) << value;
  for (const wchar_t* value : {L"", L"0", L"no", L"on", L"false", L"01"}) EXPECT_FALSE(IsIniSwitchOn(value)) << value;
}
