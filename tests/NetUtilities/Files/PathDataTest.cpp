#include "NetUtilities/Files/PathData.h"

#include <windows.h>

#include <gmock/gmock.h>
#include <shlobj.h>

#include <array>
#include <atomic>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <utility>
#include <vector>

#include "NetUtilities/Files/PathPlatform.h"
#include "NetUtilities/Files/WinLogonDesktop.h"
#include "NetUtilities/Module/Handle.h"
#include "NetUtilities/Module/OwnModule.h"
#include "NetUtilities/Registry/RegistryNames.h"
#include "NetUtilities/Registry/RegistryPlatform.h"
#include "NetUtilities/Text/ErrorText.h"
#include "tests/support/InThreads.h"
#include "tests/support/LogCapture.h"
#include "tests/support/OwnProcess.h"
#include "tests/support/Substituted.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TestingIni.h"
#include "tests/support/TestRegistryKey.h"
#include "tests/support/ThisProgram.h"

namespace {

using std::filesystem::is_directory;
using std::filesystem::path;
using testing::ElementsAre;

path KnownFolder(const KNOWNFOLDERID& id) {
  wchar_t* text = nullptr;
  EXPECT_EQ(SHGetKnownFolderPath(id, 0, nullptr, &text), S_OK);
  const TaskMemory<wchar_t> owner(text);
  return text;
}

LogCapture::Message Error(const std::wstring& text, LogSource source = LogSource::General) {
  return {source, LogLevel::Error, text};
}

LogCapture::Message UserDirectorySetTo(const std::wstring& folder) {
  return {LogSource::General, LogLevel::Detail, L"Setting the user directory to '" + folder + L"'"};
}

// Makes every known folder fail.
HRESULT WINAPI NoKnownFolder(const KNOWNFOLDERID&, DWORD, HANDLE, PWSTR*) { return E_FAIL; }

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
  PathDataTest() { install.Remove(kSharedSettingsValue); }

  TestRegistryKey install{HKEY_LOCAL_MACHINE, kCurrentInstallKey};
  PathData paths;
};

struct KnownFolderCase {
  const char* name;
  std::wstring (PathData::*get)();
  const KNOWNFOLDERID* id;
  const wchar_t* failure;
};

class KnownFolders : public PathDataTest, public testing::WithParamInterface<KnownFolderCase> {
 protected:
  std::wstring Get() { return (paths.*GetParam().get)(); }
};

TEST_P(KnownFolders, IsThatOfWindows) { EXPECT_EQ(Get(), KnownFolder(*GetParam().id).wstring()); }

TEST_P(KnownFolders, IsLookedUpOnce) {
  const std::wstring folder = Get();
  const Substituted platform(pathPlatform);
  platform->knownFolderPath = NoKnownFolder;
  EXPECT_EQ(Get(), folder);
}

TEST_P(KnownFolders, IsEmptyAndLoggedWhenItFailsAndIsTriedAgain) {
  const LogCapture log;
  {
    const Substituted platform(pathPlatform);
    platform->knownFolderPath = [](const KNOWNFOLDERID& id, DWORD flags, HANDLE token, PWSTR*) -> HRESULT {
      EXPECT_TRUE(IsEqualGUID(id, *GetParam().id));
      EXPECT_EQ(flags, 0u);
      EXPECT_EQ(token, nullptr);
      return E_ACCESSDENIED;
    };
    EXPECT_EQ(Get(), L"");
  }
  EXPECT_THAT(log.Messages(), ElementsAre(Error(GetParam().failure + ErrorSuffix(E_ACCESSDENIED))));
  EXPECT_EQ(Get(), KnownFolder(*GetParam().id).wstring());
}

INSTANTIATE_TEST_SUITE_P(
    All, KnownFolders,
    testing::Values(
        KnownFolderCase{"Windows", &PathData::GetWindowsFolder, &FOLDERID_Windows, L"Failed to get Windows folder"},
        KnownFolderCase{"System", &PathData::GetSystemFolder, &FOLDERID_System, L"Failed to get System folder"},
        KnownFolderCase{"Desktop", &PathData::GetDesktopFolder, &FOLDERID_Desktop, L"Failed to get Desktop folder"},
        KnownFolderCase{"Programs", &PathData::GetProgramsFolder, &FOLDERID_Programs, L"Failed to get Programs folder"},
        KnownFolderCase{"ProgramFiles", &PathData::GetProgramFilesFolder, &FOLDERID_ProgramFiles,
                        L"Failed to get Programs Files folder"},
        KnownFolderCase{"Profile", &PathData::GetProfileFolder, &FOLDERID_Profile, L"Failed to get Profile folder"}),
    [](const auto& test) { return test.param.name; });

TEST_F(PathDataTest, KnowsTheFilesOfTheProgramAndOfTheModule) {
  EXPECT_EQ(paths.GetExecutablePath(), ThisProgram().wstring());
  EXPECT_EQ(paths.GetModulePath(), ThisProgram().wstring()) << "The code is linked into the test program.";
}

TEST_F(PathDataTest, AsksForTheFilesOfTheProgramAndOfTheModuleByTheirHandles) {
  static std::vector<HMODULE> asked;
  asked.clear();
  const Substituted platform(pathPlatform);
  platform->moduleFileName = [](HMODULE module, LPWSTR, DWORD) -> DWORD {
    asked.push_back(module);
    return 0;
  };
  paths.GetExecutablePath();
  paths.GetModulePath();
  EXPECT_THAT(asked, ElementsAre(nullptr, OwnModule()));
}

TEST_F(PathDataTest, CutsTheFileOfAModuleThatIsTooLong) {
  const Substituted platform(pathPlatform);
  platform->moduleFileName = [](HMODULE, LPWSTR buffer, DWORD size) -> DWORD {
    std::wstring(size - 1, L'x').copy(buffer, size - 1);
    buffer[size - 1] = L'\0';
    SetLastError(ERROR_INSUFFICIENT_BUFFER);
    return size;
  };
  EXPECT_EQ(paths.GetExecutablePath(), std::wstring(259, L'x'));
  EXPECT_EQ(paths.GetModulePath(), std::wstring(259, L'x'));
}

TEST_F(PathDataTest, InstallPathIsTheProgramsFolderWithASeparator) {
  EXPECT_EQ(paths.GetInstallPath(), ThisProgram().parent_path().wstring() + L'\\');
}

TEST_F(PathDataTest, AProgramInTheSystemFolderTakesTheInstallPathFromTheRegistry) {
  install.SetString(kInstallPathValue, LR"(C:\Wayline\)");
  const path hosted = KnownFolder(FOLDERID_System) / L"PaviseTest.exe";
  if (ThisProgram() != hosted) {
    remove(hosted);
    copy_file(ThisProgram(), hosted);
  }
  InOwnProcess([this] { EXPECT_EQ(paths.GetInstallPath(), LR"(C:\Wayline\)"); }, {.program = hosted});
  std::error_code ignored;
  remove(hosted, ignored);
}

// The test program seems to lie below the System folder.
class Hosted : public PathDataTest {
 protected:
  Hosted() {
    platform->moduleFileName = [](HMODULE, LPWSTR buffer, DWORD size) -> DWORD {
      EXPECT_EQ(size, 260u);
      const std::wstring file = KnownFolder(FOLDERID_System).wstring() + LR"(\Spool\Host.exe)";
      wcscpy(buffer, file.c_str());
      CharUpperW(buffer);
      return static_cast<DWORD>(file.size());
    };
  }

  const Substituted<PathPlatform> platform{pathPlatform};
};

TEST_F(Hosted, BelowTheSystemFolderInAnyCaseTakesTheInstallPathFromTheRegistry) {
  install.SetString(kInstallPathValue, LR"(D:\Client\)");
  EXPECT_EQ(paths.GetInstallPath(), LR"(D:\Client\)");
}

TEST_F(Hosted, TakesTheInstallPathFromTheRegistryOnce) {
  static int openings;
  openings = 0;
  install.SetString(kInstallPathValue, LR"(D:\Client\)");
  const Substituted registry(registryPlatform);
  registry->openKey = [](HKEY root, LPCWSTR subkey, DWORD options, REGSAM access, PHKEY key) -> LSTATUS {
    ++openings;
    EXPECT_EQ(access, 0x20019u) << "for reading only, in the native view";
    return RegOpenKeyExW(root, subkey, options, access, key);
  };
  EXPECT_EQ(paths.GetInstallPath(), LR"(D:\Client\)");
  EXPECT_EQ(paths.GetInstallPath(), LR"(D:\Client\)");
  EXPECT_EQ(openings, 1);
}

TEST_F(Hosted, HasNoInstallPathUntilTheRegistryNamesOne) {
  install.Remove(kInstallPathValue);
  EXPECT_EQ(paths.GetInstallPath(), L"");
  install.SetString(kInstallPathValue, LR"(D:\Client\)");
  EXPECT_EQ(paths.GetInstallPath(), LR"(D:\Client\)");
}

TEST_F(Hosted, WithoutAnInstallPathHasNoUserDirectoryForDebugging) {
  const LogCapture log;
  install.Remove(kInstallPathValue);
  const TestingIni ini("[Misc]\nDebugUserDirectory=1\n");
  const RedirectedFolder folder = RedirectedFolder::LocalAppData();
  const TemporaryFolder current;
  const path previous = std::filesystem::current_path();
  std::filesystem::current_path(current.Path());
  EXPECT_EQ(paths.GetUserDirectory(), L"");
  EXPECT_EQ(paths.GetUserDataDirectory(), L"");
  std::filesystem::current_path(previous);
  EXPECT_TRUE(is_empty(current.Path())) << "Nothing is created in the current directory.";
  EXPECT_TRUE(is_directory(folder.Product())) << "These folders are created all the same.";
  EXPECT_THAT(log.Messages(), ElementsAre(UserDirectorySetTo(L""), UserDirectorySetTo(L"")));
}

TEST_F(PathDataTest, TakesTheInstallPathFromTheRegistryWhenTheSystemFolderIsUnknown) {
  const Substituted platform(pathPlatform);
  platform->knownFolderPath = NoKnownFolder;
  install.SetString(kInstallPathValue, LR"(D:\Client\)");
  EXPECT_EQ(paths.GetInstallPath(), LR"(D:\Client\)") << "The empty text occurs in every path.";
}

TEST_F(PathDataTest, FindsTheInstallPathOnce) {
  const std::wstring folder = paths.GetInstallPath();
  const Substituted platform(pathPlatform);
  platform->knownFolderPath = NoKnownFolder;
  platform->moduleFileName = [](HMODULE, LPWSTR, DWORD) -> DWORD { return 0; };
  EXPECT_EQ(paths.GetInstallPath(), folder);
}

TEST_F(PathDataTest, AsksForTheFilesOfProgramAndModuleAgainAfterAFailure) {
  {
    const Substituted platform(pathPlatform);
    platform->moduleFileName = [](HMODULE, LPWSTR, DWORD) -> DWORD { return 0; };
    EXPECT_EQ(paths.GetExecutablePath(), L"");
    EXPECT_EQ(paths.GetModulePath(), L"");
  }
  EXPECT_EQ(paths.GetExecutablePath(), ThisProgram().wstring());
  EXPECT_EQ(paths.GetModulePath(), ThisProgram().wstring());
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
  EXPECT_THAT(log.Messages(), ElementsAre(UserDirectorySetTo(folder.Product().wstring())));
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

TEST_F(PathDataTest, SaysSoWhenEveryLookUpFailed) {
  const LogCapture log;
  const Substituted platform(pathPlatform);
  platform->knownFolderPath = NoKnownFolder;
  EXPECT_EQ(paths.GetUserDirectory(), L"");
  EXPECT_EQ(paths.GetProgramDataPath(), L"");
  EXPECT_THAT(log.Messages(),
              ElementsAre(Error(L"Failed to get Local App Data folder" + ErrorSuffix(E_FAIL)), UserDirectorySetTo(L""),
                          Error(L"Failed to get Program Data folder" + ErrorSuffix(E_FAIL))));
}

TEST_F(PathDataTest, SaysSoWhenTheSharedFolderCannotBeFound) {
  const LogCapture log;
  install.SetString(kSharedSettingsValue, L"1");
  const Substituted platform(pathPlatform);
  platform->knownFolderPath = NoKnownFolder;
  EXPECT_EQ(paths.GetUserDirectory(), L"");
  EXPECT_THAT(log.Messages(),
              ElementsAre(Error(L"Failed to get program data folder" + ErrorSuffix(E_FAIL)), UserDirectorySetTo(L"")));
}

TEST_F(PathDataTest, AsksForTheBaseFoldersToBeCreated) {
  static std::vector<GUID> asked;
  asked.clear();
  const Substituted platform(pathPlatform);
  platform->knownFolderPath = [](const KNOWNFOLDERID& id, DWORD flags, HANDLE token, PWSTR*) -> HRESULT {
    asked.push_back(id);
    EXPECT_EQ(flags, 0x8000u);
    EXPECT_EQ(token, nullptr);
    return E_FAIL;
  };
  paths.GetUserDirectory();
  paths.GetProgramDataPath();
  install.SetString(kSharedSettingsValue, L"1");
  PathData().GetUserDirectory();
  EXPECT_THAT(asked, ElementsAre(FOLDERID_LocalAppData, FOLDERID_ProgramData, FOLDERID_ProgramData));
}

TEST_F(PathDataTest, AProgramDataFolderThatCannotBeCreatedIsNotReported) {
  const LogCapture log;
  const RedirectedFolder folder = RedirectedFolder::ProgramData();
  std::ofstream(folder.Product().parent_path()) << "a file where the folder should be";
  EXPECT_EQ(paths.GetProgramDataPath(), folder.Product().wstring());
  EXPECT_THAT(log.Messages(), testing::IsEmpty());
}

TEST_F(PathDataTest, AUserDirectoryThatCannotBeCreatedIsNotReported) {
  const LogCapture log;
  const RedirectedFolder folder = RedirectedFolder::LocalAppData();
  std::ofstream(folder.Product().parent_path()) << "a file where the folder should be";
  EXPECT_EQ(paths.GetUserDirectory(), folder.Product().wstring());
  EXPECT_THAT(log.Messages(), ElementsAre(UserDirectorySetTo(folder.Product().wstring())));
}

TEST_F(PathDataTest, SharedSettingsLieInProgramData) {
  install.SetString(kSharedSettingsValue, L"1");
  EXPECT_TRUE(paths.IsSharedSettings());
  EXPECT_EQ(paths.GetUserDirectory(), (KnownFolder(FOLDERID_ProgramData) / L"Ostrel" / L"Wayline").wstring());
}

TEST_F(PathDataTest, TheText1WithoutATerminatorSharesTheSettings) {
  install.Set(kSharedSettingsValue, REG_SZ, L"1", sizeof(wchar_t));
  EXPECT_TRUE(paths.IsSharedSettings());
}

TEST_F(PathDataTest, SharedSettingsOfNoBytesAreNotShared) {
  install.Set(kSharedSettingsValue, REG_SZ, nullptr, 0);
  EXPECT_FALSE(paths.IsSharedSettings());
}

TEST_F(PathDataTest, OpensSharedSettingsForReadingOnlyInTheNativeView) {
  static int openings;
  openings = 0;
  const Substituted registry(registryPlatform);
  registry->openKey = [](HKEY root, LPCWSTR subkey, DWORD, REGSAM access, PHKEY) -> LSTATUS {
    ++openings;
    EXPECT_EQ(root, HKEY_LOCAL_MACHINE);
    EXPECT_STREQ(subkey, kCurrentInstallKey);
    EXPECT_EQ(access, 0x20019u);
    return ERROR_FILE_NOT_FOUND;
  };
  EXPECT_FALSE(paths.IsSharedSettings());
  EXPECT_EQ(openings, 1);
}

TEST_F(PathDataTest, TheNumber1DoesNotShareTheSettings) {
  install.SetDword(kSharedSettingsValue, 1);
  EXPECT_FALSE(paths.IsSharedSettings());
}

TEST_F(PathDataTest, TheNumberOfTheCharacter1SharesTheSettings) {
  install.SetDword(kSharedSettingsValue, 0x70031);
  EXPECT_TRUE(paths.IsSharedSettings());
}

TEST_F(PathDataTest, ReadsOnlyOnceWhetherSettingsAreShared) {
  EXPECT_FALSE(paths.IsSharedSettings());
  install.SetString(kSharedSettingsValue, L"1");
  EXPECT_FALSE(paths.IsSharedSettings());
}

TEST_F(PathDataTest, NeverOpensTheRegistryAgainForSharedSettings) {
  paths.IsSharedSettings();
  const Substituted registry(registryPlatform);
  registry->openKey = [](HKEY, LPCWSTR, DWORD, REGSAM, PHKEY) -> LSTATUS {
    ADD_FAILURE() << "The answer is known.";
    return ERROR_FILE_NOT_FOUND;
  };
  EXPECT_FALSE(paths.IsSharedSettings());
}

TEST_F(PathDataTest, LogsSharedSettingsThatCannotBeOpened) {
  const LogCapture log;
  const Substituted registry(registryPlatform);
  registry->openKey = [](HKEY, LPCWSTR, DWORD, REGSAM, PHKEY) -> LSTATUS { return ERROR_ACCESS_DENIED; };
  EXPECT_FALSE(paths.IsSharedSettings());
  EXPECT_THAT(log.Messages(), ElementsAre(Error(LR"(RegOpenKeyEx HKLM\Software\Ostrel\Wayline\CurrentInstall)" +
                                                ErrorSuffix(ERROR_ACCESS_DENIED))));
}

TEST_F(PathDataTest, LogsSharedSettingsThatDoNotFit) {
  const LogCapture log;
  install.SetString(kSharedSettingsValue, L"10");
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

class LogOnDesktop : public PathDataTest, public testing::WithParamInterface<const wchar_t*> {
 protected:
  void ExpectUserDirectoryInProgramData() {
    InOwnProcess(
        [this] {
          EXPECT_TRUE(IsRunningInWinLogonDesktop());
          EXPECT_FALSE(paths.IsSharedSettings());
          EXPECT_EQ(paths.GetUserDirectory(), (KnownFolder(FOLDERID_ProgramData) / L"Ostrel" / L"Wayline").wstring());
        },
        {.desktop = GetParam()});
  }
};

TEST_P(LogOnDesktop, SettingsAreShared) { ExpectUserDirectoryInProgramData(); }

TEST_P(LogOnDesktop, SettingsAreSharedWhateverNumberTheMachineSays) {
  install.SetDword(kSharedSettingsValue, 1);
  ExpectUserDirectoryInProgramData();
}

TEST_P(LogOnDesktop, SettingsAreSharedWhateverTextTheMachineSays) {
  install.SetString(kSharedSettingsValue, L"0");
  ExpectUserDirectoryInProgramData();
}

INSTANTIATE_TEST_SUITE_P(InAnyCase, LogOnDesktop,
                         testing::Values(L"winsta0\\winlogon", L"WinSta0\\Winlogon", L"WINSTA0\\WINLOGON"));

TEST_F(PathDataTest, AnotherDesktopIsNotTheLogOnDesktop) {
  for (const wchar_t* desktop : {L"WinSta0\\Default", L"winlogon", L"WinSta0\\Winlogon2"}) {
    InOwnProcess([] { EXPECT_FALSE(IsRunningInWinLogonDesktop()); }, {.desktop = desktop});
  }
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

// The user at the console, asked for by a process that may impersonate that user.
class ConsoleUser : public PathDataTest {
 protected:
  ConsoleUser() {
    steps.clear();
    platform->queryUserToken = [](ULONG, PHANDLE token) { return Make(L"query", token); };
    platform->duplicateToken = [](HANDLE, SECURITY_IMPERSONATION_LEVEL level, PHANDLE duplicate) {
      EXPECT_EQ(level, SecurityImpersonation);
      return Make(L"duplicate", duplicate);
    };
    platform->impersonate = [](HANDLE token) {
      EXPECT_EQ(token, tokens.back()) << "The duplicate is used.";
      return Step(L"impersonate");
    };
    platform->revertToSelf = [] { return Step(L"revert"); };
    platform->knownFolderPath = [](const KNOWNFOLDERID& id, DWORD flags, HANDLE token, PWSTR* out) -> HRESULT {
      if (flags == 0) {
        EXPECT_TRUE(IsEqualGUID(id, FOLDERID_LocalAppData));
        EXPECT_EQ(token, nullptr);
        if (Step(L"look up") == FALSE) return E_ACCESSDENIED;
      }
      return SHGetKnownFolderPath(id, flags, token, out);
    };
    failing = nullptr;
    tokens.clear();
  }

  ~ConsoleUser() override {
    for (HANDLE token : tokens) {
      DWORD flags = 0;
      EXPECT_EQ(GetHandleInformation(token, &flags), FALSE) << "A token is still open.";
    }
  }

  static BOOL Step(const wchar_t* name) {
    steps.emplace_back(name);
    if (failing == nullptr || wcscmp(name, failing) != 0) return TRUE;
    SetLastError(ERROR_PRIVILEGE_NOT_HELD);
    return FALSE;
  }

  static BOOL Make(const wchar_t* name, PHANDLE token) {
    if (Step(name) == FALSE) return FALSE;
    *token = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    tokens.push_back(*token);
    return TRUE;
  }

  // Lets a step fail and returns what is logged.
  std::vector<LogCapture::Message> LoggedWhenFailing(const wchar_t* step) {
    failing = step;
    const LogCapture log;
    EXPECT_EQ(paths.GetConsoleUserLocalAppData(), L"");
    return log.Messages();
  }

  static LogCapture::Message Denied(const std::wstring& what) {
    return Error(what + ErrorSuffix(ERROR_PRIVILEGE_NOT_HELD), LogSource::Impersonation);
  }

  static inline std::vector<std::wstring> steps;
  static inline std::vector<HANDLE> tokens;
  static inline const wchar_t* failing = nullptr;
  const Substituted<PathPlatform> platform{pathPlatform};
};

TEST_F(ConsoleUser, IsImpersonatedWhileTheFolderIsLookedUp) {
  const LogCapture log;
  EXPECT_EQ(paths.GetConsoleUserLocalAppData(), KnownFolder(FOLDERID_LocalAppData).wstring());
  EXPECT_THAT(steps, ElementsAre(L"query", L"duplicate", L"impersonate", L"look up", L"revert"));
  EXPECT_THAT(log.Messages(), testing::IsEmpty());
}

TEST_F(ConsoleUser, OfTheConsolesSessionIsAsked) {
  platform->activeConsoleSession = [] { return DWORD{3}; };
  platform->queryUserToken = [](ULONG session, PHANDLE) -> BOOL {
    EXPECT_EQ(session, 3u);
    return SetLastError(ERROR_NO_TOKEN), FALSE;
  };
  EXPECT_EQ(paths.GetConsoleUserLocalAppData(), L"");
}

TEST_F(ConsoleUser, IsNobodyWithoutAConsoleSession) {
  const LogCapture log;
  platform->activeConsoleSession = [] { return DWORD{0xFFFFFFFF}; };
  EXPECT_EQ(paths.GetConsoleUserLocalAppData(), L"");
  EXPECT_THAT(steps, testing::IsEmpty());
  EXPECT_THAT(log.Messages(), testing::IsEmpty());
}

TEST_F(ConsoleUser, WithoutATokenIsLogged) {
  EXPECT_THAT(LoggedWhenFailing(L"query"), ElementsAre(Denied(L"WTSQueryUserToken")));
  EXPECT_THAT(steps, ElementsAre(L"query"));
}

TEST_F(ConsoleUser, WhoseTokenCannotBeDuplicatedIsLogged) {
  EXPECT_THAT(LoggedWhenFailing(L"duplicate"), ElementsAre(Denied(L"DuplicateToken")));
  EXPECT_THAT(steps, ElementsAre(L"query", L"duplicate"));
}

TEST_F(ConsoleUser, WhoCannotBeImpersonatedIsLogged) {
  EXPECT_THAT(LoggedWhenFailing(L"impersonate"), ElementsAre(Denied(L"ImpersonateLoggedOnUser")));
  EXPECT_THAT(steps, ElementsAre(L"query", L"duplicate", L"impersonate"));
}

TEST_F(ConsoleUser, WithoutAFolderIsLeftAgainAndNotLogged) {
  EXPECT_THAT(LoggedWhenFailing(L"look up"), testing::IsEmpty());
  EXPECT_THAT(steps, ElementsAre(L"query", L"duplicate", L"impersonate", L"look up", L"revert"));
}

TEST_F(ConsoleUser, FromWhomThereIsNoWayBackIsLogged) {
  EXPECT_THAT(LoggedWhenFailing(L"revert"), ElementsAre(Denied(L"Error: RevertToSelf")));
  EXPECT_THAT(steps, ElementsAre(L"query", L"duplicate", L"impersonate", L"look up", L"revert"));
}

TEST_F(ConsoleUser, GivesTheUserDirectoryToAServiceThatActsForThatUser) {
  const RedirectedFolder folder = RedirectedFolder::LocalAppData();
  PathData service(true);
  EXPECT_EQ(service.GetUserDirectory(), folder.Product().wstring());
  EXPECT_THAT(steps, ElementsAre(L"query", L"duplicate", L"impersonate", L"look up", L"revert"));
}

TEST_F(ConsoleUser, IsReplacedByTheProcessesOwnWhateverStepFails) {
  const RedirectedFolder folder = RedirectedFolder::LocalAppData();
  for (const wchar_t* step : {L"query", L"duplicate", L"impersonate", L"look up", L"revert"}) {
    steps.clear();
    failing = step;
    PathData service(true);
    EXPECT_EQ(service.GetUserDirectory(), folder.Product().wstring()) << step;
    EXPECT_THAT(steps, testing::Contains(step));
  }
}

TEST_F(ConsoleUser, IsReplacedByTheProcessesOwnWithoutAConsoleSession) {
  const RedirectedFolder folder = RedirectedFolder::LocalAppData();
  platform->activeConsoleSession = [] { return DWORD{0xFFFFFFFF}; };
  PathData service(true);
  EXPECT_EQ(service.GetUserDirectory(), folder.Product().wstring());
}

TEST_F(ConsoleUser, ReplacedByTheProcessesOwnIsLoggedBefore) {
  const LogCapture log;
  const RedirectedFolder folder = RedirectedFolder::LocalAppData();
  failing = L"duplicate";
  PathData(true).GetUserDirectory();
  EXPECT_THAT(log.Messages(), ElementsAre(Denied(L"DuplicateToken"), UserDirectorySetTo(folder.Product().wstring())));
}

TEST_F(ConsoleUser, IsNotImpersonatedForAnOrdinaryProcess) {
  const RedirectedFolder folder = RedirectedFolder::LocalAppData();
  EXPECT_EQ(paths.GetUserDirectory(), folder.Product().wstring());
  EXPECT_THAT(steps, testing::IsEmpty());
}

TEST_F(PathDataTest, FindsTheFolderOfTheUserWhoIsReallyAtTheConsole) {
  const LogCapture log;
  EXPECT_EQ(paths.GetConsoleUserLocalAppData(), KnownFolder(FOLDERID_LocalAppData).wstring());
  EXPECT_THAT(log.Messages(), testing::IsEmpty());
}

using Getter = std::wstring (PathData::*)();
constexpr Getter kGetters[] = {
    &PathData::GetWindowsFolder,  &PathData::GetSystemFolder,       &PathData::GetDesktopFolder,
    &PathData::GetProgramsFolder, &PathData::GetProgramFilesFolder, &PathData::GetProfileFolder,
    &PathData::GetInstallPath,    &PathData::GetProgramDataPath,    &PathData::GetUserDirectory,
    &PathData::GetExecutablePath, &PathData::GetModulePath,         &PathData::GetUserDataDirectory};

TEST_F(PathDataTest, GivesEightThreadsTheSamePaths) {
  constexpr size_t kCallsPerThread = 125'000;
  std::vector<std::wstring> expected;
  for (const Getter getter : kGetters) expected.push_back((paths.*getter)());

  PathData shared;
  std::atomic<size_t> wrong = 0;
  InThreads([&](int thread) {
    const auto first = static_cast<size_t>(thread);
    for (size_t call = first; call < first + kCallsPerThread; ++call) {
      const size_t which = call % std::size(kGetters);
      if ((shared.*kGetters[which])() != expected[which]) ++wrong;
      if (shared.IsSharedSettings()) ++wrong;
    }
  });
  EXPECT_EQ(wrong, 0u);
}

TEST_F(PathDataTest, GivesEightThreadsThatAskFirstTheSamePath) {
  const LogCapture log;
  constexpr int kRounds = 20;
  std::vector<LogCapture::Message> expectedLog;
  for (int round = 0; round < kRounds; ++round) {
    for (const Getter getter : kGetters) {
      PathData fresh;
      std::array<std::wstring, kThreads> found;
      InThreads([&](int thread) { found.at(static_cast<size_t>(thread)) = (fresh.*getter)(); });
      EXPECT_THAT(found, testing::Each((fresh.*getter)()));
      EXPECT_THAT(found, testing::Each(testing::Not(testing::IsEmpty())));
      if (getter == &PathData::GetUserDirectory || getter == &PathData::GetUserDataDirectory) {
        expectedLog.push_back(UserDirectorySetTo(fresh.GetUserDirectory()));
      }
    }
  }
  EXPECT_EQ(log.Messages(), expectedLog) << "one line for each object that was asked for the user directory";
}

TEST_F(PathDataTest, TellsEightThreadsThatAskFirstOfTheLogOnDesktop) {
  InOwnProcess([] {
    const TestingIni ini("[GINA]\nRunnningInWinLogonDesktop=yes\n");
    std::atomic<int> yes = 0;
    InThreads([&](int) {
      if (IsRunningInWinLogonDesktop()) ++yes;
    });
    EXPECT_EQ(yes, kThreads);
  });
}

}  // namespace
