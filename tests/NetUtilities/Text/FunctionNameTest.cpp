#include "NetUtilities/Text/FunctionName.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

TEST(FunctionName, LosesTheCallingConventionEverywhere) {
  EXPECT_EQ(CleanFunctionName("int __cdecl SQLite::Open(void (__cdecl *)(int))"), L"int SQLite::Open(void (*)(int))");
}

TEST(FunctionName, LosesTheCallingConventionWithAndWithoutABlankBehindIt) {
  EXPECT_EQ(CleanFunctionName("void (__cdecl*)(int)"), L"void (*)(int)");
  EXPECT_EQ(CleanFunctionName("void __cdecl  f(void)"), L"void  f(void)") << "One blank goes.";
  EXPECT_EQ(CleanFunctionName("__cdecl"), L"");
  EXPECT_EQ(CleanFunctionName("f __cdecl"), L"f ");
}

TEST(FunctionName, LosesTheCallingConventionOnlyAsAWholeWord) {
  for (const char* name : {"my__cdecl x", "My__cdecl", "2__cdecl x", "___cdecl x", "__cdecl_ x", "__cdecl2 x"}) {
    EXPECT_EQ(CleanFunctionName(name), std::wstring(name, name + std::strlen(name)));
  }
  EXPECT_EQ(CleanFunctionName("my__cdecl __cdecl x"), L"my__cdecl x");
}

TEST(FunctionName, KeepsEverythingElse) {
  EXPECT_EQ(CleanFunctionName("void Page::Show(const char*, int) const"), L"void Page::Show(const char*, int) const");
  EXPECT_EQ(CleanFunctionName(""), L"");
}
