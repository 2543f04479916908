#include "Database/SQLite/DatabasePlatform.h"

#include <windows.h>

#include <utility>

#include "NetUtilities/Files/PathData.h"
#include "NetUtilities/Logger/LogOutputHelper.h"
#include "NetUtilities/Module/Handle.h"
#include "NetUtilities/Module/Singleton.h"
#include "NetUtilities/Registry/TraceFlags.h"
#include "NetUtilities/Text/ErrorText.h"

namespace {

std::wstring ExecutablePath() {
  const auto paths = Singleton<PathData>::Get();
  return paths ? paths->GetExecutablePath() : std::wstring();
}

std::wstring UserDataDirectory() {
  const auto paths = Singleton<PathData>::Get();
  return paths ? paths->GetUserDataDirectory() : std::wstring();
}

InstanceMutex CreateInstanceMutex(const std::wstring& name) {
  SetLastError(ERROR_SUCCESS);
  Handle mutex(CreateMutexW(nullptr, FALSE, name.c_str()));
  const bool first = GetLastError() == ERROR_SUCCESS;
  if (!mutex) return {};
  return {std::move(mutex), first};
}

void WriteToDebugger(std::wstring_view message) { LogOutputHelper::GetLogOutput(LogOutput::Debugger)(message); }

}  // namespace

DatabasePlatform databasePlatform = {
    [] { return static_cast<uint32_t>(GetCurrentProcessId()); },
    ExecutablePath,
    UserDataDirectory,
    CreateInstanceMutex,
    [](unsigned bit) { return IsTraceFlagSet(bit); },
    ErrorSuffix,
    WriteToDebugger,
};
