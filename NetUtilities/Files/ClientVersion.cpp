#include "NetUtilities/Files/ClientVersion.h"

#include <filesystem>

#include "NetUtilities/Files/FileVersion.h"
#include "NetUtilities/Files/PathData.h"
#include "NetUtilities/Module/Singleton.h"

std::wstring GetClientVersion() {
  const auto paths = Singleton<PathData>::Get();
  const std::filesystem::path folder = paths ? paths->GetInstallPath() : std::wstring();
  std::wstring version;
  // Without a folder the name alone would mean a file in the current directory, whoever put it there.
  if (!folder.empty()) GetFileVersionString((folder / kClientFileName).wstring(), L"ProductVersion", version);
  return version;
}
