#pragma once

#include <windows.h>

#include <string>

#include "TraceLogManager/ServiceOptions.h"

// What COM must know of the service: its class with the program that serves it, its interface, and the type library by
// which calls are carried between processes. Both give a Win32 error code.

/// Registers the service with `program`, the full path of this executable, in place of any other.
LONG RegisterService(RegistrationScope scope, const std::wstring& program);

/// Removes all that RegisterService wrote. A service that is not registered stays so.
LONG UnregisterService(RegistrationScope scope);
