#pragma once

#include "WaylineDll/SettingsTables.h"

/// Registers the logging service that lies beside this program, unless a service is registered whose program exists:
/// for all users if that is allowed, otherwise for this one. Without a service no process of the client can log, and
/// the first message would end it.
Failure SetUpLogService();
