#include "LoginProperties/General/GeneralRules.h"

#include <gmock/gmock.h>

#include "LoginProperties/ProfilePage/ProfileSelector.h"

namespace {

constexpr uint32_t kActive = 2001;

class GeneralRules : public testing::Test {
 protected:
  Profile& Add(uint32_t id, const std::wstring& name, uint32_t link = 1) {
    auto profile = std::make_shared<Profile>(id);
    profile->SetName(name);
    profile->Columns().linkProfile = link;
    return *(profiles_[id] = std::move(profile));
  }

  RemovalRefusal RefuseRemovalOf(uint32_t id, bool isConnected = true) const {
    return RefuseRemoval(profiles_, *profiles_.at(id), kActive, isConnected);
  }

  ProfileTable profiles_;
};

// The state of a profile after the wizard has changed its copy.
struct Edited {
  std::wstring account;
  std::wstring userId;
  std::wstring certificate;
  int32_t service;
  ChangeState state;
  bool operator==(const Edited&) const = default;
};

Edited Take(void (*edit)(Profile&)) {
  Profile profile(2001);
  profile.SetAccount(L"Company");
  profile.SetUserId(L"user");
  profile.SetHexDigCertHash(L"00ff");
  profile.SetLinkService(400);
  profile.SetName(L"Work");
  Profile copy = profile;
  edit(copy);
  copy.SetName(L"Other");
  copy.Columns().savePassword = true;
  TakeUserIdAndService(copy, profile);
  EXPECT_EQ(profile.GetName(), L"Work") << "nothing else is taken";
  EXPECT_FALSE(profile.Columns().savePassword);
  return {profile.GetAccount(), profile.GetUserId(), profile.GetHexDigCertHash(), profile.GetLinkService(),
          profile.GetState()};
}

TEST_F(GeneralRules, TheLastProfileIsRefusedBeforeAllElse) {
  Add(1, L"Defaults", 0);
  Add(kActive, L"Work");
  Add(2002, L"Hidden", kActive).SetHidden(true);
  Add(2003, L"");
  profiles_[2004] = nullptr;
  EXPECT_EQ(RefuseRemovalOf(kActive), RemovalRefusal::LastProfile);
}

TEST_F(GeneralRules, AProfileThatIsNotListedIsRefusedWhereOthersAre) {
  Add(1, L"Defaults", 0);
  Add(kActive, L"Active").SetHidden(true);
  Add(2002, L"Work");
  EXPECT_EQ(RefuseRemovalOf(kActive), RemovalRefusal::LastProfile);
  Add(2003, L"Home");
  EXPECT_EQ(RefuseRemovalOf(kActive), RemovalRefusal::NotListed);
  EXPECT_EQ(RefuseRemovalOf(1), RemovalRefusal::NotListed);
}

TEST_F(GeneralRules, TheActiveProfileIsRefusedWhileConnectedOnly) {
  Add(kActive, L"Work");
  Add(2002, L"Follower", kActive);
  EXPECT_EQ(RefuseRemovalOf(kActive), RemovalRefusal::Connected);
  EXPECT_EQ(RefuseRemovalOf(kActive, false), RemovalRefusal::Followed);
  EXPECT_EQ(RefuseRemovalOf(2002), RemovalRefusal::None);
}

TEST_F(GeneralRules, AProfileThatOthersFollowIsRefusedUnlessTheyAreRemovedToo) {
  Add(kActive, L"Work");
  Add(2002, L"Leader");
  Profile& follower = Add(2003, L"Follower", 2002);
  follower.SetHidden(true);
  EXPECT_EQ(RefuseRemovalOf(2002), RemovalRefusal::Followed);
  follower.SetState(ChangeState::Removed);
  EXPECT_EQ(RefuseRemovalOf(2002), RemovalRefusal::None);
}

TEST_F(GeneralRules, FollowersAreNamedByNameOrIdTheFirstTenOfThem) {
  for (uint32_t id = 3001; id <= 3003; ++id) Add(id, L"Follower " + std::to_wstring(id), 2002);
  Add(3004, L"", 2002);
  Add(3005, L"Other", 2001);
  Add(3006, L"Gone", 2002).SetState(ChangeState::Removed);
  profiles_[3007] = nullptr;
  EXPECT_EQ(NamesOfFollowers(profiles_, 2002), L"Follower 3001, Follower 3002, Follower 3003, 3004");
  for (uint32_t id = 3008; id <= 3013; ++id) Add(id, L"F", 2002);
  EXPECT_EQ(NamesOfFollowers(profiles_, 2002), L"Follower 3001, Follower 3002, Follower 3003, 3004, F, F, F, F, F, F");
  Add(3014, L"Eleventh", 2002);
  EXPECT_EQ(NamesOfFollowers(profiles_, 2002),
            L"Follower 3001, Follower 3002, Follower 3003, 3004, F, F, F, F, F, F, ...");
}

TEST_F(GeneralRules, ARemovedProfileIsHiddenAndTheFirstThatCanBeSelectedIsShown) {
  Add(1, L"Defaults", 0);
  Profile& removed = Add(2001, L"Removed");
  Add(2002, L"");
  Add(2003, L"Hidden").SetHidden(true);
  profiles_[2004] = nullptr;
  Add(2005, L"Z");
  Add(2006, L"A");
  const auto shown = RemoveProfile(profiles_, removed);
  ASSERT_NE(shown, nullptr);
  EXPECT_EQ(shown->GetProfileId(), 2005u) << "by id, not by name, and never the defaults";
  EXPECT_EQ(removed.GetState(), ChangeState::Removed);
  EXPECT_TRUE(removed.GetHidden());
}

TEST_F(GeneralRules, WithoutAnotherProfileNoneIsShownInItsPlace) {
  Add(1, L"Defaults", 0);
  EXPECT_EQ(RemoveProfile(profiles_, Add(2001, L"Removed")), nullptr);
}

TEST_F(GeneralRules, ARemovalOverridesEarlierChanges) {
  Profile& removed = Add(2001, L"Removed");
  removed.SetState(ChangeState::New);
  RemoveProfile(profiles_, removed);
  EXPECT_EQ(removed.GetState(), ChangeState::Removed);
}

TEST(TakeUserIdAndService, WithoutAChangeMarksNothing) {
  EXPECT_EQ(Take([](Profile&) {}), (Edited{L"Company", L"user", L"00ff", 400, ChangeState::Unchanged}));
}

TEST(TakeUserIdAndService, TakesEachOfThemByItself) {
  EXPECT_EQ(Take([](Profile& copy) { copy.SetAccount(L"company"); }),
            (Edited{L"company", L"user", L"00ff", 400, ChangeState::Changed}))
      << "case counts";
  EXPECT_EQ(Take([](Profile& copy) { copy.SetUserId(L"User"); }),
            (Edited{L"Company", L"User", L"00ff", 400, ChangeState::Changed}));
  EXPECT_EQ(Take([](Profile& copy) { copy.SetHexDigCertHash(L""); }),
            (Edited{L"Company", L"user", L"", 400, ChangeState::Changed}));
  EXPECT_EQ(Take([](Profile& copy) { copy.SetLinkService(402); }),
            (Edited{L"Company", L"user", L"00ff", 402, ChangeState::Changed}));
}

TEST(TakeUserIdAndService, ChangesNothingOfHowANewProfileIsMarked) {
  Profile profile(2001);
  profile.SetState(ChangeState::New);
  Profile copy = profile;
  copy.SetUserId(L"user");
  TakeUserIdAndService(copy, profile);
  EXPECT_EQ(profile.GetState(), ChangeState::New);
}

}  // namespace
