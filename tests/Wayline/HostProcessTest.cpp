// The command line of the real program. Where it fails, it says so in one line, and the settings database
// stays as it is.
#include <windows.h>

#include <nlohmann/json.hpp>

#include <filesystem>

#include "NetUtilities/Text/Utf8.h"
#include "tests/support/ProgramRun.h"
#include "tests/WaylineDll/Store/StoreTest.h"
#include "WaylineDll/Store/DatabaseCreation.h"

using testing::HasSubstr;
using testing::StartsWith;

namespace {

// Runs the program to its end.
ProgramOutcome RunHost(const std::vector<std::wstring>& arguments) { return RunProgram(L"Wayline.exe", arguments); }

class HostProcessTest : public StoreTest {
 protected:
  void MakeSample() { ASSERT_EQ(CreateDatabaseFile(file_), Failure()); }

  ProgramOutcome Run(std::vector<std::wstring> arguments) const {
    arguments.insert(arguments.end(), {L"--database", file_});
    return RunHost(arguments);
  }

  // Runs the program and expects that it fails with this line.
  void Fails(const std::vector<std::wstring>& arguments, const std::wstring& line) const {
    const std::string before = FileBytes(file_);
    const ProgramOutcome outcome = Run(arguments);
    EXPECT_EQ(outcome.exitCode, 1u);
    EXPECT_EQ(outcome.output, "");
    EXPECT_EQ(outcome.error, ToUtf8(line) + '\n');
    EXPECT_EQ(FileBytes(file_), before);
  }

  void CannotUse(const std::wstring& reason) const { Fails({L"--list"}, CannotBeUsed(file_, reason)); }
};

}  // namespace

TEST_F(HostProcessTest, ListCreatesAMissingDatabaseAndPrintsItsProfiles) {
  const ProgramOutcome outcome = Run({L"--list"});
  EXPECT_EQ(outcome.exitCode, 0u);
  EXPECT_EQ(outcome.error, "");
  EXPECT_THAT(outcome.output, HasSubstr("\n 2004  Z\xc3\xbcrich Office     2000  no      yes         no\n"));
  EXPECT_EQ(Sql("SELECT count(*) FROM Profiles"), "9");
}

TEST_F(HostProcessTest, JsonListIsReadByPrograms) {
  const ProgramOutcome outcome = Run({L"--list", L"--json"});
  EXPECT_EQ(outcome.exitCode, 0u);
  const auto list = nlohmann::json::parse(outcome.output);
  ASSERT_EQ(list.size(), 9u);
  EXPECT_EQ(list[3]["id"], 2001);
  EXPECT_EQ(list[3]["active"], true);
}

TEST_F(HostProcessTest, ListingLeavesTheDatabaseAsItIs) {
  MakeSample();
  const std::string before = FileBytes(file_);
  EXPECT_EQ(Run({L"--list"}).exitCode, 0u);
  EXPECT_EQ(FileBytes(file_), before);
}

TEST_F(HostProcessTest, OpensAFileWhoseNameIsNotAscii) {
  file_ = folder_.File(L"Z\u00fcrich \u0416.db");
  EXPECT_EQ(Run({L"--list"}).exitCode, 0u);
  EXPECT_TRUE(std::filesystem::exists(std::filesystem::path(file_)));
}

TEST_F(HostProcessTest, RefusesAFileThatIsNoDatabase) {
  WriteFile("These are notes, not settings.\n");
  CannotUse(L"it is not a settings database of Wayline");
}

TEST_F(HostProcessTest, RefusesAnOlderSchema) {
  MakeSample();
  Sql("PRAGMA user_version = 0");
  CannotUse(L"it was made by an older version of Wayline");
}

TEST_F(HostProcessTest, RefusesTheDatabaseOfAnotherProgram) {
  Sql("CREATE TABLE Songs (Title TEXT)");
  CannotUse(L"it is not a settings database of Wayline");
}

TEST_F(HostProcessTest, ListsAReadOnlyFile) {
  MakeSample();
  ASSERT_TRUE(SetFileAttributesW(file_.c_str(), FILE_ATTRIBUTE_READONLY));
  EXPECT_EQ(Run({L"--list"}).exitCode, 0u);
  SetFileAttributesW(file_.c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(HostProcessTest, ListsAFileThatAnotherProgramIsAboutToWrite) {
  MakeSample();
  const FileLock otherProgram(file_, "BEGIN IMMEDIATE");
  EXPECT_EQ(Run({L"--list"}).exitCode, 0u);
}

TEST_F(HostProcessTest, ListsAFileOfVersion1AndLeavesItAsItIs) {
  const auto original = std::filesystem::path(PROJECT_ROOT) / "tests/WaylineDll/Store/Version1.db";
  std::filesystem::copy_file(original, std::filesystem::path(file_));
  const ProgramOutcome outcome = Run({L"--list"});
  EXPECT_EQ(outcome.exitCode, 0u);
  EXPECT_THAT(outcome.output, HasSubstr("Work at home"));
  EXPECT_EQ(FileBytes(file_), FileBytes(original));
  EXPECT_THAT(FilesInFolder(), testing::ElementsAre("Wayline.db"));
}

TEST_F(HostProcessTest, RefusesALockedFile) {
  MakeSample();
  const std::string before = FileBytes(file_);
  ProgramOutcome outcome;
  {
    const FileLock otherProgram(file_, "BEGIN EXCLUSIVE");
    outcome = Run({L"--list"});
  }
  EXPECT_EQ(outcome.exitCode, 1u);
  EXPECT_THAT(outcome.error, HasSubstr("cannot be used: the settings database is in use by another program.\n"));
  EXPECT_EQ(FileBytes(file_), before);
}

TEST_F(HostProcessTest, RefusesToCreateInAFolderThatDoesNotExist) {
  const ProgramOutcome outcome = RunHost({L"--list", L"--database", folder_.File(L"none") + L"\\x.db"});
  EXPECT_EQ(outcome.exitCode, 1u);
  EXPECT_THAT(outcome.error, StartsWith("The settings database \""));
  EXPECT_THAT(outcome.error, HasSubstr("cannot be created"));
}

TEST_F(HostProcessTest, RefusesAProfileThatDoesNotExistOrCannotBeSelected) {
  MakeSample();
  Fails({L"--profile", L"77"}, L"Profile 77 does not exist.");
  Fails({L"--profile", L"2005"}, L"Profile 2005 cannot be selected because it is hidden or no login profile.");
}

TEST_F(HostProcessTest, StoresNoValuesOfTheOptionsForAProfileThatItRefuses) {
  MakeSample();
  Fails({L"--profile", L"77", L"--connection", L"connected", L"--bookmark", L"8=0"}, L"Profile 77 does not exist.");
}

TEST_F(HostProcessTest, RefusesAnOptionThatItDoesNotKnowBeforeItTouchesAFile) {
  const ProgramOutcome outcome = Run({L"--lists"});
  EXPECT_EQ(outcome.exitCode, 2u);
  EXPECT_EQ(outcome.output, "");
  EXPECT_EQ(outcome.error, "The command line is not understood: The following argument was not expected: --lists.\n");
  EXPECT_FALSE(std::filesystem::exists(std::filesystem::path(file_)));
}

TEST_F(HostProcessTest, HelpAndVersionAreAnsweredWithoutADatabase) {
  for (const wchar_t* option : {L"--help", L"--version"}) {
    const ProgramOutcome outcome = Run({option});
    EXPECT_EQ(outcome.exitCode, 0u);
    EXPECT_THAT(outcome.output, HasSubstr("Wayline"));
    EXPECT_EQ(outcome.error, "");
  }
  EXPECT_FALSE(std::filesystem::exists(std::filesystem::path(file_)));
}
