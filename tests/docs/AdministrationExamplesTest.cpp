// What the page for administrators shows does what the page says, on a real system.

#include <windows.h>

#include <gtest/gtest.h>
#include <shlobj.h>

#include <cwchar>
#include <filesystem>
#include <string>

#include "Database/SQLite/DatabasePlatform.h"
#include "Database/SQLite/SQLiteDatabaseManager.h"
#include "LoginProperties/ProfilePage/ProfileDataDialog.h"
#include "NetUtilities/Crash/CrashDump.h"
#include "NetUtilities/Crash/CrashPlatform.h"
#include "NetUtilities/Files/ClientFolders.h"
#include "NetUtilities/Files/IniFile.h"
#include "NetUtilities/Files/PathData.h"
#include "NetUtilities/Files/PathPlatform.h"
#include "NetUtilities/Files/WinLogonDesktop.h"
#include "NetUtilities/Module/Singleton.h"
#include "NetUtilities/Registry/InstallDword.h"
#include "NetUtilities/Registry/RegistryNames.h"
#include "NetUtilities/Registry/TraceFlags.h"
#include "NetUtilities/Registry/UserAccount.h"
#include "NetUtilities/Text/Utf8.h"
#include "tests/docs/RegistryExamples.h"
#include "tests/support/MarkdownPage.h"
#include "tests/support/OwnProcess.h"
#include "tests/support/Substituted.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TestingIni.h"
#include "tests/support/TestRegistryKey.h"
#include "WaylineDll/MultiHoming.h"

namespace {

const MarkdownPage& Page() {
  static const MarkdownPage page("docs/administration.md");
  return page;
}

// A registry value of which the page has an example. At first it is missing; in the end it is as it was.
class Example {
 public:
  explicit Example(const std::string& value) : example_(Find(value)) { key_.Remove(FromUtf8(value)); }

  /// Does what the page shows.
  void Apply() {
    const std::wstring value = FromUtf8(example_.value);
    if (example_.type == "REG_DWORD") {
      key_.SetDword(value, static_cast<DWORD>(std::stoul(example_.data)));
    } else {
      key_.SetString(value, Data());
    }
  }

  std::wstring Data() const { return FromUtf8(example_.data); }

 private:
  static RegistryExample Find(const std::string& value) {
    for (const RegistryExample& example : RegistryExamples(Page())) {
      if (example.value == value) return example;
    }
    ADD_FAILURE() << "The page has no example for " << value << '.';
    return {};
  }

  RegistryExample example_;
  TestRegistryKey key_{example_.key.starts_with("HKLM") ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER,
                       FromUtf8(example_.key.substr(5))};
};

// What the page says of a registry value that is missing.
std::string DefaultOf(const std::string& value) {
  for (MarkdownPage::Row& row : Page().Rows("Key")) {
    if (row["Value"] == value) return row["If missing"];
  }
  return {};
}

// The place of a file or folder in the page's table, on this system.
std::filesystem::path PlaceOf(const std::string& end) {
  for (MarkdownPage::Row& row : Page().Rows("File or folder")) {
    const std::string& place = row["File or folder"];
    if (!place.ends_with(end)) continue;
    wchar_t expanded[MAX_PATH];
    ExpandEnvironmentStringsW(FromUtf8(place).c_str(), expanded, MAX_PATH);
    return expanded;
  }
  return {};
}

struct OverridePolicy : ProfileDataDialog {
  using ProfileDataDialog::IsOverrideDisabled;
};

}  // namespace

TEST(AdministrationExamples, DisableOverrideSendsATabBackToTheDefaults) {
  Example example("disableOverride");
  EXPECT_EQ(std::to_string(OverridePolicy::IsOverrideDisabled(L"Timeouts")), DefaultOf("disableOverride"));
  example.Apply();
  EXPECT_TRUE(OverridePolicy::IsOverrideDisabled(L"Timeouts"));
}

TEST(AdministrationExamples, SharedSettingsPutsTheUserDirectoryIntoTheSharedFolder) {
  Example example("SharedSettings");
  EXPECT_EQ(PathData().IsSharedSettings() ? "shared" : "not shared", DefaultOf("SharedSettings"));
  EXPECT_EQ(PathData().GetUserDirectory(), PlaceOf(R"(%LOCALAPPDATA%\Ostrel\Wayline)"));
  example.Apply();
  EXPECT_EQ(PathData().GetUserDirectory(), PlaceOf(R"(%ProgramData%\Ostrel\Wayline)"));
}

TEST(AdministrationExamples, PathNamesTheInstallFolderForAHost) {
  Example example("Path");
  const Substituted platform(pathPlatform);
  platform->moduleFileName = [](HMODULE, LPWSTR buffer, DWORD) -> DWORD {
    wcscpy(buffer, (PathData().GetSystemFolder() + LR"(\Host.exe)").c_str());
    return static_cast<DWORD>(wcslen(buffer));
  };
  const std::wstring missing = PathData().GetInstallPath();
  EXPECT_EQ(missing.empty() ? "no folder" : ToUtf8(missing), DefaultOf("Path"));
  example.Apply();
  EXPECT_EQ(PathData().GetInstallPath(), example.Data());
}

TEST(AdministrationExamples, DebugOutputIsOffUnlessSet) {
  Example example("DebugOutput");
  InOwnProcess([&] { EXPECT_EQ(std::to_string(IsDebugOutputEnabled()), DefaultOf("DebugOutput")); });
}

TEST(AdministrationExamples, DebugOutputTurnsTheOutputOn) {
  Example example("DebugOutput");
  example.Apply();
  InOwnProcess([] { EXPECT_TRUE(IsDebugOutputEnabled()); });
}

TEST(AdministrationExamples, TraceLevelSetsTheLevel) {
  Example example("TraceLevel");
  EXPECT_EQ(std::to_string(GetTraceLevel()), DefaultOf("TraceLevel"));
  example.Apply();
  EXPECT_EQ(std::to_wstring(GetTraceLevel()), example.Data());
}

TEST(AdministrationExamples, NumbersAreTakenFromWhateverHasUpToFourBytes) {
  const Example missing("TraceLevel");
  TestRegistryKey client(HKEY_LOCAL_MACHINE, kClientKey);
  client.SetString(kTraceLevelValue, L"5");
  EXPECT_EQ(GetTraceLevel(), 53);
  client.SetString(kTraceLevelValue, L"10");
  EXPECT_EQ(std::to_string(GetTraceLevel()), DefaultOf("TraceLevel")) << "longer than four bytes";
  client.Set(kTraceLevelValue, REG_BINARY, "\x05", 1);
  EXPECT_EQ(GetTraceLevel(), 5) << "The upper bytes of the default are 0.";
  client.Set(kTraceLevelValue, REG_BINARY, nullptr, 0);
  EXPECT_EQ(std::to_string(GetTraceLevel()), DefaultOf("TraceLevel"));
}

TEST(AdministrationExamples, TraceFlagsAreOffUnlessSet) {
  Example example("TraceFlags");
  InOwnProcess([] { EXPECT_EQ(std::to_string(GetTraceFlags()), DefaultOf("TraceFlags")); });
}

TEST(AdministrationExamples, TraceFlagsTurnTheDatabasesLinesOn) {
  Example example("TraceFlags");
  example.Apply();
  InOwnProcess([] { EXPECT_TRUE(IsTraceFlagSet(kDatabaseTraceFlag)); });
}

TEST(AdministrationExamples, LoggedOnUserIsTheAccountWhoseFlagsASystemProcessTakes) {
  static std::wstring account;
  account.clear();
  Example example("LoggedOnUser");
  const Substituted accounts(accountPlatform);
  accounts->getUserName = [](LPWSTR name, LPDWORD) -> BOOL { return wcscpy(name, L"SYSTEM"), TRUE; };
  accounts->lookupAccountName = [](LPCWSTR, LPCWSTR name, PSID, LPDWORD, LPWSTR, LPDWORD, PSID_NAME_USE) -> BOOL {
    account = name;
    return FALSE;
  };
  EXPECT_EQ(ReadInstallDword(kTraceFlagsValue), 0u);
  EXPECT_EQ(account.empty() ? "nobody" : ToUtf8(account), DefaultOf("LoggedOnUser"));
  example.Apply();
  EXPECT_EQ(ReadInstallDword(kTraceFlagsValue), 0u);
  EXPECT_EQ(account, example.Data());
}

TEST(AdministrationExamples, TestSwitchesAreOffUnlessSet) {
  const TestingIni file("");
  IniFile ini;
  for (MarkdownPage::Row& row : Page().Rows("Section")) {
    const bool on = ini.GetBool(FromUtf8(row["Section"]), FromUtf8(row["Switch"]));
    EXPECT_EQ(on ? "on" : "off", row["If missing"]) << row["Switch"];
  }
}

TEST(AdministrationExamples, DumpTypeSetsWhatACrashDumpHolds) {
  static std::wstring programData, type;
  Example example("DumpType");
  const TemporaryFolder folder;
  programData = folder.Path().wstring();
  std::filesystem::create_directories(folder.Path() / kVendorFolder / kProductFolder);
  const Substituted platform(crashPlatform);
  platform->folderPath = [](HWND, int, HANDLE, DWORD, LPWSTR out) -> HRESULT {
    return wcscpy(out, programData.c_str()), S_OK;
  };
  platform->writeDump = [](HANDLE, DWORD, HANDLE, MINIDUMP_TYPE asked, PMINIDUMP_EXCEPTION_INFORMATION,
                           PMINIDUMP_USER_STREAM_INFORMATION,
                           PMINIDUMP_CALLBACK_INFORMATION) -> BOOL { return type = std::to_wstring(asked), TRUE; };
  WriteCrashDump(nullptr);
  EXPECT_EQ(ToUtf8(type), DefaultOf("DumpType"));
  example.Apply();
  WriteCrashDump(nullptr);
  EXPECT_EQ(type, example.Data());
}

TEST(AdministrationExamples, PreventMultiHomingLetsTheBoxBeOfferedAndTicked) {
  Example example("PreventMultiHoming");
  bool on = false;
  EXPECT_EQ(IsMultiHomingControlAuthorized(&on) ? "offered" : "not offered", DefaultOf("PreventMultiHoming"));
  example.Apply();
  EXPECT_TRUE(IsMultiHomingControlAuthorized(&on));
  EXPECT_TRUE(on);
}

TEST(AdministrationExamples, TestSwitchesMoveTheUserDirectoryAndHideTabs) {
  std::string text;
  for (const std::string& line : Page().CodeLines("ini")) text += line + "\r\n";
  const TestingIni file(text);
  InOwnProcess([] {
    EXPECT_EQ(PathData().GetUserDirectory(), PathData().GetInstallPath());
    EXPECT_TRUE(IsRunningInWinLogonDesktop());
  });
}

TEST(AdministrationExamples, FilesAndFoldersAreWhereThePageSays) {
  const Example notShared("SharedSettings");
  EXPECT_EQ(SQLiteDatabaseManager::ComposePath({}, {}), PlaceOf("Wayline.db"));
  EXPECT_EQ(PathData().GetProgramDataPath(), PlaceOf(R"(%ProgramData%\Ostrel\Wayline)"));
  EXPECT_EQ(std::filesystem::path(PathData().GetProgramDataPath()) / kTestingIniFile, PlaceOf("Testing.ini"));
}
