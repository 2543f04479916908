#include "LoginProperties/Autostart/LaunchApp.h"

#include <shobjidl.h>

#include "LoginProperties/Autostart/LaunchPlatform.h"
#include "NetUtilities/Module/ComApartment.h"

LaunchPlatform launchPlatform;

namespace {

constexpr wchar_t kEdgeApplication[] = L"Microsoft.MicrosoftEdge_8wekyb3d8bbwe!MicrosoftEdge";

bool ActivateEdge(const wchar_t* arguments) {
  const auto manager = CreateObject<ApplicationActivationManager, IApplicationActivationManager>();
  DWORD process = 0;
  return manager && SUCCEEDED(manager->ActivateApplication(kEdgeApplication, arguments, AO_NONE, &process));
}

bool Open(const wchar_t* file, int showCommand, const wchar_t* parameters, const wchar_t* directory) {
  SHELLEXECUTEINFOW info{};
  info.cbSize = sizeof(info);
  // The caller learns how it went, whatever the shell needs for it, and the user is told nothing by the shell.
  info.fMask = SEE_MASK_NOASYNC | SEE_MASK_FLAG_NO_UI;
  info.lpVerb = L"open";
  info.lpFile = file;
  info.lpParameters = parameters;
  info.lpDirectory = directory;
  info.nShow = showCommand;
  return launchPlatform.shellExecute(&info) != FALSE;
}

}  // namespace

bool LaunchApp(const RegAppItem& item, int showCommand, const wchar_t* parameters, const wchar_t* directory,
               FILETIME* launchTime) {
  const ComApartment apartment;  // also for the shell, whose extensions need one
  if (launchTime != nullptr) launchPlatform.systemTime(launchTime);
  if (parameters == nullptr) parameters = L"";
  if (!item.urlTemplate.empty()) return ActivateEdge(parameters);
  return Open(item.command.c_str(), showCommand, parameters, directory);
}
