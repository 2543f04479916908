#include "NetUtilities/Text/MessageText.h"

#include <gtest/gtest.h>

TEST(MessageText, LosesTheLineEndsAtItsEnd) {
  EXPECT_EQ(CleanMessageText(L"Access is denied.\r\n"), L"Access is denied.");
  EXPECT_EQ(CleanMessageText(L"a\r\n\r\n"), L"a");
  EXPECT_EQ(CleanMessageText(L"a\n\n\n"), L"a");
}

TEST(MessageText, LosesCarriageReturnsEverywhereAndKeepsInnerLineFeeds) {
  EXPECT_EQ(CleanMessageText(L"\rfirst\r\nsec\rond\r\n"), L"first\nsecond");
  EXPECT_EQ(CleanMessageText(L"\n\na\n"), L"\n\na");
}

TEST(MessageText, KeepsLineFeedsBeforeOtherWhiteSpaceAtItsEnd) {
  EXPECT_EQ(CleanMessageText(L"a\n \n"), L"a\n ");
  EXPECT_EQ(CleanMessageText(L"a\t"), L"a\t");
}

TEST(MessageText, NeverLosesALineFeedAtItsStart) {
  EXPECT_EQ(CleanMessageText(L"\n"), L"\n");
  EXPECT_EQ(CleanMessageText(L"\n\n\n"), L"\n");
  EXPECT_EQ(CleanMessageText(L"\r\n\n"), L"\n");
}

TEST(MessageText, MayBeEmpty) {
  EXPECT_EQ(CleanMessageText(L""), L"");
  EXPECT_EQ(CleanMessageText(L"\r"), L"");
}
