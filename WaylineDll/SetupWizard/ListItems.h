#pragma once

#include <windows.h>

#include <cstdint>
#include <optional>
#include <string>

// Lists of texts with a number behind each.

void AddListItem(HWND listBox, const std::wstring& text, uint32_t number);

/// Selects the item with this number, or none where there is no such item.
void SelectListItem(HWND listBox, std::optional<uint32_t> number);

/// The number behind the selected item.
std::optional<uint32_t> SelectedListItem(HWND listBox);

// The same of combo boxes.

void AddComboItem(HWND comboBox, const std::wstring& text, uint32_t number);
void SelectComboItem(HWND comboBox, std::optional<uint32_t> number);
std::optional<uint32_t> SelectedComboItem(HWND comboBox);
