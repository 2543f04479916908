// The "Wi-Fi Switching" page on the real sheet.

#include <gmock/gmock.h>

#include <array>
#include <functional>
#include <optional>
#include <tuple>
#include <utility>
#include <vector>

#include "LoginProperties/ProfilePage/ProfileControls.h"
#include "LoginProperties/WiFiSwitching/AutoReconnectControls.h"
#include "tests/support/WaitUntil.h"
#include "tests/ui/SheetDriver.h"
#include "tests/ui/TestContext.h"
#include "WaylineDll/Store/RecordRows.h"

namespace {

constexpr wchar_t kStrengthRange[] = L"Please enter the signal strength percentage value between 10 and 90";

constexpr std::array<int, 5> kGoverned = {IDC_RECONNECT_SWITCH_CHECK, IDC_RECONNECT_HOTSPOT_CHECK,
                                          IDC_RECONNECT_PROMPT_CHECK, IDC_RECONNECT_INTERVAL, IDC_RECONNECT_STRENGTH};

// A sheet with the Wi-Fi Switching page alone. The administrator of its current profile switches to hotspots after 30
// seconds from 60 percent on, and asks first; the profile has values of its own, which are not in force yet.
class AutoReconnectPage : public testing::Test {
 protected:
  AutoReconnectPage() { SetValues(); }

  void SetValues() {
    ProfileColumns& columns = Work().Columns();
    columns.smAutoReconnectMode = true;
    columns.smAutoSwitchWiFiMode = true;
    columns.smPromptUserToSwitch = true;
    columns.smSwitchInterval = 30;
    columns.smSignalStrength = 60;
    columns.overrideSwitchInterval = 15;
    columns.overrideSignalStrength = 40;
  }

  // The profile's own values are in force.
  void Override(bool automatic = true, bool hotspot = true) {
    Work().SetOverrideAutoReconnectDefaults(true);
    Work().SetOverrideARMode(automatic);
    Work().SetOverrideASWiFiMode(hotspot);
  }

  // All pages, so that this one can be left.
  void UseFullSheet() {
    context = MakeContext();
    SetValues();
  }

  Profile& Work() { return *context.profiles[kWork]; }

  void Open() {
    sheet.emplace(context);
    if (context.mode == SheetMode::Full) sheet->SelectTab(L"Wi-Fi Switching");
  }

  // The page tells that the strength is wrong; the message is closed.
  void ExpectRefusal() {
    ASSERT_EQ(sheet->MessageBoxText(), kStrengthRange);
    sheet->AnswerMessageBox(IDOK);
    EXPECT_EQ(sheet->MessageBoxText(), std::nullopt);
  }

  void ExpectDetails(bool prompt, const wchar_t* interval, const wchar_t* strength, bool enabled) {
    EXPECT_EQ(sheet->IsChecked(IDC_RECONNECT_PROMPT_CHECK), prompt);
    EXPECT_EQ(sheet->Text(IDC_RECONNECT_INTERVAL), interval);
    EXPECT_EQ(sheet->Text(IDC_RECONNECT_STRENGTH), strength);
    for (const int id : {IDC_RECONNECT_PROMPT_CHECK, IDC_RECONNECT_INTERVAL, IDC_RECONNECT_STRENGTH}) {
      EXPECT_EQ(sheet->IsEnabled(id), enabled) << id;
    }
  }

  LoginPropertiesContext context = MakeContext(SheetMode::WiFiSwitchingOnly);
  std::optional<SheetDriver> sheet;
};

// What the upper edge of a control looks like.
std::vector<COLORREF> UpperEdge(HWND control) {
  RECT area{};
  GetClientRect(control, &area);
  const HDC context = GetDC(control);
  std::vector<COLORREF> pixels;
  for (int x = 0; x < area.right; ++x) pixels.push_back(GetPixel(context, x, 0));
  ReleaseDC(control, context);
  return pixels;
}

// The ways to confirm and to cancel, with the strength in the focus.
struct Ending {
  const char* name;
  std::function<void(SheetDriver&)> end;
};

bool HasEndedOrTells(const SheetDriver& sheet) { return !sheet.IsOpen() || sheet.MessageBoxText().has_value(); }

void EndWithKey(SheetDriver& sheet, WORD key, const std::vector<WORD>& modifiers = {}) {
  EXPECT_TRUE(sheet.PressKeyUntil([&] { return HasEndedOrTells(sheet); }, key, modifiers));
}

void EndWithSpaceOn(SheetDriver& sheet, int button) {
  const HWND control = GetDlgItem(sheet.Sheet(), button);
  sheet.TryFocus(control);
  if (sheet.MessageBoxText()) return;
  ASSERT_EQ(sheet.FocusedControl(), button);
  EndWithKey(sheet, VK_SPACE);
}

const std::vector<Ending> kConfirmations = {
    {"the button", [](SheetDriver& sheet) { sheet.PressOk(); }},
    {"the mouse", [](SheetDriver& sheet) { sheet.PressOkByMouse(); }},
    {"Enter", [](SheetDriver& sheet) { EndWithKey(sheet, VK_RETURN); }},
    {"Tab and the space bar", [](SheetDriver& sheet) { EndWithSpaceOn(sheet, IDOK); }},
};

const std::vector<Ending> kCancellations = {
    {"the button", [](SheetDriver& sheet) { sheet.PressCancel(); }},
    {"the mouse", [](SheetDriver& sheet) { sheet.PressCancelByMouse(); }},
    {"Escape", [](SheetDriver& sheet) { EndWithKey(sheet, VK_ESCAPE); }},
    {"Alt+F4", [](SheetDriver& sheet) { EndWithKey(sheet, VK_F4, {VK_MENU}); }},
    {"Tab and the space bar", [](SheetDriver& sheet) { EndWithSpaceOn(sheet, IDCANCEL); }},
    {"the title bar", [](SheetDriver& sheet) { PostMessageW(sheet.Sheet(), WM_SYSCOMMAND, SC_CLOSE, 0); }},
    {"its closing", [](SheetDriver& sheet) { PostMessageW(sheet.Sheet(), WM_CLOSE, 0, 0); }},
};

}  // namespace

TEST_F(AutoReconnectPage, FollowingTheDefaultsShowsTheAdministratorsValues) {
  Open();
  EXPECT_FALSE(sheet->IsChecked(IDC_OVERRIDE_CHECK));
  EXPECT_TRUE(sheet->IsEnabled(IDC_OVERRIDE_CHECK));
  EXPECT_TRUE(sheet->IsChecked(IDC_RECONNECT_SWITCH_CHECK));
  EXPECT_FALSE(sheet->IsEnabled(IDC_RECONNECT_SWITCH_CHECK));
  EXPECT_TRUE(sheet->IsChecked(IDC_RECONNECT_HOTSPOT_CHECK));
  EXPECT_FALSE(sheet->IsEnabled(IDC_RECONNECT_HOTSPOT_CHECK));
  ExpectDetails(true, L"30", L"60", false);
}

TEST_F(AutoReconnectPage, OverridingShowsTheProfilesOwnValues) {
  Override();
  Open();
  EXPECT_TRUE(sheet->IsChecked(IDC_OVERRIDE_CHECK));
  EXPECT_TRUE(sheet->IsChecked(IDC_RECONNECT_SWITCH_CHECK));
  EXPECT_TRUE(sheet->IsChecked(IDC_RECONNECT_HOTSPOT_CHECK));
  for (const int id : kGoverned) EXPECT_TRUE(sheet->IsEnabled(id)) << id;
  ExpectDetails(false, L"15", L"40", true);
}

TEST_F(AutoReconnectPage, AnAdministratorCanKeepTheUserFromOverriding) {
  UseFullSheet();
  Override();
  Work().Columns().smUserMayOverrideAutoReconnectDefaults = false;
  Work().SetOverrideSignalStrength(0);
  Open();
  EXPECT_FALSE(sheet->IsEnabled(IDC_OVERRIDE_CHECK));
  EXPECT_FALSE(sheet->IsChecked(IDC_OVERRIDE_CHECK));
  EXPECT_TRUE(sheet->IsChecked(IDC_RECONNECT_SWITCH_CHECK));
  EXPECT_TRUE(sheet->IsChecked(IDC_RECONNECT_HOTSPOT_CHECK));
  for (const int id : kGoverned) EXPECT_FALSE(sheet->IsEnabled(id)) << id;
  ExpectDetails(true, L"30", L"60", false);

  sheet->SelectTab(L"General");
  EXPECT_EQ(sheet->CurrentTab(), L"General") << "what the user may not override is not checked";
  sheet->SelectTab(L"Wi-Fi Switching");
  sheet->Pick(IDC_PROFILE_COMBO, L"Home");
  EXPECT_EQ(sheet->Selected(IDC_PROFILE_COMBO), L"Home");
  sheet->PressOk();
  EXPECT_EQ(sheet->Result(), kSheetConfirmed);
  EXPECT_TRUE(Work().GetOverrideAutoReconnectDefaults()) << "the user's choice is kept";
  EXPECT_EQ(Work().GetOverrideSignalStrength(), 0);
}

TEST_F(AutoReconnectPage, WithoutHotspotsTheAdministratorsDetailsAreShown) {
  Override(true, false);
  Open();
  EXPECT_TRUE(sheet->IsChecked(IDC_RECONNECT_SWITCH_CHECK));
  EXPECT_FALSE(sheet->IsChecked(IDC_RECONNECT_HOTSPOT_CHECK));
  EXPECT_TRUE(sheet->IsEnabled(IDC_RECONNECT_HOTSPOT_CHECK));
  ExpectDetails(true, L"30", L"60", false);

  sheet->Click(IDC_RECONNECT_HOTSPOT_CHECK);
  EXPECT_TRUE(Work().GetOverrideASWiFiMode());
  ExpectDetails(false, L"15", L"40", true);

  sheet->Click(IDC_RECONNECT_HOTSPOT_CHECK);
  EXPECT_FALSE(Work().GetOverrideASWiFiMode());
  ExpectDetails(true, L"30", L"60", false);
  EXPECT_EQ(Work().GetOverrideSwitchInterval(), 15) << "what is not shown is kept";
  EXPECT_EQ(Work().GetOverrideSignalStrength(), 40);
}

TEST_F(AutoReconnectPage, WithoutSwitchingNothingBelowItCanBeChanged) {
  Override();
  Work().SetOverridePromptUserToSwitch(true);
  Open();
  sheet->Click(IDC_RECONNECT_SWITCH_CHECK);
  EXPECT_FALSE(Work().GetOverrideARMode());
  EXPECT_FALSE(sheet->IsChecked(IDC_RECONNECT_HOTSPOT_CHECK));
  EXPECT_FALSE(sheet->IsEnabled(IDC_RECONNECT_HOTSPOT_CHECK));
  ExpectDetails(true, L"30", L"60", false);

  sheet->Click(IDC_RECONNECT_SWITCH_CHECK);
  EXPECT_TRUE(sheet->IsChecked(IDC_RECONNECT_HOTSPOT_CHECK)) << "the choice was only hidden";
  EXPECT_TRUE(sheet->IsEnabled(IDC_RECONNECT_HOTSPOT_CHECK));
  ExpectDetails(true, L"15", L"40", true);
}

TEST_F(AutoReconnectPage, TheOverrideBoxIsStored) {
  Override();
  Open();
  sheet->Click(IDC_OVERRIDE_CHECK);
  EXPECT_FALSE(Work().GetOverrideAutoReconnectDefaults());
  EXPECT_FALSE(sheet->IsEnabled(IDC_RECONNECT_SWITCH_CHECK));
  ExpectDetails(true, L"30", L"60", false);
  sheet->Click(IDC_OVERRIDE_CHECK);
  EXPECT_TRUE(Work().GetOverrideAutoReconnectDefaults());
  ExpectDetails(false, L"15", L"40", true);
  EXPECT_EQ(Work().GetState(), ChangeState::Changed);
  EXPECT_EQ(context.profiles[kHome]->GetState(), ChangeState::Unchanged);
}

TEST_F(AutoReconnectPage, NeverShowsTheParentProfile) {
  ProfileColumns& root = context.profiles[kRoot]->Columns();
  root.overrideAutoReconnectDefaults = true;
  root.smSwitchInterval = 77;
  root.smSignalStrength = 77;
  root.advancedAutoReconnectSettings = 1;
  Open();
  EXPECT_FALSE(sheet->IsChecked(IDC_OVERRIDE_CHECK));
  ExpectDetails(true, L"30", L"60", false);
  EXPECT_TRUE(sheet->IsChecked(IDC_RECONNECT_WAIT_RADIO));
  EXPECT_EQ(context.profiles[kRoot]->GetState(), ChangeState::Unchanged);
}

TEST_F(AutoReconnectPage, LabelsAndTheChoiceForALostConnectionAreNeverDisabled) {
  Work().Columns().smUserMayOverrideAutoReconnectDefaults = false;
  Open();
  for (const int id : {IDC_RECONNECT_PROMPT_LABEL, IDC_RECONNECT_INTERVAL_LABEL, IDC_RECONNECT_STRENGTH_LABEL,
                       IDC_RECONNECT_WAIT_RADIO, IDC_RECONNECT_AT_ONCE_RADIO}) {
    EXPECT_TRUE(sheet->IsEnabled(id)) << id;
  }
}

TEST_F(AutoReconnectPage, OnlyOneMeansReconnectingAtOnce) {
  for (const auto& [stored, atOnce] : {std::pair{0, false}, std::pair{1, true}, std::pair{2, false}}) {
    Work().SetAdvancedAutoReconnectSettings(stored);
    Open();
    EXPECT_EQ(sheet->IsChecked(IDC_RECONNECT_AT_ONCE_RADIO), atOnce) << stored;
    EXPECT_EQ(sheet->IsChecked(IDC_RECONNECT_WAIT_RADIO), !atOnce) << stored;
    sheet.reset();
    EXPECT_EQ(Work().GetAdvancedAutoReconnectSettings(), stored) << "shown, not chosen";
  }
}

TEST_F(AutoReconnectPage, TheChoiceForALostConnectionIsStored) {
  Work().SetAdvancedAutoReconnectSettings(2);
  Open();
  sheet->Click(IDC_RECONNECT_AT_ONCE_RADIO);
  EXPECT_EQ(Work().GetAdvancedAutoReconnectSettings(), 1);
  EXPECT_FALSE(sheet->IsChecked(IDC_RECONNECT_WAIT_RADIO));
  sheet->Click(IDC_RECONNECT_WAIT_RADIO);
  EXPECT_EQ(Work().GetAdvancedAutoReconnectSettings(), 0);
  EXPECT_FALSE(sheet->IsChecked(IDC_RECONNECT_AT_ONCE_RADIO));
}

TEST_F(AutoReconnectPage, StrengthsFromTenToNinetyPass) {
  Override();
  Open();
  for (const auto& [text, strength] :
       {std::pair{L"10", 10}, std::pair{L"11", 11}, std::pair{L"89", 89}, std::pair{L"90", 90}}) {
    sheet->Focus(IDC_RECONNECT_STRENGTH);
    sheet->Type(text);
    sheet->Focus(IDC_RECONNECT_INTERVAL);
    EXPECT_EQ(sheet->MessageBoxText(), std::nullopt);
    EXPECT_EQ(Work().GetOverrideSignalStrength(), strength);
  }
}

TEST_F(AutoReconnectPage, OtherStrengthsAreRefusedAsSoonAsTheFieldIsLeft) {
  Override();
  Open();
  for (const auto& [text, strength] :
       {std::pair{L"9", 9}, std::pair{L"91", 91}, std::pair{L"99", 99}, std::pair{L"0", 0}}) {
    sheet->Focus(IDC_RECONNECT_STRENGTH);
    sheet->Type(text);
    sheet->TryFocus(IDC_RECONNECT_WAIT_RADIO);
    ExpectRefusal();
    EXPECT_TRUE(sheet->HasFocus(IDC_RECONNECT_STRENGTH)) << text;
    EXPECT_EQ(sheet->Text(IDC_RECONNECT_STRENGTH), text);
    EXPECT_EQ(Work().GetOverrideSignalStrength(), strength) << "every value is written, and then checked";
  }
}

TEST_F(AutoReconnectPage, AnEmptyStrengthIsZero) {
  Override();
  Open();
  sheet->Focus(IDC_RECONNECT_STRENGTH);
  sheet->Type(L"\b");
  ASSERT_EQ(sheet->Text(IDC_RECONNECT_STRENGTH), L"");
  sheet->TryFocus(IDC_RECONNECT_WAIT_RADIO);
  ExpectRefusal();
  EXPECT_EQ(Work().GetOverrideSignalStrength(), 0);
}

TEST_F(AutoReconnectPage, AMessageForTheStrengthComesOnceOnTheWayToTheTime) {
  Override();
  Open();
  sheet->Focus(IDC_RECONNECT_STRENGTH);
  sheet->Type(L"9");
  sheet->TryFocus(IDC_RECONNECT_INTERVAL);
  ExpectRefusal();
  EXPECT_TRUE(sheet->HasFocus(IDC_RECONNECT_STRENGTH));
}

TEST_F(AutoReconnectPage, TheStrengthTakesTwoDigitsAndTheTimeFour) {
  Override();
  Open();
  sheet->Focus(IDC_RECONNECT_STRENGTH);
  sheet->Type(L"100");
  EXPECT_EQ(sheet->Text(IDC_RECONNECT_STRENGTH), L"10");
  sheet->Type(L"4x5");
  EXPECT_EQ(sheet->Text(IDC_RECONNECT_STRENGTH), L"45");
  sheet->Focus(IDC_RECONNECT_INTERVAL);
  sheet->Type(L"-12345");
  EXPECT_EQ(sheet->Text(IDC_RECONNECT_INTERVAL), L"1234");
}

TEST_F(AutoReconnectPage, AnyTimeIsAccepted) {
  Override();
  Open();
  for (const auto& [text, seconds] :
       {std::pair{L"9999", 9999}, std::pair{L"0", 0}, std::pair{L"1", 1}, std::pair{L"\b", 0}}) {
    sheet->Focus(IDC_RECONNECT_INTERVAL);
    sheet->Type(text);
    sheet->Focus(IDC_RECONNECT_STRENGTH);
    EXPECT_EQ(Work().GetOverrideSwitchInterval(), seconds);
  }
  sheet->PressOk();
  EXPECT_EQ(sheet->Result(), kSheetConfirmed);
}

TEST_F(AutoReconnectPage, NumbersThatDoNotFitAreShownInPart) {
  Override();
  for (const auto& [stored, interval, strength] :
       {std::tuple{100, L"100", L"10"}, std::tuple{-5, L"-5", L"-5"}, std::tuple{2147483647, L"214748364", L"21"}}) {
    Work().SetOverrideSwitchInterval(stored);
    Work().SetOverrideSignalStrength(stored);
    Open();
    EXPECT_EQ(sheet->Text(IDC_RECONNECT_INTERVAL), interval);
    EXPECT_EQ(sheet->Text(IDC_RECONNECT_STRENGTH), strength);
    sheet.reset();
    EXPECT_EQ(Work().GetOverrideSignalStrength(), stored);
  }
}

TEST_F(AutoReconnectPage, AWrongStrengthKeepsThePageInFront) {
  UseFullSheet();
  Override();
  Work().SetOverrideSignalStrength(9);
  Open();
  sheet->SelectTab(L"General");
  ExpectRefusal();
  EXPECT_EQ(sheet->CurrentTab(), L"Wi-Fi Switching");
  EXPECT_TRUE(sheet->HasFocus(IDC_RECONNECT_STRENGTH));
}

TEST_F(AutoReconnectPage, AWrongStrengthKeepsTheSheetOpen) {
  Override();
  Work().SetOverrideSignalStrength(91);
  Open();
  sheet->PressOk();
  ExpectRefusal();
  EXPECT_TRUE(sheet->IsOpen());
  EXPECT_TRUE(sheet->HasFocus(IDC_RECONNECT_STRENGTH));
  sheet->Type(L"90");
  sheet->Focus(IDC_PROFILE_COMBO);
  sheet->PressOk();
  EXPECT_EQ(sheet->Result(), kSheetConfirmed);
  EXPECT_EQ(Work().GetOverrideSignalStrength(), 90);
}

TEST_F(AutoReconnectPage, AWrongStrengthKeepsTheProfile) {
  Override();
  Work().SetOverrideSignalStrength(9);
  Open();
  sheet->Pick(IDC_PROFILE_COMBO, L"Home");
  ExpectRefusal();
  EXPECT_EQ(sheet->Selected(IDC_PROFILE_COMBO), L"Work");
  EXPECT_TRUE(sheet->HasFocus(IDC_RECONNECT_STRENGTH));
  EXPECT_TRUE(sheet->IsChecked(IDC_OVERRIDE_CHECK));
  EXPECT_EQ(context.profiles[kHome]->GetState(), ChangeState::Unchanged);
}

TEST_F(AutoReconnectPage, AStrengthOfZeroIsToldAlsoWhileItsFieldIsDisabled) {
  UseFullSheet();
  Work().SetOverrideSignalStrength(0);
  for (const auto& [automatic, hotspot] : {std::pair{true, false}, std::pair{false, true}, std::pair{false, false}}) {
    Override(automatic, hotspot);
    Open();
    ASSERT_FALSE(sheet->IsEnabled(IDC_RECONNECT_STRENGTH));
    sheet->SelectTab(L"General");
    ExpectRefusal();
    EXPECT_EQ(sheet->CurrentTab(), L"Wi-Fi Switching");

    sheet->Click(IDC_OVERRIDE_CHECK);
    sheet->SelectTab(L"General");
    EXPECT_EQ(sheet->MessageBoxText(), std::nullopt) << "defaults are not checked";
    EXPECT_EQ(sheet->CurrentTab(), L"General");
    sheet.reset();
  }
}

TEST_F(AutoReconnectPage, AfterThePageWasLeftItsFieldsAreNotCheckedAtOnce) {
  UseFullSheet();
  Override();
  Open();
  sheet->SelectTab(L"General");
  sheet->SelectTab(L"Wi-Fi Switching");
  sheet->Focus(IDC_RECONNECT_STRENGTH);
  sheet->Type(L"95");
  sheet->Focus(IDC_RECONNECT_INTERVAL);
  EXPECT_EQ(sheet->MessageBoxText(), std::nullopt);
  EXPECT_EQ(Work().GetOverrideSignalStrength(), 95);
  sheet->Focus(IDC_RECONNECT_WAIT_RADIO);
  EXPECT_EQ(sheet->MessageBoxText(), std::nullopt) << "nor is the other field";

  sheet->SelectTab(L"General");
  ExpectRefusal();
  EXPECT_EQ(sheet->CurrentTab(), L"Wi-Fi Switching");
}

TEST_F(AutoReconnectPage, AfterARefusalItsFieldsAreCheckedAtOnceAgain) {
  UseFullSheet();
  Override();
  const std::vector<std::function<void()>> refusals = {[this] { sheet->SelectTab(L"General"); },
                                                       [this] { sheet->PressOk(); },
                                                       [this] { sheet->Pick(IDC_PROFILE_COMBO, L"Home"); }};
  for (const auto& refuse : refusals) {
    Work().SetOverrideSignalStrength(40);
    Open();
    sheet->SelectTab(L"General");
    sheet->SelectTab(L"Wi-Fi Switching");
    sheet->Focus(IDC_RECONNECT_STRENGTH);
    sheet->Type(L"9");
    sheet->Focus(IDC_RECONNECT_INTERVAL);
    refuse();
    ExpectRefusal();
    ASSERT_TRUE(sheet->HasFocus(IDC_RECONNECT_STRENGTH));
    sheet->TryFocus(IDC_RECONNECT_WAIT_RADIO);
    ExpectRefusal();
    EXPECT_TRUE(sheet->HasFocus(IDC_RECONNECT_STRENGTH));
    sheet.reset();
  }
}

TEST_F(AutoReconnectPage, ChoosingAnotherProfileShowsItsValues) {
  Override();
  ProfileColumns& home = context.profiles[kHome]->Columns();
  home.smUserMayOverrideAutoReconnectDefaults = false;
  home.smSwitchInterval = 5;
  home.smSignalStrength = 20;
  home.advancedAutoReconnectSettings = 1;
  Open();
  sheet->Pick(IDC_PROFILE_COMBO, L"Home");
  EXPECT_EQ(sheet->Selected(IDC_PROFILE_COMBO), L"Home");
  EXPECT_FALSE(sheet->IsEnabled(IDC_OVERRIDE_CHECK));
  EXPECT_FALSE(sheet->IsChecked(IDC_RECONNECT_SWITCH_CHECK));
  ExpectDetails(false, L"5", L"20", false);
  EXPECT_TRUE(sheet->IsChecked(IDC_RECONNECT_AT_ONCE_RADIO));
  sheet->Pick(IDC_PROFILE_COMBO, L"Work");
  EXPECT_TRUE(sheet->IsEnabled(IDC_OVERRIDE_CHECK));
  ExpectDetails(false, L"15", L"40", true);
}

TEST_F(AutoReconnectPage, EachControlChangesItsOwnSettingOnly) {
  struct Case {
    std::function<void()> change;
    const wchar_t* column;
  };
  const auto click = [this](int id) { return [this, id] { sheet->Click(id); }; };
  const auto type = [this](int id, const wchar_t* text) {
    return [this, id, text] {
      sheet->Focus(id);
      sheet->Type(text);
      sheet->Focus(IDC_PROFILE_COMBO);
    };
  };
  for (const Case& test : {Case{click(IDC_OVERRIDE_CHECK), L"OverrideAutoReconnectDefaults"},
                           Case{click(IDC_RECONNECT_SWITCH_CHECK), L"OverrideARMode"},
                           Case{click(IDC_RECONNECT_HOTSPOT_CHECK), L"OverrideASWiFiMode"},
                           Case{click(IDC_RECONNECT_PROMPT_CHECK), L"OverridePromptUserToSwitch"},
                           Case{type(IDC_RECONNECT_INTERVAL, L"20"), L"OverrideSwitchInterval"},
                           Case{type(IDC_RECONNECT_STRENGTH, L"50"), L"OverrideSignalStrength"},
                           Case{click(IDC_RECONNECT_AT_ONCE_RADIO), L"AdvancedAutoReconnectSettings"}}) {
    context = MakeContext(SheetMode::WiFiSwitchingOnly);
    SetValues();
    Override();
    const Profile before = Work();
    Open();
    test.change();
    EXPECT_EQ(ColumnNames(DifferingColumns(Work(), before).columns), test.column);
    EXPECT_EQ(Work().GetState(), ChangeState::Changed);
    sheet->PressOk();
    EXPECT_EQ(sheet->Result(), kSheetConfirmed);
    sheet.reset();
    EXPECT_EQ(ColumnNames(DifferingColumns(Work(), before).columns), test.column);
  }
}

TEST_F(AutoReconnectPage, MarksAProfileThatIsShownAsChanged) {
  UseFullSheet();
  const Profile before = Work();
  sheet.emplace(context);
  EXPECT_EQ(Work().GetState(), ChangeState::Unchanged);
  sheet->SelectTab(L"Wi-Fi Switching");
  EXPECT_EQ(Work().GetState(), ChangeState::Changed);
  EXPECT_EQ(ColumnNames(DifferingColumns(Work(), before).columns), L"") << "no setting differs";
}

TEST_F(AutoReconnectPage, WithoutAProfileOnlyTheSelectorCanBeUsed) {
  context.currentProfile = nullptr;
  Open();
  EXPECT_FALSE(sheet->IsEnabled(IDC_OVERRIDE_CHECK));
  for (const int id : kGoverned) EXPECT_FALSE(sheet->IsEnabled(id)) << id;
  EXPECT_FALSE(sheet->IsEnabled(IDC_RECONNECT_WAIT_RADIO));
  sheet->Pick(IDC_PROFILE_COMBO, L"Work");
  EXPECT_TRUE(sheet->IsEnabled(IDC_OVERRIDE_CHECK));
  EXPECT_TRUE(sheet->IsEnabled(IDC_RECONNECT_WAIT_RADIO));
  ExpectDetails(true, L"30", L"60", false);
}

TEST_F(AutoReconnectPage, CanBeUsedWithTheKeyboardAlone) {
  Open();
  const auto pressed = [this](auto effect, WORD key, const std::vector<WORD>& modifiers = {}) {
    return sheet->PressKeyUntil(effect, key, modifiers);
  };
  const auto isChecked = [this](int id) { return [this, id] { return sheet->IsChecked(id); }; };
  const auto hasFocus = [this](int id) { return [this, id] { return sheet->HasFocus(id); }; };
  const auto holds = [this](int id, const wchar_t* text) {
    return [this, id, text] { return sheet->Text(id) == text; };
  };
  ASSERT_TRUE(pressed(isChecked(IDC_OVERRIDE_CHECK), 'O', {VK_MENU}));
  ASSERT_TRUE(pressed(isChecked(IDC_RECONNECT_SWITCH_CHECK), 'A', {VK_MENU}));
  ASSERT_TRUE(pressed(isChecked(IDC_RECONNECT_HOTSPOT_CHECK), 'S', {VK_MENU}));
  ASSERT_TRUE(pressed(hasFocus(IDC_RECONNECT_PROMPT_CHECK), VK_TAB));
  ASSERT_TRUE(pressed(isChecked(IDC_RECONNECT_PROMPT_CHECK), VK_SPACE));
  ASSERT_TRUE(pressed(hasFocus(IDC_RECONNECT_INTERVAL), VK_TAB));
  ASSERT_TRUE(pressed(holds(IDC_RECONNECT_INTERVAL, L"7"), '7'));
  ASSERT_TRUE(pressed(hasFocus(IDC_RECONNECT_STRENGTH), VK_TAB));
  ASSERT_TRUE(pressed(holds(IDC_RECONNECT_STRENGTH, L"5"), '5'));
  ASSERT_TRUE(pressed(holds(IDC_RECONNECT_STRENGTH, L"51"), '1'));
  ASSERT_TRUE(pressed(hasFocus(IDC_RECONNECT_WAIT_RADIO), 'R', {VK_MENU}));
  ASSERT_TRUE(pressed(isChecked(IDC_RECONNECT_AT_ONCE_RADIO), VK_DOWN));
  ASSERT_TRUE(pressed([this] { return !sheet->IsOpen(); }, VK_RETURN));
  EXPECT_EQ(sheet->Result(), kSheetConfirmed);

  EXPECT_TRUE(Work().GetOverrideAutoReconnectDefaults());
  EXPECT_TRUE(Work().GetOverrideARMode());
  EXPECT_TRUE(Work().GetOverrideASWiFiMode());
  EXPECT_TRUE(Work().GetOverridePromptUserToSwitch());
  EXPECT_EQ(Work().GetOverrideSwitchInterval(), 7);
  EXPECT_EQ(Work().GetOverrideSignalStrength(), 51);
  EXPECT_EQ(Work().GetAdvancedAutoReconnectSettings(), 1);
}

TEST_F(AutoReconnectPage, LeavingTheStrengthWithTabChecksIt) {
  Override();
  Open();
  sheet->Focus(IDC_RECONNECT_STRENGTH);
  sheet->Type(L"9");
  for (const std::vector<WORD>& modifiers : {std::vector<WORD>{}, std::vector<WORD>{VK_SHIFT}}) {
    ASSERT_TRUE(sheet->PressKeyUntil([this] { return sheet->MessageBoxText().has_value(); }, VK_TAB, modifiers));
    ExpectRefusal();
    EXPECT_TRUE(sheet->HasFocus(IDC_RECONNECT_STRENGTH));
  }
}

TEST_F(AutoReconnectPage, OkChecksAndStoresTheStrengthThatWasJustTyped) {
  Override();
  for (const Ending& confirmation : kConfirmations) {
    Work().SetOverrideSignalStrength(0);
    Open();
    sheet->Focus(IDC_RECONNECT_STRENGTH);
    sheet->Type(L"9");
    confirmation.end(*sheet);
    ASSERT_TRUE(sheet->IsOpen()) << confirmation.name;
    ExpectRefusal();
    EXPECT_TRUE(sheet->HasFocus(IDC_RECONNECT_STRENGTH)) << confirmation.name;

    sheet->Type(L"50");
    confirmation.end(*sheet);
    EXPECT_EQ(sheet->Result(), kSheetConfirmed) << confirmation.name;
    EXPECT_EQ(Work().GetOverrideSignalStrength(), 50) << confirmation.name;
    sheet.reset();
  }
}

TEST_F(AutoReconnectPage, AnotherTabChecksAndStoresTheStrengthThatWasJustTyped) {
  UseFullSheet();
  Override();
  const std::vector<std::function<void()>> clicks = {[this] { sheet->SelectTab(L"General"); },
                                                     [this] { sheet->SelectTabByMouse(L"General"); }};
  for (const auto& click : clicks) {
    Work().SetOverrideSignalStrength(0);
    Open();
    sheet->Focus(IDC_RECONNECT_STRENGTH);
    sheet->Type(L"9");
    click();
    ExpectRefusal();
    EXPECT_EQ(sheet->CurrentTab(), L"Wi-Fi Switching");
    EXPECT_TRUE(sheet->HasFocus(IDC_RECONNECT_STRENGTH));

    sheet->Type(L"50");
    click();
    EXPECT_EQ(sheet->MessageBoxText(), std::nullopt);
    EXPECT_EQ(sheet->CurrentTab(), L"General");
    EXPECT_EQ(Work().GetOverrideSignalStrength(), 50);
    sheet.reset();
  }
}

TEST_F(AutoReconnectPage, TheTimeThatWasJustTypedIsStored) {
  Override();
  for (const Ending& confirmation : kConfirmations) {
    Work().SetOverrideSwitchInterval(15);
    Open();
    sheet->Focus(IDC_RECONNECT_INTERVAL);
    sheet->Type(L"20");
    confirmation.end(*sheet);
    EXPECT_EQ(sheet->Result(), kSheetConfirmed) << confirmation.name;
    EXPECT_EQ(Work().GetOverrideSwitchInterval(), 20) << confirmation.name;
    sheet.reset();
  }
}

TEST_F(AutoReconnectPage, EveryWayOfCancellingGivesAWrongStrengthUpWithoutAMessage) {
  Override();
  for (const Ending& cancellation : kCancellations) {
    Open();
    sheet->Focus(IDC_RECONNECT_STRENGTH);
    sheet->Type(L"9");
    cancellation.end(*sheet);
    EXPECT_TRUE(WaitUntil([this] { return HasEndedOrTells(*sheet); })) << cancellation.name;
    ASSERT_EQ(sheet->MessageBoxText(), std::nullopt) << cancellation.name;
    EXPECT_EQ(sheet->Result(), kSheetCancelled) << cancellation.name;
    EXPECT_EQ(Work().GetOverrideSignalStrength(), 40) << cancellation.name;
    sheet.reset();
  }
}

TEST_F(AutoReconnectPage, EveryWayOfCancellingWorksAfterARefusal) {
  Override();
  for (const Ending& cancellation : kCancellations) {
    Work().SetOverrideSignalStrength(40);
    Open();
    sheet->Focus(IDC_RECONNECT_STRENGTH);
    sheet->Type(L"9");
    sheet->PressOk();
    ExpectRefusal();
    cancellation.end(*sheet);
    EXPECT_TRUE(WaitUntil([this] { return HasEndedOrTells(*sheet); })) << cancellation.name;
    ASSERT_EQ(sheet->MessageBoxText(), std::nullopt) << cancellation.name;
    EXPECT_EQ(sheet->Result(), kSheetCancelled) << cancellation.name;
    sheet.reset();
  }
}

// The message takes the release of the mouse button away from what was clicked.
TEST_F(AutoReconnectPage, AClickOnCancelWorksAfterARefusalOfAnotherClick) {
  Override();
  for (const int clicked : {0, IDC_RECONNECT_WAIT_RADIO}) {
    Work().SetOverrideSignalStrength(40);
    Open();
    sheet->Focus(IDC_RECONNECT_STRENGTH);
    sheet->Type(L"9");
    const HWND target = clicked != 0 ? sheet->Control(clicked) : GetDlgItem(sheet->Sheet(), IDOK);
    ASSERT_TRUE(sheet->ClickByMouseUntil([this] { return sheet->MessageBoxText().has_value(); }, target)) << clicked;
    ExpectRefusal();
    sheet->PressCancelByMouse();
    ASSERT_EQ(sheet->MessageBoxText(), std::nullopt) << clicked;
    EXPECT_EQ(sheet->Result(), kSheetCancelled) << clicked;
    sheet.reset();
  }
}

TEST_F(AutoReconnectPage, EveryWayOfCancellingWorksWhileAStrengthOfZeroIsNotInForce) {
  Override(false, false);
  for (const Ending& cancellation : kCancellations) {
    Work().SetOverrideSignalStrength(0);
    Open();
    ASSERT_FALSE(sheet->IsEnabled(IDC_RECONNECT_STRENGTH));
    sheet->Focus(IDC_OVERRIDE_CHECK);  // the selector keeps Alt+F4 to itself under Wine
    cancellation.end(*sheet);
    EXPECT_TRUE(WaitUntil([this] { return HasEndedOrTells(*sheet); })) << cancellation.name;
    ASSERT_EQ(sheet->MessageBoxText(), std::nullopt) << cancellation.name;
    EXPECT_EQ(sheet->Result(), kSheetCancelled) << cancellation.name;
    EXPECT_EQ(Work().GetOverrideSignalStrength(), 0) << cancellation.name;
    sheet.reset();
  }
}

// Who comes to Cancel and does not press it has given nothing up.
TEST_F(AutoReconnectPage, WhatIsTypedIsKeptOnTheWayOverCancel) {
  UseFullSheet();
  Override();
  struct Next {
    std::function<void()> step;
    const char* name;
  };
  for (const Next& next :
       {Next{[this] { sheet->PressOk(); }, "OK"}, Next{[this] { sheet->SelectTab(L"General"); }, "tab"},
        Next{[this] { sheet->Pick(IDC_PROFILE_COMBO, L"Home"); }, "profile"},
        Next{[this] { sheet->Click(IDC_OVERRIDE_CHECK); }, "override"},
        Next{[this] { sheet->Click(IDC_RECONNECT_SWITCH_CHECK); }, "automatic"},
        Next{[this] { sheet->Click(IDC_RECONNECT_HOTSPOT_CHECK); }, "hotspot"}}) {
    SetValues();
    Override();
    context.currentProfile = context.profiles[kWork];
    Open();
    sheet->Focus(IDC_RECONNECT_STRENGTH);
    sheet->Type(L"50");
    sheet->TryFocus(GetDlgItem(sheet->Sheet(), IDCANCEL));
    ASSERT_EQ(sheet->FocusedControl(), IDCANCEL);
    EXPECT_EQ(Work().GetOverrideSignalStrength(), 40);
    next.step();
    EXPECT_EQ(sheet->MessageBoxText(), std::nullopt) << next.name;
    EXPECT_EQ(Work().GetOverrideSignalStrength(), 50) << next.name;
    sheet.reset();
  }
}

TEST_F(AutoReconnectPage, ANumberThatIsShownInPartIsKeptWhenItsFieldIsVisited) {
  Override();
  Work().SetOverrideSwitchInterval(1234567890);
  Work().SetOverrideSignalStrength(100);
  Open();
  sheet->Focus(IDC_RECONNECT_INTERVAL);
  sheet->TryFocus(IDC_RECONNECT_STRENGTH);
  ExpectRefusal();
  sheet->TryFocus(IDC_RECONNECT_WAIT_RADIO);
  ExpectRefusal();
  EXPECT_EQ(Work().GetOverrideSwitchInterval(), 1234567890);
  EXPECT_EQ(Work().GetOverrideSignalStrength(), 100);
  sheet->PressOk();
  ExpectRefusal();
  sheet->Type(L"50");
  sheet->PressOk();
  EXPECT_EQ(sheet->Result(), kSheetConfirmed);
  EXPECT_EQ(Work().GetOverrideSwitchInterval(), 1234567890);
  EXPECT_EQ(Work().GetOverrideSignalStrength(), 50);
}

TEST_F(AutoReconnectPage, TabVisitsTheControlsInReadingOrder) {
  Override();
  Work().SetAdvancedAutoReconnectSettings(1);
  Open();
  HWND control = sheet->Control(IDC_PROFILE_COMBO);
  for (const int next :
       {IDC_OVERRIDE_CHECK, IDC_RECONNECT_SWITCH_CHECK, IDC_RECONNECT_HOTSPOT_CHECK, IDC_RECONNECT_PROMPT_CHECK,
        IDC_RECONNECT_INTERVAL, IDC_RECONNECT_STRENGTH, IDC_RECONNECT_AT_ONCE_RADIO}) {
    control = GetNextDlgTabItem(sheet->Page(), control, FALSE);
    EXPECT_EQ(GetDlgCtrlID(control), next);
  }
}

TEST_F(AutoReconnectPage, ShowsTheFocusOnTheBoxWithoutAText) {
  Override();
  Open();
  const HWND box = sheet->Control(IDC_RECONNECT_PROMPT_CHECK);
  sheet->Focus(IDC_RECONNECT_HOTSPOT_CHECK);
  UpdateWindow(box);
  const std::vector<COLORREF> without = UpperEdge(box);
  sheet->Focus(IDC_RECONNECT_PROMPT_CHECK);
  EXPECT_TRUE(WaitUntil([&] { return UpperEdge(box) != without; }));
  sheet->Click(IDC_RECONNECT_PROMPT_CHECK);
  InvalidateRect(box, nullptr, FALSE);
  UpdateWindow(box);
  EXPECT_NE(UpperEdge(box), without) << "drawn once more";
  sheet->Focus(IDC_RECONNECT_HOTSPOT_CHECK);
  EXPECT_TRUE(WaitUntil([&] { return UpperEdge(box) == without; }));
}
