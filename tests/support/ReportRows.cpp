#include "tests/support/ReportRows.h"

#include <commctrl.h>

#include <cwchar>

namespace {

constexpr int kLongestText = 2000;

int CountColumns(HWND list) { return Header_GetItemCount(ListView_GetHeader(list)); }

std::wstring TextOf(HWND list, int row, int column) {
  std::wstring text(kLongestText, L'\0');
  ListView_GetItemText(list, row, column, text.data(), kLongestText);
  text.resize(std::wcslen(text.c_str()));
  return text;
}

}  // namespace

std::vector<std::vector<std::wstring>> ReportRows(HWND list) {
  std::vector<std::vector<std::wstring>> rows(static_cast<size_t>(ListView_GetItemCount(list)));
  for (size_t row = 0; row < rows.size(); ++row) {
    for (int column = 0; column < CountColumns(list); ++column) {
      rows[row].push_back(TextOf(list, static_cast<int>(row), column));
    }
  }
  return rows;
}

std::vector<std::wstring> ReportColumns(HWND list) {
  std::vector<std::wstring> titles;
  for (int column = 0; column < CountColumns(list); ++column) {
    wchar_t text[64] = {};
    LVCOLUMNW data{};
    data.mask = LVCF_TEXT;
    data.pszText = text;
    data.cchTextMax = ARRAYSIZE(text);
    ListView_GetColumn(list, column, &data);
    titles.emplace_back(text);
  }
  return titles;
}
