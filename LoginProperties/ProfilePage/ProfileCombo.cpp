#include "LoginProperties/ProfilePage/ProfileCombo.h"

#include <windowsx.h>

#include <algorithm>
#include <string>
#include <utility>

#include "LoginProperties/ProfilePage/FrozenDrawing.h"
#include "LoginProperties/ProfilePage/SortedListOrder.h"

void ProfileCombo::Attach(HWND combo) {
  combo_ = combo;
  listed_.clear();
  ids_.clear();
}

void ProfileCombo::Show(const ProfileTable& profiles, const std::shared_ptr<Profile>& current) {
  std::vector<SelectableProfile> selectable = SelectableProfiles(profiles);
  if (selectable != listed_) Fill(std::move(selectable));
  const int place = current ? PlaceOf(current->GetProfileId()) : CB_ERR;
  if (ComboBox_GetCurSel(combo_) != place) ComboBox_SetCurSel(combo_, place);
}

void ProfileCombo::Fill(std::vector<SelectableProfile> profiles) {
  std::vector<std::wstring> names;
  names.reserve(profiles.size());
  for (const SelectableProfile& profile : profiles) names.push_back(profile.name);
  const auto locale = static_cast<LCID>(SendMessageW(combo_, CB_GETLOCALE, 0, 0));

  const FrozenDrawing frozen(combo_);
  ComboBox_ResetContent(combo_);
  ids_.clear();
  for (const size_t place : SortedListOrder(names, locale)) {
    // At the end, where it belongs: adding it would compare it with a dozen others to find that out.
    const int index = ComboBox_InsertString(combo_, -1, names[place].c_str());
    ComboBox_SetItemData(combo_, index, profiles[place].id);
    ids_.push_back(profiles[place].id);
  }
  listed_ = std::move(profiles);
}

int ProfileCombo::PlaceOf(uint32_t id) const {
  const auto found = std::ranges::find(ids_, id);
  return found != ids_.end() ? static_cast<int>(found - ids_.begin()) : CB_ERR;
}
