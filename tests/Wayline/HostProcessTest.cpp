// The command line of the real program. Where it fails, it says so in one line, and the settings database
// stays as it is.
#include <windows.h>

#include <nlohmann/json.hpp>

#include <filesystem>
#include <memory>
#include <stdexcept>

#include "NetUtilities/Text.h"
#include "tests/WaylineDll/StoreTest.h"
#include "WaylineDll/Store/DatabaseFile.h"

using testing::HasSubstr;
using testing::StartsWith;

namespace {

struct Close {
  void operator()(void* handle) const { CloseHandle(handle); }
};
using Handle = std::unique_ptr<void, Close>;

struct Outcome {
  DWORD exitCode = 0;
  std::string output;  // UTF-8, lines ended by line feeds alone
  std::string error;   // the same
};

// Wayline.exe as it is found in the search path.
std::wstring FindProgram() {
  wchar_t path[MAX_PATH];
  const DWORD length = SearchPathW(nullptr, L"Wayline.exe", nullptr, MAX_PATH, path, nullptr);
  if (length == 0) throw std::runtime_error("Wayline.exe is not in the search path");
  return std::wstring(path, length);
}

Handle CreateInheritedFile(const std::wstring& file) {
  SECURITY_ATTRIBUTES inherited{sizeof(inherited), nullptr, TRUE};
  return Handle(CreateFileW(file.c_str(), GENERIC_WRITE, FILE_SHARE_READ, &inherited, CREATE_ALWAYS,
                            FILE_ATTRIBUTE_NORMAL, nullptr));
}

std::string ReadText(const std::wstring& file) {
  std::string lines = FileBytes(file);
  std::erase(lines, '\r');
  return lines;
}

// Runs the program to its end. It prints into files, so that it never waits for its reader.
Outcome RunProgram(const std::vector<std::wstring>& arguments) {
  const std::wstring program = FindProgram();
  std::wstring command = L'"' + program + L'"';
  for (const std::wstring& argument : arguments) command += L" \"" + argument + L'"';

  const TemporaryFolder folder;
  Handle output = CreateInheritedFile(folder.File(L"output"));
  Handle error = CreateInheritedFile(folder.File(L"error"));
  STARTUPINFOW startup{};
  startup.cb = sizeof(startup);
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdOutput = output.get();
  startup.hStdError = error.get();
  PROCESS_INFORMATION information{};
  if (CreateProcessW(program.c_str(), command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup,
                     &information) == FALSE) {
    throw std::runtime_error("Wayline.exe cannot be started");
  }
  const Handle process(information.hProcess);
  const Handle thread(information.hThread);
  output.reset();
  error.reset();
  constexpr DWORD kLimitMilliseconds = 30'000;
  if (WaitForSingleObject(process.get(), kLimitMilliseconds) != WAIT_OBJECT_0) {
    TerminateProcess(process.get(), WAIT_TIMEOUT);
    WaitForSingleObject(process.get(), INFINITE);
  }
  Outcome outcome;
  GetExitCodeProcess(process.get(), &outcome.exitCode);
  outcome.output = ReadText(folder.File(L"output"));
  outcome.error = ReadText(folder.File(L"error"));
  return outcome;
}

class HostProcessTest : public StoreTest {
 protected:
  void MakeSample() { ASSERT_EQ(CreateDatabaseFile(file_), Failure()); }

  Outcome Run(std::vector<std::wstring> arguments) const {
    arguments.insert(arguments.end(), {L"--database", file_});
    return RunProgram(arguments);
  }

  // Runs the program and expects that it fails with this line.
  void Fails(const std::vector<std::wstring>& arguments, const std::wstring& line) const {
    const std::string before = FileBytes(file_);
    const Outcome outcome = Run(arguments);
    EXPECT_EQ(outcome.exitCode, 1u);
    EXPECT_EQ(outcome.output, "");
    EXPECT_EQ(outcome.error, ToUtf8(line) + '\n');
    EXPECT_EQ(FileBytes(file_), before);
  }

  void CannotUse(const std::wstring& reason) const { Fails({L"--list"}, CannotBeUsed(file_, reason)); }
};

}  // namespace

TEST_F(HostProcessTest, ListCreatesAMissingDatabaseAndPrintsItsProfiles) {
  const Outcome outcome = Run({L"--list"});
  EXPECT_EQ(outcome.exitCode, 0u);
  EXPECT_EQ(outcome.error, "");
  EXPECT_THAT(outcome.output, HasSubstr("\n 2004  Z\xc3\xbcrich Office     2000  no      yes         no\n"));
  EXPECT_EQ(Sql("SELECT count(*) FROM Profiles"), "9");
}

TEST_F(HostProcessTest, JsonListIsReadByPrograms) {
  const Outcome outcome = Run({L"--list", L"--json"});
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

TEST_F(HostProcessTest, RefusesAReadOnlyFile) {
  MakeSample();
  ASSERT_TRUE(SetFileAttributesW(file_.c_str(), FILE_ATTRIBUTE_READONLY));
  CannotUse(L"the settings database is read-only");
  SetFileAttributesW(file_.c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(HostProcessTest, RefusesALockedFile) {
  MakeSample();
  const std::string before = FileBytes(file_);
  Outcome outcome;
  {
    const FileLock otherProgram(file_, "BEGIN IMMEDIATE");
    outcome = Run({L"--list"});
  }
  EXPECT_EQ(outcome.exitCode, 1u);
  EXPECT_THAT(outcome.error, HasSubstr("cannot be used: the settings database is in use by another program.\n"));
  EXPECT_EQ(FileBytes(file_), before);
}

TEST_F(HostProcessTest, RefusesToCreateInAFolderThatDoesNotExist) {
  const Outcome outcome = RunProgram({L"--list", L"--database", folder_.File(L"none") + L"\\x.db"});
  EXPECT_EQ(outcome.exitCode, 1u);
  EXPECT_THAT(outcome.error, StartsWith("The settings database \""));
  EXPECT_THAT(outcome.error, HasSubstr("cannot be created"));
}

TEST_F(HostProcessTest, RefusesAProfileThatDoesNotExistOrCannotBeSelected) {
  MakeSample();
  Fails({L"--profile", L"77"}, L"Profile 77 does not exist.");
  Fails({L"--profile", L"2005"}, L"Profile 2005 cannot be selected because it is hidden or no login profile.");
}

TEST_F(HostProcessTest, RefusesAnOptionThatItDoesNotKnowBeforeItTouchesAFile) {
  const Outcome outcome = Run({L"--lists"});
  EXPECT_EQ(outcome.exitCode, 2u);
  EXPECT_EQ(outcome.output, "");
  EXPECT_EQ(outcome.error, "The command line is not understood: The following argument was not expected: --lists.\n");
  EXPECT_FALSE(std::filesystem::exists(std::filesystem::path(file_)));
}

TEST_F(HostProcessTest, HelpAndVersionAreAnsweredWithoutADatabase) {
  for (const wchar_t* option : {L"--help", L"--version"}) {
    const Outcome outcome = Run({option});
    EXPECT_EQ(outcome.exitCode, 0u);
    EXPECT_THAT(outcome.output, HasSubstr("Wayline"));
    EXPECT_EQ(outcome.error, "");
  }
  EXPECT_FALSE(std::filesystem::exists(std::filesystem::path(file_)));
}
