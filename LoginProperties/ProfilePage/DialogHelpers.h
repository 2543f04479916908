#pragma once

#include <windows.h>

#include <cstddef>
#include <string>

// One-line operations on a page's control with this id; nothing happens when the page has none.

void EnableControl(HWND page, int id, bool enable);
void HideControl(HWND page, int id);
void ShowControl(HWND page, int id);
void CheckControl(HWND page, int id, bool check);

/// Whether a check box is checked or in its third state.
bool IsControlChecked(HWND page, int id);

/// The text of a control.
std::wstring ControlText(HWND page, int id);

/// The same, at most its first `longest` characters and no half one.
std::wstring ControlText(HWND page, int id, size_t longest);

/// The text with this number of the module's own string table.
std::wstring OwnString(unsigned id);

/// Empties a combo box and fills it with the items, separated by "~", of string `stringId` of this module.
void FillComboFromString(HWND combo, unsigned stringId);

/// Hides a control, sets its text and shows it again, so that a static control repaints its whole area. Does nothing
/// when `page` is null.
void SetControlTextHidden(HWND page, int id, const std::wstring& text);

/// Enables or disables every control that follows the "Override defaults" box in the page's tab order.
void EnableControlsAfterOverride(HWND page, bool enable);

/// Takes the question mark out of a sheet's title bar.
void RemoveContextHelpButton(HWND sheet);
