#pragma once

#include <windows.h>

#include <memory>
#include <vector>

#include "Database/Profiles/Profile.h"
#include "LoginProperties/ProfilePage/ProfileSelector.h"

/// A page's profile selector: a combo box whose items are the profiles that can be selected, sorted by name, with their
/// ids as values. Profiles of one name stand in ascending id.
class ProfileCombo {
 public:
  /// Takes a combo box that is still empty; its window stays the caller's.
  void Attach(HWND combo);

  /// Lists the profiles of the table and selects the current one, by its id; none when that is null or not listed.
  /// Items that are right stay as they are: with 10,000 profiles, filling the list is what takes the time.
  void Show(const ProfileTable& profiles, const std::shared_ptr<Profile>& current);

 private:
  bool Lists(const std::vector<SelectableProfile>& profiles) const;
  void List(const std::vector<SelectableProfile>& profiles);
  void RemoveAllBut(const std::vector<SelectableProfile>& profiles);
  void Insert(size_t place, const SelectableProfile& profile) const;
  int PlaceOf(uint32_t id) const;

  HWND combo_ = nullptr;
  std::vector<SelectableProfile> items_;
  std::vector<size_t> order_;  // where each of them stands among the profiles in ascending id
};
