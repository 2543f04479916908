// The "Preferences" page on the real sheet, over the sample settings.

#include <gmock/gmock.h>
#include <sqlite3.h>

#include <functional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "Database/Profiles/BuiltInPreferences.h"
#include "LoginProperties/Preferences/PreferenceControls.h"
#include "LoginProperties/ProfilePage/ProfileControls.h"
#include "NetUtilities/Registry/RegistryNames.h"
#include "NetUtilities/Text/Utf8.h"
#include "tests/support/SavedCertificate.h"
#include "tests/support/TestRegistryKey.h"
#include "tests/support/TreeItems.h"
#include "tests/support/WaitUntil.h"
#include "tests/ui/SaveContext.h"
#include "tests/ui/StoredSheetTest.h"
#include "WaylineDll/Host.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::SizeIs;

constexpr wchar_t kFirstGroup[] = L"When this program starts";
constexpr wchar_t kAutoConnect[] = L"Automatically connect if password saved";
constexpr wchar_t kTray[] = L"Minimize main window to system tray";
constexpr wchar_t kBypass[] = L"Bypass Hardware Rendering";
constexpr wchar_t kSecondGroup[] = L"When connecting";
constexpr wchar_t kMultiHoming[] = L"Enable additional adapter security (prevent multi-homing)";
constexpr wchar_t kMtuGroup[] = L"VPN MTU Size";
constexpr wchar_t kCertificateGroup[] = L"Certificates";
constexpr wchar_t kCertificate[] = L"Use saved certificate.";

constexpr int kCheckOff = 1;
constexpr int kCheckOn = 2;
constexpr int kOptionOff = 7;
constexpr int kOptionOn = 8;

class PreferencesUi : public StoredSheetTest {
 protected:
  void Open() {
    StoredSheetTest::Open();
    sheet->SelectTab(L"Preferences");
  }

  void OpenOn(uint32_t profile) {
    Load(profile);
    Open();
  }

  HWND Tree() const { return sheet->Control(IDC_PREFERENCE_TREE); }
  HTREEITEM Item(const std::wstring& text) const { return FindTreeItem(Tree(), text); }
  int Image(const std::wstring& text) const { return TreeItemImage(Tree(), Item(text)); }

  bool IsOpened(const std::wstring& group) const {
    return (TreeView_GetItemState(Tree(), Item(group), TVIS_EXPANDED) & TVIS_EXPANDED) != 0;
  }

  // The state images of a group's entries.
  std::vector<int> Images(const std::wstring& group) const {
    std::vector<int> images;
    for (HTREEITEM item = TreeView_GetChild(Tree(), Item(group)); item != nullptr;
         item = TreeView_GetNextSibling(Tree(), item)) {
      images.push_back(TreeItemImage(Tree(), item));
    }
    return images;
  }

  std::wstring SelectedItem() const {
    const HTREEITEM item = TreeView_GetSelection(Tree());
    return item != nullptr ? TreeItemText(Tree(), item) : L"";
  }

  POINT OnScreen(const std::wstring& text, TreeItemPart part) const {
    POINT point = PointOn(Tree(), Item(text), part);
    ClientToScreen(Tree(), &point);
    return point;
  }

  void Click(const std::wstring& text, TreeItemPart part, int times = 1) const {
    sheet->ClickByMouse(OnScreen(text, part), times);
  }

  // Whether an entry gets the image from a click on it.
  bool ClickShows(const std::wstring& text, int image, TreeItemPart part = TreeItemPart::Label, int times = 1) const {
    return sheet->ClickByMouseUntil([&] { return Image(text) == image; }, OnScreen(text, part), times);
  }

  // Returns when all input so far has been dealt with, and what it posted: the key that moves the focus comes after.
  void PressTab() {
    const int before = sheet->FocusedControl();
    ASSERT_TRUE(sheet->PressKeyUntil([&] { return sheet->FocusedControl() != before; }, VK_TAB));
  }

  void PressOverrideBox() const {
    const bool before = sheet->IsChecked(IDC_OVERRIDE_CHECK);
    RECT box{};
    GetWindowRect(sheet->Control(IDC_OVERRIDE_CHECK), &box);
    ASSERT_TRUE(sheet->ClickByMouseUntil([&] { return sheet->IsChecked(IDC_OVERRIDE_CHECK) != before; },
                                         {box.left + 8, (box.top + box.bottom) / 2}));
  }

  // Runs a statement on the file as another program would; the rows of its answer, their columns with spaces between.
  std::set<std::string> Sql(const std::string& statement) const {
    std::set<std::string> rows;
    sqlite3* connection = nullptr;
    EXPECT_EQ(sqlite3_open(ToUtf8(file).c_str(), &connection), SQLITE_OK);
    const auto add = [](void* target, int count, char** values, char**) {
      std::string row;
      for (int column = 0; column < count; ++column) row += (column > 0 ? " " : "") + std::string(values[column]);
      static_cast<std::set<std::string>*>(target)->insert(row);
      return 0;
    };
    EXPECT_EQ(sqlite3_exec(connection, statement.c_str(), add, &rows, nullptr), SQLITE_OK);
    sqlite3_close(connection);
    return rows;
  }

  // All preferences in the file.
  std::set<std::string> Rows() const {
    return Sql("SELECT ProfileId, PreferenceId, State, Visible, IPSecRequired FROM Preferences");
  }
};

std::set<std::string> Without(std::set<std::string> rows, const std::set<std::string>& taken) {
  std::erase_if(rows, [&taken](const std::string& row) { return taken.contains(row); });
  return rows;
}

}  // namespace

TEST_F(PreferencesUi, OkSavesExactlyWhatWasChosen) {
  const auto before = Rows();
  Open();
  sheet->Click(IDC_OVERRIDE_CHECK);
  ASSERT_TRUE(ClickShows(kAutoConnect, kCheckOn, TreeItemPart::StateIcon));
  ASSERT_TRUE(ClickShows(L"1300", kOptionOn));
  sheet->PressOk();
  ASSERT_EQ(sheet->Result(), kSheetConfirmed);
  EXPECT_THAT(SaveContext(context), ElementsAre(RecordChange{RecordKind::Profile, kSampleWork, ChangeState::Changed},
                                                RecordChange{RecordKind::Preference, 1014, ChangeState::Changed},
                                                RecordChange{RecordKind::Preference, 1477, ChangeState::Changed}));
  // The others are the profile's own too from now on, as they were shown.
  const auto added = Without(Rows(), before);
  EXPECT_THAT(added, SizeIs(BuiltInPreferences().size()));
  EXPECT_THAT(added, IsSupersetOf({"2001 1014 2 1 0", "2001 1477 1480 1 1", "2001 1501 1 1 0"}));
  EXPECT_THAT(Without(before, Rows()), IsEmpty());

  OpenOn(kSampleWork);
  EXPECT_TRUE(sheet->IsChecked(IDC_OVERRIDE_CHECK));
  EXPECT_EQ(Image(kAutoConnect), kCheckOn);
  EXPECT_EQ(Image(kTray), kCheckOff) << "as it was inherited";
  EXPECT_THAT(Images(kMtuGroup), ElementsAre(7, 7, 8, 7, 7));
}

TEST_F(PreferencesUi, ClickingAnOptionAgainTurnsAllOffButItStaysChosen) {
  Load(kSampleOffice);
  const auto before = Rows();
  Open();
  ASSERT_TRUE(ClickShows(L"1300", kOptionOn));
  EXPECT_THAT(Images(kMtuGroup), ElementsAre(7, 7, 8, 7, 7));
  // Elsewhere, so that the two are no double click.
  ASSERT_TRUE(ClickShows(L"1300", kOptionOff, TreeItemPart::StateIcon));
  EXPECT_THAT(Images(kMtuGroup), ElementsAre(7, 7, 7, 7, 7));
  sheet->PressOk();
  ASSERT_EQ(sheet->Result(), kSheetConfirmed);
  EXPECT_THAT(SaveContext(context), ElementsAre(RecordChange{RecordKind::Preference, 1477, ChangeState::Changed}));
  EXPECT_THAT(Without(Rows(), before), ElementsAre("2004 1477 1480 1 1"));
  EXPECT_THAT(Without(before, Rows()), ElementsAre("2004 1477 1478 1 1"));
}

TEST_F(PreferencesUi, CancelSavesNothing) {
  Load(kSampleOffice);
  const auto before = Rows();
  Open();
  ASSERT_TRUE(ClickShows(kAutoConnect, kCheckOff));
  sheet->PressCancel();
  EXPECT_NE(sheet->Result(), kSheetConfirmed);
  EXPECT_THAT(context.preferences, IsEmpty());
  EXPECT_EQ(Rows(), before);
}

TEST_F(PreferencesUi, ADoubleClickTogglesOnceAndLeavesGroupsOpen) {
  OpenOn(kSampleOffice);
  Click(kFirstGroup, TreeItemPart::Label, 2);
  ASSERT_TRUE(ClickShows(kAutoConnect, kCheckOff, TreeItemPart::Label, 2));
  ASSERT_TRUE(ClickShows(kTray, kCheckOff));
  EXPECT_EQ(Image(kAutoConnect), kCheckOff);
  EXPECT_TRUE(IsOpened(kFirstGroup));
}

TEST_F(PreferencesUi, AClickBesideAnEntryDoesNothing) {
  OpenOn(kSampleOffice);
  Click(kAutoConnect, TreeItemPart::RightOfLabel);
  ASSERT_TRUE(ClickShows(kTray, kCheckOff));
  EXPECT_EQ(Image(kAutoConnect), kCheckOn);
}

TEST_F(PreferencesUi, AnEntryThatNobodyStoresIsBuiltInAndCanBeToggled) {
  Sql("DELETE FROM Preferences WHERE PreferenceId = 1014");
  const auto before = Rows();
  OpenOn(kSampleOffice);
  ASSERT_EQ(Image(kAutoConnect), kCheckOff);
  ASSERT_TRUE(ClickShows(kAutoConnect, kCheckOn));
  sheet->PressOk();
  ASSERT_EQ(sheet->Result(), kSheetConfirmed);
  EXPECT_THAT(SaveContext(context), ElementsAre(RecordChange{RecordKind::Preference, 1014, ChangeState::Changed}));
  EXPECT_THAT(Without(Rows(), before), ElementsAre("2004 1014 2 1 0"));
}

TEST_F(PreferencesUi, WhileTheProfileFollowsTheDefaultsTheTreeTakesNoInput) {
  Open();
  EXPECT_FALSE(sheet->IsEnabled(IDC_PREFERENCE_TREE));
  ASSERT_THAT(Images(kFirstGroup), ElementsAre(kCheckOff, kCheckOff, kCheckOff));
  Click(kAutoConnect, TreeItemPart::Label);
  Click(kFirstGroup, TreeItemPart::Label, 2);
  // Past the disabled window, too. Each on an entry of its own: two toggles of one would look like none.
  TreeView_SelectItem(Tree(), Item(kTray));
  SendMessageW(Tree(), WM_CHAR, L' ', 0);
  const POINT entry = PointOn(Tree(), Item(kBypass), TreeItemPart::Label);
  SendMessageW(Tree(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(entry.x, entry.y));
  SendMessageW(Tree(), WM_LBUTTONUP, 0, MAKELPARAM(entry.x, entry.y));
  const POINT heading = PointOn(Tree(), Item(kFirstGroup), TreeItemPart::Label);
  SendMessageW(Tree(), WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(heading.x, heading.y));
  PressTab();
  EXPECT_THAT(Images(kFirstGroup), ElementsAre(kCheckOff, kCheckOff, kCheckOff));
  EXPECT_TRUE(IsOpened(kFirstGroup));
  sheet->PressOkByMouse();  // where PressOk sends a message that overtakes input
  ASSERT_EQ(sheet->Result(), kSheetConfirmed);
  EXPECT_THAT(SaveContext(context), IsEmpty());
}

TEST_F(PreferencesUi, TickingTheBoxLetsTheTreeTakeInput) {
  Open();
  PressOverrideBox();
  EXPECT_TRUE(sheet->IsEnabled(IDC_PREFERENCE_TREE));
  EXPECT_EQ(Image(kAutoConnect), kCheckOff) << "inherited";
  EXPECT_TRUE(ClickShows(kAutoConnect, kCheckOn));
}

TEST_F(PreferencesUi, OverridingAndBackIsSeenAtOnce) {
  OpenOn(kSampleOffice);
  EXPECT_EQ(Image(kAutoConnect), kCheckOn);
  PressOverrideBox();
  EXPECT_TRUE(context.profiles.at(kSampleOffice)->GetDefaultPreferences());
  EXPECT_FALSE(sheet->IsEnabled(IDC_PREFERENCE_TREE));
  EXPECT_EQ(Image(kAutoConnect), kCheckOff) << "of the defaults";
  PressOverrideBox();
  EXPECT_TRUE(sheet->IsEnabled(IDC_PREFERENCE_TREE));
  EXPECT_EQ(Image(kAutoConnect), kCheckOn);
}

TEST_F(PreferencesUi, AProfileAbove10000ShowsThoseOfTheLinkedProfile) {
  OpenOn(kSampleVisitor);
  EXPECT_TRUE(sheet->IsChecked(IDC_OVERRIDE_CHECK));
  EXPECT_THAT(Images(kMtuGroup), ElementsAre(7, 7, 8, 7, 7)) << "1300, its own would be 700";
}

TEST_F(PreferencesUi, AProfileAbove10000SavesThoseOfTheLinkedProfile) {
  const auto before = Rows();
  OpenOn(kSampleVisitor);
  ASSERT_EQ(Image(kAutoConnect), kCheckOff) << "its own would be on";
  ASSERT_TRUE(ClickShows(kAutoConnect, kCheckOn));
  sheet->PressOk();
  ASSERT_EQ(sheet->Result(), kSheetConfirmed);
  EXPECT_THAT(SaveContext(context), ElementsAre(RecordChange{RecordKind::Preference, 1014, ChangeState::Changed}));
  EXPECT_THAT(Without(Rows(), before), ElementsAre("100 1014 2 1 0"));
  EXPECT_THAT(Without(before, Rows()), ElementsAre("100 1014 1 1 0"));
}

TEST_F(PreferencesUi, MultiHomingIsLeftOutUnlessTheAdministratorOffersIt) {
  TestRegistryKey client(HKEY_LOCAL_MACHINE, kClientKey);
  client.Remove(kPreventMultiHomingValue);
  OpenOn(kSampleOffice);
  EXPECT_EQ(Item(kMultiHoming), nullptr);
  EXPECT_EQ(Images(kSecondGroup).size(), 4u) << "the others are there";
}

TEST_F(PreferencesUi, MultiHomingIsShownAsTheAdministratorHasSetIt) {
  TestRegistryKey client(HKEY_LOCAL_MACHINE, kClientKey);
  for (const bool on : {true, false}) {
    client.SetDword(kPreventMultiHomingValue, on ? 1 : 0);
    Sql(std::string("UPDATE Preferences SET State = ") + (on ? "1" : "2") + " WHERE PreferenceId = 1504");
    OpenOn(kSampleOffice);
    ASSERT_NE(Item(kMultiHoming), nullptr);
    EXPECT_EQ(TreeView_GetParent(Tree(), Item(kMultiHoming)), Item(kSecondGroup));
    EXPECT_EQ(Image(kMultiHoming), on ? kCheckOn : kCheckOff) << "whatever the profile has stored";
  }
}

TEST_F(PreferencesUi, CertificatesAreLeftOutWhenTheProfilesOneIsNotSaved) {
  const std::wstring hashOfNoneNow = SavedCertificate().HashDigits();
  Load(kSampleOffice);
  context.currentProfile->SetHexDigCertHash(hashOfNoneNow);
  Open();
  EXPECT_NE(Item(kMtuGroup), nullptr);
  EXPECT_EQ(Item(kCertificateGroup), nullptr);
  EXPECT_EQ(Item(kCertificate), nullptr);
}

TEST_F(PreferencesUi, ASavedCertificateCanBeTurnedDown) {
  const SavedCertificate certificate;
  Load(kSampleOffice);
  const auto before = Rows();
  context.currentProfile->SetHexDigCertHash(certificate.HashDigits());
  Open();
  ASSERT_NE(Item(kCertificateGroup), nullptr);
  ASSERT_THAT(Images(kCertificateGroup), ElementsAre(kCheckOn));
  ASSERT_TRUE(ClickShows(kCertificate, kCheckOff));
  sheet->PressOk();
  ASSERT_EQ(sheet->Result(), kSheetConfirmed);
  EXPECT_THAT(SaveContext(context), ElementsAre(RecordChange{RecordKind::Preference, 1522, ChangeState::Changed}));
  EXPECT_THAT(Without(Rows(), before), ElementsAre("2004 1522 1 1 0"));
}

TEST_F(PreferencesUi, AnotherProfileShowsItsOwnPreferencesAndTogglesAreThereAgain) {
  OpenOn(kSampleOffice);
  ASSERT_TRUE(ClickShows(L"700", kOptionOn));
  sheet->Pick(IDC_PROFILE_COMBO, L"Work 2");
  EXPECT_EQ(Image(L"1300"), kOptionOn);
  EXPECT_FALSE(sheet->IsEnabled(IDC_PREFERENCE_TREE));
  sheet->Pick(IDC_PROFILE_COMBO, L"Z\u00fcrich Office");
  EXPECT_EQ(Image(L"700"), kOptionOn);
  sheet->Pick(IDC_PROFILE_COMBO, L"Work 2");
  sheet->PressOk();
  ASSERT_EQ(sheet->Result(), kSheetConfirmed);
  EXPECT_THAT(SaveContext(context), ElementsAre(RecordChange{RecordKind::Preference, 1477, ChangeState::Changed}))
      << "also of a profile that was not shown last";
}

TEST_F(PreferencesUi, CancelDropsTheTogglesOfAllProfiles) {
  OpenOn(kSampleOffice);
  ASSERT_TRUE(ClickShows(L"700", kOptionOn));
  sheet->Pick(IDC_PROFILE_COMBO, L"Work 2");
  sheet->PressCancel();
  DiscardChanges();
  Open();
  sheet->Pick(IDC_PROFILE_COMBO, L"Z\u00fcrich Office");
  EXPECT_EQ(Image(L"700"), kOptionOff);
}

TEST_F(PreferencesUi, WhatWasChosenIsSavedFromAnotherTabAndAfterComingBack) {
  for (const bool comesBack : {false, true}) {
    OpenOn(kSampleOffice);
    ASSERT_TRUE(ClickShows(kAutoConnect, kCheckOff));
    sheet->SelectTab(L"General");
    if (comesBack) sheet->SelectTab(L"Preferences");
    sheet->PressOk();
    ASSERT_EQ(sheet->Result(), kSheetConfirmed);
    EXPECT_EQ(context.preferences.at(PreferenceId::AutoConnect)->GetState(), ChangeState::Changed);
  }
}

TEST_F(PreferencesUi, CanBeUsedWithTheKeyboardAlone) {
  Open();
  ASSERT_TRUE(sheet->PressKeyUntil([this] { return sheet->IsChecked(IDC_OVERRIDE_CHECK); }, 'O', {VK_MENU}));
  ASSERT_TRUE(sheet->PressKeyUntil([this] { return sheet->HasFocus(IDC_PREFERENCE_TREE); }, VK_TAB));
  EXPECT_TRUE(WaitUntil([this] { return !SelectedItem().empty(); })) << "the space bar needs no arrow key before it";
  ASSERT_TRUE(sheet->PressKeyUntil([this] { return SelectedItem() == kFirstGroup; }, VK_HOME));
  ASSERT_TRUE(sheet->PressKeyUntil([this] { return SelectedItem() == kAutoConnect; }, VK_DOWN));
  ASSERT_TRUE(sheet->PressKeyUntil([this] { return Image(kAutoConnect) == kCheckOn; }, VK_SPACE));
  ASSERT_TRUE(sheet->PressKeyUntil([this] { return Image(kAutoConnect) == kCheckOff; }, VK_SPACE));
  ASSERT_TRUE(sheet->PressKeyUntil([this] { return SelectedItem() == kTray; }, VK_DOWN));
  ASSERT_TRUE(sheet->PressKeyUntil([this] { return Image(kTray) == kCheckOn; }, VK_SPACE));
  ASSERT_TRUE(sheet->PressKeyUntil([this] { return SelectedItem() == L"3"; }, VK_END));
  ASSERT_TRUE(sheet->PressKeyUntil([this] { return Image(L"3") == kOptionOn; }, VK_SPACE));
  ASSERT_TRUE(sheet->PressKeyUntil([this] { return !sheet->IsOpen(); }, VK_RETURN));
  EXPECT_EQ(sheet->Result(), kSheetConfirmed);
  EXPECT_EQ(context.preferences.at(PreferenceId::MinimizeToTray)->GetValue(), Preference::kOn);
  EXPECT_EQ(context.preferences.at(PreferenceId::IPSecAttempts)->GetValue(), 1511);
}

TEST_F(PreferencesUi, TabVisitsTheControlsInReadingOrder) {
  OpenOn(kSampleOffice);
  HWND control = sheet->Control(IDC_PROFILE_COMBO);
  for (const int next : {IDC_OVERRIDE_CHECK, IDC_PREFERENCE_TREE}) {
    control = GetNextDlgTabItem(sheet->Page(), control, FALSE);
    EXPECT_EQ(GetDlgCtrlID(control), next);
  }
}
