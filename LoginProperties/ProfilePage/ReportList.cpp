#include "LoginProperties/ProfilePage/ReportList.h"

void ReportList::Attach(HWND list) {
  list_ = list;
  ListView_SetExtendedListViewStyleEx(list_, LVS_EX_FULLROWSELECT, LVS_EX_FULLROWSELECT);
}

int ReportList::Width() const {
  RECT area{};
  GetClientRect(list_, &area);
  return area.right;
}

void ReportList::AddColumn(const std::wstring& title, int width) const {
  LVCOLUMNW column{};
  column.mask = LVCF_TEXT | LVCF_WIDTH;
  column.pszText = const_cast<wchar_t*>(title.c_str());
  column.cx = width;
  ListView_InsertColumn(list_, Header_GetItemCount(ListView_GetHeader(list_)), &column);
}

void ReportList::SetHeaderWidth(int column, int width) const {
  HDITEMW item{};
  item.mask = HDI_WIDTH;
  item.cxy = width;
  Header_SetItem(ListView_GetHeader(list_), column, &item);
}

void ReportList::AddRow(const std::vector<std::wstring>& texts) const {
  LVITEMW item{};
  item.iItem = ListView_GetItemCount(list_);
  ListView_InsertItem(list_, &item);
  for (size_t column = 0; column < texts.size(); ++column) {
    SetText(static_cast<size_t>(item.iItem), static_cast<int>(column), texts[column]);
  }
}

void ReportList::SetText(size_t row, int column, const std::wstring& text) const {
  ListView_SetItemText(list_, static_cast<int>(row), column, const_cast<wchar_t*>(text.c_str()));
}

void ReportList::Enable(bool enable) const {
  EnableWindow(list_, enable);
  ListView_SetTextColor(list_, GetSysColor(enable ? COLOR_WINDOWTEXT : COLOR_GRAYTEXT));
}

void ReportList::Clear() const { ListView_DeleteAllItems(list_); }

void ReportList::Select(size_t row) const {
  constexpr UINT kChosen = LVIS_SELECTED | LVIS_FOCUSED;
  ListView_SetItemState(list_, static_cast<int>(row), kChosen, kChosen);
}

std::optional<size_t> ReportList::SelectedRow(const NMHDR& notification) {
  if (notification.code != static_cast<UINT>(LVN_ITEMCHANGED)) return std::nullopt;
  const auto& change = reinterpret_cast<const NMLISTVIEW&>(notification);
  if ((change.uNewState & LVIS_SELECTED) == 0 || change.iItem < 0) return std::nullopt;
  return static_cast<size_t>(change.iItem);
}
