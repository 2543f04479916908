#include "Wayline/Report.h"

#include <gmock/gmock.h>

namespace {

std::shared_ptr<Profile> MakeProfile(uint32_t id, const std::wstring& name, uint32_t parent, bool hidden = false) {
  auto profile = std::make_shared<Profile>(id);
  profile->SetName(name);
  profile->Columns().linkProfile = parent;
  profile->SetHidden(hidden);
  return profile;
}

ProfileTable Sample() {
  return {{1, MakeProfile(1, L"Z\u00fcrich", 0)},
          {2001, MakeProfile(2001, L"Work", 1)},
          {2002, MakeProfile(2002, L"Old", 1, true)}};
}

}  // namespace

TEST(ProfileList, IsATableWithAlignedColumns) {
  EXPECT_EQ(ProfileListText(Sample(), 2001),
            "  Id  Name    Parent  Hidden  Selectable  Active\n"
            "   1  Z\xc3\xbcrich       -  no      no          no\n"
            "2001  Work         1  no      yes         yes\n"
            "2002  Old          1  yes     no          no\n");
}

TEST(ProfileList, IsAHeadlineWithoutProfiles) {
  EXPECT_EQ(ProfileListText({}, 0), "Id  Name  Parent  Hidden  Selectable  Active\n");
  EXPECT_EQ(ProfileListJson({}, 0), "[]\n");
}

TEST(ProfileList, LeavesOutRecordsThatStandForNothing) {
  const ProfileTable profiles = {{2001, nullptr}, {2002, MakeProfile(2002, L"Work", 1)}};
  EXPECT_EQ(ProfileListText(profiles, 2001),
            "  Id  Name  Parent  Hidden  Selectable  Active\n"
            "2002  Work       1  no      yes         no\n");
  EXPECT_EQ(ProfileListJson({{2001, nullptr}}, 2001), "[]\n");
}

TEST(ProfileList, IsJsonForPrograms) {
  EXPECT_EQ(ProfileListJson({{2001, MakeProfile(2001, L"a \"b\" \u20ac", 1)}}, 2001),
            "[\n"
            "  {\n"
            "    \"id\": 2001,\n"
            "    \"name\": \"a \\\"b\\\" \xe2\x82\xac\",\n"
            "    \"parent\": 1,\n"
            "    \"hidden\": false,\n"
            "    \"selectable\": true,\n"
            "    \"active\": true\n"
            "  }\n"
            "]\n");
}

TEST(SheetResult, IsOneLineOfJson) {
  EXPECT_EQ(SheetResultJson(0, false, {}), "{\"result\":0,\"saved\":false,\"changes\":[],\"lost\":[]}\n");
  EXPECT_EQ(SheetResultJson(-1, false, {}), "{\"result\":-1,\"saved\":false,\"changes\":[],\"lost\":[]}\n");
}

TEST(SheetResult, ListsTheSavedRecordsOfEveryKind) {
  EXPECT_EQ(SheetResultJson(1, true,
                            {{{RecordKind::Profile, 2001, ChangeState::Renamed},
                              {RecordKind::Preference, 1014, ChangeState::Changed},
                              {RecordKind::AutoStartItem, 5, ChangeState::New},
                              {RecordKind::ManualConfig, 2001, ChangeState::Changed},
                              {RecordKind::AutoConfig, 2001, ChangeState::Removed}},
                             {}}),
            "{\"result\":1,\"saved\":true,\"changes\":["
            "{\"record\":\"profile\",\"id\":2001,\"state\":4},"
            "{\"record\":\"preference\",\"id\":1014,\"state\":2},"
            "{\"record\":\"autostart\",\"id\":5,\"state\":1},"
            "{\"record\":\"manualConfig\",\"id\":2001,\"state\":2},"
            "{\"record\":\"autoConfig\",\"id\":2001,\"state\":3}],\"lost\":[]}\n");
}

TEST(SheetResult, ListsWhatWasLost) {
  EXPECT_EQ(SheetResultJson(1, true, {{}, {L"Profile \"Z\u00fcrich\" is gone.", L"So is another."}}),
            "{\"result\":1,\"saved\":true,\"changes\":[],\"lost\":[\"Profile \\\"Z\xc3\xbcrich\\\" is gone.\",\"So is "
            "another.\"]}\n");
}
