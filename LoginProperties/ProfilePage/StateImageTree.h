#pragma once

#include <windows.h>

#include <commctrl.h>

#include <string>

#include "NetUtilities/Module/Owner.h"

/// A page's tree whose items have state images (Resources/StateImages.h).
class StateImageTree {
 public:
  /// One item: `value` is the page's own.
  struct Item {
    std::wstring text;
    LPARAM value = 0;
    int image = 0;
    bool isHeading = false;  // to have items below it
  };

  /// Shows the images in `tree`, whose window stays the caller's. Once per window of the tree.
  void Attach(HWND tree);

  HWND Window() const { return tree_; }

  /// Adds an item as the last one below `parent`, which is TVI_ROOT for the outermost.
  HTREEITEM Add(HTREEITEM parent, Item item) const;

  LPARAM ValueOf(HTREEITEM item) const;

  void SetImage(HTREEITEM item, int image) const;

  /// Enables or disables the tree and shows it: not every system greys the items of a disabled tree.
  void Enable(bool enable) const;

 private:
  HWND tree_ = nullptr;
  Owner<HIMAGELIST, ImageList_Destroy> images_;
};
