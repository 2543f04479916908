#include "NetUtilities/IniFile.h"

#include <gtest/gtest.h>

#include "tests/support/TestingIni.h"

namespace {

TEST(IniFile, FindsAValueInTheProgramDataFolder) {
  const TestingIni file("[Misc]\r\nName = caf\xc3\xa9\r\n[GINA]\r\nName=other\r\n");
  IniFile ini;
  EXPECT_EQ(ini.GetString(L"Misc", L"Name", L"default"), L"caf\u00e9");
  EXPECT_EQ(ini.GetString(L"gina", L"NAME", L"default"), L"other");
}

TEST(IniFile, GivesTheDefaultForWhatIsMissing) {
  TestingIni file("[Misc]\nName=x\n");
  IniFile ini;
  EXPECT_EQ(ini.GetString(L"Misc", L"Missing", L"default"), L"default");
  EXPECT_EQ(ini.GetString(L"Missing", L"Name", L"default"), L"default");
  file.Remove();
  EXPECT_EQ(ini.GetString(L"Misc", L"Name", L"default"), L"default");
}

TEST(IniFile, ReadsTheFileAgainWhenItHasChanged) {
  TestingIni file("[Misc]\nName=first\n");
  IniFile ini;
  EXPECT_EQ(ini.GetString(L"Misc", L"Name", L""), L"first");
  file.Write("[Misc]\nName=second\n");
  EXPECT_EQ(ini.GetString(L"Misc", L"Name", L""), L"second");
}

TEST(IniFile, FindsAFileThatWasMissingBefore) {
  TestingIni file("");
  file.Remove();
  IniFile ini;
  EXPECT_EQ(ini.GetString(L"Misc", L"Name", L"default"), L"default");
  file.Write("[Misc]\nName=new\n");
  EXPECT_EQ(ini.GetString(L"Misc", L"Name", L"default"), L"new");
}

TEST(IniFile, PassesOverAByteOrderMark) {
  const TestingIni file("\xEF\xBB\xBF[Misc]\nName=marked\n");
  IniFile ini;
  EXPECT_EQ(ini.GetString(L"Misc", L"Name", L"default"), L"marked");
}

TEST(IniFile, ASwitchIsOnByTheFirstCharacterOfItsValue) {
  const TestingIni file("[Misc]\nOne=1\nTrue=True\nYes=yes\nZero=0\nNo=no\nEmpty=\nOn=on\n");
  IniFile ini;
  for (const wchar_t* on : {L"One", L"True", L"Yes"}) EXPECT_TRUE(ini.GetBool(L"Misc", on)) << on;
  for (const wchar_t* off : {L"Zero", L"No", L"Empty", L"On", L"Missing"})
    EXPECT_FALSE(ini.GetBool(L"Misc", off)) << off;
}

}  // namespace
