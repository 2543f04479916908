#pragma once

#include <windows.h>

#include <shtypes.h>

#include <string>

/// Looks up a known folder of Windows for the user that the calling thread acts as; `out` is empty on failure, which is
/// not logged. `flags` are those of SHGetKnownFolderPath.
HRESULT LookUpKnownFolder(const KNOWNFOLDERID& folder, DWORD flags, std::wstring& out);

/// The same; empty text on failure, after logging `failure`.
std::wstring KnownFolder(const KNOWNFOLDERID& folder, DWORD flags, const wchar_t* failure);
