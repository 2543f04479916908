#include "NetUtilities/PathData.h"

#include <windows.h>

#include <gmock/gmock.h>
#include <shlobj.h>

#include <filesystem>

#include "NetUtilities/ErrorText.h"
#include "NetUtilities/RegistryKey.h"
#include "tests/support/LogCapture.h"
#include "tests/support/OwnProcess.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TestingIni.h"
#include "tests/support/TestRegistryKey.h"

namespace {

using std::filesystem::is_directory;
using std::filesystem::path;
using testing::ElementsAre;

path KnownFolder(const KNOWNFOLDERID& id) {
  wchar_t* text = nullptr;
  EXPECT_EQ(SHGetKnownFolderPath(id, 0, nullptr, &text), S_OK);
  path folder = text;
  CoTaskMemFree(text);
  return folder;
}

path ThisProgram() {
  wchar_t file[MAX_PATH];
  return std::wstring(file, GetModuleFileNameW(nullptr, file, MAX_PATH));
}

// A known folder that lies, while this lives, in a temporary place.
class RedirectedFolder {
 public:
  static RedirectedFolder LocalAppData() { return {HKEY_CURRENT_USER, L"Local AppData"}; }
  static RedirectedFolder ProgramData() { return {HKEY_LOCAL_MACHINE, L"Common AppData"}; }

  path Product() const { return folder_.Path() / L"Ostrel" / L"Wayline"; }

  // Moves the folder to where none can be.
  void Break() { folders_.SetString(value_, L"Q:\\nowhere"); }
  void Restore() { folders_.SetString(value_, folder_.Path().wstring()); }

 private:
  RedirectedFolder(HKEY root, const wchar_t* value)
      : value_(value), folders_(root, LR"(Software\Microsoft\Windows\CurrentVersion\Explorer\User Shell Folders)") {
    Restore();
  }

  std::wstring value_;
  TemporaryFolder folder_;
  TestRegistryKey folders_;
};

// The machine's own settings say nothing of who shares what.
class PathDataTest : public testing::Test {
 protected:
  PathDataTest() { install.Remove(L"SharedSettings"); }

  TestRegistryKey install{HKEY_LOCAL_MACHINE, kCurrentInstallKey};
  PathData paths;
};

TEST_F(PathDataTest, KnowsTheFilesOfTheProgramAndOfTheModule) {
  EXPECT_EQ(paths.GetExecutablePath(), ThisProgram().wstring());
  EXPECT_EQ(paths.GetModulePath(), ThisProgram().wstring()) << "The code is linked into the test program.";
}

TEST_F(PathDataTest, InstallPathIsTheProgramsFolderWithASeparator) {
  EXPECT_EQ(paths.GetInstallPath(), ThisProgram().parent_path().wstring() + L'\\');
}

TEST_F(PathDataTest, AProgramInTheSystemFolderTakesTheInstallPathFromTheRegistry) {
  install.SetString(L"Path", LR"(C:\Wayline\)");
  const path hosted = KnownFolder(FOLDERID_System) / L"PaviseTest.exe";
  if (ThisProgram() != hosted) {
    remove(hosted);
    copy_file(ThisProgram(), hosted);
  }
  InOwnProcess([this] { EXPECT_EQ(paths.GetInstallPath(), LR"(C:\Wayline\)"); }, {.program = hosted});
  std::error_code ignored;
  remove(hosted, ignored);
}

TEST_F(PathDataTest, CreatesTheProgramDataFolders) {
  const RedirectedFolder folder = RedirectedFolder::ProgramData();
  EXPECT_EQ(paths.GetProgramDataPath(), folder.Product().wstring());
  EXPECT_TRUE(is_directory(folder.Product() / L"Data"));
}

TEST_F(PathDataTest, LooksForTheProgramDataFolderAgainAfterAFailure) {
  const LogCapture log;
  RedirectedFolder folder = RedirectedFolder::ProgramData();
  folder.Break();
  EXPECT_EQ(paths.GetProgramDataPath(), L"");
  EXPECT_THAT(log.Messages(),
              ElementsAre(testing::Field(&LogCapture::Message::text,
                                         testing::StartsWith(L"Failed to get Program Data folder Error "))));
  folder.Restore();
  EXPECT_EQ(paths.GetProgramDataPath(), folder.Product().wstring());
}

TEST_F(PathDataTest, CreatesTheUserDirectoryInLocalAppData) {
  const RedirectedFolder folder = RedirectedFolder::LocalAppData();
  EXPECT_EQ(paths.GetUserDirectory(), folder.Product().wstring());
  EXPECT_EQ(paths.GetUserDataDirectory(), (folder.Product() / L"Data").wstring());
  EXPECT_TRUE(is_directory(folder.Product() / L"Data"));
}

TEST_F(PathDataTest, TheUserDataDirectoryNeedsNoEarlierCall) {
  const RedirectedFolder folder = RedirectedFolder::LocalAppData();
  EXPECT_EQ(paths.GetUserDataDirectory(), (folder.Product() / L"Data").wstring());
}

TEST_F(PathDataTest, LogsTheUserDirectoryOnce) {
  const LogCapture log;
  const RedirectedFolder folder = RedirectedFolder::LocalAppData();
  paths.GetUserDirectory();
  paths.GetUserDirectory();
  EXPECT_THAT(log.Messages(),
              ElementsAre(LogCapture::Message{LogSource::General, LogLevel::Detail,
                                              L"Setting the user directory to '" + folder.Product().wstring() + L"'"}));
}

TEST_F(PathDataTest, LooksForTheUserDirectoryAgainAfterAFailure) {
  const LogCapture log;
  RedirectedFolder folder = RedirectedFolder::LocalAppData();
  folder.Break();
  EXPECT_EQ(paths.GetUserDirectory(), L"");
  EXPECT_EQ(paths.GetUserDataDirectory(), L"");
  ASSERT_GE(log.Messages().size(), 2u);
  EXPECT_THAT(log.Messages()[0].text, testing::StartsWith(L"Failed to get Local App Data folder Error "));
  EXPECT_EQ(log.Messages()[1].text, L"Setting the user directory to ''");
  folder.Restore();
  EXPECT_EQ(paths.GetUserDirectory(), folder.Product().wstring());
}

TEST_F(PathDataTest, SharedSettingsLieInProgramData) {
  install.SetString(L"SharedSettings", L"1");
  EXPECT_TRUE(paths.IsSharedSettings());
  EXPECT_EQ(paths.GetUserDirectory(), (KnownFolder(FOLDERID_ProgramData) / L"Ostrel" / L"Wayline").wstring());
}

TEST_F(PathDataTest, TheNumber1DoesNotShareTheSettings) {
  install.SetDword(L"SharedSettings", 1);
  EXPECT_FALSE(paths.IsSharedSettings());
}

TEST_F(PathDataTest, TheNumberOfTheCharacter1SharesTheSettings) {
  install.SetDword(L"SharedSettings", 0x70031);
  EXPECT_TRUE(paths.IsSharedSettings());
}

TEST_F(PathDataTest, ReadsOnlyOnceWhetherSettingsAreShared) {
  EXPECT_FALSE(paths.IsSharedSettings());
  install.SetString(L"SharedSettings", L"1");
  EXPECT_FALSE(paths.IsSharedSettings());
}

TEST_F(PathDataTest, LogsSharedSettingsThatDoNotFit) {
  const LogCapture log;
  install.SetString(L"SharedSettings", L"10");
  EXPECT_FALSE(paths.IsSharedSettings());
  EXPECT_THAT(log.Messages(),
              ElementsAre(LogCapture::Message{
                  LogSource::General, LogLevel::Error,
                  LR"(RegQueryValueEx read BYTEHKLM\Software\Ostrel\Wayline\CurrentInstall\SharedSettings)" +
                      ErrorSuffix(ERROR_MORE_DATA)}));
}

TEST_F(PathDataTest, DebugUserDirectoryPutsTheUserDirectoryBesideTheProgram) {
  const RedirectedFolder folder = RedirectedFolder::LocalAppData();
  const TestingIni ini("[Misc]\nDebugUserDirectory=1\n");
  EXPECT_EQ(paths.GetUserDirectory(), paths.GetInstallPath());
  const path data = ThisProgram().parent_path() / L"Data";
  EXPECT_EQ(paths.GetUserDataDirectory(), data.wstring());
  EXPECT_TRUE(is_directory(data));
  EXPECT_TRUE(is_directory(folder.Product())) << "These folders are created all the same.";
  EXPECT_FALSE(exists(folder.Product() / L"Data"));
  remove(data);
}

class LogOnDesktop : public PathDataTest {
 protected:
  void ExpectUserDirectoryInProgramData() {
    InOwnProcess(
        [this] {
          EXPECT_TRUE(IsRunningInWinLogonDesktop());
          EXPECT_FALSE(paths.IsSharedSettings());
          EXPECT_EQ(paths.GetUserDirectory(), (KnownFolder(FOLDERID_ProgramData) / L"Ostrel" / L"Wayline").wstring());
        },
        {.desktop = L"WinSta0\\WINLOGON"});
  }
};

TEST_F(LogOnDesktop, SettingsAreShared) { ExpectUserDirectoryInProgramData(); }

TEST_F(LogOnDesktop, SettingsAreSharedWhateverNumberTheMachineSays) {
  install.SetDword(L"SharedSettings", 1);
  ExpectUserDirectoryInProgramData();
}

TEST_F(LogOnDesktop, SettingsAreSharedWhateverTextTheMachineSays) {
  install.SetString(L"SharedSettings", L"0");
  ExpectUserDirectoryInProgramData();
}

TEST_F(PathDataTest, AnotherDesktopIsNotTheLogOnDesktop) {
  InOwnProcess([] { EXPECT_FALSE(IsRunningInWinLogonDesktop()); }, {.desktop = L"WinSta0\\Default"});
}

TEST_F(PathDataTest, ATestSwitchStandsInForTheLogOnDesktop) {
  InOwnProcess([this] {
    {
      const TestingIni ini("[GINA]\nRunnningInWinLogonDesktop=yes\n");
      EXPECT_TRUE(IsRunningInWinLogonDesktop());
    }
    EXPECT_TRUE(IsRunningInWinLogonDesktop()) << "It is determined once.";
    const RedirectedFolder folder = RedirectedFolder::LocalAppData();
    EXPECT_EQ(paths.GetUserDirectory(), folder.Product().wstring()) << "The settings stay the user's own.";
  });
}

}  // namespace
