#pragma once

#include <vector>

#include "WaylineDll/Program.h"

/// The programs that are registered for all users and for this one: those of products that can be uninstalled, then
/// those that are started by their names alone. What names no program that is there is left out, which is logged.
std::vector<Program> RegisteredPrograms();
