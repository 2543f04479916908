#include "WaylineDll/Store/DatabaseFile.h"

#include <sqlite3.h>

#include <filesystem>

#include "tests/WaylineDll/Store/StoreTest.h"
#include "WaylineDll/Store/Failures.h"

using std::filesystem::path;
using std::filesystem::perms;

namespace {

// Every test of a file that cannot be used also finds the file as it was.
class DatabaseFileTest : public StoreTest {
 protected:
  void MakeSample() {
    ASSERT_EQ(CreateDatabaseFile(file_), Failure());
    ASSERT_EQ(CheckDatabaseFile(file_, SettingsAccess::Edit), Failure());
  }

  std::vector<std::string> FilesInFolder() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder_.Path())) {
      names.push_back(entry.path().filename().string());
    }
    return names;
  }
};

}  // namespace

TEST_F(DatabaseFileTest, CreatesACompleteFileAndNothingElse) {
  MakeSample();
  EXPECT_THAT(FilesInFolder(), testing::ElementsAre("Wayline.db"));
  EXPECT_EQ(Sql("PRAGMA integrity_check"), "ok");
}

TEST_F(DatabaseFileTest, AReasonNeedsNoConnection) {
  EXPECT_EQ(ReasonText(nullptr, SQLITE_MISUSE), L"bad parameter or other API misuse");
}

TEST_F(DatabaseFileTest, CreatingLeavesNothingButTheDatabase) {
  MakeSample();
  EXPECT_THAT(FilesInFolder(), testing::ElementsAre("Wayline.db"));
}

TEST_F(DatabaseFileTest, CreatingDoesNotReplaceADatabaseThatIsThereMeanwhile) {
  MakeSample();
  Sql("DELETE FROM ClientState");
  EXPECT_EQ(CreateDatabaseFile(file_), std::nullopt);
  EXPECT_EQ(Sql("SELECT count(*) FROM ClientState"), "0");
  EXPECT_THAT(FilesInFolder(), testing::ElementsAre("Wayline.db"));
}

TEST_F(DatabaseFileTest, DoesNotCreateInAFolderThatDoesNotExist) {
  const std::wstring lost = folder_.File(L"none") + L"/Wayline.db";
  EXPECT_EQ(CreateDatabaseFile(lost),
            L"The settings database \"" + lost +
                L"\" cannot be created: the file is protected, in use, or in a folder that does not exist.");
  EXPECT_THAT(FilesInFolder(), testing::IsEmpty());
}

TEST_F(DatabaseFileTest, RefusesAFileThatIsNoDatabase) {
  const std::string text(2000, 'x');
  WriteFile(text);
  EXPECT_UNUSABLE(CheckDatabaseFile(file_, SettingsAccess::Edit), L"it is not a settings database of Wayline");
  EXPECT_EQ(FileBytes(file_), text);
}

TEST_F(DatabaseFileTest, RefusesAnEmptyFile) {
  WriteFile("");
  EXPECT_UNUSABLE(CheckDatabaseFile(file_, SettingsAccess::Edit), L"it is not a settings database of Wayline");
  EXPECT_EQ(FileBytes(file_), "");
}

TEST_F(DatabaseFileTest, RefusesAFolder) {
  std::filesystem::create_directory(path(file_));
  EXPECT_UNUSABLE(CheckDatabaseFile(file_, SettingsAccess::Edit), L"it is not a settings database of Wayline");
}

TEST_F(DatabaseFileTest, RefusesTheDatabaseOfAnotherProgram) {
  Sql("CREATE TABLE Songs (Title TEXT)");
  const std::string before = FileBytes(file_);
  EXPECT_UNUSABLE(CheckDatabaseFile(file_, SettingsAccess::Edit), L"it is not a settings database of Wayline");
  EXPECT_EQ(FileBytes(file_), before);
}

TEST_F(DatabaseFileTest, RefusesOtherVersions) {
  MakeSample();
  Sql("PRAGMA user_version = 0");
  const std::string older = FileBytes(file_);
  EXPECT_UNUSABLE(CheckDatabaseFile(file_, SettingsAccess::Edit), L"it was made by an older version of Wayline");
  EXPECT_EQ(FileBytes(file_), older);
  Sql("PRAGMA user_version = 2");
  const std::string newer = FileBytes(file_);
  EXPECT_UNUSABLE(CheckDatabaseFile(file_, SettingsAccess::Edit), L"it was made by a newer version of Wayline");
  EXPECT_EQ(FileBytes(file_), newer);
}

TEST_F(DatabaseFileTest, NamesATableThatIsMissing) {
  for (const std::string table :
       {"ClientState", "Services", "ConfigSettings", "AutoStart", "Preferences", "Profiles"}) {
    std::filesystem::remove(path(file_));
    MakeSample();
    Sql("DROP TABLE " + table);
    const std::string before = FileBytes(file_);
    EXPECT_UNUSABLE(
        CheckDatabaseFile(file_, SettingsAccess::Edit),
        L"the settings database is incomplete (no such table: " + std::wstring(table.begin(), table.end()) + L")");
    EXPECT_EQ(FileBytes(file_), before);
  }
}

TEST_F(DatabaseFileTest, NamesAColumnThatIsMissing) {
  MakeSample();
  Sql("ALTER TABLE Profiles DROP COLUMN WarnTime");
  EXPECT_UNUSABLE(CheckDatabaseFile(file_, SettingsAccess::Edit),
                  L"the settings database is incomplete (no such column: WarnTime)");
}

TEST_F(DatabaseFileTest, RefusesAWriteProtectedFile) {
  MakeSample();
  constexpr perms kWrite = perms::owner_write | perms::group_write | perms::others_write;
  std::filesystem::permissions(path(file_), kWrite, std::filesystem::perm_options::remove);
  EXPECT_UNUSABLE(CheckDatabaseFile(file_, SettingsAccess::Edit), L"the settings database is read-only");
  std::filesystem::permissions(path(file_), perms::owner_write, std::filesystem::perm_options::add);
  EXPECT_EQ(CheckDatabaseFile(file_, SettingsAccess::Edit), Failure());
}

TEST_F(DatabaseFileTest, RefusesAFileThatAnotherProgramLocks) {
  MakeSample();
  const std::string before = FileBytes(file_);
  for (const char* lock : {"BEGIN EXCLUSIVE", "BEGIN IMMEDIATE"}) {
    const FileLock otherProgram(file_, lock);
    EXPECT_UNUSABLE(CheckDatabaseFile(file_, SettingsAccess::Edit),
                    L"the settings database is in use by another program")
        << lock;
  }
  EXPECT_EQ(FileBytes(file_), before);
  EXPECT_EQ(CheckDatabaseFile(file_, SettingsAccess::Edit), Failure());
}

TEST_F(DatabaseFileTest, RefusesADamagedFile) {
  MakeSample();
  std::string bytes = FileBytes(file_);
  const size_t firstPageEnd = 4096;
  std::fill(bytes.begin() + 100, bytes.begin() + firstPageEnd, '\x7f');
  WriteFile(bytes);
  EXPECT_UNUSABLE(CheckDatabaseFile(file_, SettingsAccess::Edit), L"the settings database is damaged");
  EXPECT_EQ(FileBytes(file_), bytes);
}

TEST_F(DatabaseFileTest, RefusesLinksThatHaveNoEnd) {
  MakeSample();
  Sql("DROP TRIGGER ProfileUpdateKeepsChains; UPDATE Profiles SET LinkProfile = 2001 WHERE ProfileId = 1");
  EXPECT_UNUSABLE(CheckDatabaseFile(file_, SettingsAccess::Edit),
                  L"the settings database is damaged (the links of profile 1 have no end)");
  Sql("UPDATE Profiles SET LinkProfile = 7 WHERE ProfileId = 1");
  EXPECT_UNUSABLE(CheckDatabaseFile(file_, SettingsAccess::Edit),
                  L"the settings database is damaged (the links of profile 1 have no end)");
}
