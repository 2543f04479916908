#pragma once

#include <windows.h>

#include <string>
#include <vector>

/// Texts of the rows of a list in report style, column by column. The list is one of this process.
std::vector<std::vector<std::wstring>> ReportRows(HWND list);

/// Titles of its columns.
std::vector<std::wstring> ReportColumns(HWND list);
