#pragma once

#include <string>

/// Whether a file or folder is there, as far as that can be said at once: what lies on another machine counts as being
/// there.
bool IsFileThere(const std::wstring& path);
