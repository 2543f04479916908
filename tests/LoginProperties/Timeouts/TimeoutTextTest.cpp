#include "LoginProperties/Timeouts/TimeoutText.h"

#include <gtest/gtest.h>

#include "tests/LoginProperties/Timeouts/TimeoutTexts.h"

TEST(TimeoutText, HourAndMinutesRunTogether) {
  EXPECT_EQ(FormatDuration(5400, kDurationUnits).text, L" 1 hour30 minutes");
  EXPECT_EQ(FormatDuration(3661, kDurationUnits).text, L" 1 hour 1 minute 1 second");
  EXPECT_EQ(FormatDuration(36000 + 59 * 60 + 59, kDurationUnits).text, L"10 hours59 minutes59 seconds");
}

TEST(TimeoutText, PadsToTwoPlacesAndLeavesZeroPartsOut) {
  EXPECT_EQ(FormatDuration(120, kDurationUnits).text, L" 2 minutes");
  EXPECT_EQ(FormatDuration(28800, kDurationUnits).text, L" 8 hours");
  EXPECT_EQ(FormatDuration(30, kDurationUnits).text, L"30 seconds");
  EXPECT_EQ(FormatDuration(1, kDurationUnits).text, L" 1 second");
}

TEST(TimeoutText, HasNoWordsForZero) {
  EXPECT_EQ(FormatDuration(0, kDurationUnits).text, L"");
  EXPECT_EQ(FormatDuration(0, kDurationUnits).magnitude, 0);
}

TEST(TimeoutText, ShowsTheMagnitudeOfASwitchedOffValue) {
  EXPECT_EQ(FormatDuration(-28800, kDurationUnits).text, L" 8 hours");
  EXPECT_EQ(FormatDuration(-28800, kDurationUnits).magnitude, 28800);
  EXPECT_EQ(FormatByteCount(-2000, kByteUnits).text, L"  2 Kbytes");
  EXPECT_EQ(FormatByteCount(-2000, kByteUnits).magnitude, 2000);
}

TEST(TimeoutText, BytesTakeTheLargestDecimalUnitTheyFill) {
  EXPECT_EQ(FormatByteCount(50, kByteUnits).text, L" 50 bytes");
  EXPECT_EQ(FormatByteCount(999, kByteUnits).text, L"999 bytes");
  EXPECT_EQ(FormatByteCount(1000, kByteUnits).text, L"  1 KByte");
  EXPECT_EQ(FormatByteCount(1999, kByteUnits).text, L"  1 KByte");
  EXPECT_EQ(FormatByteCount(500000, kByteUnits).text, L"500 Kbytes");
  EXPECT_EQ(FormatByteCount(999999, kByteUnits).text, L"999 Kbytes");
  EXPECT_EQ(FormatByteCount(1000000, kByteUnits).text, L"  1 MByte");
  EXPECT_EQ(FormatByteCount(5000000, kByteUnits).text, L"  5 MBytes");
}

TEST(TimeoutText, ZeroAndOneByteAreSingular) {
  EXPECT_EQ(FormatByteCount(0, kByteUnits).text, L"  0 Byte");
  EXPECT_EQ(FormatByteCount(1, kByteUnits).text, L"  1 Byte");
  EXPECT_EQ(FormatByteCount(2, kByteUnits).text, L"  2 bytes");
}
