// Saving that is cut short: by a full disk, or by the end of the process at any moment.
#include <filesystem>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "tests/support/FaultyFileSystem.h"
#include "tests/WaylineDll/Store/StoreTest.h"

#ifndef _WIN32
#include "tests/support/ForkedProcess.h"
#endif

using namespace std::chrono_literals;

namespace {

constexpr char kAllRows[] =
    "SELECT (SELECT group_concat(ProfileId || Name || ifnull(UserId, '') || ifnull(DurationTime, '') || "
    "ifnull(HelpdeskText, '')) FROM Profiles), "
    "(SELECT group_concat(ProfileId || ':' || PreferenceId || '=' || State) FROM Preferences), "
    "(SELECT group_concat(Id || Name || ifnull(Program, '')) FROM AutoStart), "
    "(SELECT group_concat(ConfigId || ManualProxy) FROM ConfigSettings)";

// Something of everything, in many pages.
void Edit(SettingsStore& store, SettingsTables& tables) {
  ASSERT_EQ(store.LoadProfiles(tables.profiles), Failure());
  for (const uint32_t id : {2001u, 2002u, 2003u}) {
    Profile& profile = *tables.profiles.at(id);
    profile.SetUserId(L"changed");
    profile.Columns().helpdeskText = std::wstring(60000, L'x');
    profile.SetDefaultPreferences(false);
    profile.SetDefaultTimeouts(false);
    profile.SetDefaultAutostart(false);
    profile.SetState(ChangeState::Changed);
  }
  tables.profiles.at(2004)->SetState(ChangeState::Removed);
  std::shared_ptr<Profile> created;
  ASSERT_EQ(store.CreateProfile(created), Failure());
  created->SetName(L"New");
  created->SetState(ChangeState::New);
  tables.profiles[created->GetProfileId()] = created;
  AutoStartTable items;
  ASSERT_TRUE(store.LoadAutoStart(2003, items));
  for (const auto& [id, item] : items) {
    item->fields.program = std::wstring(9000, L'y');
    item->SetState(ChangeState::Changed);
  }
  const auto config = store.LoadConfig(2002, false);
  config->fields.manualProxy = std::wstring(9000, L'z');
  config->SetState(ChangeState::Changed);
}

class SavingInterrupted : public StoreTest {};

}  // namespace

TEST_F(SavingInterrupted, AFullDiskChangesNothingAndTheNextTrySavesAll) {
  FaultyFileSystem files;
  SettingsStore store;
  ASSERT_EQ(store.Open(file_), Failure());
  SettingsTables tables;
  Edit(store, tables);
  const std::string before = Sql(kAllRows);
  SaveReport report;
  for (const int64_t room : {0, 1000, 20'000}) {
    files.FullAfter(room);
    const Failure failure = store.Save(tables, report);
    ASSERT_TRUE(failure) << room;
    EXPECT_EQ(failure->find(L"Nothing was saved"), 0u) << room;
    EXPECT_NE(failure->find(L"the disk is full"), std::wstring::npos) << room;
    EXPECT_EQ(Sql(kAllRows), before);
  }
  files.MakeRoom();
  EXPECT_EQ(store.Save(tables, report), Failure());
  EXPECT_NE(Sql(kAllRows), before);
}

#ifndef _WIN32
TEST_F(SavingInterrupted, AProgramThatIsKilledLeavesTheOldOrTheNewDatabase) {
  { ASSERT_EQ(SettingsStore().Open(file_), Failure()); }
  const std::string original = FileBytes(file_);
  const std::string before = Sql(kAllRows);
  const auto save = [&](const std::function<void()>& beforeSaving) {
    SettingsStore store;
    ASSERT_EQ(store.Open(file_), Failure());
    SettingsTables tables;
    Edit(store, tables);
    beforeSaving();
    SaveReport report;
    ASSERT_EQ(store.Save(tables, report), Failure());
  };
  std::vector<std::pair<int, FaultyFileSystem::Moment>> moments;
  {
    const FaultyFileSystem files;
    int first = 0;
    save([&] { first = files.Operations() + 1; });
    moments = files.MomentsFrom(first);
  }
  const std::string after = Sql(kAllRows);
  ASSERT_NE(after, before);
  EXPECT_GE(moments.size(), 200u);

  size_t saved = 0;
  for (const auto& [operation, moment] : moments) {
    for (const auto& entry : std::filesystem::directory_iterator(folder_.Path())) std::filesystem::remove(entry);
    WriteFile(original);
    const ForkedEnd end = DoInForkedProcess([&, fatal = operation, when = moment] {
      FaultyFileSystem files;
      save([&] { files.DieAt(fatal, when); });
    });
    ASSERT_EQ(end, ForkedEnd::Killed) << operation;
    // Whoever opens the file next finds one of the two.
    { ASSERT_EQ(SettingsStore().Open(file_), Failure()) << operation; }
    const std::string rows = Sql(kAllRows);
    ASSERT_TRUE(rows == before || rows == after) << operation;
    ASSERT_EQ(Sql("PRAGMA integrity_check"), "ok") << operation;
    saved += rows == after ? 1 : 0;
  }
  EXPECT_GT(saved, 0u);
  EXPECT_LT(saved, moments.size());
}
#endif
