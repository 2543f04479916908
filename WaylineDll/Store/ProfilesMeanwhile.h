#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "WaylineDll/SettingsTables.h"
#include "WaylineDll/Store/SavePlan.h"

/// The profiles that are stored, and were.
struct StoredProfiles {
  std::map<uint32_t, uint32_t> links;  // of all profiles, by their ids; 0 for none
  uint32_t lastRemoved = 0;            // the highest id of one that was removed
  uint32_t connected = 0;              // the one that the client holds a connection with; 0 for none
};

/// What a profile is called, by its id.
using NameOfProfile = std::function<std::wstring(uint32_t id)>;

/// Fits a plan to the profiles that other programs have made and removed since it began: a new profile whose id is
/// taken, or was until its profile was removed, moves to a free one with its rows; what belongs to a profile that is
/// gone is left out, and so are a new profile whose defaults are gone and the removal of one that is connected or that
/// others are linked to. For each of these `lost` gets a sentence. Fails, and leaves the plan half done, when no id is
/// free.
Failure FitToStoredProfiles(std::vector<RowChange>& plan, const StoredProfiles& stored, const NameOfProfile& nameOf,
                            std::vector<std::wstring>& lost);
