#include "LoginProperties/Preferences/TreeInputFilter.h"

#include <commctrl.h>
#include <gmock/gmock.h>
#include <windowsx.h>

#include <optional>

#include "tests/support/TreeItems.h"

namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::Field;
using testing::IsEmpty;

// A tree with a group and an entry, and a page that is asked to toggle them.
class TreeInputFilterTest : public testing::Test {
 protected:
  TreeInputFilterTest() {
    TVINSERTSTRUCTW insert{};
    insert.hInsertAfter = TVI_LAST;
    insert.item.mask = TVIF_TEXT;
    insert.item.pszText = group_.data();
    heading_ = TreeView_InsertItem(tree_, &insert);
    insert.hParent = heading_;
    insert.item.pszText = text_.data();
    entry_ = TreeView_InsertItem(tree_, &insert);
    TreeView_Expand(tree_, heading_, TVE_EXPAND);
    images_ = ImageList_Create(16, 16, ILC_COLOR, 0, 1);
    const HBITMAP strip = CreateBitmap(32, 16, 1, 32, nullptr);
    ImageList_Add(images_, strip, nullptr);
    DeleteObject(strip);
    TreeView_SetImageList(tree_, images_, TVSIL_STATE);
    TreeView_SetItemState(tree_, entry_, INDEXTOSTATEIMAGEMASK(1u), TVIS_STATEIMAGEMASK);
  }
  ~TreeInputFilterTest() override {
    DestroyWindow(page_);
    ImageList_Destroy(images_);
  }

  void Attach(bool editable) {
    filter_.emplace();
    filter_->Attach(tree_, page_);
    filter_->SetEditable(editable);
  }

  void Press(UINT message, HTREEITEM item, TreeItemPart part) const { Press(message, PointOn(tree_, item, part)); }
  void Press(UINT message, POINT point) const {
    SendMessageW(tree_, message, MK_LBUTTON, MAKELPARAM(point.x, point.y));
    SendMessageW(tree_, WM_LBUTTONUP, 0, MAKELPARAM(point.x, point.y));
  }

  // What was posted to the page.
  std::vector<MSG> Posted() const {
    std::vector<MSG> posted;
    for (MSG message; PeekMessageW(&message, page_, TreeInputFilter::kToggleItem, TreeInputFilter::kToggleItem,
                                   PM_REMOVE) != FALSE;) {
      posted.push_back(message);
    }
    return posted;
  }

  auto AsksFor(HTREEITEM item) const {
    return ElementsAre(AllOf(Field(&MSG::hwnd, page_), Field(&MSG::wParam, reinterpret_cast<WPARAM>(item)),
                             Field(&MSG::lParam, reinterpret_cast<LPARAM>(tree_))));
  }

  bool IsOpen() const { return (TreeView_GetItemState(tree_, heading_, TVIS_EXPANDED) & TVIS_EXPANDED) != 0; }

  WNDPROC Procedure() const { return reinterpret_cast<WNDPROC>(GetWindowLongPtrW(tree_, GWLP_WNDPROC)); }

  std::wstring group_ = L"Group";
  std::wstring text_ = L"Entry";
  HWND page_ =
      CreateWindowExW(0, L"STATIC", L"", WS_POPUP | WS_VISIBLE, 0, 0, 300, 200, nullptr, nullptr, nullptr, nullptr);
  HWND tree_ = CreateWindowExW(0, WC_TREEVIEWW, L"", WS_CHILD | WS_VISIBLE | TVS_DISABLEDRAGDROP, 0, 0, 300, 200, page_,
                               nullptr, nullptr, nullptr);
  HTREEITEM heading_ = nullptr;
  HTREEITEM entry_ = nullptr;
  HIMAGELIST images_ = nullptr;
  std::optional<TreeInputFilter> filter_;
};

}  // namespace

TEST_F(TreeInputFilterTest, AsksForTheItemWhoseLabelOrStateIconIsPressed) {
  Attach(true);
  Press(WM_LBUTTONDOWN, entry_, TreeItemPart::Label);
  EXPECT_THAT(Posted(), AsksFor(entry_));
  Press(WM_LBUTTONDOWN, entry_, TreeItemPart::StateIcon);
  EXPECT_THAT(Posted(), AsksFor(entry_));
  Press(WM_LBUTTONDOWN, heading_, TreeItemPart::Label);
  EXPECT_THAT(Posted(), AsksFor(heading_));
}

TEST_F(TreeInputFilterTest, AsksForTheItemWhoseIconIsPressed) {
  TreeView_SetImageList(tree_, images_, TVSIL_NORMAL);
  RECT label{};
  TreeView_GetItemRect(tree_, entry_, &label, TRUE);
  constexpr LONG kHalfAnIcon = 8;
  TVHITTESTINFO hit{};
  hit.pt = {label.left - kHalfAnIcon, (label.top + label.bottom) / 2};
  TreeView_HitTest(tree_, &hit);
  ASSERT_EQ(hit.flags, static_cast<UINT>(TVHT_ONITEMICON));
  Attach(true);
  Press(WM_LBUTTONDOWN, hit.pt);
  EXPECT_THAT(Posted(), AsksFor(entry_));
}

TEST_F(TreeInputFilterTest, AsksForNothingBesideAnItem) {
  Attach(true);
  Press(WM_LBUTTONDOWN, entry_, TreeItemPart::RightOfLabel);
  Press(WM_LBUTTONDOWN, entry_, TreeItemPart::LeftOfIcon);
  SendMessageW(tree_, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(20, 190));
  EXPECT_THAT(Posted(), IsEmpty());
}

TEST_F(TreeInputFilterTest, LetsTheTreeSelectWhatIsPressed) {
  Attach(true);
  Press(WM_LBUTTONDOWN, entry_, TreeItemPart::Label);
  EXPECT_EQ(TreeView_GetSelection(tree_), entry_);
}

TEST_F(TreeInputFilterTest, AsksForTheSelectedItemWhenTheSpaceBarIsTyped) {
  Attach(true);
  SendMessageW(tree_, WM_CHAR, L' ', 0);
  EXPECT_THAT(Posted(), AsksFor(nullptr)) << "nothing is selected";
  TreeView_SelectItem(tree_, entry_);
  SendMessageW(tree_, WM_CHAR, L' ', 0);
  EXPECT_THAT(Posted(), AsksFor(entry_));
  for (const wchar_t other : {L'x', L'\r', L'\u00a0'}) SendMessageW(tree_, WM_CHAR, other, 0);
  EXPECT_THAT(Posted(), IsEmpty());
}

TEST_F(TreeInputFilterTest, AsksForNothingWhileTheTreeCannotBeEdited) {
  Attach(false);
  TreeView_SelectItem(tree_, entry_);
  SendMessageW(tree_, WM_CHAR, L' ', 0);
  Press(WM_LBUTTONDOWN, entry_, TreeItemPart::Label);
  EXPECT_THAT(Posted(), IsEmpty());
}

TEST_F(TreeInputFilterTest, IsNotEditableAtFirst) {
  filter_.emplace();
  filter_->Attach(tree_, page_);
  Press(WM_LBUTTONDOWN, entry_, TreeItemPart::Label);
  EXPECT_THAT(Posted(), IsEmpty());
}

TEST_F(TreeInputFilterTest, SwallowsDoubleClicks) {
  Press(WM_LBUTTONDBLCLK, heading_, TreeItemPart::Label);
  ASSERT_FALSE(IsOpen()) << "the tree by itself closes a group";
  TreeView_Expand(tree_, heading_, TVE_EXPAND);
  for (const bool editable : {true, false}) {
    Attach(editable);
    Press(WM_LBUTTONDBLCLK, heading_, TreeItemPart::Label);
    EXPECT_TRUE(IsOpen()) << editable;
    EXPECT_THAT(Posted(), IsEmpty()) << editable;
  }
}

TEST_F(TreeInputFilterTest, LeavesTheTreeAsItWas) {
  const WNDPROC before = Procedure();
  Attach(true);
  EXPECT_NE(Procedure(), before);
  filter_.reset();
  EXPECT_EQ(Procedure(), before);
  Press(WM_LBUTTONDOWN, entry_, TreeItemPart::Label);
  EXPECT_THAT(Posted(), IsEmpty());
}

TEST_F(TreeInputFilterTest, MayOutliveTheTreeAndTakeAnother) {
  Attach(true);
  DestroyWindow(tree_);
  tree_ = CreateWindowExW(0, WC_TREEVIEWW, L"", WS_CHILD, 0, 0, 100, 100, page_, nullptr, nullptr, nullptr);
  const WNDPROC before = Procedure();
  filter_->Attach(tree_, page_);
  SendMessageW(tree_, WM_CHAR, L' ', 0);
  EXPECT_THAT(Posted(), AsksFor(nullptr));
  filter_.reset();
  EXPECT_EQ(Procedure(), before);
}
