#include "WaylineDll/SetupWizard/ProfileChoices.h"

#include <algorithm>
#include <tuple>

#include "Database/Profiles/ProfileIdManager.h"

namespace {

template <typename IsWanted>
std::vector<OfferedProfile> Offer(const ProfileTable& profiles, IsWanted isWanted) {
  std::vector<OfferedProfile> offered;
  for (const auto& [key, profile] : profiles) {
    if (!profile || profile->GetState() == ChangeState::Removed || profile->GetName().empty()) continue;
    if (isWanted(*profile)) offered.push_back({profile->GetName(), profile->GetProfileId()});
  }
  return offered;
}

}  // namespace

std::vector<OfferedProfile> DefaultsToFollow(const ProfileTable& profiles) {
  return Offer(profiles, [](const Profile& profile) { return profile.GetProfileId() <= kLastDefaultsId; });
}

std::vector<OfferedProfile> SourcesToCopy(const ProfileTable& profiles) {
  return Offer(profiles, [](const Profile& profile) { return !profile.GetHidden(); });
}

CopiedSettings CopiedOf(const PreferenceTable& preferences, const AutoStartTable& items) {
  std::vector<const AutoStartItem::Fields*> programs;
  for (const auto& [key, item] : items) {
    if (item && item->fields.recordType == AutoStartRecordType::Program) programs.push_back(&item->fields);
  }
  std::ranges::stable_sort(programs, {}, [](const auto* program) { return std::tie(program->phase, program->order); });
  CopiedSettings copied{.preferences = {}, .hasAutoStartList = !items.empty(), .programs = {}};
  for (const auto& [id, preference] : preferences) copied.preferences.push_back(id);
  for (const auto* program : programs) copied.programs.push_back(program->name);
  return copied;
}
