#include "NetUtilities/Text/Trim.h"

#include <gtest/gtest.h>

TEST(Trim, TakesAwayTheWhiteSpaceAroundAText) {
  EXPECT_EQ(Trim(L"text"), L"text");
  EXPECT_EQ(Trim(L" \t\r\n\v\ftwo words\f\v\n\r\t "), L"two words");
  EXPECT_EQ(Trim(L"\u00a0"), L"\u00a0") << "which ASCII does not have";
  EXPECT_EQ(Trim(L" \t "), L"");
  EXPECT_EQ(Trim(L""), L"");
}

TEST(Trim, TakesAwayOtherCharacters) {
  EXPECT_EQ(Trim(L"--a-b-", L"-"), L"a-b");
  EXPECT_EQ(Trim(L" a ", L"-"), L" a ");
}

TEST(Unquote, TakesAwayTheQuotesAroundAText) {
  EXPECT_EQ(Unquote(LR"("C:\Program Files\a.exe")"), LR"(C:\Program Files\a.exe)");
  EXPECT_EQ(Unquote(LR"(C:\a.exe)"), LR"(C:\a.exe)");
  EXPECT_EQ(Unquote(LR"("C:\a.exe)"), LR"("C:\a.exe)") << "no closing quote";
  EXPECT_EQ(Unquote(LR"("")"), L"");
  EXPECT_EQ(Unquote(LR"(")"), LR"(")");
  EXPECT_EQ(Unquote(L""), L"");
}
