#pragma once

#include <string>

/// The LocalAppData folder of the user at the machine's console, looked up on the calling thread in that user's name;
/// empty when nobody is there or the user cannot be impersonated, which needs the rights of the system account.
/// Failures are logged.
std::wstring ConsoleUserLocalAppData();
