#include "LoginProperties/Autostart/BrowsedFile.h"

#include <algorithm>

#include "LoginProperties/ProfilePage/CutText.h"

std::wstring FileFilter(std::wstring text) {
  std::ranges::replace(text, L'~', L'\0');
  return text;
}

std::wstring BrowsedProgram(const std::wstring& path) {
  return path.find(L"launchwinapp.exe") != std::wstring::npos ? L"Microsoft Edge" : path;
}

std::wstring BrowsedFolder(const std::wstring& path) {
  const size_t end = path.rfind(L'\\');
  if (end == std::wstring::npos) return {};
  // "C:" alone is wherever one is on that drive.
  const bool isRoot = end > 0 && path[end - 1] == L':';
  return path.substr(0, isRoot ? end + 1 : end);
}

std::wstring BrowsedName(const std::wstring& path) {
  constexpr size_t kReadCharacters = 50;
  const std::wstring read = CutText(path, kReadCharacters);
  // A point in a folder's name begins no extension. Without a folder the name begins at 0.
  const std::wstring name = read.substr(read.rfind(L'\\') + 1);
  return name.substr(0, name.rfind(L'.'));
}
