#include "Wayline/LogServiceSetup.h"

#include <windows.h>

#include <objbase.h>

#include <array>
#include <filesystem>
#include <string>

#include "NetUtilities/Files/PathData.h"
#include "NetUtilities/Module/Handle.h"
#include "NetUtilities/Module/Singleton.h"
#include "NetUtilities/Registry/RegistryKey.h"
#include "NetUtilities/Text/Format.h"
#include "TraceLogManager/TraceLogManager.h"

namespace {

// The program that COM starts for the service; empty when there is none.
std::wstring RegisteredProgram() {
  std::array<wchar_t, 39> classId{};
  StringFromGUID2(CLSID_TraceLogManager, classId.data(), static_cast<int>(classId.size()));
  RegistryKey key;
  std::wstring command;
  if (key.Open(HKEY_CLASSES_ROOT, Format(L"CLSID\\{}\\LocalServer32", classId.data()), KEY_READ) == ERROR_SUCCESS) {
    key.ReadString(L"", command, L"");
  }
  if (command.starts_with(L'"')) return command.substr(1, command.find(L'"', 1) - 1);
  return command;
}

// Runs the service's program and waits for it. False when it could not be started or did not succeed.
bool Run(const std::filesystem::path& program, const std::wstring& arguments) {
  STARTUPINFOW startup{};
  startup.cb = sizeof(startup);
  PROCESS_INFORMATION information{};
  std::wstring command = Format(L"\"{}\" {}", program.wstring(), arguments);
  if (CreateProcessW(program.c_str(), command.data(), nullptr, nullptr, FALSE, CREATE_NO_WINDOW, nullptr, nullptr,
                     &startup, &information) == FALSE) {
    return false;
  }
  const Handle process(information.hProcess);
  const Handle thread(information.hThread);
  DWORD code = 1;
  WaitForSingleObject(process.get(), INFINITE);
  return GetExitCodeProcess(process.get(), &code) != FALSE && code == 0;
}

}  // namespace

Failure SetUpLogService() {
  std::error_code ignored;
  if (std::filesystem::exists(RegisteredProgram(), ignored)) return {};
  const std::filesystem::path own = Singleton<PathData>::Get()->GetExecutablePath();
  const std::filesystem::path service = own.parent_path() / L"TraceLogManager.exe";
  if (Run(service, L"--register") || Run(service, L"--register --user")) return {};
  return Format(L"The logging service cannot be registered: \"{}\" is missing or failed.", service.wstring());
}
