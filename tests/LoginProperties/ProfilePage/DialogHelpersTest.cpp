#include "LoginProperties/ProfilePage/DialogHelpers.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "LoginProperties/Autostart/AutostartStrings.h"
#include "LoginProperties/ProfilePage/ProfileControls.h"
#include "tests/support/LoadedModule.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr int kBefore = 1;
constexpr int kAfter = 2;
constexpr int kLast = 3;
constexpr int kCombo = 4;

std::wstring TextOf(HWND window) {
  wchar_t text[64];
  return std::wstring(text, static_cast<size_t>(GetWindowTextW(window, text, ARRAYSIZE(text))));
}

std::vector<std::wstring> ItemsOf(HWND combo) {
  std::vector<std::wstring> items;
  const LRESULT count = SendMessageW(combo, CB_GETCOUNT, 0, 0);
  for (LRESULT index = 0; index < count; ++index) {
    wchar_t text[64] = {};
    SendMessageW(combo, CB_GETLBTEXT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(text));
    items.emplace_back(text);
  }
  return items;
}

// A visible window with controls, as a page is.
class DialogHelpers : public testing::Test {
 protected:
  ~DialogHelpers() override { DestroyWindow(page); }

  HWND Add(int id, const wchar_t* windowClass = L"BUTTON", DWORD style = 0) const {
    return CreateWindowExW(0, windowClass, L"", WS_CHILD | WS_VISIBLE | style, 0, 0, 100, 20, page,
                           reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), nullptr, nullptr);
  }

  bool IsEnabled(int id) const { return IsWindowEnabled(GetDlgItem(page, id)) != FALSE; }

  HWND page =
      CreateWindowExW(0, L"STATIC", L"", WS_POPUP | WS_VISIBLE, 0, 0, 200, 100, nullptr, nullptr, nullptr, nullptr);
};

TEST_F(DialogHelpers, EnableAndDisableTheNamedControl) {
  Add(kBefore);
  Add(kAfter);
  EnableControl(page, kAfter, false);
  EXPECT_FALSE(IsEnabled(kAfter));
  EXPECT_TRUE(IsEnabled(kBefore));
  EnableControl(page, kAfter, true);
  EXPECT_TRUE(IsEnabled(kAfter));
}

TEST_F(DialogHelpers, HideAndShowTheNamedControl) {
  const HWND other = Add(kBefore);
  const HWND control = Add(kAfter);
  HideControl(page, kAfter);
  EXPECT_FALSE(IsWindowVisible(control));
  EXPECT_TRUE(IsWindowVisible(other));
  ShowControl(page, kAfter);
  EXPECT_TRUE(IsWindowVisible(control));
}

TEST_F(DialogHelpers, TellWhetherABoxIsCheckedOrInItsThirdState) {
  Add(kAfter, L"BUTTON", BS_AUTO3STATE);
  EXPECT_FALSE(IsControlChecked(page, kAfter));
  CheckDlgButton(page, kAfter, BST_CHECKED);
  EXPECT_TRUE(IsControlChecked(page, kAfter));
  CheckDlgButton(page, kAfter, BST_INDETERMINATE);
  EXPECT_TRUE(IsControlChecked(page, kAfter));
}

TEST_F(DialogHelpers, CheckAndUncheckABox) {
  Add(kAfter, L"BUTTON", BS_AUTO3STATE);
  CheckControl(page, kAfter, true);
  EXPECT_EQ(IsDlgButtonChecked(page, kAfter), UINT{BST_CHECKED});
  CheckControl(page, kAfter, false);
  EXPECT_EQ(IsDlgButtonChecked(page, kAfter), UINT{BST_UNCHECKED});
}

TEST_F(DialogHelpers, ReadATextUpToALength) {
  SetWindowTextW(Add(kAfter, L"EDIT"), L"12345");
  EXPECT_EQ(ControlText(page, kAfter, 6), L"12345");
  EXPECT_EQ(ControlText(page, kAfter, 5), L"12345");
  EXPECT_EQ(ControlText(page, kAfter, 4), L"1234");
  EXPECT_EQ(ControlText(page, kBefore, 4), L"");
}

TEST_F(DialogHelpers, ReadNoHalfCharacter) {
  SetWindowTextW(Add(kAfter, L"EDIT"), L"123\xd83d\xde00");
  EXPECT_EQ(ControlText(page, kAfter), L"123\xd83d\xde00");
  EXPECT_EQ(ControlText(page, kAfter, 5), L"123\xd83d\xde00");
  EXPECT_EQ(ControlText(page, kAfter, 4), L"123");
}

TEST_F(DialogHelpers, ReadALongTextWhole) {
  const std::wstring text(3000, L'x');
  SetWindowTextW(Add(kAfter, L"EDIT", ES_AUTOHSCROLL), text.c_str());
  EXPECT_EQ(ControlText(page, kAfter), text);
  EXPECT_EQ(ControlText(page, kBefore), L"") << "there is none";
}

TEST_F(DialogHelpers, TakeTheQuestionMarkOutOfATitleBar) {
  const LONG_PTR style = GetWindowLongPtrW(page, GWL_EXSTYLE) | WS_EX_TOPMOST;
  SetWindowLongPtrW(page, GWL_EXSTYLE, style | WS_EX_CONTEXTHELP);
  RemoveContextHelpButton(page);
  EXPECT_EQ(GetWindowLongPtrW(page, GWL_EXSTYLE) & WS_EX_CONTEXTHELP, 0);
  EXPECT_EQ(GetWindowLongPtrW(page, GWL_EXSTYLE) & ~WS_EX_TOPMOST, style & ~WS_EX_TOPMOST) << "nothing else";
}

TEST_F(DialogHelpers, TakeTextsFromTheModulesStrings) {
  const LoadedModule pavise(L"Pavise.dll");
  EXPECT_EQ(OwnString(IDS_INITIAL_SIZES), L"Normal~Maximized~Minimized");
}

TEST_F(DialogHelpers, FillAComboBoxAnewWithTheItemsInTheirOrder) {
  const LoadedModule pavise(L"Pavise.dll");
  const HWND combo = Add(kCombo, L"COMBOBOX", CBS_DROPDOWNLIST);
  SendMessageW(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(L"Before"));
  FillComboFromString(combo, IDS_INITIAL_SIZES);
  EXPECT_THAT(ItemsOf(combo), ElementsAre(L"Normal", L"Maximized", L"Minimized"));
}

TEST_F(DialogHelpers, EmptyAComboBoxWhenThereIsNoSuchString) {
  const LoadedModule pavise(L"Pavise.dll");
  constexpr unsigned kNoString = 64000;
  const HWND combo = Add(kCombo, L"COMBOBOX", CBS_DROPDOWNLIST);
  SendMessageW(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(L"Before"));
  FillComboFromString(combo, kNoString);
  EXPECT_THAT(ItemsOf(combo), IsEmpty());
}

// Whether the control that received it last was visible when its text was set.
bool visibleAtText = true;

LRESULT CALLBACK NoteVisibility(HWND window, UINT message, WPARAM wordParameter, LPARAM longParameter) {
  if (message == WM_SETTEXT) visibleAtText = IsWindowVisible(window) != FALSE;
  const auto original = reinterpret_cast<WNDPROC>(GetClassLongPtrW(window, GCLP_WNDPROC));
  return CallWindowProcW(original, window, message, wordParameter, longParameter);
}

TEST_F(DialogHelpers, SetATextWhileTheControlIsHiddenAndShowItAfterwards) {
  const HWND control = Add(kAfter, L"STATIC");
  SetWindowLongPtrW(control, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&NoteVisibility));
  visibleAtText = true;
  SetControlTextHidden(page, kAfter, L"new text");
  EXPECT_EQ(TextOf(control), L"new text");
  EXPECT_FALSE(visibleAtText);
  EXPECT_TRUE(IsWindowVisible(control));
}

TEST_F(DialogHelpers, ShowAHiddenControlWhenTheySetItsText) {
  const HWND control = Add(kAfter, L"STATIC");
  ShowWindow(control, SW_HIDE);
  SetControlTextHidden(page, kAfter, L"new text");
  EXPECT_TRUE(IsWindowVisible(control));
}

TEST_F(DialogHelpers, SetNoTextWithoutAPage) {
  // Looking for a control of no window would leave an error code.
  SetLastError(ERROR_SUCCESS);
  SetControlTextHidden(nullptr, kAfter, L"new text");
  EXPECT_EQ(GetLastError(), DWORD{ERROR_SUCCESS});
}

TEST_F(DialogHelpers, EnableAndDisableWhatFollowsTheOverrideBox) {
  for (const int id : {kBefore, IDC_OVERRIDE_CHECK, kAfter, kLast}) Add(id);
  EnableControlsAfterOverride(page, false);
  EXPECT_TRUE(IsEnabled(kBefore));
  EXPECT_TRUE(IsEnabled(IDC_OVERRIDE_CHECK));
  EXPECT_FALSE(IsEnabled(kAfter));
  EXPECT_FALSE(IsEnabled(kLast));

  EnableControl(page, kBefore, false);
  EnableControl(page, IDC_OVERRIDE_CHECK, false);
  EnableControlsAfterOverride(page, true);
  EXPECT_FALSE(IsEnabled(kBefore));
  EXPECT_FALSE(IsEnabled(IDC_OVERRIDE_CHECK));
  EXPECT_TRUE(IsEnabled(kAfter));
  EXPECT_TRUE(IsEnabled(kLast));
}

}  // namespace
