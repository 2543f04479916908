#include "LoginProperties/Autostart/EntryTexts.h"

#include <gtest/gtest.h>

TEST(EntryTexts, TheMissingNameComesBeforeTheMissingProgram) {
  EXPECT_EQ(FaultOf({.name = L"", .program = L"", .parameters = L"", .directory = L""}), EntryFault::NameMissing);
  EXPECT_EQ(FaultOf({.name = L" ", .program = L"a.exe", .parameters = L"", .directory = L""}), EntryFault::NameMissing);
  EXPECT_EQ(FaultOf({.name = L"a", .program = L" ", .parameters = L"b", .directory = L"c"}),
            EntryFault::ProgramMissing);
  EXPECT_EQ(FaultOf({.name = L"a", .program = L"a.exe", .parameters = L"", .directory = L""}), EntryFault::None);
}

TEST(EntryTexts, AreStoredTrimmedAndWhole) {
  AutoStartItem entry;
  entry.fields.phase = 700;
  StoreTexts(
      {.name = L" a ", .program = L" b c ", .parameters = L" \"d e\" " + std::wstring(400, L'f'), .directory = L"g "},
      entry.fields);
  EXPECT_EQ(entry.fields.name, L"a");
  EXPECT_EQ(entry.fields.program, L"b c");
  EXPECT_EQ(entry.fields.parameters, L"\"d e\" " + std::wstring(400, L'f'));
  EXPECT_EQ(entry.fields.directory, L"g");
  EXPECT_EQ(entry.fields.phase, 700) << "nothing else changes";
}

TEST(EntryTexts, TheInitialSizeTellsHowTheProgramIsShown) {
  EXPECT_EQ(ShowCommandOf(0), 1) << "normal";
  EXPECT_EQ(ShowCommandOf(1), 3) << "maximized";
  EXPECT_EQ(ShowCommandOf(2), 2) << "minimized";
  EXPECT_EQ(ShowCommandOf(-1), 1) << "none is selected";
}

TEST(EntryTexts, AProgramStandsInItsDirectory) {
  EXPECT_EQ(PathIn(L"C:\\Tools", L"a.exe"), L"C:\\Tools\\a.exe");
  EXPECT_EQ(PathIn(L"C:\\Tools\\", L"a.exe"), L"C:\\Tools\\a.exe");
  EXPECT_EQ(PathIn(L"C:/Tools/", L"a.exe"), L"C:/Tools/a.exe");
  EXPECT_EQ(PathIn(L"", L"a.exe"), L"a.exe");
}
