#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "Database/Profiles/Preference.h"
#include "LoginProperties/Resources/StateImages.h"

/// What an entry is, and where its label comes from.
enum class EntryKind : uint32_t {
  CheckBox = 1,              // labelled by the string with the number of its id
  RadioOption = 2,           // the same
  CheckBoxWithText = 17,     // labelled by its own text
  RadioOptionWithText = 18,  // the same
};

/// What stands below a heading.
enum class GroupKind : uint32_t {
  CheckBoxes = 4,  // each with a preference of its own
  Choice = 8,      // options of one preference, which has the id of the group
};

struct PreferenceEntry {
  PreferenceId id{};
  EntryKind kind{};
  int32_t state = Preference::kOff;  // or kOn
  std::wstring text{};               // for the kinds with text
};

struct PreferenceGroup {
  PreferenceId id{};  // also the number of the string that is its heading
  GroupKind kind{};
  int headingImage = kNoImage;
  std::vector<PreferenceEntry> entries{};
};

/// All that the page can show, in the order in which it shows it.
using PreferenceTree = std::vector<PreferenceGroup>;

/// The client's preferences with the states that they have before any are loaded. Certificates have a group only where
/// there is one to use.
PreferenceTree MakePreferenceTree(bool hasSavedCertificate);
