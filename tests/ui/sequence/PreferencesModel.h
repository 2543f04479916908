#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <utility>
#include <vector>

#include "LoginProperties/Preferences/PreferenceTree.h"
#include "tests/ui/sequence/StoredSettings.h"

/// Images of the preference tree's entries, by their ids.
using Images = std::vector<std::pair<int32_t, int>>;

/// The preferences of the profiles, and the tree that shows those of one.
class PreferencesModel {
 public:
  /// The tree is filled anew with the preferences of a profile. They are read from the database when they are needed
  /// for the first time, along the links from `first` on.
  void Show(uint32_t profile, uint32_t first, bool own, const StoredSettings& stored);

  void Toggle(int32_t id);
  Images ExpectedImages() const;

  /// How many preferences are a profile's own: stored, toggled or copied.
  size_t CountOwn(uint32_t profile, uint32_t first, const StoredSettings& stored);

  /// A new profile gets copies of those that are another one's own, and inherits the others from `first` on.
  void Copy(uint32_t source, uint32_t profile, uint32_t first, const StoredSettings& stored);

  /// Whose preferences a profile stores, and under which id, and whether it overrides the defaults, and did.
  struct Owner {
    uint32_t profile;
    uint32_t storedId;
    bool overrides;
    bool overrodeBefore;
  };

  /// Puts what was toggled into the rows of a profile. One that overrides the defaults makes the whole list its own
  /// that the user saw. Whether there was anything to put; nowhere without rows.
  bool Save(const Owner& owner, PreferenceRows* rows) const;

 private:
  struct List {
    PreferenceRows loaded;  // as they were needed first
    PreferenceRows now;
    std::set<int32_t> own;      // those of them that the profile stored itself
    std::set<int32_t> toggled;  // also if they are as before
    std::set<int32_t> copied;

    std::set<int32_t> AllOwn() const;
  };

  List& Read(uint32_t profile, uint32_t first, const StoredSettings& stored);
  const PreferenceGroup& GroupOf(int32_t id) const;

  const PreferenceTree tree_ = MakePreferenceTree(false);
  std::map<uint32_t, List> lists_;
  uint32_t listed_ = 0;  // the profile whose preferences the tree shows
  std::map<int32_t, int32_t> shown_;
};
