// The host's list of profiles, in both its forms, and which of them it selects.

#include <nlohmann/json.hpp>

#include <algorithm>
#include <memory>
#include <optional>
#include <string>

#include "NetUtilities/Text/Utf8.h"
#include "tests/fuzz/FuzzInput.h"
#include "tests/fuzz/Require.h"
#include "Wayline/ProfileChoice.h"
#include "Wayline/Report.h"

namespace {

void CheckList(const ProfileTable& profiles, uint32_t active) {
  const nlohmann::json list = nlohmann::json::parse(ProfileListJson(profiles, active));
  Require(list.size() == profiles.size());
  size_t index = 0;
  for (const auto& [id, profile] : profiles) {
    const auto& shown = list[index++];
    const bool selectable = id > 2000 && !profile->GetHidden() && !profile->GetName().empty();
    Require(shown["id"] == id && shown["name"] == ToUtf8(profile->GetName()) &&
            shown["hidden"] == profile->GetHidden());
    Require(shown["parent"] == profile->GetLinkProfile() && shown["selectable"] == selectable);
    Require(shown["active"] == (id == active));
  }
  const std::string table = ProfileListText(profiles, active);
  Require(static_cast<size_t>(std::ranges::count(table, '\n')) >= profiles.size() + 1);
}

void CheckChoice(const ProfileTable& profiles, std::optional<uint32_t> wanted, uint32_t active) {
  std::shared_ptr<Profile> chosen;
  const Failure failure = ChooseProfile(profiles, wanted, active, chosen);
  const auto isSelectable = [](const Profile& profile) {
    return profile.GetProfileId() > 2000 && !profile.GetHidden() && !profile.GetName().empty();
  };
  const bool hasAny = std::ranges::any_of(profiles, [&](const auto& entry) { return isSelectable(*entry.second); });
  // Without a wish there is no failure: the first profile can be made on the sheet.
  Require(failure.has_value() == (wanted && chosen == nullptr));
  Require(wanted || (chosen != nullptr) == hasAny);
  if (!chosen) return;
  Require(isSelectable(*chosen));
  Require(!wanted || chosen->GetProfileId() == *wanted);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  FuzzInput input(data, size);
  const auto wanted = input.Byte() % 4 == 0 ? std::nullopt : std::optional<uint32_t>(2000u + input.Byte() % 8u);
  const uint32_t active = 2000u + input.Byte() % 8u;
  ProfileTable profiles;
  while (!input.IsAtEnd()) {
    const uint32_t id = 1996u + input.Byte() % 12u;
    const auto profile = std::make_shared<Profile>(id);
    profile->Columns().hidden = input.Byte() % 4 == 0;
    profile->Columns().linkProfile = input.Number<uint32_t>();
    profile->SetName(input.WideLine());
    profiles[id] = profile;
  }
  CheckList(profiles, active);
  CheckChoice(profiles, wanted, active);
  return 0;
}
