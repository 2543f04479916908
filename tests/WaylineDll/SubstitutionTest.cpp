#include "WaylineDll/Substitution.h"

#include <gtest/gtest.h>

TEST(SubstituteItems, ReplacesNumbersByItemsInOrder) {
  EXPECT_EQ(SubstituteItems(L"%1 - Login Properties", {L"Wayline"}), L"Wayline - Login Properties");
  EXPECT_EQ(SubstituteItems(L"%2 then %1 and %2", {L"one", L"two"}), L"two then one and two");
}

TEST(SubstituteItems, LeavesANumberWithoutAnItem) {
  EXPECT_EQ(SubstituteItems(L"%1 %2", {L"one"}), L"one %2");
  EXPECT_EQ(SubstituteItems(L"%1", {}), L"%1");
}

TEST(SubstituteItems, AnEmptyItemTakesTheNumberAway) { EXPECT_EQ(SubstituteItems(L"a%1b", {L""}), L"ab"); }

TEST(SubstituteItems, DoesNotReplaceWhatAnItemBringsIn) {
  EXPECT_EQ(SubstituteItems(L"%1 %2", {L"%2", L"two"}), L"%2 two");
}

TEST(SubstituteItems, TakesOtherPercentSignsAsText) {
  EXPECT_EQ(SubstituteItems(L"100%, %0 %x %", {L"one"}), L"100%, %0 %x %");
  EXPECT_EQ(SubstituteItems(L"%12", {L"one"}), L"one2");
}
