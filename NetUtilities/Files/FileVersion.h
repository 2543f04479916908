#pragma once

#include <string>

/// Reads a text of a file's version resource, such as "ProductVersion", in the first language that the resource names
/// as one of its translations. Returns non-zero on success; otherwise `out` is left as it is. Nothing is logged. A
/// 32-bit process sees the real System folder, not the one for such processes.
int GetFileVersionString(const std::wstring& path, const std::wstring& name, std::wstring& out);
