#include "WaylineDll/Programs/FileCheck.h"

#include <windows.h>

bool FileCheck::IsThere(const std::wstring& path) {
  return IsRemote(path) || GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

bool FileCheck::IsRemote(const std::wstring& path) {
  if (path.starts_with(LR"(\\)")) return true;
  if (path.size() < 2 || path[1] != L':') return false;
  const auto [drive, isNew] = remoteDrives_.try_emplace(path[0], false);
  if (isNew) drive->second = GetDriveTypeW((path.substr(0, 2) + L'\\').c_str()) == DRIVE_REMOTE;
  return drive->second;
}
