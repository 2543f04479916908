// The "Program Settings" dialog over the real sheet.

#include <gmock/gmock.h>

#include <functional>

#include "LoginProperties/ProfilePage/ProfileControls.h"
#include "LoginProperties/Proxy/ProxyRules.h"
#include "tests/support/WaitUntil.h"
#include "tests/ui/DialogWindows.h"
#include "tests/ui/OtherConnection.h"
#include "tests/ui/ProxyPageDriver.h"
#include "tests/ui/SettingsDriver.h"
#include "tests/ui/StoredSheetTest.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr size_t kProxyRow = 1;
constexpr size_t kExceptionsRow = 2;

class ProgramSettings : public StoredSheetTest {
 protected:
  // Stores both lists of a profile and opens the dialog on one of them.
  SettingsDriver OpenOnList(size_t row, const std::string& list) {
    RunSql(file, "UPDATE ConfigSettings SET ManualProxy = '" + list + "', ProxyExceptions = '" + list +
                     "' WHERE ProfileId = 2004 AND Automatic = 0");
    OpenOn(kSampleOffice).SelectTab(L"Proxy");
    ProxyPageDriver(*sheet).Select(row);
    return SettingsDriver(*sheet);
  }

  SettingsDriver OpenOnProxies(const std::string& list) { return OpenOnList(kProxyRow, list); }
  SettingsDriver OpenOnExceptions(const std::string& list) { return OpenOnList(kExceptionsRow, list); }

  // What the dialog has left in the page's list.
  std::wstring Shown(size_t row = kProxyRow) { return ProxyPageDriver(*sheet).Rows()[row][2]; }

  std::string Stored(const std::string& column = "ManualProxy") {
    return StoredValue(file, "SELECT " + column + " FROM ConfigSettings WHERE ProfileId = 2004 AND Automatic = 0");
  }
};

std::vector<std::wstring> Entry(const wchar_t* address, const wchar_t* port = L"") { return {address, port}; }

}  // namespace

// What is shown

TEST_F(ProgramSettings, ShowTheProxiesWithTheirPorts) {
  const SettingsDriver dialog = OpenOnProxies("proxy1:8080;proxy2:3128");
  EXPECT_EQ(dialog.Title(), L"Program Settings");
  EXPECT_EQ(dialog.Text(IDC_SETTINGS_CAPTION), L"VPN manual proxy settings");
  EXPECT_THAT(ReportColumns(dialog.List()), ElementsAre(L"Proxy Address", L"Port"));
  EXPECT_THAT(dialog.Entries(), ElementsAre(Entry(L"proxy1", L"8080"), Entry(L"proxy2", L"3128")));
  EXPECT_TRUE(IsWindowVisible(dialog.Control(IDC_SETTINGS_PORT)));
  EXPECT_TRUE(IsWindowVisible(dialog.Control(IDC_SETTINGS_PORT_LABEL)));
  EXPECT_EQ(dialog.Address(), L"");
  EXPECT_EQ(dialog.Port(), L"");
}

TEST_F(ProgramSettings, ShowTheExceptionsWithoutAFieldForPorts) {
  const SettingsDriver dialog = OpenOnExceptions("intranet.example.net;host:80");
  EXPECT_EQ(dialog.Text(IDC_SETTINGS_CAPTION), L"VPN manual proxy exception settings");
  EXPECT_THAT(ReportColumns(dialog.List()), ElementsAre(L"Proxy Address", L"Port"));
  EXPECT_THAT(dialog.Entries(), ElementsAre(Entry(L"intranet.example.net"), Entry(L"host", L"80")));
  EXPECT_FALSE(IsWindowVisible(dialog.Control(IDC_SETTINGS_PORT)));
  EXPECT_FALSE(IsWindowVisible(dialog.Control(IDC_SETTINGS_PORT_LABEL)));
  dialog.Select(1);
  EXPECT_EQ(dialog.Address(), L"host");
  EXPECT_EQ(dialog.Port(), L"") << "the field that is hidden";
}

TEST_F(ProgramSettings, ShareTheListsWidthBetweenTheTwoColumns) {
  const SettingsDriver dialog = OpenOnProxies("proxy1:8080");
  RECT area{};
  GetClientRect(dialog.List(), &area);
  EXPECT_EQ(ListView_GetColumnWidth(dialog.List(), 0), area.right / 2);
  EXPECT_EQ(ListView_GetColumnWidth(dialog.List(), 1), area.right / 2);
  EXPECT_EQ(GetWindowLongW(dialog.List(), GWL_STYLE) & WS_HSCROLL, 0) << "both are seen";
  EXPECT_NE(ListView_GetExtendedListViewStyle(dialog.List()) & LVS_EX_FULLROWSELECT, 0u);
}

TEST_F(ProgramSettings, MakeRoomForTheScrollBarOfALongList) {
  const SettingsDriver dialog = OpenOnProxies("a;b;c;d;e;f;g;h;i;j;k;l;m;n;o;p");
  const auto expectHalves = [&dialog](bool scrolls) {
    const LONG_PTR style = GetWindowLongPtrW(dialog.List(), GWL_STYLE);
    EXPECT_EQ((style & WS_VSCROLL) != 0, scrolls);
    EXPECT_EQ(style & WS_HSCROLL, 0);
    RECT area{};
    GetClientRect(dialog.List(), &area);
    for (const int column : {0, 1}) EXPECT_EQ(ListView_GetColumnWidth(dialog.List(), column), area.right / 2);
  };
  expectHalves(true);
  for (int entry = 0; entry < 10; ++entry) dialog.Press(IDC_SETTINGS_DELETE);
  expectHalves(false);
  for (int entry = 0; entry < 10; ++entry) dialog.Add(L"more");
  expectHalves(true);
}

TEST_F(ProgramSettings, StandOverTheMiddleOfTheSheetAndLockIt) {
  const SettingsDriver dialog = OpenOnProxies("proxy1:8080");
  EXPECT_EQ(GetWindow(dialog.Window(), GW_OWNER), sheet->Sheet());
  EXPECT_FALSE(IsWindowEnabled(sheet->Sheet()));
  RECT own{};
  RECT sheets{};
  GetWindowRect(dialog.Window(), &own);
  GetWindowRect(sheet->Sheet(), &sheets);
  EXPECT_NEAR(own.left + own.right, sheets.left + sheets.right, 2);
  EXPECT_NEAR(own.top + own.bottom, sheets.top + sheets.bottom, 2);
}

TEST_F(ProgramSettings, ASelectedEntryIsShownInTheFields) {
  const SettingsDriver dialog = OpenOnProxies("proxy1 : 8080;host");
  EXPECT_THAT(dialog.Entries(), ElementsAre(Entry(L"proxy1 ", L" 8080"), Entry(L"host")));
  dialog.Select(0);
  EXPECT_EQ(dialog.Address(), L"proxy1 ");
  EXPECT_EQ(dialog.Port(), L" 8080");
  dialog.Select(1);
  EXPECT_EQ(dialog.Address(), L"host");
  EXPECT_EQ(dialog.Port(), L"");
}

// OK and Cancel

TEST_F(ProgramSettings, OkWithoutAChangeGivesTheSameListBack) {
  for (const char* list : {"proxy1:8080;proxy2:3128", "proxy1 : 8080", "host", ""}) {
    OpenOnProxies(list).Close(IDOK);
    SaveWithOk();
    EXPECT_EQ(Stored(), list);
  }
}

TEST_F(ProgramSettings, OkLeavesOutWhatDoesNotCount) {
  for (const auto& [list, result] :
       {std::pair{";;host;", "host"}, std::pair{"a:b:c", "a:c"}, std::pair{":8080", "8080"}, std::pair{";:;", ""}}) {
    OpenOnProxies(list).Close(IDOK);
    SaveWithOk();
    EXPECT_EQ(Stored(), result);
  }
}

TEST_F(ProgramSettings, OkStoresTheListThatWasEditedAndNoOther) {
  const SettingsDriver dialog = OpenOnExceptions("a;b");
  dialog.Add(L"c");
  dialog.Close(IDOK);
  EXPECT_EQ(Shown(kExceptionsRow), L"a;b;c");
  SaveWithOk();
  EXPECT_EQ(Stored("ProxyExceptions"), "a;b;c");
  EXPECT_EQ(Stored("ManualProxy"), "a;b");
}

TEST_F(ProgramSettings, EveryOtherWayOutChangesNothingAndEndsTheDialogOnce) {
  const std::multiset<std::string> before = AllRows(file);
  OpenOn(kSampleOffice).SelectTab(L"Proxy");
  ProxyPageDriver(*sheet).Select(kProxyRow);
  const std::wstring shown = Shown();
  using Way = std::function<void(const SettingsDriver&)>;
  const auto byKey = [](WORD key, const std::vector<WORD>& modifiers = {}) -> Way {
    return [=](const SettingsDriver& dialog) {
      EXPECT_TRUE(dialog.PressKeyUntil([&] { return !IsWindow(dialog.Window()); }, key, modifiers));
    };
  };
  const auto byMessage = [](UINT message, WPARAM parameter) -> Way {
    return [=](const SettingsDriver& dialog) { PostMessageW(dialog.Window(), message, parameter, 0); };
  };
  for (const auto& [name, leave] : {std::pair{"Escape", byKey(VK_ESCAPE)}, std::pair{"Alt+F4", byKey(VK_F4, {VK_MENU})},
                                    std::pair{"Cancel", byMessage(WM_COMMAND, IDCANCEL)},
                                    std::pair{"the title bar", byMessage(WM_SYSCOMMAND, SC_CLOSE)},
                                    std::pair{"its closing", byMessage(WM_CLOSE, 0)},
                                    std::pair{"Cancel twice", Way([](const SettingsDriver& dialog) {
                                                PostMessageW(dialog.Window(), WM_COMMAND, IDCANCEL, 0);
                                                PostMessageW(dialog.Window(), WM_COMMAND, IDCANCEL, 0);
                                              })}}) {
    const SettingsDriver dialog(*sheet);
    dialog.Add(L"added", L"1");
    ASSERT_THAT(dialog.Entries(), testing::SizeIs(3));
    leave(dialog);
    dialog.ExpectEnd();
    EXPECT_EQ(Shown(), shown) << name;
    EXPECT_TRUE(sheet->IsOpen()) << name;
    EXPECT_TRUE(IsWindowEnabled(sheet->Sheet())) << name;
  }
  SaveWithOk();
  EXPECT_EQ(AllRows(file), before);
}

TEST_F(ProgramSettings, EnterInAFieldIsOkAndAddsNothing) {
  const SettingsDriver dialog = OpenOnProxies("a:1");
  dialog.Type(L"typed", L"2");
  SendMessageW(dialog.Window(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(dialog.Control(IDC_SETTINGS_ADDRESS)), TRUE);
  EXPECT_TRUE(dialog.PressKeyUntil([&] { return !IsWindow(dialog.Window()); }, VK_RETURN));
  dialog.ExpectEnd();
  EXPECT_EQ(Shown(), L"a:1");
  EXPECT_TRUE(sheet->IsOpen());
}

// Editing

TEST_F(ProgramSettings, AnEntryIsAddedAtTheEndWithoutALookForEqualOnes) {
  const SettingsDriver dialog = OpenOnProxies("b:2");
  dialog.Add(L"a", L"1");
  dialog.Add(L"a", L"1");
  dialog.Add(L"none");
  EXPECT_THAT(dialog.Entries(), ElementsAre(Entry(L"b", L"2"), Entry(L"a", L"1"), Entry(L"a", L"1"), Entry(L"none")));
  EXPECT_EQ(dialog.Address(), L"none") << "the fields keep what was typed";
  dialog.Close(IDOK);
  EXPECT_EQ(Shown(), L"b:2;a:1;a:1;none");
}

TEST_F(ProgramSettings, OfEqualEntriesTheFirstIsChangedAndDeleted) {
  const SettingsDriver dialog = OpenOnProxies("x:9");
  dialog.Add(L"a", L"1");
  dialog.Add(L"a", L"1");
  dialog.Select(2);
  dialog.Type(L"new", L"2");
  dialog.Press(IDC_SETTINGS_CHANGE);
  EXPECT_THAT(dialog.Entries(), ElementsAre(Entry(L"x", L"9"), Entry(L"new", L"2"), Entry(L"a", L"1")));
  dialog.Add(L"a", L"1");
  dialog.Select(3);
  dialog.Press(IDC_SETTINGS_DELETE);
  EXPECT_THAT(dialog.Entries(), ElementsAre(Entry(L"x", L"9"), Entry(L"new", L"2"), Entry(L"a", L"1")));
}

TEST_F(ProgramSettings, WithoutASelectionTheFirstRowIsChangedAndDeleted) {
  const SettingsDriver dialog = OpenOnProxies("a:1;b:2;c:3");
  dialog.Type(L"new", L"");
  dialog.Press(IDC_SETTINGS_CHANGE);
  EXPECT_THAT(dialog.Entries(), ElementsAre(Entry(L"new"), Entry(L"b", L"2"), Entry(L"c", L"3")));
  dialog.Press(IDC_SETTINGS_DELETE);
  EXPECT_THAT(dialog.Entries(), ElementsAre(Entry(L"b", L"2"), Entry(L"c", L"3")));
}

TEST_F(ProgramSettings, ARowThatIsNoLongerThereIsNeitherChangedNorDeleted) {
  const SettingsDriver dialog = OpenOnProxies("a:1;b:2");
  dialog.Select(1);
  dialog.Press(IDC_SETTINGS_DELETE);
  EXPECT_THAT(dialog.Entries(), ElementsAre(Entry(L"a", L"1")));
  EXPECT_EQ(dialog.Address(), L"b");
  dialog.Press(IDC_SETTINGS_DELETE);
  dialog.Press(IDC_SETTINGS_CHANGE);
  EXPECT_THAT(dialog.Entries(), ElementsAre(Entry(L"a", L"1")));
}

TEST_F(ProgramSettings, AnEmptyListTakesNeitherChangeNorDelete) {
  const SettingsDriver dialog = OpenOnProxies("");
  dialog.Type(L"new", L"1");
  dialog.Press(IDC_SETTINGS_CHANGE);
  dialog.Press(IDC_SETTINGS_DELETE);
  EXPECT_THAT(dialog.Entries(), IsEmpty());
}

TEST_F(ProgramSettings, NoAddressIsNoEntry) {
  const SettingsDriver dialog = OpenOnProxies("a:1");
  dialog.Add(L"", L"80");
  dialog.Select(0);
  dialog.Type(L"", L"80");
  dialog.Press(IDC_SETTINGS_CHANGE);
  EXPECT_THAT(dialog.Entries(), ElementsAre(Entry(L"a", L"1")));
}

TEST_F(ProgramSettings, AChangedExceptionLosesItsPort) {
  const SettingsDriver dialog = OpenOnExceptions("host:80;other:81");
  dialog.Select(0);
  dialog.Press(IDC_SETTINGS_CHANGE);
  EXPECT_THAT(dialog.Entries(), ElementsAre(Entry(L"host"), Entry(L"other", L"81")));
  dialog.Add(L"new", L"82");
  dialog.Close(IDOK);
  EXPECT_EQ(Shown(kExceptionsRow), L"host;other:81;new") << "what stands in the hidden field does not count";
}

// Long texts

TEST_F(ProgramSettings, TextsAreTakenUpTo63Characters) {
  // An emoji takes two of them, and is not cut in two.
  const std::wstring emoji = L"\xd83d\xde00";
  const SettingsDriver dialog = OpenOnProxies("");
  std::vector<std::vector<std::wstring>> expected;
  for (const auto& [typed, taken] :
       {std::pair{std::wstring(63, L'a'), std::wstring(63, L'a')},
        std::pair{std::wstring(64, L'b'), std::wstring(63, L'b')},
        std::pair{std::wstring(70, L'c'), std::wstring(63, L'c')},
        std::pair{std::wstring(64, L'\u4f60'), std::wstring(63, L'\u4f60')},
        std::pair{std::wstring(62, L'\u05d0') + emoji, std::wstring(62, L'\u05d0')},
        std::pair{std::wstring(61, L'd') + emoji + L"x", std::wstring(61, L'd') + emoji}}) {
    dialog.Add(typed, typed);
    expected.push_back({taken, taken});
    EXPECT_EQ(dialog.Address(), typed) << "in the field all of it stays";
  }
  EXPECT_EQ(dialog.Entries(), expected);
  dialog.Select(0);
  dialog.Type(std::wstring(62, L'e') + emoji, std::wstring(70, L'1'));
  dialog.Press(IDC_SETTINGS_CHANGE);
  EXPECT_EQ(dialog.Entries()[0], (std::vector{std::wstring(62, L'e'), std::wstring(63, L'1')}));
}

TEST_F(ProgramSettings, ALongEntryIsShownUpTo63CharactersAndCanBeChangedAndDeleted) {
  const std::string longText(62, 'a');
  const SettingsDriver dialog = OpenOnProxies(longText + "\xf0\x9f\x98\x80:" + std::string(70, '1') + ";b");
  ASSERT_EQ(dialog.Entries()[0][0].size(), 64u);
  dialog.Select(0);
  EXPECT_EQ(dialog.Address(), std::wstring(62, L'a'));
  EXPECT_EQ(dialog.Port(), std::wstring(63, L'1'));
  dialog.Press(IDC_SETTINGS_CHANGE);
  EXPECT_EQ(dialog.Entries()[0], (std::vector{std::wstring(62, L'a'), std::wstring(63, L'1')}));
  dialog.Close(IDCANCEL);
  sheet->Click(IDC_PROXY_SETTINGS);
  ASSERT_TRUE(WaitUntil([this] { return sheet->MessageBoxWindow() != nullptr; }));
  const HWND again = sheet->MessageBoxWindow();
  SendMessageW(again, WM_COMMAND, IDC_SETTINGS_DELETE, 0);
  EXPECT_THAT(ReportRows(GetDlgItem(again, IDC_SETTINGS_LIST)), ElementsAre(Entry(L"b")));
}

TEST_F(ProgramSettings, AThousandEntriesAreShownAndGivenBack) {
  std::string list;
  for (int entry = 0; entry < 1000; ++entry) list += (entry ? ";host" : "host") + std::to_string(entry);
  const SettingsDriver dialog = OpenOnProxies(list);
  EXPECT_EQ(ListView_GetItemCount(dialog.List()), 1000);
  dialog.Add(L"last");
  dialog.Close(IDOK);
  SaveWithOk();
  EXPECT_EQ(Stored(), list + ";last");
}

// Keyboard

TEST_F(ProgramSettings, AKeyboardAloneReachesEverything) {
  const SettingsDriver dialog = OpenOnProxies("a:1;b:2");
  const DWORD thread = GetWindowThreadProcessId(dialog.Window(), nullptr);
  const auto focus = [thread] { return GetDlgCtrlID(FocusOf(thread)); };
  ASSERT_TRUE(WaitUntil([&] { return focus() == IDC_SETTINGS_LIST; }));
  std::vector<int> visited;
  for (int tabs = 0; tabs < 8; ++tabs) {
    const int from = focus();
    ASSERT_TRUE(dialog.PressKeyUntil([&] { return focus() != from; }, VK_TAB));
    visited.push_back(focus());
  }
  EXPECT_THAT(visited, ElementsAre(IDC_SETTINGS_ADDRESS, IDC_SETTINGS_PORT, IDC_SETTINGS_ADD, IDC_SETTINGS_CHANGE,
                                   IDC_SETTINGS_DELETE, IDOK, IDCANCEL, IDC_SETTINGS_LIST));
  EXPECT_TRUE(dialog.PressKeyUntil([&] { return dialog.Address() == L"b"; }, VK_DOWN));
  EXPECT_TRUE(dialog.PressKeyUntil([&] { return dialog.Entries().size() == 1; }, 'D', {VK_MENU}));
}
