#include "LoginProperties/Autostart/RemoveArguments.h"

#include <gtest/gtest.h>

TEST(RemoveArguments, LeavesTheProgram) {
  EXPECT_EQ(RemoveArguments(LR"(C:\a.exe -nohome "%1")"), LR"(C:\a.exe)");
  EXPECT_EQ(RemoveArguments(LR"(C:\a.exe)"), LR"(C:\a.exe)");
  EXPECT_EQ(RemoveArguments(LR"(C:\a.exe )"), LR"(C:\a.exe)");
  EXPECT_EQ(RemoveArguments(L""), L"");
}

TEST(RemoveArguments, LeavesAPathInQuotesWithItsBlanksAndQuotes) {
  EXPECT_EQ(RemoveArguments(LR"("C:\Program Files\a.exe" --single-argument %1)"), LR"("C:\Program Files\a.exe")");
}

TEST(RemoveArguments, EndsAPathWithoutQuotesAtItsFirstBlank) {
  EXPECT_EQ(RemoveArguments(LR"(C:\Program Files\a.exe)"), LR"(C:\Program)");
}

TEST(RemoveArguments, LooksAtTheFirst260CharactersAlone) {
  const std::wstring longest = L"C:\\" + std::wstring(257, L'a');
  EXPECT_EQ(RemoveArguments(longest), longest);
  EXPECT_EQ(RemoveArguments(longest + L"bc"), longest);
  EXPECT_EQ(RemoveArguments(std::wstring(259, L'a') + L"\U0001F600"), std::wstring(259, L'a')) << "no half character";
}
