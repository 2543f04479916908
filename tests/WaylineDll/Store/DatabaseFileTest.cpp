#include "WaylineDll/Store/DatabaseFile.h"

#include <sqlite3.h>

#include <filesystem>

#include "NetUtilities/Text/Utf8.h"
#include "tests/support/FaultyFileSystem.h"
#include "tests/WaylineDll/Store/StoreTest.h"
#include "WaylineDll/Store/DatabaseCreation.h"

#ifndef _WIN32
#include <unistd.h>

#include "tests/support/ForkedProcess.h"
#endif

using std::filesystem::path;
using std::filesystem::perms;

namespace {

constexpr perms kWrite = perms::owner_write | perms::group_write | perms::others_write;

// Every test of a file that cannot be used also finds the file as it was.
class DatabaseFileTest : public StoreTest {
 protected:
  void MakeSample() {
    ASSERT_EQ(CreateDatabaseFile(file_), Failure());
    ASSERT_EQ(CheckDatabaseFile(file_, SettingsAccess::Edit), Failure());
  }

  // Refused to be edited for this reason, with the file and its folder as they were.
  void IsRefused(const std::wstring& reason) const {
    const std::string before = FileBytes(file_);
    EXPECT_UNUSABLE(CheckDatabaseFile(file_, SettingsAccess::Edit), reason);
    EXPECT_EQ(FileBytes(file_), before);
    EXPECT_THAT(FilesInFolder(), testing::ElementsAre("Wayline.db"));
  }
};

}  // namespace

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
  Sql("PRAGMA user_version = 3");
  const std::string newer = FileBytes(file_);
  EXPECT_UNUSABLE(CheckDatabaseFile(file_, SettingsAccess::Edit), L"it was made by a newer version of Wayline");
  EXPECT_EQ(FileBytes(file_), newer);
}

TEST_F(DatabaseFileTest, NamesATableThatIsMissing) {
  for (const std::string table :
       {"Bookmarks", "ClientState", "Services", "ConfigSettings", "AutoStart", "Preferences", "Profiles"}) {
    std::filesystem::remove(path(file_));
    MakeSample();
    Sql("DROP TABLE " + table);
    IsRefused(L"the settings database is incomplete (table " + FromUtf8(table) + L")");
  }
}

TEST_F(DatabaseFileTest, NamesTheTableOfAColumnThatIsMissing) {
  MakeSample();
  Sql("ALTER TABLE Profiles DROP COLUMN WarnTime");
  IsRefused(L"the settings database is incomplete (table Profiles)");
}

TEST_F(DatabaseFileTest, TheWordsOfSqliteAreForTheLog) {
  MakeSample();
  Sql("ALTER TABLE Profiles DROP COLUMN WarnTime");
  CheckDatabaseFile(file_, SettingsAccess::Edit);
  EXPECT_THAT(log_.Messages(), testing::Contains(LogCapture::Message{LogSource::Database, LogLevel::Error,
                                                                     L"(1) no such column: WarnTime"}));
}

TEST_F(DatabaseFileTest, RefusesAWriteProtectedFile) {
  MakeSample();
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

TEST_F(DatabaseFileTest, WhatCanBeEditedStaysAsItIsUntilThen) {
  MakeSample();
  const std::string before = FileBytes(file_);
  EXPECT_EQ(CheckDatabaseFile(file_, SettingsAccess::Edit), Failure());
  EXPECT_EQ(FileBytes(file_), before);
  EXPECT_THAT(FilesInFolder(), testing::ElementsAre("Wayline.db"));
}

TEST_F(DatabaseFileTest, RefusesAFileOnAFullDisk) {
  MakeSample();
  FaultyFileSystem files;
  files.FullAfter(0);
  IsRefused(L"the disk is full");
  files.MakeRoom();
  EXPECT_EQ(CheckDatabaseFile(file_, SettingsAccess::Edit), Failure());
}

TEST_F(DatabaseFileTest, ReadingNeedsNoRightToWrite) {
  MakeSample();
  std::filesystem::permissions(path(file_), kWrite, std::filesystem::perm_options::remove);
  FaultyFileSystem files;
  files.FullAfter(0);
  EXPECT_EQ(CheckDatabaseFile(file_, SettingsAccess::Read), Failure());
  std::filesystem::permissions(path(file_), perms::owner_write, std::filesystem::perm_options::add);
}

TEST_F(DatabaseFileTest, ReadsWhileAnotherProgramIsAboutToWrite) {
  MakeSample();
  const FileLock otherProgram(file_, "BEGIN IMMEDIATE; UPDATE Services SET Name = 'x'");
  EXPECT_EQ(CheckDatabaseFile(file_, SettingsAccess::Read), Failure());
}

TEST_F(DatabaseFileTest, ReadingRefusesWhatItCannotUse) {
  MakeSample();
  {
    const FileLock otherProgram(file_, "BEGIN EXCLUSIVE");
    EXPECT_UNUSABLE(CheckDatabaseFile(file_, SettingsAccess::Read),
                    L"the settings database is in use by another program");
  }
  Sql("DROP TABLE Services");
  EXPECT_UNUSABLE(CheckDatabaseFile(file_, SettingsAccess::Read),
                  L"the settings database is incomplete (table Services)");
  WriteFile("These are notes.");
  EXPECT_UNUSABLE(CheckDatabaseFile(file_, SettingsAccess::Read), L"it is not a settings database of Wayline");
}

#ifndef _WIN32
namespace {

// The administrator of the machine may write everywhere.
void BecomeAnotherUser() {
  constexpr uid_t kNobody = 65534;
  EXPECT_TRUE(geteuid() != 0 || seteuid(kNobody) == 0);
}

}  // namespace

TEST_F(DatabaseFileTest, RefusesAFolderThatCannotBeWrittenTo) {
  MakeSample();
  std::filesystem::permissions(path(file_), perms::all);
  constexpr perms kRead = perms::group_read | perms::group_exec | perms::others_read | perms::others_exec;
  std::filesystem::permissions(folder_.Path(), kWrite, std::filesystem::perm_options::remove);
  std::filesystem::permissions(folder_.Path(), kRead, std::filesystem::perm_options::add);
  const ForkedEnd end = DoInForkedProcess([&] {
    BecomeAnotherUser();
    IsRefused(L"the folder of the settings database cannot be written to");
    EXPECT_EQ(CheckDatabaseFile(file_, SettingsAccess::Read), Failure());
    SettingsStore store;
    EXPECT_EQ(store.Open(file_, SettingsAccess::Read), Failure());
    ProfileTable profiles;
    EXPECT_EQ(store.LoadProfiles(profiles), Failure());
    EXPECT_THAT(profiles, testing::SizeIs(9));
  });
  std::filesystem::permissions(folder_.Path(), perms::owner_all);
  EXPECT_EQ(end, ForkedEnd::Succeeded);
}

TEST_F(DatabaseFileTest, ReadsWhatAProgramHasLeftThatWasKilledWhileItSaved) {
  MakeSample();
  const ForkedEnd end = DoInForkedProcess([&] {
    FaultyFileSystem files;
    Sql("UPDATE Services SET Name = 'x'");
    // Just before the journal goes.
    files.DieAt(2 * files.Operations(), FaultyFileSystem::Moment::Before);
    Sql("UPDATE Services SET Name = 'y'");
  });
  ASSERT_EQ(end, ForkedEnd::Killed);
  ASSERT_THAT(FilesInFolder(), testing::ElementsAre("Wayline.db", "Wayline.db-journal"));
  EXPECT_EQ(CheckDatabaseFile(file_, SettingsAccess::Read), Failure());
  EXPECT_EQ(Sql("SELECT DISTINCT Name FROM Services"), "x");
  EXPECT_THAT(FilesInFolder(), testing::ElementsAre("Wayline.db"));
}
#endif
