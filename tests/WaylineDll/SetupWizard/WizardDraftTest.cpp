#include "WaylineDll/SetupWizard/WizardDraft.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

constexpr uint32_t kDefaults = 1;
constexpr uint32_t kOtherDefaults = 100;
constexpr uint32_t kNew = 2009;
constexpr uint32_t kSource = 2001;

// A new profile that follows nothing yet, beside two defaults and a profile that can be copied.
class Draft : public testing::Test {
 protected:
  Draft() {
    ProfileColumns& defaults = Add(kDefaults, L"Default");
    defaults.account = L"Example Company";
    defaults.userId = L"everybody";
    defaults.linkService = 400;
    defaults.dns1Setting = L'n';
    defaults.hidden = true;
    defaults.encryptedPassword = L"secret";
    defaults.durationTime = 14400;
    ProfileColumns& other = Add(kOtherDefaults, L"Field Service");
    other.account = L"Example Field";
    other.linkService = 401;
    other.durationTime = 1800;
    ProfileColumns& source = Add(kSource, L"Work");
    source.defaultPreferences = false;
    source.defaultAutostart = false;
    profile.SetState(ChangeState::New);
  }

  ProfileColumns& Add(uint32_t id, const wchar_t* name) {
    profiles[id] = std::make_shared<Profile>(id);
    profiles[id]->SetName(name);
    return profiles[id]->Columns();
  }

  WizardDraft Begin() const { return {profile, config, profiles}; }

  Profile profile{kNew};
  ConfigSetting config;
  ProfileTable profiles;
};

}  // namespace

TEST_F(Draft, ShowsTheProfilesOwnValuesAtFirst) {
  profile.SetAccount(L"Example");
  profile.SetUserId(L"a.sample");
  profile.SetLinkService(402);
  profile.Columns().dns1Setting = L'm';
  config.fields.dns1 = L"192.0.2.53";
  const WizardDraft draft = Begin();
  EXPECT_EQ(draft.GetAccount(), L"Example");
  EXPECT_EQ(draft.GetUserId(), L"a.sample");
  EXPECT_EQ(draft.GetLinkService(), 402);
  EXPECT_EQ(draft.GetServer(ServerField::Dns1), (ServerSetting{L'm', L"192.0.2.53"}));
}

TEST_F(Draft, ShowsTheValuesOfTheDefaultsThatAreChosen) {
  WizardDraft draft = Begin();
  draft.SetDefaults(kDefaults);
  EXPECT_EQ(draft.GetAccount(), L"Example Company");
  EXPECT_EQ(draft.GetServer(ServerField::Dns1).mode, L'n');
  draft.SetDefaults(kOtherDefaults);
  EXPECT_EQ(draft.GetAccount(), L"Example Field");
  EXPECT_EQ(draft.GetUserId(), L"");
  EXPECT_EQ(draft.GetLinkService(), 401);
  EXPECT_EQ(draft.GetServer(ServerField::Dns1).mode, L'a');
}

TEST_F(Draft, KeepsWhatTheUserHasEnteredWhenOtherDefaultsAreChosen) {
  WizardDraft draft = Begin();
  draft.SetDefaults(kDefaults);
  draft.SetUserId(L"a.sample");
  draft.SetAccount(L"Example Company");  // as it was: not an entry
  draft.SetServer(ServerField::Dns1, {L'm', L"192.0.2.53"});
  draft.SetService(402);
  draft.SetDefaults(kOtherDefaults);
  EXPECT_EQ(draft.GetUserId(), L"a.sample");
  EXPECT_EQ(draft.GetAccount(), L"Example Field");
  EXPECT_EQ(draft.GetServer(ServerField::Dns1), (ServerSetting{L'm', L"192.0.2.53"}));
  EXPECT_EQ(draft.GetServer(ServerField::Dns2), ServerSetting());
  EXPECT_EQ(draft.GetLinkService(), 402);
}

TEST_F(Draft, KeepsAFieldThatTheUserHasEmptied) {
  WizardDraft draft = Begin();
  draft.SetDefaults(kDefaults);
  draft.SetAccount(L"");
  draft.SetDefaults(kOtherDefaults);
  EXPECT_EQ(draft.GetAccount(), L"");
}

TEST_F(Draft, LeavesALinkToTheDefaultServiceAsItIs) {
  EXPECT_EQ(ServiceInForce(0), 400U);
  EXPECT_EQ(ServiceInForce(401), 401U);
  WizardDraft draft = Begin();
  draft.SetService(400);
  EXPECT_EQ(draft.GetLinkService(), 0);
  draft.SetService(401);
  draft.SetService(400);
  EXPECT_EQ(draft.GetLinkService(), 400);
}

TEST_F(Draft, StoresUserIdAndServiceAlone) {
  profile.SetHexDigCertHash(L"00");
  WizardDraft draft = Begin();
  draft.SetAccount(L"Example");
  draft.SetUserId(L"a.sample");
  draft.SetService(401);
  draft.SetServer(ServerField::Dns1, {L'n', L""});
  draft.StoreUserIdAndService(profile);
  EXPECT_EQ(profile.GetAccount(), L"Example");
  EXPECT_EQ(profile.GetUserId(), L"a.sample");
  EXPECT_EQ(profile.GetLinkService(), 401);
  EXPECT_EQ(profile.GetHexDigCertHash(), L"00");
  EXPECT_EQ(profile.Columns().dns1Setting, L'a');
}

TEST_F(Draft, StoresServersAlone) {
  WizardDraft draft = Begin();
  draft.SetAccount(L"Example");
  draft.SetServer(ServerField::Wins2, {L'm', L"192.0.2.53"});
  draft.StoreServers(profile, config);
  EXPECT_EQ(profile.Columns().wins2Setting, L'm');
  EXPECT_EQ(config.fields.wins2, L"192.0.2.53");
  EXPECT_EQ(profile.GetAccount(), L"");
}

TEST_F(Draft, MakesANewProfileOfTheDefaultsAndWhatTheUserHasEntered) {
  WizardDraft draft = Begin();
  draft.name = L"Home";
  draft.SetDefaults(kDefaults);
  draft.SetUserId(L"a.sample");
  draft.StoreNewProfile(profile, config);
  EXPECT_EQ(profile.GetProfileId(), kNew);
  EXPECT_EQ(profile.GetName(), L"Home");
  EXPECT_EQ(profile.GetLinkProfile(), kDefaults);
  EXPECT_EQ(profile.GetState(), ChangeState::New);
  EXPECT_FALSE(profile.GetHidden());
  EXPECT_EQ(profile.GetAccount(), L"Example Company");
  EXPECT_EQ(profile.GetUserId(), L"a.sample");
  EXPECT_EQ(profile.GetLinkService(), 400);
  EXPECT_EQ(profile.Columns().encryptedPassword, L"secret");
  EXPECT_EQ(profile.Columns().durationTime, 14400);
  EXPECT_EQ(profile.Columns().dns1Setting, L'n');
  EXPECT_TRUE(profile.GetDefaultPreferences());
}

TEST_F(Draft, MakesANewProfileOfTheRecordWhereThereAreNoDefaults) {
  profile.Columns().linkProfile = 7;
  profile.Columns().durationTime = 600;
  WizardDraft draft = Begin();
  draft.name = L"Home";
  draft.StoreNewProfile(profile, config);
  EXPECT_EQ(profile.GetLinkProfile(), 7U);
  EXPECT_EQ(profile.Columns().durationTime, 600);
  EXPECT_EQ(profile.GetName(), L"Home");
}

TEST_F(Draft, GivesANewProfileServersOnlyWhenTheUserWantsToSetThem) {
  profiles[kDefaults]->Columns().dns2Setting = L'm';
  WizardDraft draft = Begin();
  draft.SetDefaults(kDefaults);
  draft.SetServer(ServerField::Dns1, {L'm', L"192.0.2.53"});
  draft.StoreNewProfile(profile, config);
  EXPECT_EQ(profile.Columns().dns1Setting, L'n');
  EXPECT_EQ(profile.Columns().dns2Setting, L'm') << "in force for its defaults";
  EXPECT_EQ(config.fields.dns1, L"");
  draft.setsServers = true;
  draft.StoreNewProfile(profile, config);
  EXPECT_EQ(profile.Columns().dns1Setting, L'm');
  EXPECT_EQ(config.fields.dns1, L"192.0.2.53");
}

TEST_F(Draft, CopiesWhetherTheSourceOverridesTheDefaults) {
  WizardDraft draft = Begin();
  draft.SetDefaults(kDefaults);
  draft.copySource = kSource;
  draft.StoreNewProfile(profile, config);
  EXPECT_FALSE(profile.GetDefaultPreferences());
  EXPECT_FALSE(profile.GetDefaultAutostart());
  EXPECT_TRUE(profile.GetDefaultTimeouts());
}
