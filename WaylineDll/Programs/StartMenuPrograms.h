#pragma once

#include <vector>

#include "WaylineDll/Program.h"

/// What the links in the start menu lead to: this user's, then those of all users. A link that leads nowhere is left
/// out, which is logged. The calling thread must be a COM apartment.
std::vector<Program> StartMenuPrograms();
