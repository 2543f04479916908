#pragma once

#include <vector>

#include "Database/SQLite/SQLite.h"
#include "WaylineDll/Store/ProfilesMeanwhile.h"
#include "WaylineDll/Store/SavePlan.h"

/// Writes a plan in one transaction, all of it or nothing, and tells in `report` what came of it. `sqlite` has the
/// database open.
Failure WritePlan(SQLite& sqlite, std::vector<RowChange> plan, const NameOfProfile& nameOf, SaveReport& report);
