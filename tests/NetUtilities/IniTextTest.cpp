#include "NetUtilities/IniText.h"

#include <gtest/gtest.h>

TEST(IniText, FindsAKeyOfItsSectionInAnyCase) {
  const wchar_t* text = L"[Other]\r\nSwitch=0\r\n[GINA]\r\nfirst=a\r\nSWITCH = 1 \r\n";
  EXPECT_EQ(FindIniValue(text, L"gina", L"switch"), L"1");
  EXPECT_EQ(FindIniValue(text, L"OTHER", L"Switch"), L"0");
}

TEST(IniText, TakesTheFirstOfSeveral) { EXPECT_EQ(FindIniValue(L"[a]\nk=1\nk=2\n[a]\nk=3\n", L"a", L"k"), L"1"); }

TEST(IniText, HasNothingForMissingSectionsAndKeys) {
  EXPECT_EQ(FindIniValue(L"", L"a", L"k"), std::nullopt);
  EXPECT_EQ(FindIniValue(L"k=1\n[a]\n[b]\nk=2\n", L"a", L"k"), std::nullopt);
  EXPECT_EQ(FindIniValue(L"[a]\nkey=1\n", L"a", L"k"), std::nullopt);
}

TEST(IniText, PassesOverCommentsBlankLinesAndBrokenLines) {
  EXPECT_EQ(FindIniValue(L"\n; k=0\n[ a ]\n# k=0\n;k=0\n\nnonsense\n  k  =  v  \n", L"a", L"k"), L"v");
  EXPECT_EQ(FindIniValue(L"[a\nk=1\n", L"a", L"k"), std::nullopt);
  EXPECT_EQ(FindIniValue(L"[\n[a]\nk=1", L"a", L"k"), L"1");
}

TEST(IniText, KeepsEqualsSignsInValuesAndKnowsEmptyValues) {
  EXPECT_EQ(FindIniValue(L"[a]\nk=x=y\n", L"a", L"k"), L"x=y");
  EXPECT_EQ(FindIniValue(L"[a]\nk=\n", L"a", L"k"), L"");
}

TEST(IniSwitch, IsOnForOneTrueAndYes) {
  for (const wchar_t* value : {L"1", L"true", L"T", L"Yes", L"y"}) EXPECT_TRUE(IsIniSwitchOn(value)) << value;
  for (const wchar_t* value : {L"", L"0", L"no", L"on", L"false"}) EXPECT_FALSE(IsIniSwitchOn(value)) << value;
}
