#pragma once

#include <windows.h>

#include <commctrl.h>

/// Sees what the user does in the page's tree before the tree does, and asks the page to toggle an item where that is
/// meant. It only posts a message: the toggling is done when the tree has dealt with the input. The tree is as it was
/// when this object goes, or with the tree's window.
class TreeInputFilter {
 public:
  /// What the page gets: the item (HTREEITEM, null when nothing is selected) and the tree's window.
  static constexpr UINT kToggleItem = WM_USER + 301;

  TreeInputFilter() = default;
  ~TreeInputFilter();
  TreeInputFilter(const TreeInputFilter&) = delete;
  TreeInputFilter& operator=(const TreeInputFilter&) = delete;

  /// Filters the input of `tree` on `page`; both stay the caller's. Once per window of the tree.
  void Attach(HWND tree, HWND page);

  /// Whether items can be toggled; at first they cannot. Double clicks never reach the tree, so that they do not open
  /// or close groups.
  void SetEditable(bool editable) { editable_ = editable; }

 private:
  static LRESULT CALLBACK Procedure(HWND tree, UINT message, WPARAM wordParameter, LPARAM longParameter, UINT_PTR id,
                                    DWORD_PTR filter);
  void AskToToggle(HTREEITEM item) const;

  HWND tree_ = nullptr;
  HWND page_ = nullptr;
  bool editable_ = false;
};
