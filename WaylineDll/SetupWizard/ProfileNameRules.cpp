#include "WaylineDll/SetupWizard/ProfileNameRules.h"

#include <algorithm>

#include "NetUtilities/Text/Surrogates.h"
#include "WaylineDll/SetupWizard/FieldRules.h"
#include "WaylineDll/SetupWizard/PlatformText.h"

namespace {

constexpr int64_t kLongestName = 80;

// A character may take two units.
int64_t CountCharacters(std::wstring_view text) {
  return std::ranges::count_if(text, [](wchar_t unit) { return !IsLowSurrogate(static_cast<uint32_t>(unit)); });
}

}  // namespace

NameProblem CheckProfileName(std::wstring_view name, uint32_t id, const ProfileTable& profiles) {
  if (name.empty()) return NameProblem::Empty;
  if (CountCharacters(name) > kLongestName) return NameProblem::TooLong;
  if (HasControlCharacter(name)) return NameProblem::ControlCharacter;
  NameProblem problem = NameProblem::None;
  for (const auto& [key, profile] : profiles) {
    if (!profile || profile->GetProfileId() == id || profile->GetState() == ChangeState::Removed) continue;
    // Renaming keeps the blanks around a name, which nobody sees.
    if (!AreSameNames(name, Trimmed(profile->GetName()))) continue;
    // One that the user sees explains itself.
    if (!profile->GetHidden()) return NameProblem::Taken;
    problem = NameProblem::TakenByHidden;
  }
  return problem;
}
