#include "LoginProperties/Preferences/TreeInputFilter.h"

#include <windowsx.h>

namespace {

constexpr UINT_PTR kSubclassId = 1;

// The item whose icon, label or state icon is at a point; null when there is none.
HTREEITEM ItemAt(HWND tree, POINT point) {
  TVHITTESTINFO hit{};
  hit.pt = point;
  const HTREEITEM item = TreeView_HitTest(tree, &hit);
  return (hit.flags & TVHT_ONITEM) != 0 ? item : nullptr;
}

}  // namespace

TreeInputFilter::~TreeInputFilter() {
  if (tree_ != nullptr) RemoveWindowSubclass(tree_, Procedure, kSubclassId);
}

void TreeInputFilter::Attach(HWND tree, HWND page) {
  tree_ = tree;
  page_ = page;
  SetWindowSubclass(tree, Procedure, kSubclassId, reinterpret_cast<DWORD_PTR>(this));
}

LRESULT CALLBACK TreeInputFilter::Procedure(HWND tree, UINT message, WPARAM wordParameter, LPARAM longParameter,
                                            UINT_PTR id, DWORD_PTR filter) {
  auto& self = *reinterpret_cast<TreeInputFilter*>(filter);
  switch (message) {
    case WM_CHAR:
      if (wordParameter == L' ' && self.editable_) self.AskToToggle(TreeView_GetSelection(tree));
      break;
    case WM_LBUTTONDOWN:
      if (!self.editable_) break;
      if (const HTREEITEM item = ItemAt(tree, {GET_X_LPARAM(longParameter), GET_Y_LPARAM(longParameter)})) {
        self.AskToToggle(item);
      }
      break;
    case WM_LBUTTONDBLCLK:
      return 0;
    case WM_NCDESTROY:
      RemoveWindowSubclass(tree, Procedure, id);
      self.tree_ = nullptr;
      break;
    default:
      break;
  }
  return DefSubclassProc(tree, message, wordParameter, longParameter);
}

void TreeInputFilter::AskToToggle(HTREEITEM item) const {
  PostMessageW(page_, kToggleItem, reinterpret_cast<WPARAM>(item), reinterpret_cast<LPARAM>(tree_));
}
