#include "LoginProperties/SheetLog.h"

#include <gmock/gmock.h>

#include "tests/support/LogCapture.h"

namespace {

using testing::ElementsAre;

LogCapture::Message Info(const std::wstring& text) { return {LogSource::General, LogLevel::Info, text}; }
LogCapture::Message Error(const std::wstring& text) { return {LogSource::General, LogLevel::Error, text}; }
LogCapture::Message Detail(const std::wstring& text) { return {LogSource::General, LogLevel::Detail, text}; }

std::shared_ptr<Profile> MakeProfile(uint32_t id, const std::wstring& name, ChangeState state) {
  auto profile = std::make_shared<Profile>(id);
  profile->SetName(name);
  if (state != ChangeState::Unchanged) profile->SetState(state);
  return profile;
}

class SheetLogTest : public testing::Test {
 protected:
  const std::shared_ptr<Profile> work_ = MakeProfile(2001, L"Work", ChangeState::Changed);
  const std::shared_ptr<Profile> home_ = MakeProfile(2002, L"Home", ChangeState::Unchanged);
  const ProfileTable profiles_ = {{2001, work_}, {2002, home_}};
  const LogCapture log_;
};

TEST_F(SheetLogTest, TellsWhatTheSheetWasOpenedOn) {
  SheetLog::Opened(SheetMode::Full, profiles_, home_);
  SheetLog::Opened(SheetMode::TimeoutsOnly, {}, nullptr);
  EXPECT_THAT(log_.Messages(),
              ElementsAre(Info(L"Login properties opened: mode 1, profile 2002 'Home', profiles in all: 2"),
                          Info(L"Login properties opened: mode 2, profile (none), profiles in all: 0")));
}

TEST_F(SheetLogTest, NamesTheProfilesThatTheUserHasChanged) {
  const ProfileTable profiles = {{2001, work_},
                                 {2002, home_},
                                 {2003, MakeProfile(2003, L"Added", ChangeState::New)},
                                 {2004, MakeProfile(2004, L"Old", ChangeState::Removed)},
                                 {2005, MakeProfile(2005, L"Named", ChangeState::Renamed)}};
  SheetLog::Confirmed(profiles, {}, {}, {}, {});
  EXPECT_THAT(log_.Messages(),
              ElementsAre(Info(L"Login properties confirmed; changed: profiles 4, preferences 0, "
                               L"autostart items 0, proxies 0"),
                          Info(L"Profile 2001 'Work' is changed"), Info(L"Profile 2003 'Added' is new"),
                          Info(L"Profile 2004 'Old' is removed"), Info(L"Profile 2005 'Named' is renamed")));
}

TEST_F(SheetLogTest, CountsTheOtherRecordsThatTheUserHasChanged) {
  const auto changed = [](auto record) {
    record->SetState(ChangeState::Changed);
    return record;
  };
  const PreferenceTable preferences = {{PreferenceId{1}, changed(std::make_shared<Preference>())},
                                       {PreferenceId{2}, std::make_shared<Preference>()}};
  const AutoStartTable items = {{1, changed(std::make_shared<AutoStartItem>())},
                                {2, changed(std::make_shared<AutoStartItem>())}};
  // Null where a profile has none.
  const ConfigTable manual = {{2001, changed(std::make_shared<ConfigSetting>())}, {2002, nullptr}};
  const ConfigTable automatic = {{2001, changed(std::make_shared<ConfigSetting>())},
                                 {2002, changed(std::make_shared<ConfigSetting>())}};
  SheetLog::Confirmed({{2002, home_}}, preferences, items, manual, automatic);
  EXPECT_THAT(log_.Messages(), ElementsAre(Info(L"Login properties confirmed; changed: profiles 0, preferences 1, "
                                                L"autostart items 2, proxies 3")));
}

TEST_F(SheetLogTest, TakesNullRecordsForNothing) {
  ProfileTable profiles = profiles_;
  profiles[2003] = nullptr;
  SheetLog::Opened(SheetMode::Full, profiles, nullptr);
  SheetLog::Confirmed(profiles, {{PreferenceId{1}, nullptr}}, {{1, nullptr}}, {{2001, nullptr}}, {{2001, nullptr}});
  EXPECT_THAT(log_.Messages(), ElementsAre(Info(L"Login properties opened: mode 1, profile (none), profiles in all: 3"),
                                           Info(L"Login properties confirmed; changed: profiles 1, preferences 0, "
                                                L"autostart items 0, proxies 0"),
                                           Info(L"Profile 2001 'Work' is changed")));
}

TEST_F(SheetLogTest, TellsWhatCouldNotBeShownAndTheReasonIfThereIsOne) {
  SheetLog::NotShown(SheetMode::Full, 6, L" Error 5 (0x5)");
  SheetLog::NotShown(static_cast<SheetMode>(4), 0, {});
  EXPECT_THAT(log_.Messages(), ElementsAre(Error(L"Login properties could not be shown: mode 1, pages 6 Error 5 (0x5)"),
                                           Error(L"Login properties could not be shown: mode 4, pages 0")));
}

TEST_F(SheetLogTest, TellsThatTheUserHasCancelled) {
  SheetLog::Cancelled();
  EXPECT_THAT(log_.Messages(), ElementsAre(Info(L"Login properties cancelled")));
}

TEST_F(SheetLogTest, FollowsTheUserOverThePages) {
  SheetLog::PageShown(L"Timeouts", work_);
  SheetLog::ProfileSelected(home_);
  SheetLog::OverrideClicked(L"Timeouts", home_, true);
  SheetLog::OverrideClicked(L"Timeouts", home_, false);
  SheetLog::PageRefused(L"Wi-Fi Switching");
  SheetLog::ResetByPolicy(L"Proxy", nullptr);
  EXPECT_THAT(log_.Messages(),
              ElementsAre(Detail(L"Page 'Timeouts' shows profile 2001 'Work'"), Detail(L"Profile 2002 'Home' selected"),
                          Detail(L"Page 'Timeouts': profile 2002 'Home' overrides the defaults"),
                          Detail(L"Page 'Timeouts': profile 2002 'Home' follows the defaults"),
                          Detail(L"Page 'Wi-Fi Switching' cannot be left: a value is not valid"),
                          Detail(L"Page 'Proxy': policy resets profile (none) to the defaults")));
}

TEST_F(SheetLogTest, TellsWhatBecomesOfProfiles) {
  SheetLog::ProfileRenamed(work_, L"Office");
  SheetLog::RemovalRefused(work_);
  SheetLog::ProfileRemoved(home_);
  SheetLog::ProfileCreated(work_, 0);
  SheetLog::ProfileCreated(work_, 2002);
  SheetLog::NetworkConfigured(work_);
  SheetLog::ServersConfigured(home_);
  EXPECT_THAT(
      log_.Messages(),
      ElementsAre(Info(L"Profile 2001 'Work' is now called 'Office'"), Info(L"Profile 2001 'Work' cannot be removed"),
                  Info(L"Profile 2002 'Home' is to be removed"), Info(L"Profile 2001 'Work' made"),
                  Info(L"Profile 2001 'Work' made, with copies from profile 2002"),
                  Info(L"User ID and network service of profile 2001 'Work' set up"),
                  Info(L"Servers of profile 2002 'Home' set up")));
}

}  // namespace
