#include <windows.h>

#include <commctrl.h>
#include <gmock/gmock.h>

#include <algorithm>
#include <cwctype>
#include <string>
#include <vector>

#include "tests/LoginProperties/Resources/ExpectedResources.h"
#include "tests/LoginProperties/Resources/ModuleResources.h"
#include "tests/support/DialogTemplate.h"

namespace {

using testing::ElementsAreArray;

bool IsGroup(const DialogControl& control) {
  return control.windowClass == L"button" && (control.style & BS_TYPEMASK) == BS_GROUPBOX;
}

bool IsRadioOrCheck(const DialogControl& control) {
  const auto type = control.style & BS_TYPEMASK;
  return control.windowClass == L"button" && (type == BS_AUTOCHECKBOX || type == BS_AUTORADIOBUTTON);
}

bool IsPush(const DialogControl& control) {
  return control.windowClass == L"button" && (control.style & BS_TYPEMASK) <= BS_DEFPUSHBUTTON;
}

bool IsLabel(const DialogControl& control) {
  return control.windowClass == L"static" && (control.style & SS_TYPEMASK) == SS_LEFT;
}

// A combo box takes the room of its closed field; the height in the template is that of its list.
RECT Place(const DialogControl& control) {
  constexpr int kClosedComboBox = 14;
  const int height = control.windowClass == L"combobox" ? kClosedComboBox : control.height;
  return {control.x, control.y, control.x + control.width, control.y + height};
}

std::wstring AccessKeys(const DialogTemplate& dialog) {
  std::wstring keys;
  for (const auto& control : dialog.controls) {
    const auto mark = control.text.find(L'&');
    if (mark != std::wstring::npos) keys += static_cast<wchar_t>(std::towlower(control.text.at(mark + 1)));
  }
  return keys;
}

// Measures texts in pixels as a dialog with the template's font shows them.
class TextMeasure {
 public:
  explicit TextMeasure(const DialogTemplate& dialog)
      : dc_(CreateCompatibleDC(nullptr)),
        font_(CreateFontW(-MulDiv(dialog.fontSize, GetDeviceCaps(dc_.get(), LOGPIXELSY), 72), 0, 0, 0, FW_NORMAL, 0, 0,
                          0, DEFAULT_CHARSET, 0, 0, 0, 0, dialog.fontName.c_str())) {
    previous_ = SelectObject(dc_.get(), font_.get());
    constexpr wchar_t kLetters[] = L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
    SIZE letters;
    GetTextExtentPoint32W(dc_.get(), kLetters, 52, &letters);
    base_ = {(letters.cx / 26 + 1) / 2, letters.cy};
  }
  ~TextMeasure() { SelectObject(dc_.get(), previous_); }
  TextMeasure(const TextMeasure&) = delete;
  TextMeasure& operator=(const TextMeasure&) = delete;

  SIZE Pixels(SIZE dialogUnits) const {
    return {MulDiv(dialogUnits.cx, base_.cx, 4), MulDiv(dialogUnits.cy, base_.cy, 8)};
  }

  // The room that the text takes when its lines may be as wide as `width`.
  SIZE Extent(const std::wstring& text, LONG width, bool wrap) const {
    RECT room = {0, 0, width, 0};
    DrawTextW(dc_.get(), text.c_str(), static_cast<int>(text.size()), &room,
              DT_CALCRECT | (wrap ? DT_WORDBREAK : DT_SINGLELINE));
    return {room.right, room.bottom};
  }

 private:
  Owner<HDC, DeleteDC> dc_;
  Owner<HFONT, DeleteObject> font_;
  HGDIOBJ previous_;
  SIZE base_;
};

class Dialog : public testing::TestWithParam<ExpectedDialog> {
 protected:
  void SetUp() override {
    const auto dialog = ParseDialogTemplate(Resource(RT_DIALOG, GetParam().id));
    ASSERT_TRUE(dialog);
    dialog_ = *dialog;
  }

  DialogTemplate dialog_;
};

INSTANTIATE_TEST_SUITE_P(Module, Dialog, testing::ValuesIn(ExpectedResources::Dialogs()),
                         [](const auto& dialog) { return dialog.param.name; });

TEST_P(Dialog, HasItsTitleSizeAndFont) {
  EXPECT_EQ(dialog_.title, GetParam().title);
  EXPECT_EQ(dialog_.style, GetParam().style);
  EXPECT_EQ(dialog_.width, GetParam().size.cx);
  EXPECT_EQ(dialog_.height, GetParam().size.cy);
  EXPECT_EQ(dialog_.fontSize, 8);
  EXPECT_EQ(dialog_.fontName, L"Tahoma");
}

TEST_P(Dialog, HasItsControlsInTabOrder) {
  std::vector<ExpectedControl> controls;
  for (const auto& control : dialog_.controls) {
    EXPECT_EQ(control.style & (WS_CHILD | WS_VISIBLE), static_cast<std::uint32_t>(WS_CHILD | WS_VISIBLE)) << control.id;
    const std::uint32_t ignored = WS_CHILD | WS_VISIBLE | (control.windowClass == L"static" ? WS_GROUP : 0);
    controls.push_back({control.id, control.windowClass, control.text, control.style & ~ignored});
  }
  EXPECT_THAT(controls, ElementsAreArray(GetParam().controls));
}

TEST_P(Dialog, NamesOnlyIconsThatThereAre) {
  for (const auto& control : dialog_.controls) {
    if (control.windowClass != L"static" || (control.style & SS_TYPEMASK) != SS_ICON) continue;
    const auto id = static_cast<WORD>(std::stoi(control.text.substr(1)));  // behind a number sign
    EXPECT_FALSE(Resource(RT_GROUP_ICON, id).empty()) << id;
  }
}

TEST_P(Dialog, KeepsControlsApartAndInsideItsMargins) {
  constexpr int kMargin = 7;
  const RECT room = {kMargin, kMargin, dialog_.width - kMargin, dialog_.height - kMargin};
  for (const auto& control : dialog_.controls) {
    const RECT place = Place(control);
    RECT inside;
    EXPECT_TRUE(IntersectRect(&inside, &place, &room) && EqualRect(&inside, &place)) << control.id;
    for (const auto& other : dialog_.controls) {
      if (&other == &control || IsGroup(control) || IsGroup(other)) continue;
      const RECT otherPlace = Place(other);
      RECT common;
      EXPECT_FALSE(IntersectRect(&common, &place, &otherPlace)) << control.id << " and " << other.id;
    }
  }
}

TEST_P(Dialog, LeavesRoomForEveryText) {
  constexpr LONG kCheckMark = 18;  // pixels of the box or circle and the gap behind it
  constexpr LONG kPushFrame = 10;
  const TextMeasure measure(dialog_);
  for (const auto& control : dialog_.controls) {
    if (control.text.empty() || (!IsLabel(control) && !IsRadioOrCheck(control) && !IsPush(control))) continue;
    SIZE room = measure.Pixels({control.width, control.height});
    if (IsRadioOrCheck(control)) room.cx -= kCheckMark;
    if (IsPush(control)) room.cx -= kPushFrame;
    const SIZE text = measure.Extent(control.text, room.cx, IsLabel(control) || (control.style & BS_MULTILINE));
    EXPECT_LE(text.cx, room.cx) << control.id;
    EXPECT_LE(text.cy, room.cy) << control.id;
  }
}

TEST_P(Dialog, GivesEachAccessKeyOnce) {
  auto keys = AccessKeys(dialog_);
  std::ranges::sort(keys);
  EXPECT_EQ(std::ranges::adjacent_find(keys), keys.end()) << testing::PrintToString(keys);
}

// Screen readers name a control without a text of its own after the static text before it. The trees have no
// label: there the override box comes before them.
TEST_P(Dialog, PutsALabelBeforeEveryControlWithoutText) {
  for (std::size_t i = 0; i < dialog_.controls.size(); ++i) {
    const auto& control = dialog_.controls[i];
    if (!control.text.empty() || control.windowClass == L"static" || IsGroup(control)) continue;
    ASSERT_GT(i, 0u);
    const auto& before = dialog_.controls[i - 1];
    if (control.windowClass == kTreeViewClass) {
      EXPECT_EQ(before.id, kOverrideBox);
    } else {
      EXPECT_TRUE(IsLabel(before)) << control.id;
    }
  }
}

std::vector<ExpectedDialog> PagesWithOverrideBox() {
  std::vector<ExpectedDialog> pages = ExpectedResources::Dialogs();
  std::erase_if(pages, [](const ExpectedDialog& dialog) { return !dialog.hasOverrideBox; });
  return pages;
}

class OverrideBoxPage : public Dialog {};

INSTANTIATE_TEST_SUITE_P(Module, OverrideBoxPage, testing::ValuesIn(PagesWithOverrideBox()),
                         [](const auto& dialog) { return dialog.param.name; });

// The override box enables and disables what follows it, so the selector and the page's frame come before it.
TEST_P(OverrideBoxPage, HasOnlySelectorAndFrameBeforeTheOverrideBox) {
  const auto& controls = dialog_.controls;
  ASSERT_GT(controls.size(), 4u);
  EXPECT_EQ(controls[0].id, kProfileLabel);
  EXPECT_EQ(controls[1].id, kProfileSelector);
  EXPECT_TRUE(IsGroup(controls[2]));
  EXPECT_EQ(controls[3].id, kOverrideBox);
}

// The box stands on the top line of the frame, as its caption does on a plain group box.
TEST_P(OverrideBoxPage, ShowsTheOverrideBoxOnTheTopLineOfItsFrame) {
  const RECT frame = Place(dialog_.controls[2]);
  const RECT box = Place(dialog_.controls[3]);
  const LONG topLine = frame.top + 4;  // half the height of a caption
  EXPECT_LT(box.top, topLine);
  EXPECT_GT(box.bottom, topLine);
  EXPECT_GT(box.left, frame.left);
  EXPECT_LT(box.right, frame.right);
}

}  // namespace
