#include "tests/support/TreeItems.h"

#include "NetUtilities/Text/Utf8.h"

namespace {

int LevelOf(HWND tree, HTREEITEM item) {
  int level = 0;
  while ((item = TreeView_GetParent(tree, item)) != nullptr) ++level;
  return level;
}

}  // namespace

void PrintTo(const TreeItem& item, std::ostream* out) {
  *out << item.level << " '" << ToUtf8(item.text) << "' with image " << item.stateImage;
}

std::vector<TreeItem> TreeItems(HWND tree) {
  std::vector<TreeItem> items;
  for (HTREEITEM item = TreeView_GetRoot(tree); item != nullptr; item = TreeView_GetNextVisible(tree, item)) {
    items.push_back({LevelOf(tree, item), TreeItemText(tree, item), TreeItemImage(tree, item)});
  }
  return items;
}

HTREEITEM FindTreeItem(HWND tree, const std::wstring& text) {
  HTREEITEM item = TreeView_GetRoot(tree);
  while (item != nullptr && TreeItemText(tree, item) != text) item = TreeView_GetNextVisible(tree, item);
  return item;
}

std::wstring TreeItemText(HWND tree, HTREEITEM item) {
  wchar_t text[512] = {};
  TVITEMW data{};
  data.mask = TVIF_TEXT;
  data.hItem = item;
  data.pszText = text;
  data.cchTextMax = ARRAYSIZE(text);
  TreeView_GetItem(tree, &data);
  return text;
}

int TreeItemImage(HWND tree, HTREEITEM item) {
  constexpr int kStateImageShift = 12;
  return static_cast<int>(TreeView_GetItemState(tree, item, TVIS_STATEIMAGEMASK) >> kStateImageShift);
}

POINT PointOn(HWND tree, HTREEITEM item, TreeItemPart part) {
  constexpr LONG kNear = 6;
  constexpr LONG kIconWidth = 16;
  TreeView_EnsureVisible(tree, item);
  RECT label{};
  TreeView_GetItemRect(tree, item, &label, TRUE);
  const LONG middle = (label.top + label.bottom) / 2;
  switch (part) {
    case TreeItemPart::StateIcon:
      return {label.left - kIconWidth / 2, middle};
    case TreeItemPart::Label:
      return {label.left + kNear, middle};
    case TreeItemPart::RightOfLabel:
      return {label.right + kNear, middle};
    case TreeItemPart::LeftOfIcon:
      break;
  }
  return {label.left - kIconWidth - kNear, middle};
}
