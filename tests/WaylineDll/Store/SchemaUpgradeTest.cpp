#include "WaylineDll/Store/SchemaUpgrade.h"

#include <sqlite3.h>

#include <array>
#include <filesystem>

#include "tests/support/FaultyFileSystem.h"
#include "tests/support/InThreads.h"
#include "tests/WaylineDll/Store/StoreTest.h"
#include "WaylineDll/Store/DatabaseCreation.h"
#include "WaylineDll/Store/DatabaseFile.h"

#ifndef _WIN32
#include "tests/support/ForkedProcess.h"
#endif

using std::filesystem::path;
using testing::ElementsAre;
using testing::SizeIs;

namespace {

// All rows that a database of version 1 has, as one text.
constexpr char kRowsOfVersion1[] =
    "SELECT (SELECT group_concat(quote(ProfileId) || quote(Name) || quote(LinkProfile) || quote(UserId) || "
    "quote(Account) || quote(DurationTime) || quote(WarnTime) || quote(SMIdleTime), ';') FROM Profiles),"
    "(SELECT group_concat(PreferenceId || ',' || ProfileId || ',' || State || ',' || Visible || ',' || IPSecRequired, "
    "';') FROM Preferences),"
    "(SELECT group_concat(Id || ',' || ProfileId || ',' || Phase || ',' || quote(Name) || quote(Program), ';') FROM "
    "AutoStart),"
    "(SELECT group_concat(ConfigId || ',' || ProfileId || ',' || Automatic || quote(AutoProxyUrl) || "
    "quote(ManualProxy), ';') FROM ConfigSettings),"
    "(SELECT group_concat(ServiceId || quote(Name) || quote(DisplayText), ';') FROM Services),"
    "(SELECT group_concat(Name || quote(Value), ';') FROM ClientState WHERE Name = 'ActiveProfile')";

// A database that the client of version 1 has made, and in which somebody has changed something of each kind.
class SchemaUpgradeTest : public StoreTest {
 protected:
  void SetUp() override {
    Restore();
    rows_ = Sql(kRowsOfVersion1);
    ASSERT_THAT(rows_, testing::HasSubstr("u.own"));
  }

  void Restore() const {
    const path original = path(PROJECT_ROOT) / "tests/WaylineDll/Store/Version1.db";
    std::filesystem::copy_file(original, path(file_), std::filesystem::copy_options::overwrite_existing);
  }

  std::wstring Copy() const { return folder_.File(L"Wayline.version1.db"); }

  Failure Upgrade() const { return CheckDatabaseFile(file_, SettingsAccess::Edit); }

  std::string Version() const { return Sql("PRAGMA user_version"); }

  std::string rows_;
};

// What makes up a schema, without the pages that it lies in.
constexpr char kSchema[] =
    "SELECT group_concat(type || ' ' || name || ' ' || tbl_name || ' ' || ifnull(sql, ''), char(10)) FROM "
    "(SELECT * FROM sqlite_master ORDER BY type, name)";
constexpr char kNewRows[] =
    "SELECT (SELECT group_concat(BookmarkId || '=' || Value) FROM Bookmarks), "
    "(SELECT group_concat(Name || '=' || Value) FROM (SELECT * FROM ClientState ORDER BY Name))";

}  // namespace

TEST_F(SchemaUpgradeTest, KeepsEveryRow) {
  ASSERT_EQ(Upgrade(), Failure());
  EXPECT_EQ(Version(), "2");
  EXPECT_EQ(Sql(kRowsOfVersion1), rows_);
  EXPECT_EQ(Sql("PRAGMA integrity_check"), "ok");
  OpenSample();
  ProfileTable profiles;
  ASSERT_EQ(store_.LoadProfiles(profiles), Failure());
  EXPECT_THAT(profiles, SizeIs(9));
  EXPECT_EQ(profiles.at(2001)->GetName(), L"Work at home");
  EXPECT_EQ(profiles.at(3000)->GetName(), L"Caf\u00e9 \u20ac");
}

TEST_F(SchemaUpgradeTest, LeadsToTheSchemaAndTheRowsOfANewDatabase) {
  ASSERT_EQ(Upgrade(), Failure());
  const std::string schema = Sql(kSchema);
  const std::string rows = Sql(kNewRows);
  const std::string numbers = Sql("SELECT * FROM pragma_application_id, pragma_user_version");
  file_ = folder_.File(L"New.db");
  ASSERT_EQ(CreateDatabaseFile(file_), Failure());
  EXPECT_EQ(schema, Sql(kSchema));
  EXPECT_EQ(rows, Sql(kNewRows));
  EXPECT_EQ(numbers, Sql("SELECT * FROM pragma_application_id, pragma_user_version"));
}

TEST_F(SchemaUpgradeTest, LeavesACopyOfWhatWasThere) {
  ASSERT_EQ(Upgrade(), Failure());
  EXPECT_THAT(FilesInFolder(), ElementsAre("Wayline.db", "Wayline.version1.db"));
  file_ = Copy();
  EXPECT_EQ(Version(), "1");
  EXPECT_EQ(Sql(kRowsOfVersion1), rows_);
  EXPECT_EQ(Sql("PRAGMA integrity_check"), "ok");
}

TEST_F(SchemaUpgradeTest, ReplacesTheCopyOfAnEarlierUpgrade) {
  ASSERT_EQ(Upgrade(), Failure());
  Restore();
  Sql("UPDATE Profiles SET Name = 'Later' WHERE ProfileId = 2001");
  ASSERT_EQ(Upgrade(), Failure());
  file_ = Copy();
  EXPECT_EQ(Sql("SELECT Name FROM Profiles WHERE ProfileId = 2001"), "Later");
}

TEST_F(SchemaUpgradeTest, TheNextOpeningHasNothingToDo) {
  ASSERT_EQ(Upgrade(), Failure());
  std::filesystem::remove(path(Copy()));
  const std::string before = FileBytes(file_);
  EXPECT_EQ(Upgrade(), Failure());
  EXPECT_EQ(FileBytes(file_), before);
  EXPECT_THAT(FilesInFolder(), ElementsAre("Wayline.db"));
}

TEST_F(SchemaUpgradeTest, ReadingDoesNotUpgrade) {
  const std::string before = FileBytes(file_);
  {
    SettingsStore store;
    ASSERT_EQ(store.Open(file_, SettingsAccess::Read), Failure());
    ProfileTable profiles;
    EXPECT_EQ(store.LoadProfiles(profiles), Failure());
    EXPECT_THAT(profiles, SizeIs(9));
  }
  EXPECT_EQ(FileBytes(file_), before);
  EXPECT_THAT(FilesInFolder(), ElementsAre("Wayline.db"));
}

TEST_F(SchemaUpgradeTest, AFileThatCannotBeUsedIsNotUpgraded) {
  Sql("DROP TABLE Services");
  const std::string incomplete = FileBytes(file_);
  EXPECT_UNUSABLE(Upgrade(), L"the settings database is incomplete (table Services)");
  EXPECT_EQ(FileBytes(file_), incomplete);

  Restore();
  Sql("DROP TRIGGER ProfileUpdateKeepsChains; UPDATE Profiles SET LinkProfile = 2001 WHERE ProfileId = 1");
  const std::string endless = FileBytes(file_);
  EXPECT_UNUSABLE(Upgrade(), L"the settings database is damaged (the links of profile 1 have no end)");
  EXPECT_EQ(FileBytes(file_), endless);
  EXPECT_THAT(FilesInFolder(), ElementsAre("Wayline.db"));
}

TEST_F(SchemaUpgradeTest, AnUpgradeThatFailsLeavesTheFileAsItWas) {
  Sql("CREATE TABLE Bookmarks (Other TEXT)");
  const std::string before = FileBytes(file_);
  EXPECT_UNUSABLE(Upgrade(), L"the settings database is incomplete");
  EXPECT_EQ(FileBytes(file_), before);
}

TEST_F(SchemaUpgradeTest, IsRefusedWhileTheDiskIsFull) {
  const std::string before = FileBytes(file_);
  FaultyFileSystem files;
  files.FullAfter(20'000);
  EXPECT_UNUSABLE(
      Upgrade(), L"it is of an older version of Wayline, and cannot be copied before it is upgraded: the disk is full");
  EXPECT_EQ(FileBytes(file_), before);
  EXPECT_THAT(FilesInFolder(), ElementsAre("Wayline.db"));
  // Room for the copy, and for little more.
  files.FullAfter(static_cast<int64_t>(before.size()) + 1000);
  EXPECT_UNUSABLE(Upgrade(), L"the disk is full");
  EXPECT_EQ(FileBytes(file_), before);
  files.MakeRoom();
  EXPECT_EQ(Upgrade(), Failure());
}

TEST_F(SchemaUpgradeTest, IsRefusedWhileAnotherProgramUsesTheFile) {
  const std::string before = FileBytes(file_);
  const FileLock otherProgram(file_, "BEGIN IMMEDIATE");
  EXPECT_UNUSABLE(Upgrade(), L"the settings database is in use by another program");
  EXPECT_EQ(FileBytes(file_), before);
}

TEST_F(SchemaUpgradeTest, ProgramsThatUpgradeAtTheSameTimeAllUseTheResult) {
  constexpr int kRounds = 10;
  for (int round = 0; round < kRounds; ++round) {
    Restore();
    std::array<Failure, kThreads> failures;
    InThreads([&](int thread) {
      Failure& failure = failures[static_cast<size_t>(thread)];
      // On a slow machine one may be still at it.
      do {
        failure = Upgrade();
      } while (failure == CannotBeUsed(file_, L"the settings database is in use by another program"));
    });
    ASSERT_THAT(failures, testing::Each(Failure())) << round;
    ASSERT_EQ(Version(), "2");
    ASSERT_EQ(Sql("SELECT count(*) FROM Bookmarks"), "1");
  }
}

#ifndef _WIN32
TEST_F(SchemaUpgradeTest, AProgramThatIsKilledLeavesTheOldOrTheNewDatabase) {
  // Enough pages for many moments.
  Sql("INSERT INTO AutoStart (ProfileId, Phase, ItemOrder, RecordType, Name, Program) SELECT 3000, 300, 1, 2, 'x', "
      "hex(zeroblob(1500)) FROM Preferences");
  rows_ = Sql(kRowsOfVersion1);
  const std::string original = FileBytes(file_);
  std::vector<std::pair<int, FaultyFileSystem::Moment>> moments;
  {
    const FaultyFileSystem files;
    ASSERT_EQ(Upgrade(), Failure());
    moments = files.MomentsFrom(1);
  }
  EXPECT_GE(moments.size(), 200u);
  size_t upgraded = 0;
  for (const auto& [operation, moment] : moments) {
    for (const auto& entry : std::filesystem::directory_iterator(folder_.Path())) std::filesystem::remove(entry);
    WriteFile(original);
    const ForkedEnd end = DoInForkedProcess([&, fatal = operation, when = moment] {
      FaultyFileSystem files;
      files.DieAt(fatal, when);
      Upgrade();
    });
    ASSERT_EQ(end, ForkedEnd::Killed);
    const bool copied = std::filesystem::exists(path(Copy()));
    const std::string version = Version();
    ASSERT_THAT(version, testing::AnyOf("1", "2")) << operation;
    upgraded += version == "2" ? 1 : 0;
    ASSERT_EQ(Sql(kRowsOfVersion1), rows_) << operation;
    ASSERT_EQ(Sql("PRAGMA integrity_check"), "ok") << operation;
    ASSERT_EQ(Sql("SELECT count(*) FROM sqlite_master WHERE name = 'Bookmarks'"), version == "2" ? "1" : "0");
    ASSERT_TRUE(copied || version == "1") << operation;
    ASSERT_EQ(Upgrade(), Failure()) << operation;
    ASSERT_EQ(Version(), "2");
    ASSERT_EQ(Sql(kRowsOfVersion1), rows_);
    const std::wstring file = std::exchange(file_, Copy());
    ASSERT_EQ(Sql("PRAGMA integrity_check"), "ok") << operation;
    ASSERT_EQ(Sql(kRowsOfVersion1), rows_) << operation;
    file_ = file;
  }
  EXPECT_GT(upgraded, 0u);
  EXPECT_LT(upgraded, moments.size());
}
#endif
