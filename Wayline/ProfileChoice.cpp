#include "Wayline/ProfileChoice.h"

#include "LoginProperties/ProfilePage/ProfileSelector.h"
#include "NetUtilities/Text/Format.h"

Failure ChooseProfile(const ProfileTable& profiles, std::optional<uint32_t> wantedId, uint32_t activeId,
                      std::shared_ptr<Profile>& chosen) {
  chosen = FindProfile(profiles, wantedId.value_or(activeId));
  if (chosen && IsSelectable(*chosen)) return {};
  const bool exists = chosen != nullptr;
  chosen = wantedId ? nullptr : FirstSelectableProfile(profiles);
  if (!wantedId) return {};
  return exists ? Format(L"Profile {} cannot be selected because it is hidden or no login profile.", *wantedId)
                : Format(L"Profile {} does not exist.", *wantedId);
}
