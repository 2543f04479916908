#include "NetUtilities/Crash/CrashDumpName.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

constexpr CrashTime kTime = {2031, 2, 3, 4, 5, 6};

// The name that a buffer of `size` characters takes, or "does not fit".
std::wstring Name(size_t size, std::wstring_view version = L"1.2.3.4", const CrashTime& time = kTime) {
  std::vector<wchar_t> buffer(size, L'#');
  if (!WriteCrashDumpName(buffer, L"C:\\Data\\", L"Wayline", version, time)) return L"does not fit";
  return buffer.data();
}

TEST(CrashDumpName, HasFolderProgramVersionAndTime) {
  EXPECT_EQ(Name(260), L"C:\\Data\\Wayline_1.2.3.4_2031_02_03_04_05_06.dmp");
  EXPECT_EQ(Name(260, L"9", {2026, 12, 31, 23, 59, 58}), L"C:\\Data\\Wayline_9_2026_12_31_23_59_58.dmp");
}

TEST(CrashDumpName, KeepsItsPlacesWithoutAVersion) {
  EXPECT_EQ(Name(260, L""), L"C:\\Data\\Wayline__2031_02_03_04_05_06.dmp");
}

TEST(CrashDumpName, NeedsRoomForItselfAndANullCharacter) {
  const std::wstring name = Name(260);
  EXPECT_EQ(Name(name.size() + 1), name);
  EXPECT_EQ(Name(name.size()), L"does not fit");
  EXPECT_EQ(Name(0), L"does not fit");
}

TEST(ProgramBaseName, IsTheFileNameWithoutItsExtension) {
  EXPECT_EQ(ProgramBaseName(L"C:\\Client\\Wayline.exe"), L"Wayline");
  EXPECT_EQ(ProgramBaseName(L"C:/Client/Wayline.exe"), L"Wayline");
  EXPECT_EQ(ProgramBaseName(L"Wayline.exe"), L"Wayline");
  EXPECT_EQ(ProgramBaseName(L"C:\\Client\\Way.line.exe"), L"Way.line");
}

TEST(ProgramBaseName, TakesADotOnlyFromTheFileName) {
  EXPECT_EQ(ProgramBaseName(L"C:\\Client 1.2\\Wayline"), L"Wayline");
  EXPECT_EQ(ProgramBaseName(L""), L"");
}

}  // namespace
