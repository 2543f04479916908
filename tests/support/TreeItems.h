#pragma once

#include <windows.h>

#include <commctrl.h>

#include <ostream>
#include <string>
#include <vector>

/// One item of a tree control as it is shown.
struct TreeItem {
  int level;  // 0 for those without a parent
  std::wstring text;
  int stateImage;
  bool operator==(const TreeItem&) const = default;
};

void PrintTo(const TreeItem& item, std::ostream* out);

/// All items that a user can scroll to, from top to bottom: those of closed parents are not among them. The tree is one
/// of this process.
std::vector<TreeItem> TreeItems(HWND tree);

/// The first item with this text; null when there is none.
HTREEITEM FindTreeItem(HWND tree, const std::wstring& text);

std::wstring TreeItemText(HWND tree, HTREEITEM item);
int TreeItemImage(HWND tree, HTREEITEM item);

/// Where on an item to click, in the tree's client area.
enum class TreeItemPart {
  StateIcon,
  Label,
  RightOfLabel,
  LeftOfIcon,
};

/// Scrolls an item into view and returns the point.
POINT PointOn(HWND tree, HTREEITEM item, TreeItemPart part);
