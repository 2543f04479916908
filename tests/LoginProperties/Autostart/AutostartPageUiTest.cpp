// The "Autostart" page on the real sheet, over the sample settings.

#include <gmock/gmock.h>

#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "LoginProperties/ProfilePage/ProfileControls.h"
#include "LoginProperties/SheetResult.h"
#include "tests/support/ServiceLog.h"
#include "tests/ui/AutostartPageDriver.h"
#include "tests/ui/OtherConnection.h"
#include "tests/ui/SaveContext.h"
#include "tests/ui/StoredSheetTest.h"
#include "WaylineDll/AutoStart.h"
#include "WaylineDll/Host.h"

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using Lines = std::vector<std::wstring>;

constexpr wchar_t kBefore[] = L"Before connecting";
constexpr wchar_t kNetwork[] = L"After the network is connected";
constexpr wchar_t kVpn[] = L"After the VPN is connected";
constexpr wchar_t kAfter[] = L"After disconnecting";
constexpr wchar_t kOfficeName[] = L"Z\u00fcrich Office";

constexpr wchar_t kNotModifiable[] =
    L"This program has been pre-configured and set so that it is not removable and the settings may not be modified.";

const Lines kOfficeLines = {kBefore, L" Device check", kNetwork, L" Notes", L" Calculator", kVpn, kAfter, L" Goodbye"};
const Lines kBranchLines = {kBefore, kNetwork, kVpn, kAfter, L" Clean up"};

constexpr char kLongList[] =
    "WITH RECURSIVE Number(N) AS (SELECT 3 UNION ALL SELECT N + 1 FROM Number WHERE N < 100) INSERT INTO AutoStart "
    "(ProfileId, Phase, ItemOrder, RecordType, Name) SELECT 2004, 700, N, 2, 'Entry ' || N FROM Number";

class AutostartUi : public StoredSheetTest {
 protected:
  // Opens the sheet on a profile, with the page in front.
  void OpenPage(uint32_t profile = kSampleOffice) {
    OpenOn(profile);
    sheet->SelectTab(L"Autostart");
    page.emplace(*sheet);
  }

  // The same after statements that another program has run on the settings.
  void OpenPageAfter(const std::string& statements, uint32_t profile = kSampleOffice) {
    RunSql(file, statements);
    OpenPage(profile);
  }

  void Press(int button) { sheet->Click(button); }
  void Up() { Press(IDC_AUTOSTART_UP); }
  void Down() { Press(IDC_AUTOSTART_DOWN); }

  void Add(const std::wstring& name, const std::wstring& phase = L"") {
    const EntryEditorDriver editor(*sheet, IDC_AUTOSTART_ADD);
    editor.Enter(name);
    if (!phase.empty()) editor.PickPhase(phase);
    editor.Close(IDOK);
  }

  void Remove(const std::wstring& name) {
    page->Select(name);
    Press(IDC_AUTOSTART_REMOVE);
    ASSERT_EQ(sheet->MessageBoxText(), L"Do you want to remove the '" + name + L"' autostart entry?");
    sheet->AnswerMessageBox(IDYES);
  }

  void RemoveAll() {
    for (const std::wstring& line : page->Lines()) {
      if (line.starts_with(L" ")) Remove(line.substr(1));
    }
  }

  // The record of the shown list that has this name.
  const AutoStartItem& RecordOf(const std::wstring& name) const {
    for (const auto& [id, record] : context.autoStartItems) {
      if (record->fields.name == name) return *record;
    }
    throw std::runtime_error("there is no such record");
  }

  // Phase and order of a record of the list that is shown. The sheet's context is handed over by OK.
  std::pair<int, int> PlaceOf(const std::wstring& name) {
    AutoStartTable items;
    GetAutoStartOfShown(items);
    for (const auto& [id, record] : items) {
      if (record->fields.name == name) return {record->fields.phase, record->fields.order};
    }
    return {};
  }

  // A record of the list that is shown, as all are handed out; null when there is none.
  std::shared_ptr<AutoStartItem> Shown(const std::wstring& name) {
    AutoStartTable items;
    GetAutoStartOfShown(items);
    for (const auto& [id, record] : items) {
      if (record->fields.name == name) return record;
    }
    return nullptr;
  }

  void GetAutoStartOfShown(AutoStartTable& items) { GetAutoStart(*sheet->SelectedValue(IDC_PROFILE_COMBO), items); }

  // What is stored of a profile: phase, order and name of each record, in order.
  std::string StoredList(uint32_t profile) const {
    return StoredValue(
        file,
        "SELECT group_concat(Place, ', ') FROM (SELECT Phase || ' ' || ItemOrder || ' ' || Name AS Place "
        "FROM AutoStart WHERE RecordType = 2 AND ProfileId = " +
            std::to_string(profile) + " ORDER BY Phase, ItemOrder)");
  }

  std::string StoredHeaders(uint32_t profile) const {
    return StoredValue(
        file, "SELECT count(*) FROM AutoStart WHERE RecordType = 1 AND ProfileId = " + std::to_string(profile));
  }

  std::multiset<std::string> before = AllRows(file);
  std::optional<AutostartPageDriver> page;
};

}  // namespace

// What is shown

TEST_F(AutostartUi, ShowsThePhasesWithAPictureAndTheirEntriesBelow) {
  OpenPage();
  EXPECT_THAT(TreeItems(page->Tree()),
              ElementsAre(TreeItem{0, kBefore, 12}, TreeItem{1, L"Device check", 0}, TreeItem{0, kNetwork, 12},
                          TreeItem{1, L"Notes", 0}, TreeItem{1, L"Calculator", 0}, TreeItem{0, kVpn, 12},
                          TreeItem{0, kAfter, 12}, TreeItem{1, L"Goodbye", 0}));
  EXPECT_TRUE(sheet->IsChecked(IDC_OVERRIDE_CHECK));
  EXPECT_TRUE(page->CanAdd());
}

TEST_F(AutostartUi, TheArrowButtonsHaveIcons) {
  OpenPage();
  for (const int button : {IDC_AUTOSTART_UP, IDC_AUTOSTART_DOWN}) {
    const auto icon = reinterpret_cast<HICON>(SendMessageW(sheet->Control(button), BM_GETIMAGE, IMAGE_ICON, 0));
    ASSERT_NE(icon, nullptr);
    ICONINFO info{};
    ASSERT_TRUE(GetIconInfo(icon, &info));
    BITMAP bitmap{};
    GetObjectW(info.hbmMask, sizeof(bitmap), &bitmap);
    EXPECT_EQ(bitmap.bmWidth, 16);
    DeleteObject(info.hbmMask);
    DeleteObject(info.hbmColor);
  }
}

TEST_F(AutostartUi, TheFirstPhaseIsSelectedAtFirstAndNothingCanBeDoneWithIt) {
  OpenPage();
  EXPECT_EQ(page->Selected(), kBefore);
  for (const int button : {IDC_AUTOSTART_CHANGE, IDC_AUTOSTART_REMOVE, IDC_AUTOSTART_UP, IDC_AUTOSTART_DOWN}) {
    EXPECT_FALSE(sheet->IsEnabled(button)) << button;
    SendMessageW(sheet->Page(), WM_COMMAND, static_cast<WPARAM>(button), 0);
    EXPECT_EQ(sheet->MessageBoxWindow(), nullptr) << button;
  }
  EXPECT_EQ(page->Lines(), kOfficeLines);
  page->Select(L"Notes");
  for (const int button : {IDC_AUTOSTART_CHANGE, IDC_AUTOSTART_REMOVE, IDC_AUTOSTART_UP, IDC_AUTOSTART_DOWN}) {
    EXPECT_TRUE(sheet->IsEnabled(button)) << button;
  }
  page->Select(kVpn);
  EXPECT_FALSE(page->CanChange() || page->CanRemove() || page->CanMoveUp() || page->CanMoveDown());
}

TEST_F(AutostartUi, WithoutOverrideTheListIsThatOfTheLinkedProfileAndTakesNoInput) {
  OpenPage(2003);
  EXPECT_EQ(page->Lines(), kBranchLines);
  EXPECT_FALSE(sheet->IsChecked(IDC_OVERRIDE_CHECK));
  EXPECT_FALSE(page->CanAdd());
  EXPECT_FALSE(sheet->IsEnabled(IDC_AUTOSTART_TREE));
  TreeView_SelectItem(page->Tree(), FindTreeItem(page->Tree(), L"Clean up"));
  EXPECT_FALSE(page->CanChange() || page->CanRemove() || page->CanMoveUp() || page->CanMoveDown());
  SendMessageW(sheet->Page(), WM_COMMAND, IDC_AUTOSTART_ADD, 0);
  EXPECT_TRUE(IsWindowEnabled(GetParent(sheet->Page()))) << "no editor";
  SaveWithOk();
  EXPECT_EQ(AllRows(file), before);
}

TEST_F(AutostartUi, ANameIsCutAfter259Characters) {
  OpenPageAfter("UPDATE AutoStart SET Name = printf('%0300d', 7) WHERE Name = 'Notes'");
  page->SelectLine(3);
  EXPECT_EQ(page->Selected(), std::wstring(259, L'0'));
  const EntryEditorDriver editor(*sheet, IDC_AUTOSTART_CHANGE);
  editor.Close(IDCANCEL);
  SaveWithOk();
  EXPECT_EQ(StoredValue(file, "SELECT count(*) FROM AutoStart WHERE length(Name) = 300"), "1");
}

TEST_F(AutostartUi, RecordsOfUnknownTypesAreLeftOut) {
  OpenPageAfter("UPDATE AutoStart SET RecordType = 9 WHERE ProfileId = 2004 AND Name = 'Notes'");
  EXPECT_EQ(page->Lines(), (Lines{kBefore, L" Device check", kNetwork, L" Calculator", kVpn, kAfter, L" Goodbye"}));
}

TEST_F(AutostartUi, EveryPhaseHasAHeaderWhateverIsStored) {
  OpenPageAfter("DELETE FROM AutoStart WHERE RecordType = 1");
  EXPECT_EQ(page->Lines(), kOfficeLines);
}

TEST_F(AutostartUi, AListThatCannotBeReadIsEmptyAndTakesNothing) {
  const ServiceLog log;
  OpenPageAfter("ALTER TABLE AutoStart RENAME TO Hidden");
  EXPECT_THAT(page->Lines(), IsEmpty());
  EXPECT_FALSE(page->CanAdd());
  EXPECT_TRUE(sheet->IsChecked(IDC_OVERRIDE_CHECK));
  sheet->Click(IDC_OVERRIDE_CHECK);
  EXPECT_THAT(page->Lines(), IsEmpty());
  sheet->PressCancel();
  EXPECT_TRUE(log.Has(": The autostart entries of profile 2004 cannot be read"));
  RunSql(file, "ALTER TABLE Hidden RENAME TO AutoStart");
}

// Moving

TEST_F(AutostartUi, TheFirstEntryCannotMoveUpAndTheLastCannotMoveDown) {
  OpenPage();
  page->Select(L"Device check");
  EXPECT_FALSE(page->CanMoveUp());
  EXPECT_TRUE(page->CanMoveDown());
  page->Select(L"Goodbye");
  EXPECT_TRUE(page->CanMoveUp());
  EXPECT_FALSE(page->CanMoveDown());
}

TEST_F(AutostartUi, MovingUpIntoAnEmptyPhaseGivesOrder1) {
  OpenPage();
  page->Select(L"Goodbye");
  Up();
  EXPECT_EQ(page->Lines(),
            (Lines{kBefore, L" Device check", kNetwork, L" Notes", L" Calculator", kVpn, L" Goodbye", kAfter}));
  EXPECT_EQ(PlaceOf(L"Goodbye"), std::pair(1100, 1));
  EXPECT_EQ(page->Selected(), L"Goodbye");
  SaveWithOk();
  EXPECT_EQ(StoredList(kSampleOffice), "300 1 Device check, 700 1 Notes, 700 2 Calculator, 1100 1 Goodbye");
}

TEST_F(AutostartUi, MovingTheLastOfAPhaseDownPutsItFirstInTheNextWhichIsRenumbered) {
  OpenPageAfter(
      "UPDATE AutoStart SET Modifiable = 1; UPDATE AutoStart SET ItemOrder = ItemOrder + 6 WHERE "
      "Phase = 700 AND RecordType = 2");
  page->Select(L"Device check");
  Down();
  EXPECT_EQ(page->Lines(),
            (Lines{kBefore, kNetwork, L" Device check", L" Notes", L" Calculator", kVpn, kAfter, L" Goodbye"}));
  SaveWithOk();
  EXPECT_EQ(StoredList(kSampleOffice), "700 1 Device check, 700 2 Notes, 700 3 Calculator, 1600 1 Goodbye");
}

TEST_F(AutostartUi, MovingWithinAPhaseSwapsNeighbours) {
  OpenPage();
  page->Select(L"Calculator");
  Up();
  EXPECT_EQ(page->Lines(),
            (Lines{kBefore, L" Device check", kNetwork, L" Calculator", L" Notes", kVpn, kAfter, L" Goodbye"}));
  SaveWithOk();
  EXPECT_EQ(StoredList(kSampleOffice), "300 1 Device check, 700 1 Calculator, 700 2 Notes, 1600 1 Goodbye");
  EXPECT_EQ(Without(AllRows(file), before).size(), 2u) << "the two that were swapped";
}

TEST_F(AutostartUi, OfEqualEntriesTheSelectedOneIsMovedChangedAndRemoved) {
  OpenPageAfter(
      "UPDATE AutoStart SET ItemOrder = 1, Name = 'Twin', Program = Name WHERE ProfileId = 2004 AND "
      "Phase = 700 AND RecordType = 2");
  page->SelectLine(4);
  Up();
  EXPECT_EQ(page->SelectedLine(), 3);
  page->SelectLine(4);
  Press(IDC_AUTOSTART_REMOVE);
  sheet->AnswerMessageBox(IDYES);
  SaveWithOk();
  EXPECT_EQ(StoredValue(file, "SELECT Program FROM AutoStart WHERE Name = 'Twin'"), "Calculator");
}

TEST_F(AutostartUi, AnEntryIsMovedTwiceByTheKeyboardAlone) {
  OpenPage();
  page->Select(L"Notes");
  sheet->Focus(IDC_AUTOSTART_DOWN);
  ASSERT_TRUE(sheet->PressKeyUntil([this] { return page->SelectedLine() == 4; }, VK_SPACE));
  EXPECT_EQ(sheet->FocusedControl(), IDC_AUTOSTART_DOWN);
  ASSERT_TRUE(sheet->PressKeyUntil([this] { return page->SelectedLine() == 5; }, VK_SPACE));
  EXPECT_EQ(page->Lines(),
            (Lines{kBefore, L" Device check", kNetwork, L" Calculator", kVpn, L" Notes", kAfter, L" Goodbye"}));
  EXPECT_EQ(page->Selected(), L"Notes");
}

TEST_F(AutostartUi, AButtonThatGoesOutOfUseHandsTheKeyboardToTheTree) {
  OpenPage();
  page->Select(L"Goodbye");
  Up();
  sheet->Focus(IDC_AUTOSTART_DOWN);
  ASSERT_TRUE(sheet->PressKeyUntil([this] { return PlaceOf(L"Goodbye").first == 1600; }, VK_SPACE));
  ASSERT_FALSE(page->CanMoveDown());
  EXPECT_EQ(sheet->FocusedControl(), IDC_AUTOSTART_TREE);
}

// A tree without a selection that gets the focus selects what can be seen.
TEST_F(AutostartUi, TheButtonsFitWhatTheTreeSelectsWhenItGetsTheKeyboard) {
  OpenPageAfter(kLongList);
  TreeView_SelectSetFirstVisible(page->Tree(), FindTreeItem(page->Tree(), L"Entry 50"));
  page->SelectLine(60);
  sheet->Focus(IDC_AUTOSTART_CHANGE);
  page->SelectNothing();
  ASSERT_EQ(sheet->FocusedControl(), IDC_AUTOSTART_TREE);
  ASSERT_TRUE(page->Selected().starts_with(L"Entry "));
  EXPECT_TRUE(page->CanChange() && page->CanRemove() && page->CanMoveUp() && page->CanMoveDown());
}

TEST_F(AutostartUi, TheSelectionStaysVisibleInALongList) {
  OpenPageAfter(
      "WITH RECURSIVE Number(N) AS (SELECT 3 UNION ALL SELECT N + 1 FROM Number WHERE N < 100) INSERT INTO "
      "AutoStart (ProfileId, Phase, ItemOrder, RecordType, Name) SELECT 2004, 700, N, 2, 'Entry ' || N FROM "
      "Number");
  const auto topLine = [this] { return TreeItemText(page->Tree(), TreeView_GetFirstVisible(page->Tree())); };
  page->Select(L"Entry 90");
  const std::wstring top = topLine();
  ASSERT_NE(top, kBefore);
  Up();
  EXPECT_EQ(page->Selected(), L"Entry 90");
  EXPECT_EQ(topLine(), top) << "what is seen stays";
  TreeView_SelectSetFirstVisible(page->Tree(), TreeView_GetRoot(page->Tree()));
  Up();
  RECT item{};
  ASSERT_TRUE(TreeView_GetItemRect(page->Tree(), TreeView_GetSelection(page->Tree()), &item, TRUE));
  RECT client{};
  GetClientRect(page->Tree(), &client);
  EXPECT_GE(item.top, 0);
  EXPECT_LE(item.bottom, client.bottom);
}

// The focus

TEST_F(AutostartUi, TheSelectorCanBeWalkedWithTheArrowKeys) {
  OpenPage(2001);
  sheet->Focus(IDC_PROFILE_COMBO);
  std::vector<std::wstring> seen = {*sheet->Selected(IDC_PROFILE_COMBO)};
  const auto items = sheet->Items(IDC_PROFILE_COMBO);
  while (seen.back() != items.back() && !HasFailure()) {
    const std::wstring last = seen.back();
    ASSERT_TRUE(sheet->PressKeyUntil([&] { return sheet->Selected(IDC_PROFILE_COMBO) != last; }, VK_DOWN));
    EXPECT_EQ(sheet->FocusedControl(), IDC_PROFILE_COMBO);
    seen.push_back(*sheet->Selected(IDC_PROFILE_COMBO));
  }
  EXPECT_EQ(page->Lines(), kOfficeLines) << "the last profile's";
}

TEST_F(AutostartUi, ShowingThePageTakesTheFocusFromNoOtherControl) {
  OpenOn(kSampleOffice);
  sheet->SelectTab(L"Autostart");
  EXPECT_NE(sheet->FocusedControl(), IDC_AUTOSTART_TREE);
  sheet->Focus(IDC_OVERRIDE_CHECK);
  sheet->Click(IDC_OVERRIDE_CHECK);
  sheet->Click(IDC_OVERRIDE_CHECK);
  EXPECT_EQ(sheet->FocusedControl(), IDC_OVERRIDE_CHECK);
}

// Adding

TEST_F(AutostartUi, AddingPutsTheEntryAtTheEndOfTheSelectedPhase) {
  OpenPage();
  page->Select(L"Notes");
  {
    const EntryEditorDriver editor(*sheet, IDC_AUTOSTART_ADD);
    EXPECT_EQ(editor.Phase(), kNetwork);
    editor.Enter(L"Clock", L"C:\\Tools\\clock.exe");
    editor.Close(IDOK);
  }
  EXPECT_EQ(page->Lines(), (Lines{kBefore, L" Device check", kNetwork, L" Notes", L" Calculator", L" Clock", kVpn,
                                  kAfter, L" Goodbye"}));
  EXPECT_EQ(page->Selected(), L"Notes");
  page->Select(kVpn);
  Add(L"Compass");
  SaveWithOk();
  EXPECT_EQ(StoredList(kSampleOffice),
            "300 1 Device check, 700 1 Notes, 700 2 Calculator, 700 3 Clock, 1100 1 Compass, 1600 1 Goodbye");
  EXPECT_EQ(StoredValue(file, "SELECT Program FROM AutoStart WHERE Name = 'Clock'"), "C:\\Tools\\clock.exe");
  EXPECT_THAT(Without(before, AllRows(file)), IsEmpty());
}

TEST_F(AutostartUi, AddingIntoAnotherPhaseFollowsTheSelectedOrder) {
  OpenPage();
  page->Select(L"Calculator");
  Add(L"Clock", kAfter);
  EXPECT_EQ(PlaceOf(L"Clock"), std::pair(1600, 3));
}

TEST_F(AutostartUi, AddingWithNothingSelectedGivesOrder1) {
  OpenPage();
  page->SelectNothing();
  ASSERT_EQ(page->SelectedLine(), -1);
  EXPECT_FALSE(page->CanChange() || page->CanRemove() || page->CanMoveUp() || page->CanMoveDown());
  {
    const EntryEditorDriver editor(*sheet, IDC_AUTOSTART_ADD);
    EXPECT_EQ(editor.Phase(), kBefore) << "that of every new record";
    editor.Enter(L"Clock");
    editor.Close(IDOK);
  }
  EXPECT_EQ(PlaceOf(L"Clock"), std::pair(300, 1)) << "as the entry that is there already";
  EXPECT_EQ(page->Lines().at(2), L" Clock");
  page->SelectNothing();
  Add(L"Compass", kNetwork);
  EXPECT_EQ(PlaceOf(L"Compass"), std::pair(700, 1)) << "as the editor set it";
}

TEST_F(AutostartUi, AnEntryThatIsNotConfirmedIsNotAdded) {
  OpenPage();
  {
    const EntryEditorDriver editor(*sheet, IDC_AUTOSTART_ADD);
    editor.Enter(L"Clock");
    editor.Close(IDCANCEL);
  }
  EXPECT_EQ(page->Lines(), kOfficeLines);
  SaveWithOk();
  EXPECT_EQ(AllRows(file), before);
}

TEST_F(AutostartUi, UnderTheEditorNothingElseBegins) {
  OpenPage();
  page->Select(L"Notes");
  const EntryEditorDriver editor(*sheet, IDC_AUTOSTART_CHANGE);
  for (const int button : {IDC_AUTOSTART_ADD, IDC_AUTOSTART_REMOVE, IDC_AUTOSTART_DOWN}) {
    PostMessageW(sheet->Page(), WM_COMMAND, static_cast<WPARAM>(button), 0);
  }
  SendMessageW(sheet->Page(), WM_NULL, 0, 0);
  editor.Close(IDCANCEL);
  EXPECT_EQ(sheet->MessageBoxWindow(), nullptr);
  EXPECT_EQ(page->Lines(), kOfficeLines);
}

// Changing

TEST_F(AutostartUi, ChangingStoresWhatWasEdited) {
  OpenPage();
  page->Select(L"Notes");
  {
    const EntryEditorDriver editor(*sheet, IDC_AUTOSTART_CHANGE);
    EXPECT_EQ(editor.Name(), L"Notes");
    editor.Enter(L"Remarks", L"C:\\Windows\\write.exe");
    editor.Close(IDOK);
  }
  EXPECT_EQ(page->Selected(), L"Remarks");
  SaveWithOk();
  EXPECT_EQ(StoredValue(file,
                        "SELECT Program || ' ' || Phase || ' ' || ItemOrder FROM AutoStart WHERE Name = "
                        "'Remarks'"),
            "C:\\Windows\\write.exe 700 1");
  EXPECT_EQ(Without(AllRows(file), before).size(), 1u);
}

TEST_F(AutostartUi, AChangedPhasePutsTheEntryAtTheEndOfThatPhase) {
  OpenPage();
  page->Select(L"Notes");
  {
    const EntryEditorDriver editor(*sheet, IDC_AUTOSTART_CHANGE);
    editor.PickPhase(kAfter);
    editor.Close(IDOK);
  }
  EXPECT_EQ(page->Lines(),
            (Lines{kBefore, L" Device check", kNetwork, L" Calculator", kVpn, kAfter, L" Goodbye", L" Notes"}));
  EXPECT_EQ(PlaceOf(L"Notes"), std::pair(1600, 2));
}

TEST_F(AutostartUi, ANewRecordThatIsChangedStaysNew) {
  OpenPage();
  Add(L"Clock");
  EXPECT_EQ(Shown(L"Clock")->GetState(), ChangeState::New);
  page->Select(L"Clock");
  {
    const EntryEditorDriver editor(*sheet, IDC_AUTOSTART_CHANGE);
    editor.Enter(L"Watch");
    editor.Close(IDOK);
  }
  EXPECT_EQ(Shown(L"Watch")->GetState(), ChangeState::New);
  Down();
  EXPECT_EQ(Shown(L"Watch")->GetState(), ChangeState::New);
}

TEST_F(AutostartUi, ADoubleClickEditsAnEntryAndNoPhase) {
  OpenPage();
  const auto doubleClick = [this](const std::wstring& text) {
    POINT point = PointOn(page->Tree(), FindTreeItem(page->Tree(), text), TreeItemPart::Label);
    ClientToScreen(page->Tree(), &point);
    return point;
  };
  ASSERT_TRUE(
      sheet->ClickByMouseUntil([this] { return sheet->MessageBoxWindow() != nullptr; }, doubleClick(L"Calculator"), 2));
  EXPECT_EQ(TextOf(sheet->MessageBoxWindow()), L"Configure an object to autostart");
  PostMessageW(sheet->MessageBoxWindow(), WM_COMMAND, IDCANCEL, 0);
  ASSERT_TRUE(WaitUntil([this] { return sheet->MessageBoxWindow() == nullptr; }));
  ASSERT_TRUE(sheet->ClickByMouseUntil([this] { return page->Selected() == kNetwork; }, doubleClick(kNetwork), 2));
  EXPECT_EQ(sheet->MessageBoxWindow(), nullptr);
}

// Removing

TEST_F(AutostartUi, RemovingAsksFirst) {
  OpenPage();
  page->Select(L"Notes");
  Press(IDC_AUTOSTART_REMOVE);
  EXPECT_EQ(sheet->MessageBoxText(), L"Do you want to remove the 'Notes' autostart entry?");
  sheet->AnswerMessageBox(IDNO);
  EXPECT_EQ(page->Lines(), kOfficeLines);
  EXPECT_EQ(page->Selected(), L"Notes");
  Remove(L"Notes");
  EXPECT_EQ(page->Lines(), (Lines{kBefore, L" Device check", kNetwork, L" Calculator", kVpn, kAfter, L" Goodbye"}));
  EXPECT_EQ(page->Selected(), L"Calculator");
  SaveWithOk();
  EXPECT_EQ(Without(before, AllRows(file)).size(), 1u);
  EXPECT_THAT(Without(AllRows(file), before), IsEmpty());
}

TEST_F(AutostartUi, SeveralEntriesAreRemovedInTurnWithoutChoosingEach) {
  OpenPage();
  page->Select(L"Notes");
  for (const wchar_t* removed : {L"Notes", L"Calculator"}) {
    EXPECT_EQ(page->Selected(), removed);
    Press(IDC_AUTOSTART_REMOVE);
    sheet->AnswerMessageBox(IDYES);
  }
  EXPECT_EQ(page->Selected(), kNetwork) << "what is above the last one";
}

TEST_F(AutostartUi, ARemovedRecordLeavesTheTreeAndStaysInTheMap) {
  OpenPage();
  Remove(L"Notes");
  EXPECT_THAT(page->Lines(), Not(Contains(L" Notes")));
  sheet->PressOk();
  ASSERT_EQ(sheet->Result(), kSheetConfirmed);
  EXPECT_EQ(RecordOf(L"Notes").GetState(), ChangeState::Removed);
}

TEST_F(AutostartUi, AnEntryAddedAndRemovedAgainLeavesNoTrace) {
  OpenPage(2003);
  Press(IDC_OVERRIDE_CHECK);
  Add(L"Clock");
  Remove(L"Clock");
  Press(IDC_OVERRIDE_CHECK);
  SaveWithOk();
  EXPECT_EQ(AllRows(file), before);
}

TEST_F(AutostartUi, WhatTheAdministratorHasSetIsNeitherChangedNorMovedNorRemoved) {
  OpenPage();
  page->Select(L"Device check");
  for (const int button : {IDC_AUTOSTART_CHANGE, IDC_AUTOSTART_REMOVE, IDC_AUTOSTART_DOWN}) {
    Press(button);
    EXPECT_EQ(sheet->MessageBoxText(), kNotModifiable) << button;
    sheet->AnswerMessageBox(IDOK);
  }
  SendMessageW(sheet->Page(), WM_NULL, 0, 0);
  EXPECT_EQ(page->Lines(), kOfficeLines);
  SaveWithOk();
  EXPECT_EQ(AllRows(file), before);
}

TEST_F(AutostartUi, WhatTheAdministratorHasSetIsNotMovedUp) {
  OpenPageAfter("UPDATE AutoStart SET Modifiable = 0");
  page->Select(L"Goodbye");
  Up();
  EXPECT_EQ(sheet->MessageBoxText(), kNotModifiable);
  sheet->AnswerMessageBox(IDOK);
  EXPECT_EQ(page->Lines(), kOfficeLines);
}

// Lists of one's own

TEST_F(AutostartUi, OverridingStoresTheWholeListWithItsPhases) {
  OpenPage(2003);
  Press(IDC_OVERRIDE_CHECK);
  EXPECT_EQ(page->Lines(), kBranchLines);
  EXPECT_TRUE(sheet->IsEnabled(IDC_AUTOSTART_TREE));
  SaveWithOk();
  EXPECT_EQ(StoredList(2003), "1600 1 Clean up");
  EXPECT_EQ(StoredHeaders(2003), "4");
  EXPECT_EQ(StoredList(2000), "1600 1 Clean up") << "of the defaults";
  OpenPage(2003);
  EXPECT_EQ(page->Lines(), kBranchLines);
}

TEST_F(AutostartUi, AProfileThatOverridesWithoutAListOfItsOwnGetsCopies) {
  OpenPageAfter("UPDATE Profiles SET DefaultAutostart = 0 WHERE ProfileId = 2003", 2003);
  EXPECT_EQ(page->Lines(), kBranchLines);
  SaveWithOk();
  EXPECT_EQ(StoredHeaders(2003), "0") << "nothing was changed";
  OpenPage(2003);
  page->Select(L"Clean up");
  Up();
  SaveWithOk();
  EXPECT_EQ(StoredList(2003), "1100 1 Clean up");
  EXPECT_EQ(StoredHeaders(2003), "4");
  EXPECT_EQ(StoredList(2000), "1600 1 Clean up");
}

TEST_F(AutostartUi, AListThatWasEmptiedStaysEmpty) {
  for (const std::string statements : {"", "DELETE FROM AutoStart WHERE RecordType = 1"}) {
    if (!statements.empty())
      RunSql(file, statements +
                       ";DELETE FROM AutoStart WHERE ProfileId = 2003;"
                       "UPDATE Profiles SET DefaultAutostart = 1 WHERE ProfileId = 2003");
    OpenPage(2003);
    Press(IDC_OVERRIDE_CHECK);
    RemoveAll();
    SaveWithOk();
    OpenPage(2003);
    EXPECT_EQ(page->Lines(), (Lines{kBefore, kNetwork, kVpn, kAfter})) << statements;
  }
}

TEST_F(AutostartUi, AStoredListThatWasEmptiedStaysEmpty) {
  OpenPageAfter("UPDATE AutoStart SET Modifiable = 1; DELETE FROM AutoStart WHERE RecordType = 1");
  RemoveAll();
  SaveWithOk();
  OpenPage();
  EXPECT_EQ(page->Lines(), (Lines{kBefore, kNetwork, kVpn, kAfter}));
}

// What is pending

TEST_F(AutostartUi, PendingChangesSurviveTabsProfilesAndOverrideClicks) {
  OpenPage();
  page->Select(L"Notes");
  Add(L"Clock");
  Down();
  Remove(L"Goodbye");
  page->Select(L"Calculator");
  {
    const EntryEditorDriver editor(*sheet, IDC_AUTOSTART_CHANGE);
    editor.Enter(L"Abacus");
    editor.Close(IDOK);
  }
  const Lines shown = {kBefore, L" Device check", kNetwork, L" Abacus", L" Notes", L" Clock", kVpn, kAfter};
  ASSERT_EQ(page->Lines(), shown);
  sheet->SelectTab(L"Proxy");
  sheet->SelectTab(L"Autostart");
  EXPECT_EQ(page->Lines(), shown);
  EXPECT_EQ(page->Selected(), L"Abacus");
  sheet->Pick(IDC_PROFILE_COMBO, L"Travel");
  EXPECT_EQ(page->Lines(), kBranchLines);
  EXPECT_EQ(page->Selected(), kBefore);
  sheet->Pick(IDC_PROFILE_COMBO, kOfficeName);
  EXPECT_EQ(page->Lines(), shown);
  Press(IDC_OVERRIDE_CHECK);
  EXPECT_EQ(page->Lines(), kBranchLines);
  Press(IDC_OVERRIDE_CHECK);
  EXPECT_EQ(page->Lines(), shown);
  EXPECT_EQ(page->Selected(), kBefore);
  SaveWithOk();
  EXPECT_EQ(StoredList(kSampleOffice), "300 1 Device check, 700 1 Abacus, 700 2 Notes, 700 3 Clock");
}

TEST_F(AutostartUi, OkSavesTheListsOfAllProfiles) {
  OpenPage();
  Add(L"Clock");
  sheet->Pick(IDC_PROFILE_COMBO, L"Travel");
  Press(IDC_OVERRIDE_CHECK);
  Add(L"Compass");
  sheet->Pick(IDC_PROFILE_COMBO, L"Work");
  SaveWithOk();
  EXPECT_EQ(StoredList(kSampleOffice),
            "300 1 Device check, 300 2 Clock, 700 1 Notes, 700 2 Calculator, 1600 1 Goodbye");
  EXPECT_EQ(StoredList(2003), "300 1 Compass, 1600 1 Clean up");
}

TEST_F(AutostartUi, OkKeepsTheOrderOfEqualEntries) {
  OpenPage(2003);
  Press(IDC_OVERRIDE_CHECK);
  Add(L"Compass", kAfter);
  const Lines lines = page->Lines();
  EXPECT_EQ(PlaceOf(L"Compass"), PlaceOf(L"Clean up"));
  SaveWithOk();
  OpenPage(2003);
  EXPECT_EQ(page->Lines(), lines);
}

TEST_F(AutostartUi, CancelSavesNothing) {
  OpenPage();
  Add(L"Clock");
  Remove(L"Goodbye");
  page->Select(L"Notes");
  Down();
  sheet->PressCancel();
  ASSERT_EQ(sheet->Result(), kSheetCancelled);
  DiscardChanges();
  EXPECT_EQ(AllRows(file), before);
  OpenPage();
  EXPECT_EQ(page->Lines(), kOfficeLines);
}
