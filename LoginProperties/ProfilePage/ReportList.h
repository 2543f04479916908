#pragma once

#include <windows.h>

#include <commctrl.h>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

/// A list view in report style, with single selection of whole rows.
class ReportList {
 public:
  /// Takes a list that is still empty; its window stays the caller's.
  void Attach(HWND list);

  HWND Window() const { return list_; }

  /// Pixels that its columns can take together.
  int Width() const;

  /// Adds a column behind those that there are.
  void AddColumn(const std::wstring& title, int width) const;

  /// Gives the header of a column another width, which is then that of the column.
  void SetHeaderWidth(int column, int width) const;

  /// Adds a row at the end, with the texts of its first columns.
  void AddRow(const std::vector<std::wstring>& texts) const;

  void SetText(size_t row, int column, const std::wstring& text) const;

  /// Enables or disables the list and shows it: not every system greys the rows of a disabled list.
  void Enable(bool enable) const;

  /// Removes all rows.
  void Clear() const;

  /// Selects a row and gives it the list's focus.
  void Select(size_t row) const;

  /// The row that a notification of a list says is selected; nothing for every other notification.
  static std::optional<size_t> SelectedRow(const NMHDR& notification);

 private:
  HWND list_ = nullptr;
};
