#include "tests/ui/sequence/ProfilesModel.h"

#include <algorithm>
#include <cwchar>
#include <variant>

#include "NetUtilities/Text/Utf8.h"

namespace {

constexpr wchar_t kLastProfile[] = L"You cannot remove the last profile.";
constexpr wchar_t kConnected[] = L"You are currently connected with this login profile, so it cannot be removed.";

// What a page shows belongs together: a profile that overrides it stores all of it.
struct Page {
  bool (*overrides)(const ProfileColumns& columns);
  std::vector<std::string> columns;
};

const std::vector<Page> kPages = {
    {[](const ProfileColumns& columns) { return !columns.defaultTimeouts; },
     {"DefaultTimeouts", "DurationTime", "ThresholdOnOff", "ThresholdBytes", "ThresholdTimeOut", "WarnTime"}},
    {[](const ProfileColumns& columns) { return columns.overrideAutoReconnectDefaults; },
     {"OverrideAutoReconnectDefaults", "OverrideARMode", "OverrideASWiFiMode", "OverridePromptUserToSwitch",
      "OverrideSwitchInterval", "OverrideSignalStrength", "AdvancedAutoReconnectSettings"}},
};

std::string TextOf(ColumnKind kind, const ColumnValue& value) {
  if (const auto* text = std::get_if<std::wstring>(&value)) return ToUtf8(*text);
  const int64_t number = std::get<int64_t>(value);
  return kind == ColumnKind::Character ? std::string(1, static_cast<char>(number)) : std::to_string(number);
}

// All columns as they would be stored.
Row TextsOf(const Profile& profile) {
  Row texts;
  for (const ColumnBinding& column : profile.GetBindings()) {
    texts[ToUtf8(std::wstring(column.name))] = TextOf(column.kind, column.read(profile));
  }
  return texts;
}

// The highest id that a profile has or had and a new one could have.
uint32_t LastId(const StoredSettings& stored) {
  uint32_t last = std::max(kLastRoot, stored.Number("LastRemovedProfile"));
  for (const auto& [id, row] : stored.profiles) {
    if (id < kLastWithOwnPreferences) last = std::max(last, id);
  }
  return last;
}

}  // namespace

ProfilesModel::ProfilesModel(const ProfileTable& loaded, const StoredSettings& stored) : lastId_(LastId(stored)) {
  for (const auto& [id, profile] : loaded) now_.emplace(id, *profile);
  before_ = now_;
}

std::map<uint32_t, std::wstring> ProfilesModel::Selectable() const {
  std::map<uint32_t, std::wstring> selectable;
  for (const auto& [id, profile] : now_) {
    const ProfileColumns& columns = profile.Columns();
    if (id > kLastRoot && !columns.name.empty() && !columns.hidden) selectable[id] = columns.name;
  }
  return selectable;
}

std::optional<std::wstring> ProfilesModel::RefuseRemoval(uint32_t id, const StoredSettings& stored) const {
  if (Selectable().size() == 1) return kLastProfile;
  if (stored.ConnectedProfile() == id) return kConnected;
  const std::wstring followers = FollowersOf(id);
  if (followers.empty()) return std::nullopt;
  return Columns(id).name + L" cannot be removed. These profiles follow its settings:\n\n" + followers;
}

std::wstring ProfilesModel::FollowersOf(uint32_t id) const {
  std::wstring names;
  for (const auto& [other, profile] : now_) {
    if (profile.GetLinkProfile() != id || IsRemoved(other)) continue;
    if (!names.empty()) names += L", ";
    names += profile.GetName();
  }
  return names;
}

void ProfilesModel::Remove(uint32_t id) {
  removed_.insert(id);
  Columns(id).hidden = true;
}

std::optional<std::wstring> ProfilesModel::RefuseName(const std::wstring& name) const {
  if (name.empty()) return L"Please enter a name for the login profile.";
  std::optional<std::wstring> refusal;
  for (const auto& [id, profile] : now_) {
    if (IsRemoved(id) || _wcsicmp(name.c_str(), profile.GetName().c_str()) != 0) continue;
    if (!profile.GetHidden()) {
      return L"There is a login profile with the name \"" + name + L"\" already. Please enter another name.";
    }
    refusal = L"A hidden login profile has the name \"" + name + L"\" already. Please enter another name.";
  }
  return refusal;
}

std::vector<uint32_t> ProfilesModel::Defaults() const {
  std::vector<uint32_t> defaults;
  for (const auto& [id, profile] : now_) {
    if (id <= kLastRoot) defaults.push_back(id);
  }
  return defaults;
}

std::vector<uint32_t> ProfilesModel::Sources() const {
  std::vector<uint32_t> sources;
  for (const auto& [id, profile] : now_) {
    if (!profile.GetHidden()) sources.push_back(id);
  }
  return sources;
}

uint32_t ProfilesModel::FirstDefaults(const StoredSettings& stored) const {
  const uint32_t active = stored.Number("ActiveProfile");
  const auto found = before_.find(active);
  const uint32_t link = found != before_.end() && !IsNew(active) ? found->second.GetLinkProfile() : 0;
  const std::vector<uint32_t> defaults = Defaults();
  return std::ranges::count(defaults, link) != 0 ? link : defaults.front();
}

void ProfilesModel::Add(const ProfileColumns& profile) {
  const uint32_t id = profile.profileId;
  new_.insert(id);
  now_.insert_or_assign(id, Profile(id)).first->second.Columns() = profile;
  before_.insert_or_assign(id, before_.at(profile.linkProfile));
}

std::map<uint32_t, uint32_t> ProfilesModel::StoredIds(const StoredSettings& stored) const {
  uint32_t last = LastId(stored);
  for (const uint32_t id : new_) {
    if (!IsRemoved(id)) last = std::max(last, id);
  }
  std::map<uint32_t, uint32_t> ids;
  for (const uint32_t id : new_) {
    if (!IsRemoved(id)) ids[id] = id <= LastId(stored) ? ++last : id;
  }
  return ids;
}

Row ProfilesModel::NewRow(uint32_t id, uint32_t storedId) const {
  Row row;
  for (const auto& [column, value] : TextsOf(now_.at(id))) row[column] = "NULL";
  Save(id, &row);
  row["ProfileId"] = std::to_string(storedId);
  row["LinkProfile"] = std::to_string(Columns(id).linkProfile);
  row["Name"] = ToUtf8(Columns(id).name);
  return row;
}

bool ProfilesModel::Save(uint32_t id, Row* row) const {
  if (id <= kLastRoot) return false;  // the pages only show them
  const Row before = TextsOf(before_.at(id));
  const Row now = TextsOf(now_.at(id));
  const auto isChanged = [&](const std::string& column) { return now.at(column) != before.at(column); };
  if (now == before) return false;
  if (row == nullptr) return true;
  for (const auto& [column, value] : now) {
    if (isChanged(column)) (*row)[column] = value;
  }
  for (const Page& page : kPages) {
    if (!page.overrides(Columns(id)) || std::ranges::none_of(page.columns, isChanged)) continue;
    for (const std::string& column : page.columns) {
      if (row->at(column) == "NULL") (*row)[column] = now.at(column);
    }
  }
  return true;
}

std::set<std::wstring> ProfilesModel::SaveRemovals(StoredSettings& stored) const {
  std::set<uint32_t> left = removed_;
  const uint32_t connected = stored.ConnectedProfile();
  std::erase_if(left, [&](uint32_t id) { return IsNew(id) || id == connected || !stored.profiles.contains(id); });
  // One that follows another goes first.
  for (size_t before = left.size() + 1; left.size() < before;) {
    before = left.size();
    std::erase_if(left, [&](uint32_t id) {
      const bool goes = !stored.IsFollowed(id);
      if (goes) stored.Remove(id);
      return goes;
    });
  }
  std::set<std::wstring> names;
  for (const uint32_t id : left) names.insert(Columns(id).name);
  return names;
}
