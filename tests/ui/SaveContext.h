#pragma once

#include <vector>

#include "LoginProperties/LoginPropertiesContext.h"
#include "WaylineDll/SettingsTables.h"

/// Saves the records of a context in the settings database that is open; what was saved.
std::vector<RecordChange> SaveContext(const LoginPropertiesContext& context);
