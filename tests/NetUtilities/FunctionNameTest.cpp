#include "NetUtilities/FunctionName.h"

#include <gtest/gtest.h>

TEST(FunctionName, LosesTheCallingConventionEverywhere) {
  EXPECT_EQ(CleanFunctionName("int __cdecl SQLite::Open(void (__cdecl *)(int))"), L"int SQLite::Open(void (*)(int))");
}

TEST(FunctionName, KeepsEverythingElse) {
  EXPECT_EQ(CleanFunctionName("void Page::Show(const char*, int) const"), L"void Page::Show(const char*, int) const");
  EXPECT_EQ(CleanFunctionName("my__cdecl"), L"my__cdecl");
  EXPECT_EQ(CleanFunctionName(""), L"");
}
