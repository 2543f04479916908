#include "LoginProperties/Preferences/PreferenceRules.h"

#include <algorithm>

#include "Database/Profiles/PageOverrides.h"

namespace {

// Its entries keep their states, whatever is loaded.
constexpr PreferenceId kUnloadedGroup{1080};

int32_t StateOf(bool on) { return on ? Preference::kOn : Preference::kOff; }

bool IsRadioOption(EntryKind kind) { return kind == EntryKind::RadioOption || kind == EntryKind::RadioOptionWithText; }

// Null when there is none.
Preference* Find(const PreferenceTable& preferences, PreferenceId id) {
  const auto found = preferences.find(id);
  return found != preferences.end() ? found->second.get() : nullptr;
}

std::map<PreferenceId, int> ToggleCheckBox(PreferenceEntry& entry, const PreferenceTable& preferences) {
  Preference* const record = Find(preferences, entry.id);
  if (record == nullptr) return {};
  entry.state = StateOf(record->GetValue() != Preference::kOn);
  record->SetValue(entry.state);
  return {{entry.id, StateImage(entry.kind, entry.state)}};
}

std::map<PreferenceId, int> ChooseOption(PreferenceId id, PreferenceGroup& group, const PreferenceTable& preferences) {
  std::map<PreferenceId, int> images;
  for (PreferenceEntry& option : group.entries) {
    if (option.state != Preference::kOn && option.id != id) continue;
    option.state = StateOf(option.state != Preference::kOn);
    images[option.id] = StateImage(EntryKind::RadioOption, option.state);
  }
  if (Preference* const record = Find(preferences, group.id)) record->SetValue(static_cast<int32_t>(id));
  return images;
}

std::optional<uint8_t> HexDigit(wchar_t digit) {
  if (digit >= L'0' && digit <= L'9') return static_cast<uint8_t>(digit - L'0');
  if (digit >= L'a' && digit <= L'f') return static_cast<uint8_t>(digit - L'a' + 10);
  if (digit >= L'A' && digit <= L'F') return static_cast<uint8_t>(digit - L'A' + 10);
  return std::nullopt;
}

}  // namespace

uint32_t ProfileToLoad(const Profile& edited) {
  const bool hasItsOwn = !edited.GetDefaultPreferences() && CanOwnPreferences(edited.GetProfileId());
  return hasItsOwn ? edited.GetProfileId() : edited.GetLinkProfile();
}

void ApplyPreferences(const PreferenceTable& preferences, PreferenceTree& tree) {
  for (PreferenceGroup& group : tree) {
    if (group.id == kUnloadedGroup) continue;
    const Preference* const choice = group.kind == GroupKind::Choice ? Find(preferences, group.id) : nullptr;
    const int32_t chosen = choice != nullptr ? choice->GetValue() : 0;
    for (PreferenceEntry& entry : group.entries) {
      if (entry.kind == EntryKind::RadioOption) {
        entry.state = StateOf(static_cast<int32_t>(entry.id) == chosen);
      } else if (const Preference* const record = Find(preferences, entry.id)) {
        entry.state = record->GetValue();
      }
    }
  }
}

std::optional<int32_t> ShownState(const PreferenceEntry& entry, const TreeConditions& conditions) {
  if (entry.id == PreferenceId::PreventMultiHoming) {
    return conditions.preventMultiHoming ? std::optional(StateOf(*conditions.preventMultiHoming)) : std::nullopt;
  }
  if (entry.id == PreferenceId::BypassHardwareRendering && conditions.bypassHardwareRendering) {
    return StateOf(*conditions.bypassHardwareRendering);
  }
  return entry.state;
}

int StateImage(EntryKind kind, int32_t state) {
  const bool on = state == Preference::kOn;
  switch (kind) {
    case EntryKind::CheckBox:
    case EntryKind::CheckBoxWithText:
      return on ? kCheckOnImage : kCheckOffImage;
    case EntryKind::RadioOption:
    case EntryKind::RadioOptionWithText:
      return on ? kRadioOnImage : kRadioOffImage;
  }
  return kNoImage;
}

std::map<PreferenceId, int> Toggle(PreferenceId id, PreferenceTree& tree, const PreferenceTable& preferences) {
  for (PreferenceGroup& group : tree) {
    const auto entry = std::ranges::find(group.entries, id, &PreferenceEntry::id);
    if (entry == group.entries.end()) continue;
    if (entry->kind == EntryKind::CheckBox) return ToggleCheckBox(*entry, preferences);
    if (IsRadioOption(entry->kind)) return ChooseOption(id, group, preferences);
    break;
  }
  return {};
}

std::optional<CertificateHash> ParseCertificateHash(std::wstring_view digits) {
  CertificateHash hash;
  bool isSecondDigit = false;
  for (const wchar_t character : digits) {
    if (character == L' ') continue;
    const auto digit = HexDigit(character);
    if (!digit) return std::nullopt;
    if (isSecondDigit) {
      hash.back() = static_cast<uint8_t>(hash.back() << 4 | *digit);
    } else {
      hash.push_back(*digit);
    }
    isSecondDigit = !isSecondDigit;
  }
  const bool isWhole = !isSecondDigit && (hash.size() == kMd5Size || hash.size() == kSha1Size);
  return isWhole ? std::optional(hash) : std::nullopt;
}
