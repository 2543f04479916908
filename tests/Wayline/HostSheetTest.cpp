// The whole program as a user starts it: Wayline.exe, its sheet, and what it prints and saves.

#include <windows.h>

#include <gmock/gmock.h>
#include <sqlite3.h>

#include <memory>

#include "Database/SQLite/SQLiteHandles.h"
#include "LoginProperties/Preferences/PreferenceControls.h"
#include "LoginProperties/ProfilePage/ProfileControls.h"
#include "LoginProperties/Timeouts/TimeoutControls.h"
#include "NetUtilities/Module/Handle.h"
#include "NetUtilities/Text/Utf8.h"
#include "tests/support/FileBytes.h"
#include "tests/support/ServiceLog.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TreeItems.h"
#include "tests/ui/SheetDriver.h"

namespace {

// Wayline.exe on a database of its own, with what it prints going into a file.
class Host : public testing::Test {
 protected:
  void Start(const std::wstring& options) {
    SECURITY_ATTRIBUTES inherited{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    const Handle output(CreateFileW(outputFile.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited,
                                    CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = output.get();
    startup.hStdError = output.get();
    std::wstring command =
        L"\"Z:" + FromUtf8(PAVISE_BIN_DIR) + L"/Wayline.exe\" --database \"" + database + L"\" " + options;
    PROCESS_INFORMATION information{};
    ASSERT_TRUE(
        CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup, &information));
    process.reset(information.hProcess);
    const Handle thread(information.hThread);
    sheet.emplace(information.dwThreadId);
  }

  DWORD Wait() {
    constexpr DWORD kLimitMilliseconds = 20000;
    EXPECT_EQ(WaitForSingleObject(process.get(), kLimitMilliseconds), WAIT_OBJECT_0);
    DWORD code = 0;
    GetExitCodeProcess(process.get(), &code);
    return code;
  }

  std::string Printed() const {
    std::string text = FileBytes(outputFile);
    std::erase(text, '\r');
    return text;
  }

  TemporaryFolder folder;
  std::wstring database = folder.File(L"Wayline.db");
  std::wstring outputFile = folder.File(L"output.txt");
  Handle process;
  std::optional<SheetDriver> sheet;
};

constexpr size_t kPreferencesTab = 1;
constexpr size_t kTimeoutsTab = 4;

// A connection that lets nobody else read or write the database while it lives.
ConnectionHandle LockedDatabase(const std::wstring& file) {
  sqlite3* connection = nullptr;
  EXPECT_EQ(sqlite3_open(ToUtf8(file).c_str(), &connection), SQLITE_OK);
  EXPECT_EQ(sqlite3_exec(connection, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr), SQLITE_OK);
  return ConnectionHandle(connection);
}

// What the database holds for "Automatically connect if password saved" of profile 2004.
int StoredAutoConnect(const std::wstring& file) {
  sqlite3* opened = nullptr;
  EXPECT_EQ(sqlite3_open(ToUtf8(file).c_str(), &opened), SQLITE_OK);
  const ConnectionHandle connection(opened);
  int state = 0;
  const auto take = [](void* target, int, char** values, char**) {
    *static_cast<int*>(target) = std::stoi(values[0]);
    return 0;
  };
  EXPECT_EQ(sqlite3_exec(opened, "SELECT State FROM Preferences WHERE ProfileId = 2004 AND PreferenceId = 1014", take,
                         &state, nullptr),
            SQLITE_OK);
  return state;
}

}  // namespace

TEST_F(Host, SavesWhatTheUserConfirmsAndShowsItAgain) {
  const ServiceLog log;
  Start(L"--profile 2001");
  sheet->SelectTab(kTimeoutsTab);
  sheet->Click(IDC_OVERRIDE_CHECK);
  sheet->Pick(IDC_TIMEOUT_DURATION, L" 2 hours");
  sheet->PressOk();
  EXPECT_EQ(Wait(), 0u);
  EXPECT_EQ(Printed(),
            "{\"result\":1,\"saved\":true,\"changes\":[{\"record\":\"profile\",\"id\":2001,\"state\":2}]}\n");
  EXPECT_TRUE(log.Has(": Settings loaded from '" + ToUtf8(database) + "'"));
  EXPECT_TRUE(log.Has(": Settings saved, records changed: 1"));

  sheet.reset();
  Start(L"--profile 2001 --mode 2");
  EXPECT_TRUE(sheet->IsChecked(IDC_OVERRIDE_CHECK));
  EXPECT_EQ(sheet->Selected(IDC_TIMEOUT_DURATION), L" 2 hours");
  sheet->PressCancel();
  EXPECT_EQ(Wait(), 0u);
}

TEST_F(Host, SavesAPreferenceThatTheUserToggles) {
  constexpr int kOff = 1;
  constexpr int kOn = 2;
  Start(L"--profile 2004");
  sheet->SelectTab(kPreferencesTab);
  ASSERT_EQ(StoredAutoConnect(database), kOn);
  // Texts of another program's tree cannot be asked for: this is the first entry of the first group.
  const HWND tree = sheet->Control(IDC_PREFERENCE_TREE);
  const HTREEITEM autoConnect = TreeView_GetChild(tree, TreeView_GetRoot(tree));
  ASSERT_EQ(TreeItemImage(tree, autoConnect), kOn);
  sheet->Focus(IDC_PREFERENCE_TREE);
  ASSERT_TRUE(sheet->PressKeyUntil([&] { return TreeView_GetSelection(tree) == autoConnect; }, VK_DOWN));
  ASSERT_TRUE(sheet->PressKeyUntil([&] { return TreeItemImage(tree, autoConnect) == kOff; }, VK_SPACE));
  sheet->PressOk();
  EXPECT_EQ(Wait(), 0u);
  EXPECT_EQ(Printed(),
            "{\"result\":1,\"saved\":true,\"changes\":[{\"record\":\"preference\",\"id\":1014,\"state\":2}]}\n");
  EXPECT_EQ(StoredAutoConnect(database), kOff);
}

TEST_F(Host, LeavesTheDatabaseAsItWasAfterCancel) {
  Start(L"--mode 2 --profile 2001");
  sheet->PressCancel();
  EXPECT_EQ(Wait(), 0u);
  const std::string before = FileBytes(database);
  ASSERT_FALSE(before.empty());

  sheet.reset();
  Start(L"--mode 2 --profile 2001");
  sheet->Click(IDC_OVERRIDE_CHECK);
  sheet->Pick(IDC_TIMEOUT_DURATION, L" 1 hour");
  sheet->PressCancel();
  EXPECT_EQ(Wait(), 0u);
  EXPECT_EQ(Printed(), "{\"result\":0,\"saved\":false,\"changes\":[]}\n");
  EXPECT_EQ(FileBytes(database), before);
}

TEST_F(Host, SaysWhenSavingFailsAndKeepsTheFile) {
  const ServiceLog log;
  Start(L"--mode 2 --profile 2001");
  sheet->Click(IDC_OVERRIDE_CHECK);
  sheet->Pick(IDC_TIMEOUT_DURATION, L" 1 hour");
  const std::string before = FileBytes(database);
  // Another program has taken the file for itself meanwhile.
  const auto other = LockedDatabase(database);
  sheet->PressOk();
  EXPECT_NE(Wait(), 0u);
  EXPECT_THAT(Printed(), testing::HasSubstr("\"saved\":false"));
  EXPECT_THAT(Printed(), testing::HasSubstr("Nothing was saved"));
  EXPECT_TRUE(log.Has("Nothing was saved"));
  EXPECT_EQ(FileBytes(database), before);
}
