#include "LoginProperties/ProfilePage/ReportList.h"

#include <gmock/gmock.h>

#include "tests/support/ReportRows.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ReportListTest : public testing::Test {
 protected:
  ReportListTest() { list_.Attach(window_); }
  ~ReportListTest() override { DestroyWindow(window_); }

  void AddColumns() const {
    list_.AddColumn(L"First", 100);
    list_.AddColumn(L"Second", 60);
  }

  HWND window_ = CreateWindowExW(0, WC_LISTVIEWW, L"", WS_POPUP | WS_VISIBLE | WS_BORDER | LVS_REPORT | LVS_SINGLESEL,
                                 0, 0, 300, 200, nullptr, nullptr, nullptr, nullptr);
  ReportList list_;
};

TEST_F(ReportListTest, SelectsWholeRows) {
  EXPECT_EQ(list_.Window(), window_);
  EXPECT_NE(ListView_GetExtendedListViewStyle(window_) & LVS_EX_FULLROWSELECT, 0u);
}

TEST_F(ReportListTest, HasAsMuchWidthAsItsColumnsCanTake) {
  const int width = list_.Width();
  EXPECT_EQ(width, 298) << "within its border";
  list_.AddColumn(L"Half", width / 2);
  list_.AddColumn(L"Other half", width / 2);
  EXPECT_EQ(GetWindowLongW(window_, GWL_STYLE) & WS_HSCROLL, 0);
}

TEST_F(ReportListTest, AddsColumnsInTheirOrder) {
  AddColumns();
  EXPECT_THAT(ReportColumns(window_), ElementsAre(L"First", L"Second"));
  EXPECT_EQ(ListView_GetColumnWidth(window_, 0), 100);
  EXPECT_EQ(ListView_GetColumnWidth(window_, 1), 60);
}

TEST_F(ReportListTest, GivesAColumnTheWidthOfItsHeader) {
  AddColumns();
  list_.SetHeaderWidth(1, 44);
  EXPECT_EQ(ListView_GetColumnWidth(window_, 0), 100);
  EXPECT_EQ(ListView_GetColumnWidth(window_, 1), 44);
  EXPECT_THAT(ReportColumns(window_), ElementsAre(L"First", L"Second"));
}

TEST_F(ReportListTest, AddsRowsAtTheEndAndRemovesThem) {
  AddColumns();
  list_.AddRow({L"z", L"1"});
  list_.AddRow({L"a"});
  list_.AddRow({L"", L"3"});
  EXPECT_THAT(ReportRows(window_),
              ElementsAre(ElementsAre(L"z", L"1"), ElementsAre(L"a", L""), ElementsAre(L"", L"3")));
  list_.Clear();
  EXPECT_THAT(ReportRows(window_), IsEmpty());
}

TEST_F(ReportListTest, TakesTextsOfAnyLengthAndScript) {
  AddColumns();
  const std::wstring text = std::wstring(1000, L'\u4f60') + L"\xd83d\xde00";
  list_.AddRow({L"x", text});
  list_.SetText(0, 0, text);
  EXPECT_THAT(ReportRows(window_), ElementsAre(ElementsAre(text, text)));
}

TEST_F(ReportListTest, SelectsARowAndGivesItTheFocus) {
  AddColumns();
  for (const wchar_t* text : {L"a", L"b", L"c"}) list_.AddRow({text});
  list_.Select(1);
  EXPECT_EQ(ListView_GetNextItem(window_, -1, LVNI_SELECTED), 1);
  EXPECT_EQ(ListView_GetNextItem(window_, -1, LVNI_FOCUSED), 1);
}

TEST_F(ReportListTest, GreysItsRowsWhileItIsDisabled) {
  list_.Enable(false);
  EXPECT_FALSE(IsWindowEnabled(window_));
  EXPECT_EQ(ListView_GetTextColor(window_), GetSysColor(COLOR_GRAYTEXT));
  list_.Enable(true);
  EXPECT_TRUE(IsWindowEnabled(window_));
  EXPECT_EQ(ListView_GetTextColor(window_), GetSysColor(COLOR_WINDOWTEXT));
}

TEST_F(ReportListTest, FindsTheRowInTheNotificationThatItIsSelected) {
  NMLISTVIEW change{};
  change.hdr.code = static_cast<UINT>(LVN_ITEMCHANGED);
  change.iItem = 2;
  change.uNewState = LVIS_SELECTED | LVIS_FOCUSED;
  EXPECT_EQ(ReportList::SelectedRow(change.hdr), 2u);
  change.uNewState = LVIS_SELECTED;
  EXPECT_EQ(ReportList::SelectedRow(change.hdr), 2u);
  change.uNewState = LVIS_FOCUSED;
  EXPECT_EQ(ReportList::SelectedRow(change.hdr), std::nullopt);
  change.uNewState = LVIS_SELECTED;
  change.iItem = -1;
  EXPECT_EQ(ReportList::SelectedRow(change.hdr), std::nullopt) << "it speaks of all rows";
  change.iItem = 2;
  change.hdr.code = static_cast<UINT>(LVN_ITEMCHANGING);
  EXPECT_EQ(ReportList::SelectedRow(change.hdr), std::nullopt);
}

}  // namespace
