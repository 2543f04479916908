#include "LoginProperties/ProfilePage/StateImageTree.h"

#include "LoginProperties/Resources/StateImages.h"
#include "WaylineDll/StringDb.h"

namespace {

UINT StateOfImage(int image) { return INDEXTOSTATEIMAGEMASK(static_cast<UINT>(image)); }

}  // namespace

void StateImageTree::Attach(HWND tree) {
  tree_ = tree;
  constexpr COLORREF kTransparent = RGB(255, 255, 255);
  images_.reset(ImageList_LoadImageW(GetResourceHandle(ModuleId::LoginProperties), MAKEINTRESOURCEW(IDB_STATE_IMAGES),
                                     kStateImageSize, 0, kTransparent, IMAGE_BITMAP, LR_CREATEDIBSECTION));
  TreeView_SetImageList(tree_, images_.get(), TVSIL_STATE);
  TreeView_SetExtendedStyle(tree_, TVS_EX_DOUBLEBUFFER, TVS_EX_DOUBLEBUFFER);
}

HTREEITEM StateImageTree::Add(HTREEITEM parent, Item item) const {
  TVINSERTSTRUCTW insert{};
  insert.hParent = parent;
  insert.hInsertAfter = TVI_LAST;
  insert.item.mask = TVIF_TEXT | TVIF_PARAM | TVIF_STATE | TVIF_CHILDREN;
  insert.item.pszText = item.text.data();
  insert.item.lParam = item.value;
  insert.item.state = StateOfImage(item.image);
  insert.item.stateMask = TVIS_STATEIMAGEMASK;
  insert.item.cChildren = item.isHeading ? 1 : 0;
  return TreeView_InsertItem(tree_, &insert);
}

LPARAM StateImageTree::ValueOf(HTREEITEM item) const {
  TVITEMW data{};
  data.mask = TVIF_PARAM;
  data.hItem = item;
  TreeView_GetItem(tree_, &data);
  return data.lParam;
}

void StateImageTree::SetImage(HTREEITEM item, int image) const {
  TreeView_SetItemState(tree_, item, StateOfImage(image), TVIS_STATEIMAGEMASK);
}

void StateImageTree::Enable(bool enable) const {
  constexpr auto kSystemsColour = static_cast<COLORREF>(-1);
  EnableWindow(tree_, enable);
  TreeView_SetTextColor(tree_, enable ? kSystemsColour : GetSysColor(COLOR_GRAYTEXT));
}
