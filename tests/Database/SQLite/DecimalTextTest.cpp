#include "Database/SQLite/DecimalText.h"

#include <gtest/gtest.h>

#include <cstdint>

TEST(DecimalText, ReadsSignedDigits) {
  EXPECT_EQ(ParseInteger64(u"0"), 0);
  EXPECT_EQ(ParseInteger64(u"70000"), 70000);
  EXPECT_EQ(ParseInteger64(u"-28800"), -28800);
  EXPECT_EQ(ParseInteger64(u"+7"), 7);
}

TEST(DecimalText, SkipsLeadingBlanksOnly) {
  EXPECT_EQ(ParseInteger32(u" \t\r\n\v\f-12"), -12);
  EXPECT_EQ(ParseInteger32(u"- 12"), 0);
  EXPECT_EQ(ParseInteger32(u"1 2"), 1);
}

TEST(DecimalText, StopsAtTheFirstOtherCharacter) {
  EXPECT_EQ(ParseInteger32(u"12abc"), 12);
  EXPECT_EQ(ParseInteger32(u"3.9"), 3);
  EXPECT_EQ(ParseInteger32(u"0x10"), 0);
}

TEST(DecimalText, TakesTextWithoutDigitsAsZero) {
  for (const char16_t* text : {u"", u"   ", u"abc", u"-", u"+", u"--1", u"+-1"}) EXPECT_EQ(ParseInteger32(text), 0);
}

TEST(DecimalText, ReadsTheLimits) {
  EXPECT_EQ(ParseInteger32(u"2147483647"), INT32_MAX);
  EXPECT_EQ(ParseInteger32(u"-2147483648"), INT32_MIN);
  EXPECT_EQ(ParseInteger64(u"9223372036854775807"), INT64_MAX);
  EXPECT_EQ(ParseInteger64(u"-9223372036854775808"), INT64_MIN);
}

TEST(DecimalText, SaturatesBeyondTheLimits) {
  EXPECT_EQ(ParseInteger32(u"2147483648"), INT32_MAX);
  EXPECT_EQ(ParseInteger32(u"-2147483649"), INT32_MIN);
  EXPECT_EQ(ParseInteger64(u"9223372036854775808"), INT64_MAX);
  EXPECT_EQ(ParseInteger64(u"-9223372036854775809"), INT64_MIN);
  EXPECT_EQ(ParseInteger64(u"99999999999999999999999x"), INT64_MAX);
}
