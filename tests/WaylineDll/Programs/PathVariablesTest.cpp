#include "WaylineDll/Programs/PathVariables.h"

#include <gtest/gtest.h>

TEST(PathVariables, AreReplacedWhereverTheyStand) {
  EXPECT_EQ(ReplaceVariable(LR"(%windir%\a %windir%%windir%)", L"%windir%", LR"(C:\Windows)"),
            LR"(C:\Windows\a C:\WindowsC:\Windows)");
  EXPECT_EQ(ReplaceVariable(L"nothing", L"%windir%", L"x"), L"nothing");
  EXPECT_EQ(ReplaceVariable(L"", L"%windir%", L"x"), L"");
}

TEST(PathVariables, AreFoundInAnyCaseOfAsciiLetters) {
  EXPECT_EQ(ReplaceVariable(L"%WinDir% %WINDIR%", L"%windir%", L"x"), L"x x");
  EXPECT_EQ(ReplaceVariable(L"%ÄBC%", L"%äbc%", L"x"), L"%ÄBC%") << "other letters keep their case";
}

TEST(PathVariables, AreNotReplacedInWhatIsBroughtIn) {
  EXPECT_EQ(ReplaceVariable(L"%a%", L"%a%", L"<%a%>"), L"<%a%>");
  EXPECT_EQ(ReplaceVariable(L"%a%b%", L"%b%", L"x"), L"%ax");
  EXPECT_EQ(ReplaceVariable(L"%%a%a%", L"%a%", L""), L"%a%") << "nor where it meets what is beside it";
}

TEST(PathVariables, LeaveWithAnEmptyValue) { EXPECT_EQ(ReplaceVariable(L"a%x%b", L"%x%", L""), L"ab"); }

TEST(PathVariables, WithoutANameAreNowhere) { EXPECT_EQ(ReplaceVariable(L"text", L"", L"x"), L"text"); }

TEST(PathVariables, ThatAreCutOffStay) { EXPECT_EQ(ReplaceVariable(L"%windir", L"%windir%", L"x"), L"%windir"); }
