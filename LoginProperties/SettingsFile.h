#pragma once

#include <string>

/// Full path of the settings database that the loaded client library has open; empty when it has none open, is not
/// loaded, or does not tell.
std::wstring SettingsFileOfClient();
