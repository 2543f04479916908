#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "Database/Profiles/Preference.h"
#include "Database/Profiles/Profile.h"
#include "WaylineDll/AutoStartItem.h"
#include "WaylineDll/ConfigSetting.h"

/// Records of the settings database in memory. Null records are allowed and stand for nothing.
struct SettingsTables {
  ProfileTable profiles;
  PreferenceTable preferences;
  AutoStartTable autoStartItems;
  ConfigTable manualConfigs;
  ConfigTable autoConfigs;
};

/// Which of the tables a record belongs to.
enum class RecordKind {
  Profile,
  Preference,
  AutoStartItem,
  ManualConfig,
  AutoConfig,
};

/// A record whose changes were written.
struct RecordChange {
  RecordKind kind;
  uint32_t id;  // its key in its table; of a new profile whose id was taken meanwhile the one that it has now
  ChangeState state;

  bool operator==(const RecordChange&) const = default;
};

/// What came of saving.
struct SaveReport {
  std::vector<RecordChange> changes;  // without what overriding stores along with them
  std::vector<std::wstring> lost;     // what could not be saved although the rest was: a sentence for the user each
};

/// What went wrong, as one English sentence for the user; nothing when all went well.
using Failure = std::optional<std::wstring>;
