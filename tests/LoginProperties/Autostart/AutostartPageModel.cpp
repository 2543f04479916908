#include "tests/LoginProperties/Autostart/AutostartPageModel.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>
#include <tuple>

#include "NetUtilities/Text/Utf8.h"

namespace {

std::wstring Wide(const std::string& text) { return FromUtf8(text); }

std::string Quoted(const std::string& text) {
  std::string quoted = "'";
  for (const char character : text) quoted += character == '\'' ? "''" : std::string(1, character);
  return quoted + "'";
}

// The header of a phase that none is stored for.
Row HeaderRow(int phase, const std::string& title) {
  return {{"Phase", std::to_string(phase)},
          {"ItemOrder", "0"},
          {"RecordType", "1"},
          {"Name", title},
          {"Modifiable", "0"},
          {"Program", ""},
          {"Parameters", ""},
          {"Directory", ""},
          {"DirectoryRegistryKey", ""},
          {"ShowAdvanced", "0"},
          {"InitialSize", "0"},
          {"ReconnectOption", "0"},
          {"ConnectionOption", "0"},
          {"DelaySeconds", "0"},
          {"WaitMode", "0"},
          {"DefinitionLocked", "1"}};
}

const std::map<int, std::string>& BuiltInTitles() {
  static const std::map<int, std::string> kTitles = {{300, "Before connecting"},
                                                     {700, "After the network is connected"},
                                                     {1100, "After the VPN is connected"},
                                                     {1600, "After disconnecting"}};
  return kTitles;
}

}  // namespace

AutostartPageModel::AutostartPageModel(const std::wstring& file) : file_(file) {
  for (const Row& row : RunSql(file,
                               "SELECT ProfileId, ifnull(LinkProfile, 0) AS Link, ifnull(DefaultAutostart, 1) AS "
                               "Follows FROM Profiles")) {
    const auto id = static_cast<uint32_t>(std::stoul(row.at("ProfileId")));
    links_[id] = static_cast<uint32_t>(std::stoul(row.at("Link")));
    overrides_[id] = row.at("Follows") == "0";
  }
  overrodeBefore_ = overrides_;
}

void AutostartPageModel::Record::Place(int phase, int order) {
  row["Phase"] = std::to_string(phase);
  row["ItemOrder"] = std::to_string(order);
}

AutostartPageModel::List AutostartPageModel::Load(uint32_t profile) {
  List list;
  for (uint32_t id = profile; id != 0 && list.empty(); id = links_[id]) {
    const bool own = id == profile;
    for (Row& row : RunSql(file_, "SELECT * FROM AutoStart WHERE ProfileId = " + std::to_string(id) + " ORDER BY " +
                                      (own ? "Id" : "Phase, ItemOrder, Id"))) {
      row.erase("Id");
      row.erase("ProfileId");
      list.push_back({.number = ++lastNumber_, .row = row, .loaded = row, .stored = own});
    }
  }
  for (const auto& [phase, title] : BuiltInTitles()) {
    const auto isHeader = [phase = phase](const Record& record) {
      return !record.IsEntry() && record.Phase() == phase;
    };
    if (std::ranges::any_of(list, isHeader)) continue;
    const Row row = HeaderRow(phase, title);
    list.push_back({.number = ++lastNumber_, .row = row, .loaded = row});
  }
  return list;
}

AutostartPageModel::List& AutostartPageModel::ListOf(uint32_t profile) {
  if (!lists_.contains(profile)) lists_[profile] = Load(profile);
  return lists_.at(profile);
}

AutostartPageModel::Shown AutostartPageModel::ShownList() {
  Shown shown;
  for (Record& record : ListOf(Overrides() ? chosen_ : links_.at(chosen_))) {
    if (!record.removed) shown.push_back(&record);
  }
  std::ranges::sort(shown, {},
                    [](const Record* record) { return std::tuple(record->Phase(), record->Order(), record->number); });
  return shown;
}

std::vector<std::wstring> AutostartPageModel::Lines() {
  std::vector<std::wstring> lines;
  for (const Record* record : ShownList()) {
    lines.push_back((record->IsEntry() ? L" " : L"") + Wide(record->row.at("Name")));
  }
  return lines;
}

int AutostartPageModel::SelectedLine() {
  const Shown shown = ShownList();
  const auto found = std::ranges::find(shown, selected_, &Record::number);
  return found != shown.end() ? static_cast<int>(found - shown.begin()) : -1;
}

AutostartPageModel::Record* AutostartPageModel::Selected() {
  const int line = SelectedLine();
  return line >= 0 ? ShownList().at(static_cast<size_t>(line)) : nullptr;
}

bool AutostartPageModel::IsEntrySelected() {
  const Record* const record = Selected();
  return record != nullptr && record->IsEntry() && Overrides();
}

bool AutostartPageModel::IsModifiable() { return Selected()->row.at("Modifiable") == "1"; }

std::wstring AutostartPageModel::SelectedName() { return Wide(Selected()->row.at("Name")); }

std::wstring AutostartPageModel::SelectedPhaseTitle() {
  const Record* const selected = Selected();
  const int phase = selected != nullptr ? selected->Phase() : 300;
  for (const Record* record : ShownList()) {
    if (!record->IsEntry() && record->Phase() == phase) return Wide(record->row.at("Name"));
  }
  throw std::logic_error("a phase without a header");
}

std::vector<int> AutostartPageModel::Phases() {
  std::vector<int> phases;
  for (const Record* record : ShownList()) {
    if (!record->IsEntry()) phases.push_back(record->Phase());
  }
  return phases;
}

std::vector<std::wstring> AutostartPageModel::PhaseTitles() {
  std::vector<std::wstring> titles;
  for (const Record* record : ShownList()) {
    if (!record->IsEntry()) titles.push_back(Wide(record->row.at("Name")));
  }
  return titles;
}

int AutostartPageModel::PhaseOfTitle(const std::wstring& title) {
  const auto titles = PhaseTitles();
  return Phases().at(static_cast<size_t>(std::ranges::find(titles, title) - titles.begin()));
}

// The entries of a phase, from the first to the last.
AutostartPageModel::Shown AutostartPageModel::Group(int phase, const Record* except) {
  Shown group = ShownList();
  std::erase_if(
      group, [&](const Record* record) { return !record->IsEntry() || record->Phase() != phase || record == except; });
  return group;
}

bool AutostartPageModel::CanMoveUp() {
  if (!IsEntrySelected()) return false;
  const Record* const selected = Selected();
  return selected->Phase() != 300 || selected->Order() != 1 || Group(300).front() != selected;
}

bool AutostartPageModel::CanMoveDown() {
  if (!IsEntrySelected()) return false;
  return Selected()->Phase() != 1600 || ShownList().back() != Selected();
}

void AutostartPageModel::ShowPage() {
  if (SelectedLine() < 0) SelectLine(0);
}

void AutostartPageModel::ClickOverride() {
  overrides_.at(chosen_) = !Overrides();
  SelectLine(0);
}

void AutostartPageModel::SelectLine(int line) { selected_ = ShownList().at(static_cast<size_t>(line))->number; }

void AutostartPageModel::Add(const std::wstring& name, const std::wstring& program,
                             const std::optional<std::wstring>& phaseTitle) {
  const Record* const selected = Selected();
  const int selectedPhase = selected != nullptr ? selected->Phase() : 300;
  const int phase = phaseTitle ? PhaseOfTitle(*phaseTitle) : selectedPhase;
  int order = 1;
  if (selected != nullptr) {
    // What stands directly behind the selected record, in its group or as the next one, is passed.
    const Shown group = Group(selectedPhase);
    const bool endsItsGroup = group.empty() || group.back() == selected;
    const std::vector<int> phases = Phases();
    const auto next = std::next(std::ranges::find(phases, selectedPhase));
    const bool isNextGroup = endsItsGroup && next != phases.end() && *next == phase;
    if (phase == selectedPhase || isNextGroup) {
      order = Group(phase).empty() ? 1 : Group(phase).back()->Order() + 1;
    } else {
      order = selected->Order() + 1;
    }
  }
  Row row = HeaderRow(phase, ToUtf8(name));
  row["RecordType"] = "2";
  row["Modifiable"] = "1";
  row["DefinitionLocked"] = "0";
  row["Program"] = ToUtf8(program);
  Record record{.number = ++lastNumber_, .row = row, .loaded = {}};
  record.Place(phase, order);
  ListOf(chosen_).push_back(record);
  ShowPage();
}

void AutostartPageModel::Change(const std::wstring& name, const std::wstring& program,
                                const std::optional<std::wstring>& phaseTitle) {
  Record& record = *Selected();
  record.row["Name"] = ToUtf8(name);
  record.row["Program"] = ToUtf8(program);
  const int phase = phaseTitle ? PhaseOfTitle(*phaseTitle) : record.Phase();
  if (phase == record.Phase()) return;
  const Shown group = Group(phase);
  record.Place(phase, group.empty() ? 1 : group.back()->Order() + 1);
}

void AutostartPageModel::Remove() {
  const Shown shown = ShownList();
  const auto line = static_cast<size_t>(SelectedLine());
  const bool isLast = line + 1 == shown.size() || !shown[line + 1]->IsEntry();
  shown[line]->removed = true;
  SelectLine(static_cast<int>(isLast ? line - 1 : line));
}

void AutostartPageModel::NumberAnewIfEqual(int phase) {
  const Shown group = Group(phase);
  const auto isEqual = [](const Record* one, const Record* other) { return one->Order() == other->Order(); };
  if (std::ranges::adjacent_find(group, isEqual) == group.end()) return;
  int order = 0;
  for (Record* record : group) record->Place(phase, ++order);
}

void AutostartPageModel::MoveUp() {
  Record& record = *Selected();
  const int phase = record.Phase();
  const Shown group = Group(phase);
  const auto place = std::ranges::find(group, &record);
  if (place != group.begin()) {
    NumberAnewIfEqual(phase);
    Record& other = **std::prev(place);
    const int order = record.Order();
    record.Place(phase, other.Order());
    other.Place(phase, order);
    return;
  }
  const std::vector<int> phases = Phases();
  const auto own = std::ranges::find(phases, phase);
  if (own == phases.begin()) return record.Place(phase, 1);
  const int above = *std::prev(own);
  record.Place(above, Group(above).empty() ? 1 : Group(above).back()->Order() + 1);
}

void AutostartPageModel::MoveDown() {
  Record& record = *Selected();
  const int phase = record.Phase();
  const Shown group = Group(phase);
  const auto place = std::next(std::ranges::find(group, &record));
  if (place != group.end()) {
    NumberAnewIfEqual(phase);
    Record& other = **place;
    const int order = record.Order();
    record.Place(phase, other.Order());
    other.Place(phase, order);
    return;
  }
  const std::vector<int> phases = Phases();
  const auto below = std::next(std::ranges::find(phases, phase));
  if (below == phases.end()) return;
  const Shown next = Group(*below);
  record.Place(*below, 1);
  int order = 1;
  for (Record* other : next) other->Place(*below, ++order);
}

std::string AutostartPageModel::Insertion(const Record& record, uint32_t profile) {
  std::string columns = "ProfileId";
  std::string values = std::to_string(profile);
  for (const auto& [column, value] : record.row) {
    columns += ", " + column;
    values += ", " + Quoted(value);
  }
  return "INSERT INTO AutoStart (" + columns + ") VALUES (" + values + ");";
}

std::string AutostartPageModel::Statements() const {
  std::string statements;
  for (const auto& [id, overrides] : overrides_) {
    const bool overrode = overrodeBefore_.at(id);
    const std::string where = " WHERE ProfileId = " + std::to_string(id) + ";";
    if (overrides != overrode) {
      statements += std::string("UPDATE Profiles SET DefaultAutostart = ") + (overrides ? "0" : "1") + where;
    }
    if (!lists_.contains(id)) continue;
    const List& list = lists_.at(id);
    const bool isOwn = std::ranges::any_of(list, &Record::stored);
    const bool keepsRows =
        std::ranges::any_of(list, [](const Record& record) { return record.stored && !record.removed; });
    const bool isEdited = std::ranges::any_of(list, [](const Record& record) {
      return record.loaded.empty() ? !record.removed : record.removed || record.row != record.loaded;
    });
    if (!isEdited && (isOwn || !overrides || overrode)) continue;
    statements += "DELETE FROM AutoStart" + where;
    for (const Record& record : list) {
      // Rows of a list hold its place; only where none is left are headers needed for that.
      const bool isNeeded = record.stored || record.loaded.empty() || !isOwn || !keepsRows;
      if (!record.removed && isNeeded) statements += Insertion(record, id);
    }
  }
  return statements;
}
