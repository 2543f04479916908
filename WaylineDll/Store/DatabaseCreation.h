#pragma once

#include <string>

#include "WaylineDll/SettingsTables.h"

/// Creates a settings database with sample data. The file appears complete or not at all, also when the program is
/// interrupted; one that another program has made meanwhile stays.
Failure CreateDatabaseFile(const std::wstring& file);
