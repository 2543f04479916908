#pragma once

#include <windows.h>

#include <commdlg.h>
#include <shellapi.h>

#include "NetUtilities/Module/ComPointer.h"

/// The platform's functions behind choosing and launching programs. Tests put others in their place.
struct LaunchPlatform {
  decltype(&GetOpenFileNameW) openFileName = GetOpenFileNameW;
  decltype(&CommDlgExtendedError) openFileError = CommDlgExtendedError;
  decltype(&CoCreateInstance) createInstance = CoCreateInstance;
  decltype(&VerifyVersionInfoW) verifyVersion = VerifyVersionInfoW;
  decltype(&ShellExecuteExW) shellExecute = ShellExecuteExW;
  decltype(&GetSystemTimeAsFileTime) systemTime = GetSystemTimeAsFileTime;
};

extern LaunchPlatform launchPlatform;

/// An object of a COM class; null when it cannot be made.
template <typename Class, typename Interface>
ComPointer<Interface> CreateObject() {
  void* object = nullptr;
  const HRESULT result =
      launchPlatform.createInstance(__uuidof(Class), nullptr, CLSCTX_ALL, __uuidof(Interface), &object);
  return ComPointer<Interface>(SUCCEEDED(result) ? static_cast<Interface*>(object) : nullptr);
}
