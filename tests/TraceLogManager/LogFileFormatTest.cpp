#include "TraceLogManager/LogFileFormat.h"

#include <gmock/gmock.h>

#include "NetUtilities/Text/Utf8.h"

namespace {

constexpr wchar_t kText[] = L"11/15 06:10:17.042 01a2c-0f3b8: text";

void ExpectRecord(std::string_view line, uint32_t source, uint32_t level, std::string_view text) {
  const LogFileLine read = ParseLogFileLine(line);
  EXPECT_TRUE(read.beginsRecord) << line;
  EXPECT_EQ(read.source, source);
  EXPECT_EQ(read.level, level);
  EXPECT_EQ(read.text, text);
}

void ExpectContinuation(std::string_view line, std::string_view text) {
  const LogFileLine read = ParseLogFileLine(line);
  EXPECT_FALSE(read.beginsRecord) << line;
  EXPECT_EQ(read.source, 0u);
  EXPECT_EQ(read.level, 0u);
  EXPECT_EQ(read.text, text);
}

}  // namespace

TEST(LogFileName, HasTheDate) {
  EXPECT_EQ(LogFileName({2026, 11, 15}), L"TraceLog_2026-11-15.log");
  EXPECT_EQ(LogFileName({2027, 1, 3}), L"TraceLog_2027-01-03.log");
}

TEST(LogFileRecord, IsOneLineWithSourceAndLevelInFront) {
  EXPECT_EQ(LogFileRecord(28, 2, kText), "28 2 11/15 06:10:17.042 01a2c-0f3b8: text\r\n");
  EXPECT_EQ(LogFileRecord(1, 3, L"x"), " 1 3 x\r\n");
}

TEST(LogFileRecord, IsUtf8) {
  EXPECT_EQ(LogFileRecord(1, 3, L"Z\x00fcrich \x20ac"), " 1 3 Z\xc3\xbcrich \xe2\x82\xac\r\n");
}

TEST(LogFileRecord, MayHaveNoText) { EXPECT_EQ(LogFileRecord(1, 3, L""), " 1 3 \r\n"); }

TEST(LogFileRecord, SetsFurtherLinesIn) {
  EXPECT_EQ(LogFileRecord(28, 2, L"one\ntwo\r\nthree\rfour"), "28 2 one\r\n     two\r\n     three\r\n     four\r\n");
  EXPECT_EQ(LogFileRecord(28, 2, L"one\x2028two\x85three"), "28 2 one\r\n     two\r\n     three\r\n");
  EXPECT_EQ(LogFileRecord(28, 2, L"one\n\nthree"), "28 2 one\r\n     \r\n     three\r\n");
  EXPECT_EQ(LogFileRecord(28, 2, L"\ntwo"), "28 2 \r\n     two\r\n");
}

TEST(LogFileRecord, HasNoLineBreaksAtItsEnd) {
  EXPECT_EQ(LogFileRecord(28, 2, L"one\r\n\n"), "28 2 one\r\n");
  EXPECT_EQ(LogFileRecord(28, 2, L"\n"), "28 2 \r\n");
}

TEST(LogFileRecord, ReplacesControlCharacters) {
  EXPECT_EQ(LogFileRecord(1, 1, std::wstring(L"a\0b\x1b[2Jc\x7f", 9)),
            " 1 1 a\xef\xbf\xbd"
            "b\xef\xbf\xbd[2Jc\xef\xbf\xbd\r\n");
  EXPECT_EQ(LogFileRecord(1, 1, L"a\tb"), " 1 1 a\tb\r\n");
}

TEST(LogFileLine, IsReadBackAsItWasWritten) {
  for (const uint32_t source : {0u, 1u, 9u, 10u, 36u}) {
    for (const uint32_t level : {0u, 1u, 5u, 12u, 65535u}) {
      std::string line = LogFileRecord(source, level, kText);
      line.resize(line.size() - 2);
      ExpectRecord(line, source, level, ToUtf8(kText));
    }
  }
}

TEST(LogFileLine, ContinuesWhenItIsSetIn) {
  ExpectContinuation("     two", "two");
  ExpectContinuation("       two", "  two");
  ExpectContinuation("     28 2 looks like a record", "28 2 looks like a record");
  ExpectContinuation("     ", "");
}

TEST(LogFileLine, ThatIsNoRecordContinues) {
  for (const char* line : {"", " ", "text", "2", "28", "28 ", "28 2", "28 x text", "128 2 text", "1 2 text",
                           "-1 2 text", " 28 2 text", "28  2 text", "99999999999 2 text"}) {
    ExpectContinuation(line, line);
  }
}
