#include "NetUtilities/Logger/LogLine.h"

#include <gtest/gtest.h>

TEST(LogLinePrefix, PadsEveryField) {
  EXPECT_EQ(LogLinePrefix({1, 3, 9, 5, 7, 4}, 0x1a2, 0x3b), L"01/03 09:05:07.004 001a2-0003b: ");
}

TEST(LogLinePrefix, LetsLongIdsGrow) {
  EXPECT_EQ(LogLinePrefix({11, 15, 6, 10, 17, 42}, 0x1a2c, 0xf3b8), L"11/15 06:10:17.042 01a2c-0f3b8: ");
  EXPECT_EQ(LogLinePrefix({12, 31, 23, 59, 59, 999}, 0x1234567, 0xffffffff), L"12/31 23:59:59.999 1234567-ffffffff: ");
}
