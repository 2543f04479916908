#include "Wayline/Report.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "LoginProperties/ProfilePage/ProfileSelector.h"
#include "NetUtilities/Text/Utf8.h"

namespace {

using Json = nlohmann::ordered_json;

enum class Align { Left, Right };

constexpr std::array<std::pair<std::string_view, Align>, 6> kColumns = {{{"Id", Align::Right},
                                                                         {"Name", Align::Left},
                                                                         {"Parent", Align::Right},
                                                                         {"Hidden", Align::Left},
                                                                         {"Selectable", Align::Left},
                                                                         {"Active", Align::Left}}};
using Row = std::array<std::string, kColumns.size()>;

// Characters of UTF-8 text: the bytes that begin one.
size_t Length(std::string_view text) {
  return static_cast<size_t>(std::ranges::count_if(text, [](char byte) { return (byte & 0xC0) != 0x80; }));
}

std::string TableText(const std::vector<Row>& rows) {
  std::array<size_t, kColumns.size()> widths{};
  for (const Row& row : rows) {
    for (size_t column = 0; column < row.size(); ++column) {
      widths[column] = std::max(widths[column], Length(row[column]));
    }
  }
  std::string text;
  for (const Row& row : rows) {
    std::string line;
    for (size_t column = 0; column < row.size(); ++column) {
      const std::string padding(widths[column] - Length(row[column]), ' ');
      if (column > 0) line += "  ";
      line += kColumns[column].second == Align::Right ? padding + row[column] : row[column] + padding;
    }
    line.erase(line.find_last_not_of(' ') + 1);
    text += line + '\n';
  }
  return text;
}

// One profile as both forms of the list show it.
struct ListedProfile {
  uint32_t id;
  std::string name;
  uint32_t parent;
  bool hidden;
  bool selectable;
  bool active;
};

std::vector<ListedProfile> List(const ProfileTable& profiles, uint32_t activeId) {
  const std::vector<SelectableProfile> selectable = SelectableProfiles(profiles);
  std::vector<ListedProfile> list;
  for (const auto& [id, profile] : profiles) {
    if (profile == nullptr) continue;
    const bool isSelectable = std::ranges::find(selectable, id, &SelectableProfile::id) != selectable.end();
    list.push_back({id, ToUtf8(profile->GetName()), profile->GetLinkProfile(), profile->GetHidden(), isSelectable,
                    id == activeId});
  }
  return list;
}

std::string_view NameOf(RecordKind kind) {
  switch (kind) {
    case RecordKind::Profile:
      return "profile";
    case RecordKind::Preference:
      return "preference";
    case RecordKind::AutoStartItem:
      return "autostart";
    case RecordKind::ManualConfig:
      return "manualConfig";
    case RecordKind::AutoConfig:
      return "autoConfig";
  }
  return "";
}

}  // namespace

std::string ProfileListText(const ProfileTable& profiles, uint32_t activeId) {
  std::vector<Row> rows(1);
  std::ranges::transform(kColumns, rows.front().begin(), [](const auto& column) { return std::string(column.first); });
  const auto yesNo = [](bool value) { return value ? "yes" : "no"; };
  for (const ListedProfile& profile : List(profiles, activeId)) {
    rows.push_back({std::to_string(profile.id), profile.name,
                    profile.parent != 0 ? std::to_string(profile.parent) : "-", yesNo(profile.hidden),
                    yesNo(profile.selectable), yesNo(profile.active)});
  }
  return TableText(rows);
}

std::string ProfileListJson(const ProfileTable& profiles, uint32_t activeId) {
  Json list = Json::array();
  for (const ListedProfile& profile : List(profiles, activeId)) {
    list.push_back({{"id", profile.id},
                    {"name", profile.name},
                    {"parent", profile.parent},
                    {"hidden", profile.hidden},
                    {"selectable", profile.selectable},
                    {"active", profile.active}});
  }
  return list.dump(2) + '\n';
}

std::string SheetResultJson(int64_t result, bool saved, const SaveReport& report) {
  Json changes = Json::array();
  for (const RecordChange& change : report.changes) {
    changes.push_back(
        {{"record", NameOf(change.kind)}, {"id", change.id}, {"state", static_cast<uint32_t>(change.state)}});
  }
  Json lost = Json::array();
  for (const std::wstring& sentence : report.lost) lost.push_back(ToUtf8(sentence));
  return Json{{"result", result}, {"saved", saved}, {"changes", changes}, {"lost", lost}}.dump() + '\n';
}
