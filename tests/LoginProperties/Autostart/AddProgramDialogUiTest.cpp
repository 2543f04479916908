// The dialog in which an autostart entry is edited: what it shows, and what it stores.

#include <windows.h>

#include <gmock/gmock.h>
#include <windowsx.h>

#include <tuple>

#include "LoginProperties/LoginPropertiesContext.h"
#include "tests/LoginProperties/Autostart/AddProgramDriver.h"
#include "tests/support/BrowserStandIn.h"
#include "tests/support/TestRegistryKey.h"
#include "tests/support/ThisProgram.h"
#include "tests/support/WaitUntil.h"
#include "tests/ui/DialogWindows.h"

namespace {

using testing::ElementsAre;
using testing::SizeIs;

constexpr int kAdvanced[] = {IDC_PROGRAM_ADVANCED_GROUP,  IDC_PROGRAM_SIZE_LABEL,  IDC_PROGRAM_SIZE,
                             IDC_PROGRAM_RECONNECT_LABEL, IDC_PROGRAM_RECONNECT,   IDC_PROGRAM_CONNECTION_LABEL,
                             IDC_PROGRAM_CONNECTION,      IDC_PROGRAM_DELAY_LABEL, IDC_PROGRAM_DELAY};

constexpr int kLists[] = {IDC_PROGRAM_NAME,      IDC_PROGRAM_PHASE,      IDC_PROGRAM_SIZE,
                          IDC_PROGRAM_RECONNECT, IDC_PROGRAM_CONNECTION, IDC_PROGRAM_DELAY};

constexpr wchar_t kLongestDelay[] = L"Wait 2 minutes or until the VPN connection completes before proceeding.";

auto AllOf(const AutoStartItem::Fields& fields) {
  return std::tuple(fields.id, fields.profileId, fields.phase, fields.order, fields.recordType, fields.name,
                    fields.modifiable, fields.program, fields.parameters, fields.directory, fields.directoryRegistryKey,
                    fields.showAdvanced, fields.initialSize, fields.reconnectOption, fields.connectionOption,
                    fields.delaySeconds, fields.waitMode, fields.definitionLocked);
}

class AddProgram : public testing::Test {
 protected:
  AddProgram() {
    AddPhase(1, 300, L"Before connecting");
    AddPhase(2, 700, L"After the network is connected");
    AddPhase(3, 1600, L"After disconnecting");
    AutoStartItem::Fields& fields = Entry();
    fields.id = 7;
    fields.profileId = 2004;
    fields.phase = 300;
    fields.order = 2;
    fields.name = L"Orders";
    fields.program = L"C:\\Tools\\orders.exe";
    fields.parameters = L"/new \"two words\"";
    fields.directory = L"C:\\Tools";
    fields.showAdvanced = true;
    fields.initialSize = 1;
    fields.reconnectOption = 2;
    fields.connectionOption = 1;
    fields.delaySeconds = 30;
    fields.waitMode = 1;
  }
  ~AddProgram() override { GetContext().autoStartItems.clear(); }

  static AutoStartItem& AddPhase(uint32_t id, uint16_t phase, const std::wstring& name) {
    auto header = std::make_shared<AutoStartItem>();
    header->fields.phase = phase;
    header->fields.name = name;
    header->fields.recordType = AutoStartRecordType::PhaseHeader;
    return *(GetContext().autoStartItems[id] = std::move(header));
  }

  AutoStartItem::Fields& Entry() { return item_->fields; }

  // Opens the dialog, does something, and presses OK.
  void Confirm(const std::function<void(AddProgramDriver&)>& act = [](AddProgramDriver&) {}) {
    AddProgramDriver dialog(item_);
    act(dialog);
    EXPECT_EQ(dialog.Close(IDOK), IDOK);
  }

  std::shared_ptr<AutoStartItem> item_ = std::make_shared<AutoStartItem>();
};

// Changes all that a person can change.
void ChangeEverything(const AddProgramDriver& dialog) {
  dialog.Type(IDC_PROGRAM_NAME, L"Notes");
  dialog.Pick(IDC_PROGRAM_PHASE, L"After disconnecting");
  dialog.Type(IDC_PROGRAM_FILE, L"C:\\notes.exe");
  dialog.Type(IDC_PROGRAM_PARAMETERS, L"/old");
  dialog.Type(IDC_PROGRAM_DIRECTORY, L"D:\\");
  dialog.PickIndex(IDC_PROGRAM_SIZE, 2);
  dialog.PickIndex(IDC_PROGRAM_RECONNECT, 1);
  dialog.PickIndex(IDC_PROGRAM_CONNECTION, 2);
  dialog.Pick(IDC_PROGRAM_DELAY, kLongestDelay);
  dialog.ClickAdvanced();
}

LONG HeightOf(const RECT& area) { return area.bottom - area.top; }

int WidthOf(HWND control, const std::wstring& text) {
  const HDC context = GetDC(control);
  const HGDIOBJ before = SelectObject(context, GetWindowFont(control));
  SIZE size{};
  GetTextExtentPoint32W(context, text.c_str(), static_cast<int>(text.size()), &size);
  SelectObject(context, before);
  ReleaseDC(control, context);
  return size.cx;
}

// The control that Tab leads to from `control`, which is 0 for the first one.
int NextInTabOrder(const AddProgramDriver& dialog, int control) {
  return GetDlgCtrlID(GetNextDlgTabItem(dialog.Window(), control != 0 ? dialog.Control(control) : nullptr, FALSE));
}

std::vector<int> TabOrder(const AddProgramDriver& dialog) {
  std::vector<int> order;
  const int first = NextInTabOrder(dialog, 0);
  int control = first;
  do {
    order.push_back(control);
    control = NextInTabOrder(dialog, control);
  } while (control != first && order.size() < 100);
  return order;
}

}  // namespace

// What is shown

TEST_F(AddProgram, ShowsTheEntry) {
  const AddProgramDriver dialog(item_);
  EXPECT_EQ(TextOf(dialog.Window()), L"Configure an object to autostart");
  EXPECT_EQ(dialog.Text(IDC_PROGRAM_NAME), L"Orders");
  EXPECT_EQ(dialog.Selected(IDC_PROGRAM_PHASE), L"Before connecting");
  EXPECT_EQ(dialog.Text(IDC_PROGRAM_FILE), L"C:\\Tools\\orders.exe");
  EXPECT_EQ(dialog.Text(IDC_PROGRAM_PARAMETERS), L"/new \"two words\"");
  EXPECT_EQ(dialog.Text(IDC_PROGRAM_DIRECTORY), L"C:\\Tools");
  EXPECT_EQ(Button_GetCheck(dialog.Control(IDC_PROGRAM_ADVANCED_CHECK)), BST_CHECKED);
  EXPECT_EQ(dialog.Selected(IDC_PROGRAM_SIZE), L"Maximized");
  EXPECT_EQ(dialog.Selected(IDC_PROGRAM_RECONNECT), L"Always restart");
  EXPECT_EQ(dialog.Selected(IDC_PROGRAM_CONNECTION), L"Disconnect if this program ends.");
  EXPECT_EQ(dialog.Selected(IDC_PROGRAM_DELAY), L"Wait 30 seconds before proceeding.");
  EXPECT_TRUE(dialog.IsEnabled(IDC_PROGRAM_TEST));
  EXPECT_EQ(dialog.FocusedControl(), IDC_PROGRAM_NAME);
}

TEST_F(AddProgram, OffersWhatThereIsToChooseFrom) {
  const AddProgramDriver dialog(item_);
  EXPECT_THAT(dialog.Items(IDC_PROGRAM_SIZE), ElementsAre(L"Normal", L"Maximized", L"Minimized"));
  EXPECT_THAT(dialog.Items(IDC_PROGRAM_RECONNECT),
              ElementsAre(L"Ask before restarting", L"Do not restart", L"Always restart"));
  EXPECT_THAT(dialog.Items(IDC_PROGRAM_CONNECTION), ElementsAre(L"(none)", L"Disconnect if this program ends.",
                                                                L"Prompt for disconnect if this program ends."));
  EXPECT_THAT(dialog.Items(IDC_PROGRAM_DELAY),
              ElementsAre(L"(none)", L"Wait 10 seconds before proceeding.", L"Wait 30 seconds before proceeding.",
                          L"Wait 1 minute before proceeding.", L"Wait 2 minutes before proceeding.",
                          L"Wait 5 minutes before proceeding.", kLongestDelay,
                          L"Wait 5 minutes or until the VPN connection completes before proceeding.",
                          L"Wait 2 minutes before trying to connect.", L"Wait 5 minutes before trying to connect."));
}

TEST_F(AddProgram, OffersThePhasesOfTheListThatTheSheetShows) {
  AddPhase(4, 1100, L"Gone").SetState(ChangeState::Removed);
  AddPhase(5, 1100, L"After the VPN is connected");
  Entry().phase = 1100;
  const AddProgramDriver dialog(item_);
  EXPECT_THAT(dialog.Items(IDC_PROGRAM_PHASE), ElementsAre(L"Before connecting", L"After the network is connected",
                                                           L"After the VPN is connected", L"After disconnecting"));
  EXPECT_THAT(dialog.Values(IDC_PROGRAM_PHASE), ElementsAre(300, 700, 1100, 1600));
  EXPECT_EQ(dialog.Selected(IDC_PROGRAM_PHASE), L"After the VPN is connected");
}

TEST_F(AddProgram, SelectsNothingForWhatIsNotOffered) {
  Entry().phase = 500;
  Entry().initialSize = 3;
  Entry().reconnectOption = -1;
  Entry().connectionOption = 70;
  Entry().delaySeconds = 120;
  Entry().waitMode = 0;
  const auto before = AllOf(Entry());
  Confirm([](const AddProgramDriver& dialog) {
    for (const int list :
         {IDC_PROGRAM_PHASE, IDC_PROGRAM_SIZE, IDC_PROGRAM_RECONNECT, IDC_PROGRAM_CONNECTION, IDC_PROGRAM_DELAY}) {
      EXPECT_EQ(dialog.SelectedIndex(list), CB_ERR) << list;
      // What no user can do: a choice of nothing.
      dialog.PickIndex(list, -1);
    }
    EXPECT_THAT(dialog.Items(IDC_PROGRAM_DELAY), SizeIs(10)) << "where no phase is selected, all are offered";
  });
  EXPECT_EQ(AllOf(Entry()), before);
}

TEST_F(AddProgram, ShowsTheDirectoryThatTheRegistryNamesForAnEntryWithout) {
  TestRegistryKey key(HKEY_CURRENT_USER, LR"(Software\PaviseTest\Orders)");
  key.SetString(L"Path", L"D:\\Orders");
  Entry().directoryRegistryKey = LR"(HKEY_CURRENT_USER\Software\PaviseTest\Orders\Path)";
  EXPECT_EQ(AddProgramDriver(item_).Text(IDC_PROGRAM_DIRECTORY), L"C:\\Tools");
  Entry().directory.clear();
  {
    AddProgramDriver dialog(item_);
    EXPECT_EQ(dialog.Text(IDC_PROGRAM_DIRECTORY), L"D:\\Orders");
    dialog.Close(IDCANCEL);
  }
  EXPECT_EQ(Entry().directory, L"");
  Confirm();
  EXPECT_EQ(Entry().directory, L"") << "it goes on to come from the registry";
  Confirm([](const AddProgramDriver& dialog) { dialog.Type(IDC_PROGRAM_DIRECTORY, L"E:\\Orders"); });
  EXPECT_EQ(Entry().directory, L"E:\\Orders");
}

TEST_F(AddProgram, StandsOverTheMiddleOfItsOwnerAndLocksIt) {
  const AddProgramDriver dialog(item_);
  EXPECT_EQ(GetWindow(dialog.Window(), GW_OWNER), dialog.Owner());
  EXPECT_FALSE(IsWindowEnabled(dialog.Owner()));
  RECT owner{};
  GetWindowRect(dialog.Owner(), &owner);
  EXPECT_NEAR(dialog.Area().left + dialog.Area().right, owner.left + owner.right, 2);
  EXPECT_NEAR(dialog.Area().top + dialog.Area().bottom, owner.top + owner.bottom, 2);
}

TEST_F(AddProgram, ListsAreWideEnoughForTheirLongestItem) {
  AddPhase(9, 800, std::wstring(60, L'W'));
  Entry().name = std::wstring(40, L'W');
  const AddProgramDriver dialog(item_);
  for (const int list : kLists) {
    const auto room =
        static_cast<int>(SendMessageW(dialog.Control(list), CB_GETDROPPEDWIDTH, 0, 0)) - GetSystemMetrics(SM_CXVSCROLL);
    for (const std::wstring& item : dialog.Items(list)) EXPECT_LT(WidthOf(dialog.Control(list), item), room) << item;
  }
  SendMessageW(dialog.Control(IDC_PROGRAM_DELAY), CB_SHOWDROPDOWN, TRUE, 0);
  COMBOBOXINFO info{};
  info.cbSize = sizeof(info);
  GetComboBoxInfo(dialog.Control(IDC_PROGRAM_DELAY), &info);
  RECT inside{};
  GetClientRect(info.hwndList, &inside);
  EXPECT_LT(WidthOf(dialog.Control(IDC_PROGRAM_DELAY), kLongestDelay), inside.right) << "the list as it is seen";
}

TEST_F(AddProgram, ListsAreNotWiderThanTheScreen) {
  Entry().name = std::wstring(500, L'W');
  const AddProgramDriver dialog(item_);
  EXPECT_EQ(SendMessageW(dialog.Control(IDC_PROGRAM_NAME), CB_GETDROPPEDWIDTH, 0, 0), GetSystemMetrics(SM_CXSCREEN));
}

TEST_F(AddProgram, FieldsOfAnEntryThatTheAdministratorHasLockedAreDisabled) {
  const auto expect = [this](bool modifiable, bool locked, bool enabled) {
    Entry().modifiable = modifiable;
    Entry().definitionLocked = locked;
    const AddProgramDriver dialog(item_);
    for (const int id : {IDC_PROGRAM_FILE, IDC_PROGRAM_DIRECTORY, IDC_PROGRAM_PARAMETERS, IDC_PROGRAM_NAME,
                         IDC_PROGRAM_PHASE, IDC_PROGRAM_BROWSE}) {
      EXPECT_EQ(dialog.IsEnabled(id), enabled) << id;
    }
    for (const int id : {IDC_PROGRAM_TEST, IDC_PROGRAM_SIZE, IDC_PROGRAM_RECONNECT, IDC_PROGRAM_CONNECTION,
                         IDC_PROGRAM_DELAY, IDC_PROGRAM_ADVANCED_CHECK, IDOK}) {
      EXPECT_TRUE(dialog.IsEnabled(id)) << id;
    }
  };
  expect(false, true, false);
  expect(false, false, true);
  expect(true, true, true);
  expect(true, false, true);
}

// OK and Cancel

TEST_F(AddProgram, OkWithoutAChangeChangesNothing) {
  const auto before = AllOf(Entry());
  Confirm();
  EXPECT_EQ(AllOf(Entry()), before);
  EXPECT_EQ(item_->GetState(), ChangeState::Unchanged) << "whoever has opened the dialog marks the record";
}

TEST_F(AddProgram, OkStoresAllThatWasChanged) {
  AutoStartItem::Fields expected = Entry();
  expected.name = L"Notes";
  expected.phase = 1600;
  expected.program = L"C:\\notes.exe";
  expected.parameters = L"/old";
  expected.directory = L"D:\\";
  expected.showAdvanced = false;
  expected.initialSize = 2;
  expected.reconnectOption = 1;
  expected.connectionOption = 2;
  expected.delaySeconds = 120;
  expected.waitMode = 2;
  Confirm(ChangeEverything);
  EXPECT_EQ(AllOf(Entry()), AllOf(expected));
}

TEST_F(AddProgram, NothingIsStoredBeforeOk) {
  const auto before = AllOf(Entry());
  const AddProgramDriver dialog(item_);
  ChangeEverything(dialog);
  EXPECT_EQ(AllOf(Entry()), before);
}

TEST_F(AddProgram, CancelEscapeAndTheCloseBoxLeaveTheEntryAsItWas) {
  Entry().directory.clear();
  Entry().directoryRegistryKey = LR"(HKEY_CURRENT_USER\Software\PaviseTest\Orders\Path)";
  TestRegistryKey key(HKEY_CURRENT_USER, LR"(Software\PaviseTest\Orders)");
  key.SetString(L"Path", L"D:\\Orders");
  const auto before = AllOf(Entry());
  const std::function<void(HWND)> ways[] = {
      [](HWND window) { PostMessageW(window, WM_COMMAND, IDCANCEL, 0); },
      [](HWND window) { PostMessageW(window, WM_KEYDOWN, VK_ESCAPE, 0); },
      [](HWND window) { PostMessageW(window, WM_SYSCOMMAND, SC_CLOSE, 0); },
  };
  for (const auto& cancel : ways) {
    AddProgramDriver dialog(item_);
    ChangeEverything(dialog);
    cancel(dialog.Window());
    EXPECT_EQ(dialog.Result(), IDCANCEL);
    EXPECT_EQ(AllOf(Entry()), before);
    EXPECT_EQ(item_->GetState(), ChangeState::Unchanged);
  }
}

TEST_F(AddProgram, BlanksAroundATextAreNotStored) {
  Confirm([](const AddProgramDriver& dialog) {
    dialog.Type(IDC_PROGRAM_NAME, L"  My notes ");
    dialog.Type(IDC_PROGRAM_FILE, L" C:\\my notes.exe ");
    dialog.Type(IDC_PROGRAM_PARAMETERS, L" /a /b ");
    dialog.Type(IDC_PROGRAM_DIRECTORY, L" D:\\my notes ");
  });
  EXPECT_EQ(Entry().name, L"My notes");
  EXPECT_EQ(Entry().program, L"C:\\my notes.exe");
  EXPECT_EQ(Entry().parameters, L"/a /b");
  EXPECT_EQ(Entry().directory, L"D:\\my notes");
}

TEST_F(AddProgram, AnEntryWithoutANameIsRefused) {
  for (const wchar_t* name : {L"", L"   "}) {
    const auto before = AllOf(Entry());
    AddProgramDriver dialog(item_);
    dialog.Type(IDC_PROGRAM_NAME, name);
    dialog.Type(IDC_PROGRAM_FILE, L"");
    SendMessageW(dialog.Window(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(dialog.Control(IDOK)), TRUE);
    const ShownMessageBox shown = dialog.PressAndAnswer(IDOK);
    EXPECT_EQ(shown.text, L"You must enter a name for this entry.");
    EXPECT_EQ(shown.owner, dialog.Window());
    EXPECT_TRUE(dialog.IsOpen());
    EXPECT_EQ(dialog.FocusedControl(), IDC_PROGRAM_NAME);
    EXPECT_EQ(ComboBox_GetEditSel(dialog.Control(IDC_PROGRAM_NAME)), static_cast<DWORD>(MAKELONG(0, wcslen(name))));
    EXPECT_EQ(AllOf(Entry()), before);
    dialog.Type(IDC_PROGRAM_NAME, L"Notes");
    dialog.Type(IDC_PROGRAM_FILE, L"a.exe");
    EXPECT_EQ(dialog.Close(IDOK), IDOK);
    Entry().name = L"Orders";
    Entry().program = L"C:\\Tools\\orders.exe";
  }
}

TEST_F(AddProgram, AnEntryWithoutAProgramIsRefused) {
  for (const wchar_t* program : {L"", L"   "}) {
    AddProgramDriver dialog(item_);
    dialog.Type(IDC_PROGRAM_FILE, program);
    const ShownMessageBox shown = dialog.PressAndAnswer(IDOK);
    EXPECT_EQ(shown.text, L"You must enter a program or command to execute.");
    EXPECT_EQ(shown.owner, dialog.Window());
    EXPECT_TRUE(dialog.IsOpen());
    EXPECT_EQ(dialog.FocusedControl(), IDC_PROGRAM_FILE);
    EXPECT_EQ(Edit_GetSel(dialog.Control(IDC_PROGRAM_FILE)), static_cast<DWORD>(MAKELONG(0, wcslen(program))));
    EXPECT_EQ(dialog.Close(IDCANCEL), IDCANCEL);
  }
}

// How long texts can be

TEST_F(AddProgram, FieldsTakeNoMoreThanCanBeStored) {
  Confirm([](const AddProgramDriver& dialog) {
    for (const int id : {IDC_PROGRAM_NAME, IDC_PROGRAM_FILE, IDC_PROGRAM_PARAMETERS, IDC_PROGRAM_DIRECTORY}) {
      dialog.Type(id, std::wstring(300, L'a'));
    }
  });
  EXPECT_EQ(Entry().name, std::wstring(50, L'a'));
  EXPECT_EQ(Entry().program, std::wstring(200, L'a'));
  EXPECT_EQ(Entry().parameters, std::wstring(259, L'a'));
  EXPECT_EQ(Entry().directory, std::wstring(200, L'a'));
}

TEST_F(AddProgram, ANameOfFiftyCharactersFitsAndNoMore) {
  const std::wstring fifty = L"The name of the program that starts all the others";
  ASSERT_EQ(fifty.size(), 50u);
  Confirm([&](const AddProgramDriver& dialog) {
    dialog.Type(IDC_PROGRAM_NAME, fifty);
    EXPECT_EQ(dialog.Text(IDC_PROGRAM_NAME), fifty);
    SendMessageW(dialog.EditOf(IDC_PROGRAM_NAME), WM_CHAR, L'!', 0);
    EXPECT_EQ(dialog.Text(IDC_PROGRAM_NAME), fifty);
  });
  EXPECT_EQ(Entry().name, fifty);
}

TEST_F(AddProgram, LongerTextsThatAreStoredAlreadyStayWhole) {
  Entry().name = std::wstring(300, L'n');
  Entry().program = std::wstring(300, L'p');
  Entry().parameters = std::wstring(1000, L'q');
  Entry().directory = std::wstring(300, L'd');
  const auto before = AllOf(Entry());
  Confirm([](const AddProgramDriver& dialog) { EXPECT_EQ(dialog.Text(IDC_PROGRAM_PARAMETERS).size(), 1000u); });
  EXPECT_EQ(AllOf(Entry()), before);
}

// Delays

TEST_F(AddProgram, ALaterPhaseHasNoDelaysBeforeTheConnection) {
  Entry().delaySeconds = 120;
  Entry().waitMode = 3;
  Confirm([](const AddProgramDriver& dialog) {
    EXPECT_EQ(dialog.Selected(IDC_PROGRAM_DELAY), L"Wait 2 minutes before trying to connect.");
    dialog.Pick(IDC_PROGRAM_PHASE, L"After the network is connected");
    EXPECT_THAT(dialog.Items(IDC_PROGRAM_DELAY), SizeIs(8));
    EXPECT_EQ(dialog.Items(IDC_PROGRAM_DELAY).back(),
              L"Wait 5 minutes or until the VPN connection completes before proceeding.");
    EXPECT_EQ(dialog.Selected(IDC_PROGRAM_DELAY), L"(none)");
    dialog.Pick(IDC_PROGRAM_PHASE, L"Before connecting");
    EXPECT_THAT(dialog.Items(IDC_PROGRAM_DELAY), SizeIs(10));
    EXPECT_EQ(dialog.Selected(IDC_PROGRAM_DELAY), L"Wait 2 minutes before trying to connect.");
  });
}

TEST_F(AddProgram, ADelayThatALaterPhaseDoesNotOfferStaysForTheFirst) {
  Entry().delaySeconds = 120;
  Entry().waitMode = 3;
  Confirm([](const AddProgramDriver& dialog) {
    dialog.Pick(IDC_PROGRAM_PHASE, L"After the network is connected");
    EXPECT_EQ(dialog.Selected(IDC_PROGRAM_DELAY), L"(none)");
  });
  EXPECT_EQ(Entry().phase, 700);
  EXPECT_EQ(Entry().delaySeconds, 120);
  EXPECT_EQ(Entry().waitMode, 3);
}

TEST_F(AddProgram, OpensOnALaterPhaseWithoutDelaysBeforeTheConnection) {
  Entry().phase = 1600;
  Entry().delaySeconds = 300;
  Entry().waitMode = 3;
  const AddProgramDriver dialog(item_);
  EXPECT_THAT(dialog.Items(IDC_PROGRAM_DELAY), SizeIs(8));
  EXPECT_EQ(dialog.Selected(IDC_PROGRAM_DELAY), L"(none)");
}

TEST_F(AddProgram, NoDelayStaysSelectedWhenThePhaseChanges) {
  Entry().delaySeconds = 300;
  Entry().waitMode = 2;
  Confirm([](const AddProgramDriver& dialog) {
    dialog.PickIndex(IDC_PROGRAM_DELAY, 0);
    dialog.Pick(IDC_PROGRAM_PHASE, L"After disconnecting");
    EXPECT_EQ(dialog.Selected(IDC_PROGRAM_DELAY), L"(none)");
  });
  EXPECT_EQ(Entry().delaySeconds, 300);
  EXPECT_EQ(Entry().waitMode, 0);
}

// Advanced options

TEST_F(AddProgram, AdvancedOptionsCanBeFoldedAway) {
  const AddProgramDriver dialog(item_);
  const RECT unfolded = dialog.Area();
  dialog.ClickAdvanced();
  for (const int id : kAdvanced) EXPECT_FALSE(dialog.IsShown(id)) << id;
  EXPECT_TRUE(dialog.IsShown(IDC_PROGRAM_ADVANCED_CHECK));
  RECT group{};
  GetWindowRect(dialog.Control(IDC_PROGRAM_ADVANCED_GROUP), &group);
  RECT units{0, 0, 0, 20};
  MapDialogRect(dialog.Window(), &units);
  const RECT folded = dialog.Area();
  EXPECT_EQ(folded.bottom, group.top + units.bottom);
  EXPECT_EQ(folded.top, unfolded.top);
  RECT check{};
  GetWindowRect(dialog.Control(IDC_PROGRAM_ADVANCED_CHECK), &check);
  EXPECT_LT(check.bottom, folded.bottom);
  for (HWND child = GetWindow(dialog.Window(), GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
    RECT area{};
    GetWindowRect(child, &area);
    if (IsWindowVisible(child) == FALSE) continue;
    EXPECT_LT(area.top, folded.bottom) << "shown, but out of sight";
  }
}

TEST_F(AddProgram, FoldingAndUnfoldingLeadsBackToTheSamePlace) {
  const AddProgramDriver dialog(item_);
  const RECT unfolded = dialog.Area();
  dialog.ClickAdvanced();
  const RECT folded = dialog.Area();
  for (int time = 0; time < 10; ++time) {
    dialog.ClickAdvanced();
    EXPECT_TRUE(EqualRect(&unfolded, std::array{dialog.Area()}.data()));
    for (const int id : kAdvanced) EXPECT_TRUE(dialog.IsShown(id)) << id;
    dialog.ClickAdvanced();
    EXPECT_TRUE(EqualRect(&folded, std::array{dialog.Area()}.data()));
  }
}

TEST_F(AddProgram, TabLeadsToNothingThatIsFoldedAway) {
  const AddProgramDriver dialog(item_);
  const std::vector<int> whole = {IDC_PROGRAM_NAME,
                                  IDC_PROGRAM_PHASE,
                                  IDC_PROGRAM_FILE,
                                  IDC_PROGRAM_BROWSE,
                                  IDC_PROGRAM_PARAMETERS,
                                  IDC_PROGRAM_DIRECTORY,
                                  IDC_PROGRAM_TEST,
                                  IDOK,
                                  IDCANCEL,
                                  IDHELP,
                                  IDC_PROGRAM_ADVANCED_CHECK,
                                  IDC_PROGRAM_SIZE,
                                  IDC_PROGRAM_RECONNECT,
                                  IDC_PROGRAM_CONNECTION,
                                  IDC_PROGRAM_DELAY};
  EXPECT_EQ(TabOrder(dialog), whole);
  dialog.ClickAdvanced();
  EXPECT_EQ(TabOrder(dialog), std::vector(whole.begin(), whole.end() - 4));
}

TEST_F(AddProgram, OpensAsTheEntrySays) {
  Entry().showAdvanced = false;
  const AddProgramDriver dialog(item_);
  EXPECT_EQ(Button_GetCheck(dialog.Control(IDC_PROGRAM_ADVANCED_CHECK)), BST_UNCHECKED);
  for (const int id : kAdvanced) EXPECT_FALSE(dialog.IsShown(id)) << id;
  const RECT folded = dialog.Area();
  dialog.ClickAdvanced();
  for (const int id : kAdvanced) EXPECT_TRUE(dialog.IsShown(id)) << id;
  EXPECT_GT(HeightOf(dialog.Area()), HeightOf(folded));
  EXPECT_EQ(dialog.Selected(IDC_PROGRAM_SIZE), L"Maximized") << "they are filled while they are hidden";
}

TEST_F(AddProgram, UnfoldingKeepsTheDialogOnTheScreen) {
  const AddProgramDriver dialog(item_);
  const LONG height = HeightOf(dialog.Area());
  EXPECT_LT(height, 600) << "it fits on a small screen";
  dialog.ClickAdvanced();
  RECT work{};
  SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
  const LONG foldedHeight = HeightOf(dialog.Area());
  SetWindowPos(dialog.Window(), nullptr, 100, work.bottom - foldedHeight, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
  for (int time = 0; time < 3; ++time) {
    dialog.ClickAdvanced();
    EXPECT_EQ(dialog.Area().bottom, work.bottom);
    EXPECT_EQ(HeightOf(dialog.Area()), height);
    dialog.ClickAdvanced();
    EXPECT_EQ(dialog.Area().top, work.bottom - height);
    EXPECT_EQ(HeightOf(dialog.Area()), foldedHeight);
  }
}

// Keys and help

TEST_F(AddProgram, EnterInTheOpenListOfNamesClosesTheListAlone) {
  for (const WPARAM key : {WPARAM{VK_RETURN}, WPARAM{VK_ESCAPE}}) {
    const AddProgramDriver dialog(item_);
    const HWND names = dialog.Control(IDC_PROGRAM_NAME);
    const auto isListOpen = [names] { return SendMessageW(names, CB_GETDROPPEDSTATE, 0, 0) != 0; };
    SendMessageW(names, CB_SHOWDROPDOWN, TRUE, 0);
    ASSERT_TRUE(isListOpen());
    PostMessageW(dialog.EditOf(IDC_PROGRAM_NAME), WM_KEYDOWN, key, 0);
    EXPECT_TRUE(WaitUntil([&] { return !isListOpen(); }));
    EXPECT_TRUE(dialog.IsOpen());
    EXPECT_EQ(dialog.Text(IDC_PROGRAM_NAME), L"Orders");
  }
}

TEST_F(AddProgram, EnterInTheOpenListOfNamesTakesTheHighlightedOne) {
  TestRegistryKey product(HKEY_CURRENT_USER, LR"(Software\Microsoft\Windows\CurrentVersion\Uninstall\PaviseTest)");
  product.SetString(L"DisplayName", L"A product");
  product.SetString(L"DisplayIcon", ThisProgram().wstring());
  const AddProgramDriver dialog(item_);
  const HWND names = dialog.Control(IDC_PROGRAM_NAME);
  const auto index = SendMessageW(names, CB_FINDSTRINGEXACT, 0, reinterpret_cast<LPARAM>(L"A product"));
  ASSERT_GE(index, 0);
  SendMessageW(names, CB_SHOWDROPDOWN, TRUE, 0);
  // The highlight moves up from the entry's own name, which is the last.
  const auto last = SendMessageW(names, CB_GETCOUNT, 0, 0) - 1;
  for (auto line = last; line > index; --line) {
    PostMessageW(dialog.EditOf(IDC_PROGRAM_NAME), WM_KEYDOWN, VK_UP, 0);
  }
  PostMessageW(dialog.EditOf(IDC_PROGRAM_NAME), WM_KEYDOWN, VK_RETURN, 0);
  EXPECT_TRUE(WaitUntil([&] { return dialog.Text(IDC_PROGRAM_FILE) == ThisProgram().wstring(); }));
  EXPECT_EQ(dialog.Text(IDC_PROGRAM_NAME), L"A product");
  EXPECT_TRUE(dialog.IsOpen());
}

TEST_F(AddProgram, EnterInAFieldPressesOk) {
  AddProgramDriver dialog(item_);
  PostMessageW(dialog.EditOf(IDC_PROGRAM_NAME), WM_KEYDOWN, VK_RETURN, 0);
  EXPECT_EQ(dialog.Result(), IDOK);
}

TEST_F(AddProgram, HelpOpensItsTopic) {
  const AddProgramDriver dialog(item_);
  for (const UINT message : {UINT{WM_HELP}, UINT{WM_COMMAND}}) {
    const BrowserStandIn browser;
    HELPINFO help{};
    SendMessageW(dialog.Window(), message, IDHELP, message == WM_HELP ? reinterpret_cast<LPARAM>(&help) : 0);
    EXPECT_EQ(browser.OpenedPage(), HelpPage(L"1128.html"));
  }
}

TEST_F(AddProgram, TellsOverItselfThatHelpCannotBeOpened) {
  BrowserStandIn browser;
  browser.SetProgram(L"C:\\missing.exe");
  const AddProgramDriver dialog(item_);
  EXPECT_EQ(dialog.PressAndAnswer(IDHELP).owner, dialog.Window());
}
