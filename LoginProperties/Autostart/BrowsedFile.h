#pragma once

#include <string>

// What becomes of the file that the user chooses for an entry.

/// The filter of the file dialog out of a text with "~" between its parts, in the form that the system takes: each part
/// closed by a null character.
std::wstring FileFilter(std::wstring text);

/// The program of the entry. The file that only starts Microsoft Edge gives that.
std::wstring BrowsedProgram(const std::wstring& path);

/// The folder that the file lies in.
std::wstring BrowsedFolder(const std::wstring& path);

/// The name of the entry: that of the file without its extension, as far as it is within the path's first 50
/// characters.
std::wstring BrowsedName(const std::wstring& path);
