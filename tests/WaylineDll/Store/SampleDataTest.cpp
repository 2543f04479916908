#include "LoginProperties/ProfilePage/ProfileSelector.h"
#include "tests/WaylineDll/Store/StoreTest.h"

using testing::ElementsAre;
using testing::Field;

namespace {

class SampleDataTest : public StoreTest {
 protected:
  void SetUp() override {
    OpenSample();
    ASSERT_EQ(store_.LoadProfiles(profiles_), Failure());
  }

  const ProfileColumns& Columns(uint32_t id) const { return profiles_.at(id)->Columns(); }

  int Count(const std::string& condition) const { return std::stoi(Sql("SELECT count(*) FROM " + condition)); }

  ProfileTable profiles_;
};

}  // namespace

TEST_F(SampleDataTest, HasDefaultsUpToId2000AndUserProfilesAboveThatFollowThem) {
  EXPECT_GE(Count("Profiles WHERE ProfileId <= 2000 AND ifnull(LinkProfile, 0) = 0"), 2);
  EXPECT_EQ(Count("Profiles WHERE ProfileId = 2000"), 1);
  EXPECT_EQ(Count("Profiles WHERE ProfileId > 2000 AND LinkProfile NOT BETWEEN 1 AND 2000"), 0);
  EXPECT_EQ(Count("Profiles WHERE ProfileId > 10000"), 1);
}

TEST_F(SampleDataTest, OffersProfilesWhoseNamesShareABeginningAndHidesOne) {
  EXPECT_THAT(
      SelectableProfiles(profiles_),
      ElementsAre(Field(&SelectableProfile::name, L"Work"), Field(&SelectableProfile::name, L"Work 2"),
                  Field(&SelectableProfile::name, L"Travel"), Field(&SelectableProfile::name, L"Z\u00fcrich Office"),
                  Field(&SelectableProfile::name, L"Visitor")));
  EXPECT_TRUE(Columns(2005).hidden);
}

TEST_F(SampleDataTest, TheActiveProfileFollowsTheDefaults) {
  ASSERT_EQ(store_.GetActiveProfileId(), 2001u);
  const ProfileColumns& work = Columns(2001);
  const ProfileColumns& defaults = Columns(1);
  EXPECT_TRUE(work.defaultTimeouts && work.defaultPreferences && work.defaultAutostart && work.defaultProxy);
  EXPECT_EQ(work.durationTime, defaults.durationTime);
  EXPECT_GT(defaults.durationTime, 0);
}

TEST_F(SampleDataTest, AdministratorLimitsExistInEveryKindAndAreLiftedSomewhere) {
  for (const uint32_t id : {2001u, 2002u}) {
    EXPECT_GT(Columns(id).smIdleTime, 0) << id;
    EXPECT_GT(Columns(id).smSessionTime, 0) << id;
    EXPECT_GT(Columns(id).smThresholdTime, 0) << id;
    EXPECT_GT(Columns(id).smThresholdBytes, 0) << id;
  }
  EXPECT_EQ(Columns(2003).smIdleTime, 0);
  EXPECT_EQ(Columns(2003).smSessionTime, 0);
}

TEST_F(SampleDataTest, OverriddenTimeoutsKeepTheRulesOfTheirPage) {
  const ProfileColumns& own = Columns(2002);
  EXPECT_FALSE(own.defaultTimeouts);
  EXPECT_LT(own.warnTime, own.smIdleTime);
  EXPECT_LT(own.warnTime, own.durationTime);
  EXPECT_LT(own.warnTime, own.thresholdTimeOut);
  EXPECT_LE(own.durationTime, own.smSessionTime);
}

TEST_F(SampleDataTest, WiFiSwitchingIsOverriddenOnceAndForbiddenOnce) {
  EXPECT_TRUE(Columns(2003).overrideAutoReconnectDefaults);
  EXPECT_TRUE(Columns(2003).smUserMayOverrideAutoReconnectDefaults);
  EXPECT_EQ(Columns(2003).overrideSignalStrength, 40);
  EXPECT_FALSE(Columns(2002).smUserMayOverrideAutoReconnectDefaults);
}

TEST_F(SampleDataTest, AutostartEntriesAreInSeveralPhasesUnderHeaders) {
  EXPECT_EQ(Count("AutoStart WHERE ProfileId = 2004 AND RecordType = 1 AND ItemOrder = 0"), 4);
  EXPECT_EQ(Count("AutoStart WHERE RecordType = 1 AND Phase IN (300, 1600) AND ProfileId = 2004"), 2);
  EXPECT_EQ(Count("AutoStart WHERE Phase NOT BETWEEN 300 AND 1600"), 0);
  EXPECT_GT(Count("AutoStart WHERE RecordType = 2 AND Modifiable = 0"), 0);
  EXPECT_GT(Count("AutoStart WHERE RecordType = 2 AND Modifiable = 1"), 0);
  // A program stands in a phase that its profile has a header for.
  EXPECT_EQ(Count("AutoStart AS Entry WHERE RecordType = 2 AND NOT EXISTS (SELECT 1 FROM AutoStart WHERE "
                  "RecordType = 1 AND ProfileId = Entry.ProfileId AND Phase = Entry.Phase)"),
            0);
}

TEST_F(SampleDataTest, ProxiesAreConfiguredBothWays) {
  EXPECT_GT(Count("ConfigSettings WHERE Automatic = 1 AND AutoProxyUrl <> ''"), 0);
  EXPECT_GT(Count("ConfigSettings WHERE Automatic = 0 AND ManualProxy LIKE '%;%' AND ProxyExceptions LIKE '%;%'"), 0);
}

TEST_F(SampleDataTest, PreferencesAreStoredForDefaultsAndForAUserProfile) {
  EXPECT_EQ(Count("Preferences WHERE ProfileId = 1"), 27);
  EXPECT_EQ(Count("Preferences WHERE ProfileId = 2004"), 27);
  // A switch is 1 or 2, a choice one of its options.
  EXPECT_EQ(Count("Preferences WHERE NOT CASE PreferenceId WHEN 1082 THEN State IN (1083, 1520) WHEN 1477 THEN State "
                  "BETWEEN 1478 AND 1482 WHEN 1507 THEN State BETWEEN 1508 AND 1511 ELSE State IN (1, 2) END"),
            0);
}

TEST_F(SampleDataTest, ServicesThatProfilesNameExist) {
  EXPECT_EQ(Count("Profiles WHERE LinkService NOT IN (SELECT ServiceId FROM Services)"), 0);
  EXPECT_EQ(Count("Services WHERE ServiceId = 400"), 1);
  EXPECT_GE(Count("Services WHERE DisplayText <> ''"), 2);
}
