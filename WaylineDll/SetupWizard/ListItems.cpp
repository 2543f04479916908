#include "WaylineDll/SetupWizard/ListItems.h"

#include <windowsx.h>

void AddListItem(HWND listBox, const std::wstring& text, uint32_t number) {
  ListBox_SetItemData(listBox, ListBox_AddString(listBox, text.c_str()), number);
}

void SelectListItem(HWND listBox, std::optional<uint32_t> number) {
  int selected = -1;
  for (int index = 0; number && index < ListBox_GetCount(listBox); ++index) {
    if (static_cast<uint32_t>(ListBox_GetItemData(listBox, index)) == *number) selected = index;
  }
  ListBox_SetCurSel(listBox, selected);
}

std::optional<uint32_t> SelectedListItem(HWND listBox) {
  const int selected = ListBox_GetCurSel(listBox);
  if (selected == LB_ERR) return std::nullopt;
  return static_cast<uint32_t>(ListBox_GetItemData(listBox, selected));
}

void AddComboItem(HWND comboBox, const std::wstring& text, uint32_t number) {
  ComboBox_SetItemData(comboBox, ComboBox_AddString(comboBox, text.c_str()), number);
}

void SelectComboItem(HWND comboBox, std::optional<uint32_t> number) {
  int selected = -1;
  for (int index = 0; number && index < ComboBox_GetCount(comboBox); ++index) {
    if (static_cast<uint32_t>(ComboBox_GetItemData(comboBox, index)) == *number) selected = index;
  }
  ComboBox_SetCurSel(comboBox, selected);
}

std::optional<uint32_t> SelectedComboItem(HWND comboBox) {
  const int selected = ComboBox_GetCurSel(comboBox);
  if (selected == CB_ERR) return std::nullopt;
  return static_cast<uint32_t>(ComboBox_GetItemData(comboBox, selected));
}
