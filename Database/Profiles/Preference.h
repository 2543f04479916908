#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <span>

#include "Database/Profiles/PreferenceId.h"
#include "Database/SQLite/SQLRecord.h"

/// The columns of a preference, in the order of every query.
struct PreferenceFields {
  PreferenceId preferenceId{};
  uint32_t profileId = 0;      // the profile that owns the row
  int32_t state = 0;           // Preference::kOff or kOn; for a choice the PreferenceId of the chosen option
  bool visible = false;        // whether the preference is offered
  bool ipsecRequired = false;  // whether it only applies to IPSec connections
};

/// One switch or choice of the client for one login profile. Its value is stored in the column "State";
/// GetState and SetState of the base are its change state.
class Preference : public SQLRecord {
 public:
  static constexpr int32_t kOff = 1;
  static constexpr int32_t kOn = 2;

  explicit Preference(const PreferenceFields& fields = {}) : fields_(fields) {}

  std::span<const ColumnBinding> GetBindings() const override;

  const PreferenceFields& Fields() const { return fields_; }

  PreferenceId GetPreferenceId() const { return fields_.preferenceId; }

  /// Gives the preference to another profile and marks it changed.
  void SetProfileId(uint32_t profileId);

  int32_t GetValue() const { return fields_.state; }

  /// Stores the value and marks the preference changed.
  void SetValue(int32_t value);

 private:
  PreferenceFields fields_;
};

/// Preferences by their id.
using PreferenceTable = std::map<PreferenceId, std::shared_ptr<Preference>>;
