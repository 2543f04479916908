#include "LoginProperties/ProfilePage/ProfileCombo.h"

#include <windowsx.h>

#include <algorithm>
#include <set>
#include <string>
#include <utility>

#include "LoginProperties/ProfilePage/FrozenDrawing.h"
#include "LoginProperties/ProfilePage/SortedListOrder.h"

void ProfileCombo::Attach(HWND combo) {
  combo_ = combo;
  items_.clear();
  order_.clear();
}

void ProfileCombo::Show(const ProfileTable& profiles, const std::shared_ptr<Profile>& current) {
  const std::vector<SelectableProfile> selectable = SelectableProfiles(profiles);
  if (!Lists(selectable)) List(selectable);
  const int place = current ? PlaceOf(current->GetProfileId()) : CB_ERR;
  if (ComboBox_GetCurSel(combo_) != place) ComboBox_SetCurSel(combo_, place);
}

bool ProfileCombo::Lists(const std::vector<SelectableProfile>& profiles) const {
  return profiles.size() == items_.size() &&
         std::ranges::equal(items_, order_,
                            [&](const SelectableProfile& item, size_t index) { return item == profiles[index]; });
}

void ProfileCombo::List(const std::vector<SelectableProfile>& profiles) {
  std::vector<std::wstring> names;
  names.reserve(profiles.size());
  for (const SelectableProfile& profile : profiles) names.push_back(profile.name);
  order_ = SortedListOrder(names, static_cast<LCID>(SendMessageW(combo_, CB_GETLOCALE, 0, 0)));

  const FrozenDrawing frozen(combo_);
  // What it shows may be what is removed.
  ComboBox_SetCurSel(combo_, CB_ERR);
  RemoveAllBut(profiles);
  // Those that are left stand in the order of the new items, so that these only fill the gaps.
  const std::vector<SelectableProfile> left = std::exchange(items_, {});
  auto next = left.begin();
  for (const size_t index : order_) {
    if (next != left.end() && *next == profiles[index]) {
      ++next;
    } else {
      Insert(items_.size(), profiles[index]);
    }
    items_.push_back(profiles[index]);
  }
}

void ProfileCombo::RemoveAllBut(const std::vector<SelectableProfile>& profiles) {
  if (items_.empty()) return;
  const std::set<SelectableProfile> wanted(profiles.begin(), profiles.end());
  for (size_t place = items_.size(); place-- > 0;) {
    if (wanted.contains(items_[place])) continue;
    ComboBox_DeleteString(combo_, static_cast<int>(place));
    items_.erase(items_.begin() + static_cast<ptrdiff_t>(place));
  }
}

// Where it belongs: adding it would have the combo box find that out, with a dozen comparisons.
void ProfileCombo::Insert(size_t place, const SelectableProfile& profile) const {
  const int index = ComboBox_InsertString(combo_, static_cast<int>(place), profile.name.c_str());
  ComboBox_SetItemData(combo_, index, profile.id);
}

int ProfileCombo::PlaceOf(uint32_t id) const {
  const auto found = std::ranges::find(items_, id, &SelectableProfile::id);
  return found != items_.end() ? static_cast<int>(found - items_.begin()) : CB_ERR;
}
