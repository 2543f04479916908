#include "WaylineDll/SetupWizard/ProfileChoices.h"

#include <gmock/gmock.h>

#include <memory>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

Profile& Add(ProfileTable& profiles, uint32_t id, const wchar_t* name) {
  const auto profile = std::make_shared<Profile>(id);
  profile->SetName(name);
  profiles[id] = profile;
  return *profile;
}

ProfileTable SomeProfiles() {
  ProfileTable profiles;
  Add(profiles, 1, L"Default");
  Add(profiles, 2, L"Old Defaults").SetState(ChangeState::Removed);
  Add(profiles, 3, L"Hidden Defaults").SetHidden(true);
  Add(profiles, 2000, L"Branches");
  Add(profiles, 2001, L"Work");
  Add(profiles, 2002, L"Retired").SetHidden(true);
  Add(profiles, 2003, L"Gone").SetState(ChangeState::Removed);
  Add(profiles, 2004, L"");
  profiles[2005] = nullptr;
  return profiles;
}

std::shared_ptr<AutoStartItem> Item(uint16_t phase, uint16_t order, const wchar_t* name,
                                    AutoStartRecordType type = AutoStartRecordType::Program) {
  auto item = std::make_shared<AutoStartItem>();
  item->fields.phase = phase;
  item->fields.order = order;
  item->fields.name = name;
  item->fields.recordType = type;
  return item;
}

}  // namespace

TEST(ProfileChoices, ANewProfileCanFollowTheDefaultsThatAreNotRemoved) {
  EXPECT_THAT(DefaultsToFollow(SomeProfiles()),
              ElementsAre(OfferedProfile{L"Default", 1}, OfferedProfile{L"Hidden Defaults", 3},
                          OfferedProfile{L"Branches", 2000}));
  EXPECT_THAT(DefaultsToFollow({}), IsEmpty());
}

TEST(ProfileChoices, ANewProfileCanCopyFromThoseThatTheUserKnows) {
  EXPECT_THAT(
      SourcesToCopy(SomeProfiles()),
      ElementsAre(OfferedProfile{L"Default", 1}, OfferedProfile{L"Branches", 2000}, OfferedProfile{L"Work", 2001}));
}

TEST(ProfileChoices, WhatIsCopiedAreThePreferencesAndTheProgramsInTheirOrder) {
  PreferenceTable preferences;
  preferences[PreferenceId::PreferIPv6] = std::make_shared<Preference>();
  AutoStartTable items;
  items[1] = Item(700, 0, L"After the network is connected", AutoStartRecordType::PhaseHeader);
  items[2] = Item(700, 2, L"Calculator");
  items[3] = Item(700, 1, L"Notes");
  items[4] = Item(300, 1, L"Device check");
  items[5] = nullptr;
  const CopiedSettings copied = CopiedOf(preferences, items);
  EXPECT_THAT(copied.preferences, ElementsAre(PreferenceId::PreferIPv6));
  EXPECT_TRUE(copied.hasAutoStartList);
  EXPECT_FALSE(CopiedOf(preferences, {}).hasAutoStartList);
  EXPECT_THAT(copied.programs, ElementsAre(L"Device check", L"Notes", L"Calculator"));
}
