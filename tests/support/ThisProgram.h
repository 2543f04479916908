#pragma once

#include <windows.h>

#include <filesystem>
#include <string>

/// The file of the test program itself.
inline std::filesystem::path ThisProgram() {
  wchar_t file[MAX_PATH];
  const DWORD length = GetModuleFileNameW(nullptr, file, MAX_PATH);
  return std::wstring(file, length);
}
