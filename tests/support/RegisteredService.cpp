#include "tests/support/RegisteredService.h"

#include <objbase.h>
#include <tlhelp32.h>

#include <array>
#include <stdexcept>

#include "NetUtilities/Module/ComPointer.h"
#include "NetUtilities/Module/Handle.h"
#include "NetUtilities/Text/IgnoringCase.h"
#include "tests/support/ProgramRun.h"
#include "tests/support/WaitUntil.h"
#include "TraceLogManager/TraceLogManager.h"

namespace {

constexpr wchar_t kProgram[] = L"TraceLogManager.exe";

using ServiceHandle = Owner<SC_HANDLE, CloseServiceHandle>;

bool IsRegistered() {
  std::array<wchar_t, 39> id{};
  StringFromGUID2(CLSID_TraceLogManager, id.data(), static_cast<int>(id.size()));
  const std::wstring key = LR"(Software\Classes\CLSID\)" + std::wstring(id.data()) + L"\\LocalServer32";
  std::array<wchar_t, MAX_PATH> server{};
  DWORD size = sizeof(server);
  RegGetValueW(HKEY_LOCAL_MACHINE, key.c_str(), nullptr, RRF_RT_REG_SZ, nullptr, server.data(), &size);
  return server.data() == L'"' + FindProgram(kProgram) + L'"';
}

// Whether the process runs the program that was built, and not one of that name from elsewhere.
bool RunsBuiltProgram(DWORD processId) {
  const Handle process(OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, processId));
  std::array<wchar_t, MAX_PATH> path{};
  DWORD length = MAX_PATH;
  return process && QueryFullProcessImageNameW(process.get(), 0, path.data(), &length) != FALSE &&
         EqualsNoCaseAscii(path.data(), FindProgram(kProgram));
}

// Wine's service for COM goes on sending clients to a server that was killed. COM starts it again when it needs it, and
// it has forgotten the server then; see Reconnect. Windows knows by itself, and does not allow this.
void StopComService() {
  const ServiceHandle manager(OpenSCManagerW(nullptr, nullptr, SC_MANAGER_CONNECT));
  const ServiceHandle service(OpenServiceW(manager.get(), L"RpcSs", SERVICE_STOP | SERVICE_QUERY_STATUS));
  SERVICE_STATUS status{};
  if (!service || ControlService(service.get(), SERVICE_CONTROL_STOP, &status) == FALSE) return;
  WaitUntil(
      [&] { return QueryServiceStatus(service.get(), &status) == FALSE || status.dwCurrentState == SERVICE_STOPPED; });
}

bool CanActivate() {
  const HRESULT entered = CoInitializeEx(nullptr, COINIT_MULTITHREADED);
  void* object = nullptr;
  const HRESULT result = CoCreateInstance(CLSID_TraceLogManager, nullptr, CLSCTX_LOCAL_SERVER, IID_IUnknown, &object);
  ComPointer<IUnknown>(static_cast<IUnknown*>(object)).reset();
  if (SUCCEEDED(entered)) CoUninitialize();
  return SUCCEEDED(result);
}

// A process that has used Wine's service for COM has a number there, which the service does not know after a new start.
// It refuses the process until it has given that number to somebody else. Numbers count from 1, and each attempt to
// reach a server starts one, which gets the next. So this must be done before others come.
void Reconnect() {
  if (IsRegistered() && !WaitUntil(CanActivate)) throw std::runtime_error("The logging service cannot be reached.");
}

}  // namespace

RegisteredService::RegisteredService() : isOwn_(!IsRegistered()) {
  if (isOwn_ && RunProgram(kProgram, {L"--register"}).exitCode != 0) {
    throw std::runtime_error("The logging service cannot be registered.");
  }
}

RegisteredService::~RegisteredService() {
  if (isOwn_) RunProgram(kProgram, {L"--unregister"});
}

std::vector<DWORD> RegisteredService::Servers() {
  std::vector<DWORD> servers;
  const Handle snapshot(CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
  PROCESSENTRY32W entry{};
  entry.dwSize = sizeof(entry);
  for (BOOL more = Process32FirstW(snapshot.get(), &entry); more != FALSE;
       more = Process32NextW(snapshot.get(), &entry)) {
    if (EqualsNoCaseAscii(entry.szExeFile, kProgram) && RunsBuiltProgram(entry.th32ProcessID)) {
      servers.push_back(entry.th32ProcessID);
    }
  }
  return servers;
}

bool RegisteredService::WaitForEndOfServers() {
  return WaitUntil([] { return Servers().empty(); });
}

void RegisteredService::KillServers() {
  for (const DWORD server : Servers()) {
    const Handle process(OpenProcess(PROCESS_TERMINATE | SYNCHRONIZE, FALSE, server));
    if (!process) continue;
    TerminateProcess(process.get(), 0);
    WaitForSingleObject(process.get(), INFINITE);
  }
  StopComService();
  Reconnect();
}
