#include "WaylineDll/Programs/FileThere.h"

#include <windows.h>

#include <shlwapi.h>

bool IsFileThere(const std::wstring& path) {
  return PathIsNetworkPathW(path.c_str()) != FALSE || GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}
