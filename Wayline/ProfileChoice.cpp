#include "Wayline/ProfileChoice.h"

#include <algorithm>

#include "LoginProperties/ProfilePage/ProfileSelector.h"
#include "NetUtilities/Text/Format.h"

Failure ChooseProfile(const ProfileTable& profiles, std::optional<uint32_t> wantedId, uint32_t activeId,
                      std::shared_ptr<Profile>& chosen) {
  const std::vector<SelectableProfile> selectable = SelectableProfiles(profiles);
  const auto found = std::ranges::find(selectable, wantedId.value_or(activeId), &SelectableProfile::id);
  if (found != selectable.end()) {
    chosen = FindProfile(profiles, found->id);
  } else if (!wantedId) {
    if (selectable.empty()) return L"The settings database has no profile that can be selected.";
    chosen = FindProfile(profiles, selectable.front().id);
  } else if (FindProfile(profiles, *wantedId) == nullptr) {
    return Format(L"Profile {} does not exist.", *wantedId);
  } else {
    return Format(L"Profile {} cannot be selected because it is hidden or no login profile.", *wantedId);
  }
  return {};
}
