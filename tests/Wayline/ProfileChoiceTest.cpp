#include "Wayline/ProfileChoice.h"

#include <gmock/gmock.h>

namespace {

class ProfileChoice : public testing::Test {
 protected:
  void Add(uint32_t id, const std::wstring& name, bool hidden = false) {
    profiles_[id] = std::make_shared<Profile>(id);
    profiles_[id]->SetName(name);
    profiles_[id]->SetHidden(hidden);
  }

  // The chosen profile's id; 0 when none is, with the sentence in `sentence_`.
  uint32_t Choose(std::optional<uint32_t> wanted, uint32_t active) {
    std::shared_ptr<Profile> chosen;
    const Failure failure = ChooseProfile(profiles_, wanted, active, chosen);
    sentence_ = failure.value_or(L"");
    EXPECT_FALSE(failure && chosen);
    return chosen ? chosen->GetProfileId() : 0;
  }

  ProfileTable profiles_;
  std::wstring sentence_;
};

}  // namespace

TEST_F(ProfileChoice, IsTheActiveProfileUnlessAnotherIsWanted) {
  Add(2001, L"A");
  Add(2002, L"B");
  EXPECT_EQ(Choose({}, 2002), 2002u);
  EXPECT_EQ(Choose(2001, 2002), 2001u);
}

TEST_F(ProfileChoice, IsTheFirstThatCanBeSelectedWhenTheActiveOneCannot) {
  Add(100, L"Defaults");
  Add(2001, L"A", true);
  Add(2002, L"B");
  EXPECT_EQ(Choose({}, 2001), 2002u);
  EXPECT_EQ(Choose({}, 0), 2002u);
}

TEST_F(ProfileChoice, RefusesAProfileThatDoesNotExist) {
  Add(2001, L"A");
  EXPECT_EQ(Choose(77, 2001), 0u);
  EXPECT_EQ(sentence_, L"Profile 77 does not exist.");
}

TEST_F(ProfileChoice, RefusesAProfileThatCannotBeSelected) {
  Add(2000, L"Defaults");
  Add(2001, L"A", true);
  Add(2002, L"");
  for (const uint32_t id : {2000u, 2001u, 2002u}) {
    EXPECT_EQ(Choose(id, 0), 0u);
    EXPECT_EQ(sentence_,
              L"Profile " + std::to_wstring(id) + L" cannot be selected because it is hidden or no login profile.");
  }
}

TEST_F(ProfileChoice, PassesOverRecordsThatStandForNothing) {
  profiles_[2001] = nullptr;
  EXPECT_EQ(Choose({}, 2001), 0u);
  EXPECT_EQ(sentence_, L"");
  EXPECT_EQ(Choose(2001, 2001), 0u);
  EXPECT_EQ(sentence_, L"Profile 2001 does not exist.");
  Add(2002, L"B");
  EXPECT_EQ(Choose({}, 2001), 2002u);
}

TEST_F(ProfileChoice, IsNoneWhereTheFirstIsStillToBeMade) {
  Add(1, L"Defaults");
  EXPECT_EQ(Choose({}, 1), 0u);
  EXPECT_EQ(sentence_, L"");
}
