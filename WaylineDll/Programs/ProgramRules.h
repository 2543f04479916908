#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "WaylineDll/Program.h"

/// A text without white space and, behind that, quotes around it.
std::wstring WithoutQuotes(std::wstring_view text);

/// The program whose icon stands for an installed product, from a text such as "C:\Folder\file.exe,0"; empty when the
/// icon is that of something else.
std::wstring ProgramOfIcon(std::wstring_view icon);

/// What a file is started as: what is not run itself is a document, which is opened.
Program::Kind KindOfFile(std::wstring_view path);

/// Whether a text is the address of a web page, as links have it.
bool IsWebAddress(std::wstring_view text);

/// The part of a path before its last backslash; the backslash stays behind a drive. Empty when there is none.
std::wstring FolderOfFile(std::wstring_view path);

/// Each program once, in the order of the keys of their names, with their ids. Those with the same path, in whatever
/// case, and the same parameters are one program: the first one found names it.
std::vector<Program> ProgramsToOffer(std::vector<Program> found,
                                     const std::function<std::string(const std::wstring& name)>& sortKey);
