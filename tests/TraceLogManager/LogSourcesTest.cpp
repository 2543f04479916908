#include "TraceLogManager/LogSources.h"

#include <gtest/gtest.h>

TEST(LogSources, HaveNamesOrNumbers) {
  EXPECT_EQ(SourceName(0), L"Source 0");
  EXPECT_EQ(SourceName(1), L"General");
  EXPECT_EQ(SourceName(8), L"Impersonation");
  EXPECT_EQ(SourceName(28), L"Database");
  EXPECT_EQ(SourceName(36), L"Source 36");
  EXPECT_EQ(SourceName(0x1001C), L"Source 65564");
}

TEST(LogSources, AreFoundByNumber) {
  EXPECT_EQ(FindSource(L"0"), 0u);
  EXPECT_EQ(FindSource(L"28"), 28u);
  EXPECT_EQ(FindSource(L"36"), 36u);
}

TEST(LogSources, AreFoundByNameInAnyCase) {
  EXPECT_EQ(FindSource(L"Database"), 28u);
  EXPECT_EQ(FindSource(L"impersonation"), 8u);
  EXPECT_EQ(FindSource(L"SOURCE 7"), 7u);
}

TEST(LogSources, AreNotFoundByAnythingElse) {
  for (const wchar_t* text : {L"", L"37", L"-1", L"1x", L" 1", L"4294967297", L"Data", L"Source 1", L"Source 37"}) {
    EXPECT_EQ(FindSource(text), std::nullopt) << text;
  }
}

TEST(LogLevels, HaveNames) {
  EXPECT_EQ(LevelName(1), L"Fatal");
  EXPECT_EQ(LevelName(2), L"Error");
  EXPECT_EQ(LevelName(3), L"Info");
  EXPECT_EQ(LevelName(4), L"Detail");
  EXPECT_EQ(LevelName(5), L"Trace");
  EXPECT_EQ(LevelName(0), L"Level 0");
  EXPECT_EQ(LevelName(6), L"Level 6");
}
