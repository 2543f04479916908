#include "LoginProperties/ProfilePage/StateImageTree.h"

#include <gmock/gmock.h>

#include "tests/support/LoadedModule.h"
#include "tests/support/TreeItems.h"

namespace {

using testing::ElementsAre;

class StateImageTreeTest : public testing::Test {
 protected:
  StateImageTreeTest() { tree_.Attach(window_); }
  ~StateImageTreeTest() override { DestroyWindow(window_); }

  LoadedModule module_{L"Pavise.dll"};
  HWND window_ = CreateWindowExW(0, WC_TREEVIEWW, L"", WS_POPUP | WS_VISIBLE | TVS_HASBUTTONS, 0, 0, 300, 200, nullptr,
                                 nullptr, nullptr, nullptr);
  StateImageTree tree_;
};

TEST_F(StateImageTreeTest, HasTheCellsOfTheModulesStrip) {
  EXPECT_EQ(tree_.Window(), window_);
  const HIMAGELIST images = TreeView_GetImageList(window_, TVSIL_STATE);
  EXPECT_EQ(ImageList_GetImageCount(images), 15);
  int width = 0;
  int height = 0;
  ASSERT_TRUE(ImageList_GetIconSize(images, &width, &height));
  EXPECT_EQ(width, 16);
  EXPECT_EQ(height, 16);
}

TEST_F(StateImageTreeTest, AddsItemsInTheirOrderWithTextAndImage) {
  const HTREEITEM first = tree_.Add(TVI_ROOT, {L"First", 0, 3, true});
  tree_.Add(TVI_ROOT, {L"Second", 0, 4, true});
  tree_.Add(first, {L"On", 0, 2});
  tree_.Add(first, {L"Off", 0, 1});
  TreeView_Expand(window_, first, TVE_EXPAND);
  EXPECT_THAT(TreeItems(window_), ElementsAre(TreeItem{0, L"First", 3}, TreeItem{1, L"On", 2}, TreeItem{1, L"Off", 1},
                                              TreeItem{0, L"Second", 4}));
}

TEST_F(StateImageTreeTest, OffersToOpenHeadings) {
  const auto childrenOf = [this](HTREEITEM item) {
    TVITEMW data{};
    data.mask = TVIF_CHILDREN;
    data.hItem = item;
    TreeView_GetItem(window_, &data);
    return data.cChildren;
  };
  EXPECT_EQ(childrenOf(tree_.Add(TVI_ROOT, {L"Heading", 0, 0, true})), 1);
  EXPECT_EQ(childrenOf(tree_.Add(TVI_ROOT, {L"Entry"})), 0);
}

TEST_F(StateImageTreeTest, KeepsTheValuesOfItems) {
  const HTREEITEM first = tree_.Add(TVI_ROOT, {L"First", 4711});
  const HTREEITEM second = tree_.Add(TVI_ROOT, {L"Second", -1});
  EXPECT_EQ(tree_.ValueOf(first), 4711);
  EXPECT_EQ(tree_.ValueOf(second), -1);
}

TEST_F(StateImageTreeTest, ChangesTheImageOfOneItem) {
  const HTREEITEM first = tree_.Add(TVI_ROOT, {L"First", 0, 1});
  const HTREEITEM second = tree_.Add(TVI_ROOT, {L"Second", 0, 1});
  tree_.SetImage(second, 2);
  EXPECT_EQ(TreeItemImage(window_, first), 1);
  EXPECT_EQ(TreeItemImage(window_, second), 2);
}

TEST_F(StateImageTreeTest, GreysItsItemsWhileItIsDisabled) {
  const COLORREF enabled = TreeView_GetTextColor(window_);
  tree_.Enable(false);
  EXPECT_FALSE(IsWindowEnabled(window_));
  EXPECT_EQ(TreeView_GetTextColor(window_), GetSysColor(COLOR_GRAYTEXT));
  tree_.Enable(true);
  EXPECT_TRUE(IsWindowEnabled(window_));
  EXPECT_EQ(TreeView_GetTextColor(window_), enabled);
}

}  // namespace
