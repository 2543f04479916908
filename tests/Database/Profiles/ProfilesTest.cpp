#include "Database/Profiles/Profiles.h"

#include <gmock/gmock.h>
#include <sqlite3.h>

#include <algorithm>

#include "Database/Profiles/ProfileNames.h"
#include "tests/Database/SQLite/MemberText.h"
#include "tests/Database/SQLite/UserDatabase.h"
#include "tests/support/LogCapture.h"

using testing::AllOf;
using testing::ElementsAre;
using testing::EndsWith;
using testing::Field;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

namespace {

class ProfilesTest : public testing::Test {
 protected:
  // A table with all columns of a profile and these rows of (ProfileId, Name, LinkProfile, Account, WarnTime).
  void MakeTable(const std::string& rows) {
    const std::string columns = ToUtf8(ColumnNames(Profile(0).GetBindings()));
    database_.Run("create table Profiles (" + columns + "); insert into Profiles " +
                  "(ProfileId, Name, LinkProfile, Account, WarnTime) values " + rows);
  }

  LogCapture log_;
  UserDatabase database_;
  Profiles profiles_;
  Profile profile_{77};
};

}  // namespace

TEST_F(ProfilesTest, LoadsTheValuesInForce) {
  MakeTable("(1, 'root', 0, 'Example', 60), (2, 'middle', 1, NULL, 30), (2001, 'own', 2, NULL, NULL)");
  EXPECT_TRUE(profiles_.LoadProfileById(2001, profile_));
  EXPECT_EQ(profile_.GetProfileId(), 2001u);
  EXPECT_EQ(profile_.GetName(), L"own");
  EXPECT_EQ(profile_.GetLinkProfile(), 2u);
  EXPECT_EQ(profile_.GetAccount(), L"Example");
  EXPECT_EQ(profile_.GetWarnTime(), Profile::Seconds(30));
  EXPECT_THAT(log_.Messages(), IsEmpty());
}

TEST_F(ProfilesTest, AProfileThatStoresOnlyItsNameHasAllElseFromTheRoot) {
  std::string ones = "1, 'root', 0";
  const auto count = static_cast<int>(Profile(0).GetBindings().size());
  for (int column = 3; column < count; ++column) ones += ", 1";
  std::string nulls = "5, 'leaf', 1";
  for (int column = 3; column < count; ++column) nulls += ", NULL";
  database_.Run("create table Profiles (" + ToUtf8(ColumnNames(Profile(0).GetBindings())) +
                "); insert into Profiles values (" + ones + "), (" + nulls + ")");
  ASSERT_TRUE(profiles_.LoadProfileById(5, profile_));
  EXPECT_EQ(profile_.GetName(), L"leaf");
  EXPECT_EQ(profile_.GetProfileId(), 5u);
  EXPECT_EQ(profile_.GetLinkProfile(), 1u);
  for (size_t index = 3; index < profile_.GetBindings().size(); ++index) {
    const ColumnBinding& column = profile_.GetBindings()[index];
    EXPECT_EQ(MemberText(profile_, column), column.kind == ColumnKind::Boolean ? L"true" : L"1") << ToUtf8(column.name);
  }
}

TEST_F(ProfilesTest, StartsFromTheDefaults) {
  MakeTable("(1, 'root', 0, NULL, NULL)");
  profile_.SetAccount(L"from before");
  profile_.SetDefaultProxy(false);
  EXPECT_TRUE(profiles_.LoadProfileById(1, profile_));
  EXPECT_EQ(profile_.GetAccount(), L"");
  EXPECT_TRUE(profile_.GetDefaultProxy());
}

TEST_F(ProfilesTest, GivesDefaultsForAMissingProfile) {
  MakeTable("(1, 'root', 0, 'Example', 60)");
  profile_.SetName(L"from before");
  EXPECT_TRUE(profiles_.LoadProfileById(2, profile_));
  EXPECT_EQ(profile_.GetProfileId(), 0u);
  EXPECT_EQ(profile_.GetName(), L"");
  EXPECT_EQ(profile_.GetWarnTime(), Profile::Seconds(0));
  EXPECT_TRUE(profile_.GetDefaultTimeouts());
  EXPECT_THAT(log_.Messages(), IsEmpty());
}

TEST_F(ProfilesTest, LoadsOneProfileAfterAnother) {
  MakeTable("(1, 'first', 0, NULL, NULL), (2, 'second', 0, 'Example', NULL)");
  EXPECT_TRUE(profiles_.LoadProfileById(2, profile_));
  EXPECT_TRUE(profiles_.LoadProfileById(1, profile_));
  EXPECT_EQ(profile_.GetName(), L"first");
  EXPECT_EQ(profile_.GetAccount(), L"");
}

TEST_F(ProfilesTest, FailsWithoutALineOfItsOwnWhenTheDatabaseIsMissing) {
  profile_.SetName(L"from before");
  EXPECT_FALSE(profiles_.LoadProfileById(1, profile_));
  EXPECT_EQ(profile_.GetName(), L"from before");
  EXPECT_THAT(log_.Messages(), ElementsAre(LogCapture::Message{LogSource::General, LogLevel::Info,
                                                               L"database not found: " + database_.File()}));
  EXPECT_FALSE(profiles_.LoadProfileById(1, profile_));
  EXPECT_THAT(log_.Messages(), SizeIs(1)) << "not tried again";
}

TEST_F(ProfilesTest, ReportsAFailureUnderItsOwnName) {
  database_.Run("create table Profiles (ProfileId, LinkProfile); insert into Profiles values (7, 0)");
  EXPECT_FALSE(profiles_.LoadProfileById(7, profile_));
  const std::wstring statement = L" Error: 1 - SQL logic error - select " + ColumnNames(profile_.GetBindings()) +
                                 L" from Profiles where ProfileId = 7;";
  EXPECT_THAT(
      log_.Messages(),
      ElementsAre(
          Field(&LogCapture::Message::text,
                AllOf(StartsWith(L"SQLite: "), HasSubstr(L"SQLite::LoadHierarchical("), EndsWith(statement))),
          Field(&LogCapture::Message::text,
                AllOf(StartsWith(L"SQLite: "), HasSubstr(L"Profiles::LoadProfileById("), EndsWith(statement)))));
}

// What a configuration says

TEST_F(ProfilesTest, KnowsItsOwnNamesAndThoseOfTheColumns) {
  const std::vector<ValidName> names = profiles_.GetValidNames();
  ASSERT_THAT(names, SizeIs(92));
  EXPECT_EQ(names[0], (ValidName{L"Default", L"", ValueClass::Boolean}));
  EXPECT_EQ(names[1], (ValidName{L"UseDigitalCertificates", L"", ValueClass::Text}));
  EXPECT_EQ(names[2], (ValidName{L"ProfileId", L"", ValueClass::Integer}));
  EXPECT_EQ(names[3], (ValidName{L"Name", L"", ValueClass::Text}));
  EXPECT_EQ(names[91], (ValidName{L"SmLpeEnabled", L"", ValueClass::Boolean}));
  for (size_t column = 0; column < profile_.GetBindings().size(); ++column) {
    EXPECT_EQ(names[column + 2].name, profile_.GetBindings()[column].name);
  }
  EXPECT_EQ(profiles_.GetValidNames(), names);
}

TEST_F(ProfilesTest, SetsAColumnOfAProfile) {
  std::wstring message;
  EXPECT_TRUE(profiles_.SetInteger(L"WarnTime", profile_, L"90", message));
  EXPECT_EQ(profile_.GetWarnTime(), Profile::Seconds(90));
  EXPECT_TRUE(profiles_.SetInteger(L"STObtainedTimeInSeconds", profile_, L"-5", message));
  EXPECT_EQ(profile_.Columns().stObtainedTimeInSeconds, -5);
  EXPECT_TRUE(profiles_.SetBoolean(L"DefaultProxy", profile_, L"no", message));
  EXPECT_FALSE(profile_.GetDefaultProxy());
  EXPECT_TRUE(profiles_.SetText(L"ManualProxySetting", profile_, L"m", message));
  EXPECT_EQ(profile_.GetManualProxySetting(), L'm');
  EXPECT_FALSE(profiles_.SetText(L"Default", profile_, L"yes", message));
  EXPECT_EQ(message, L"unknown name 'Default'");
}

TEST_F(ProfilesTest, TakesDefaultAsAWordForTrueOrFalse) {
  const auto set = [this](std::wstring value) {
    std::wstring message;
    EXPECT_TRUE(profiles_.SetTableValue(L"Default", value, message));
    return profiles_.IsDefault();
  };
  EXPECT_FALSE(profiles_.IsDefault());
  EXPECT_TRUE(set(L"YES"));
  EXPECT_FALSE(set(L"1"));
  EXPECT_TRUE(set(L"t"));
  EXPECT_FALSE(set(L""));
}

TEST_F(ProfilesTest, TakesTheCertificateSourceByItsExactNameOnly) {
  const auto set = [this](std::wstring value) {
    std::wstring message = L"from before";
    const bool accepted = profiles_.SetTableValue(L"UseDigitalCertificates", value, message);
    EXPECT_EQ(message, L"");
    return accepted;
  };
  for (const wchar_t* value : {L"localstore", L"", L"LocalStore ", L"Local", L"1"}) EXPECT_FALSE(set(value));
  EXPECT_FALSE(profiles_.AreCertificatesSet());
  EXPECT_TRUE(set(L"SmartCardOnly"));
  EXPECT_TRUE(profiles_.AreCertificatesSet());
  EXPECT_EQ(profiles_.GetCertificateSource(), CertificateSource{2});
  EXPECT_FALSE(set(L"NONE"));
  EXPECT_TRUE(profiles_.AreCertificatesSet());
  EXPECT_EQ(profiles_.GetCertificateSource(), CertificateSource{2});
  EXPECT_TRUE(set(L"LocalStore"));
  EXPECT_EQ(profiles_.GetCertificateSource(), CertificateSource{1});
  EXPECT_TRUE(set(L"None"));
  EXPECT_EQ(profiles_.GetCertificateSource(), CertificateSource{0});
  EXPECT_TRUE(profiles_.AreCertificatesSet());
}

TEST_F(ProfilesTest, NamesWhatItDoesNotKnow) {
  for (const std::wstring name : {L"default", L"usedigitalcertificates", L"Name", L""}) {
    std::wstring value = L"yes";
    std::wstring message;
    EXPECT_FALSE(profiles_.SetTableValue(name, value, message));
    EXPECT_EQ(message, L"Unknown name '" + name);
    EXPECT_EQ(value, L"yes");
  }
  EXPECT_FALSE(profiles_.IsDefault());
}

TEST(ProfileNames, AreThoseOfTheClient) {
  EXPECT_STREQ(kProfileTable, L"Profiles");
  EXPECT_STREQ(kPreferenceTable, L"Preferences");
  EXPECT_STREQ(kAutoStartTable, L"AutoStart");
  EXPECT_STREQ(kConfigSettingTable, L"ConfigSettings");
  EXPECT_STREQ(kCustomRoot, L"custom root");
  EXPECT_STREQ(kDefaultCustomRoot, L"default custom");
  EXPECT_STREQ(kCustomRootProfile, L"~  custom root profile");
  EXPECT_STREQ(kDefaultCustomProfile, L"~  default custom profile");
}
