#include "Database/Profiles/ProfileIdManager.h"

#include <gtest/gtest.h>

TEST(ProfileIdManager, HandsOutConsecutiveIdsAboveThoseOfDefaults) {
  ProfileIdManager ids;
  EXPECT_EQ(ids.NextId(), 2001u);
  EXPECT_EQ(ids.NextId(), 2002u);
  ids.SetUsed({1, 100});
  EXPECT_EQ(ids.NextId(), 2001u);
}

TEST(ProfileIdManager, BeginsAboveEveryIdBelow10000) {
  ProfileIdManager ids;
  ids.SetUsed({1, 2000, 2005, 10001, 4000000000});
  EXPECT_EQ(ids.NextId(), 2006u);
}

TEST(ProfileIdManager, TakesFreeIdsWhenThoseAtTheEndAreUsedUp) {
  ProfileIdManager ids;
  ids.SetUsed({2001, 2003, 9998, 10001});
  EXPECT_EQ(ids.NextId(), 9999u);
  EXPECT_EQ(ids.NextId(), 2002u);
  EXPECT_EQ(ids.NextId(), 2004u);
  EXPECT_EQ(ids.NextId(), 2005u);
}

TEST(ProfileIdManager, RunsOutOnlyWhenNoIdIsFree) {
  ProfileIdManager ids;
  std::set<uint32_t> used;
  for (uint32_t id = 2001; id <= 9999; ++id) used.insert(id);
  used.erase(5000);
  ids.SetUsed(used);
  EXPECT_EQ(ids.NextId(), 5000u);
  EXPECT_EQ(ids.NextId(), 0u);
  EXPECT_EQ(ids.NextId(), 0u);
}

TEST(ProfileIdManager, NeverHandsOutAnIdTwice) {
  ProfileIdManager ids;
  ids.SetUsed({9000});
  std::set<uint32_t> handedOut = {9000};
  while (const uint32_t id = ids.NextId()) {
    EXPECT_TRUE(handedOut.insert(id).second) << id;
    EXPECT_GT(id, 2000u);
    EXPECT_LT(id, 10000u);
  }
  EXPECT_EQ(handedOut.size(), 7999u);
}

TEST(ProfileIdManager, UsesTheIdOfARemovedProfileAgainOnlyWhenOthersAreUsedUp) {
  ProfileIdManager ids;
  ids.SetUsed({2001}, 9998);
  EXPECT_EQ(ids.NextId(), 9999u);
  EXPECT_EQ(ids.NextId(), 2002u);
  ids.SetUsed({2001}, 4000000000);
  EXPECT_EQ(ids.NextId(), 2002u);
}
