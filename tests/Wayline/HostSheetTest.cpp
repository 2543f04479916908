// The whole program as a user starts it: Wayline.exe, its sheet, and what it prints and saves.

#include <windows.h>

#include <gmock/gmock.h>

#include "LoginProperties/Preferences/PreferenceControls.h"
#include "LoginProperties/ProfilePage/ProfileControls.h"
#include "LoginProperties/Timeouts/TimeoutControls.h"
#include "NetUtilities/Text/Utf8.h"
#include "tests/support/FileBytes.h"
#include "tests/support/MessageBoxAnswer.h"
#include "tests/support/ServiceLog.h"
#include "tests/support/TreeItems.h"
#include "tests/ui/OtherConnection.h"
#include "tests/Wayline/HostProgram.h"

namespace {

class Host : public testing::Test, protected HostProgram {
 protected:
  // Changes something and presses OK, while another program has the database for itself.
  void ConfirmWhileLocked() {
    Start(L"--mode 2 --profile 2001");
    sheet->Click(IDC_OVERRIDE_CHECK);
    sheet->Pick(IDC_TIMEOUT_DURATION, L" 1 hour");
    before = FileBytes(database);
    otherProgram = LockDatabase(database, kExclusively);
    sheet->PressOk();
  }

  // Answers the box in which the program tells what went wrong.
  void Answer(int button, const std::wstring& sentence) { ExpectMessage(button, sentence, {IDRETRY, IDCANCEL}); }

  std::string before;  // the database, before OK was pressed
  ConnectionHandle otherProgram;

  static constexpr char kExclusively[] = "BEGIN EXCLUSIVE";
};

constexpr wchar_t kSavingFails[] = L"Nothing was saved: the settings database is in use by another program.";
constexpr wchar_t kSavingFailsBox[] =
    L"Nothing was saved: the settings database is in use by another program.\n\nIf you cancel, your changes are lost.";

constexpr size_t kPreferencesTab = 1;
constexpr size_t kTimeoutsTab = 4;

}  // namespace

TEST_F(Host, SavesWhatTheUserConfirmsAndShowsItAgain) {
  const ServiceLog log;
  Start(L"--profile 2001");
  sheet->SelectTab(kTimeoutsTab);
  sheet->Click(IDC_OVERRIDE_CHECK);
  sheet->Pick(IDC_TIMEOUT_DURATION, L" 2 hours");
  sheet->PressOk();
  EXPECT_EQ(Wait(), 0u);
  EXPECT_EQ(
      Printed(),
      "{\"result\":1,\"saved\":true,\"changes\":[{\"record\":\"profile\",\"id\":2001,\"state\":2}],\"lost\":[]}\n");
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
  // "Automatically connect if password saved".
  constexpr char kStored[] = "SELECT State FROM Preferences WHERE ProfileId = 2004 AND PreferenceId = 1014";
  Start(L"--profile 2004");
  sheet->SelectTab(kPreferencesTab);
  ASSERT_EQ(StoredValue(database, kStored), std::to_string(kOn));
  // Texts of another program's tree cannot be asked for: this is the first entry of the first group.
  const HWND tree = sheet->Control(IDC_PREFERENCE_TREE);
  const HTREEITEM autoConnect = TreeView_GetChild(tree, TreeView_GetRoot(tree));
  ASSERT_EQ(TreeItemImage(tree, autoConnect), kOn);
  sheet->Focus(IDC_PREFERENCE_TREE);
  ASSERT_TRUE(sheet->PressKeyUntil([&] { return TreeView_GetSelection(tree) == autoConnect; }, VK_DOWN));
  ASSERT_TRUE(sheet->PressKeyUntil([&] { return TreeItemImage(tree, autoConnect) == kOff; }, VK_SPACE));
  sheet->PressOk();
  EXPECT_EQ(Wait(), 0u);
  EXPECT_EQ(
      Printed(),
      "{\"result\":1,\"saved\":true,\"changes\":[{\"record\":\"preference\",\"id\":1014,\"state\":2}],\"lost\":[]}\n");
  EXPECT_EQ(StoredValue(database, kStored), std::to_string(kOff));
}

TEST_F(Host, LeavesTheDatabaseAsItWasAfterCancel) {
  Start(L"--mode 2 --profile 2001");
  sheet->PressCancel();
  EXPECT_EQ(Wait(), 0u);
  before = FileBytes(database);
  ASSERT_FALSE(before.empty());

  sheet.reset();
  Start(L"--mode 2 --profile 2001");
  sheet->Click(IDC_OVERRIDE_CHECK);
  sheet->Pick(IDC_TIMEOUT_DURATION, L" 1 hour");
  sheet->PressCancel();
  EXPECT_EQ(Wait(), 0u);
  EXPECT_EQ(Printed(), "{\"result\":0,\"saved\":false,\"changes\":[],\"lost\":[]}\n");
  EXPECT_EQ(FileBytes(database), before);
}

TEST_F(Host, SaysWhenSavingFailsAndKeepsTheFileWhenTheUserGivesUp) {
  const ServiceLog log;
  ConfirmWhileLocked();
  Answer(IDCANCEL, kSavingFailsBox);
  EXPECT_EQ(Wait(), 1u);
  EXPECT_EQ(Printed(), "{\"result\":1,\"saved\":false,\"changes\":[],\"lost\":[]}\n" + ToUtf8(kSavingFails) + '\n');
  EXPECT_TRUE(log.Has("Nothing was saved"));
  EXPECT_EQ(FileBytes(database), before);
}

TEST_F(Host, SavesWhatTheUserConfirmedAsSoonAsTheDatabaseIsFree) {
  ConfirmWhileLocked();
  Answer(IDRETRY, kSavingFailsBox);
  ASSERT_TRUE(WaitForMessageBoxOf(threadId));
  otherProgram.reset();
  Answer(IDRETRY, kSavingFailsBox);
  EXPECT_EQ(Wait(), 0u);
  EXPECT_EQ(
      Printed(),
      "{\"result\":1,\"saved\":true,\"changes\":[{\"record\":\"profile\",\"id\":2001,\"state\":2}],\"lost\":[]}\n");
  EXPECT_EQ(StoredValue(database, "SELECT DurationTime FROM Profiles WHERE ProfileId = 2001"), "3600");
}

TEST_F(Host, RefusesADatabaseThatCannotBeSavedToBeforeItOpensTheSheet) {
  Start({});
  sheet->PressCancel();
  EXPECT_EQ(Wait(), 0u);
  sheet.reset();
  before = FileBytes(database);
  const std::wstring refusal = L"The file \"" + database + L"\" cannot be used: the settings database is read-only.";
  ASSERT_TRUE(SetFileAttributesW(database.c_str(), FILE_ATTRIBUTE_READONLY));
  Launch({});
  Answer(IDCANCEL, refusal);
  EXPECT_EQ(Wait(), 1u);
  EXPECT_EQ(Printed(), ToUtf8(refusal) + '\n');
  EXPECT_EQ(FileBytes(database), before);

  Launch({});
  ASSERT_TRUE(WaitForMessageBoxOf(threadId));
  SetFileAttributesW(database.c_str(), FILE_ATTRIBUTE_NORMAL);
  Answer(IDRETRY, refusal);
  sheet.emplace(threadId);
  sheet->PressCancel();
  EXPECT_EQ(Wait(), 0u);
}

TEST_F(Host, RefusesADatabaseThatAnotherProgramHasForItself) {
  Start({});
  sheet->PressCancel();
  EXPECT_EQ(Wait(), 0u);
  sheet.reset();
  otherProgram = LockDatabase(database, kExclusively);
  Launch({});
  Answer(IDCANCEL,
         L"The file \"" + database + L"\" cannot be used: the settings database is in use by another program.");
  EXPECT_EQ(Wait(), 1u);
}

TEST_F(Host, StoresWhatTheOptionsSayOfTheClient) {
  Start(L"--connection connected --bookmark 8=0 --bookmark 9=text");
  sheet->PressCancel();
  EXPECT_EQ(Wait(), 0u);
  EXPECT_EQ(StoredValue(database, "SELECT Value FROM ClientState WHERE Name = 'ConnectionState'"), "2");
  EXPECT_EQ(StoredValue(database, "SELECT group_concat(BookmarkId || '=' || Value) FROM Bookmarks"), "8=0,9=text");
}
