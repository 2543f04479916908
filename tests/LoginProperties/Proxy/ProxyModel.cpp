#include "tests/LoginProperties/Proxy/ProxyModel.h"

#include <algorithm>

#include "NetUtilities/Text/Utf8.h"

namespace {

const ProxyModel::Texts kTitles = {L"Auto-proxy URL", L"Manual proxy", L"Proxy Exceptions"};

std::wstring WordFor(wchar_t mode) {
  switch (mode) {
    case L'a':
      return L"Automatically";
    case L'm':
      return L"Manual";
    case L'n':
      return L"Not updated";
    default:
      return L"unknown";
  }
}

bool IsLeave(std::wstring text) {
  std::ranges::transform(text, text.begin(), [](wchar_t character) {
    return character >= L'A' && character <= L'Z' ? static_cast<wchar_t>(character + 32) : character;
  });
  return text == L"leave";
}

std::string Quoted(const std::wstring& text) {
  std::string quoted = "'";
  for (const char character : ToUtf8(text)) quoted.append(character == '\'' ? 2 : 1, character);
  return quoted + "'";
}

}  // namespace

std::wstring FirstUnits(const std::wstring& text, size_t longest) {
  std::wstring first = text.substr(0, longest);
  const bool isCut = first.size() < text.size();
  if (isCut && !first.empty() && first.back() >= 0xd800 && first.back() < 0xdc00) first.pop_back();
  return first;
}

// Lists

ProxyModel::List::List(const std::wstring& text) {
  std::vector<std::wstring> parts;
  std::wstring part;
  const auto endPart = [&] {
    if (!part.empty()) parts.push_back(part);
    part.clear();
  };
  for (const wchar_t character : text + L";") {
    if (character != L':' && character != L';') {
      part += character;
      continue;
    }
    endPart();
    if (character == L':' || parts.empty()) continue;
    entries_.emplace_back(parts.front(), parts.size() > 1 ? parts.back() : L"");
    parts.clear();
  }
}

std::wstring ProxyModel::List::Joined() const {
  std::wstring text;
  for (const auto& [address, port] : entries_) {
    text += (text.empty() ? L"" : L";") + address + (port.empty() ? L"" : L":" + port);
  }
  return text;
}

std::vector<std::vector<std::wstring>> ProxyModel::List::Rows() const {
  std::vector<std::vector<std::wstring>> rows;
  for (const auto& [address, port] : entries_) rows.push_back({address, port});
  return rows;
}

void ProxyModel::List::Add(const std::wstring& address, const std::wstring& port) {
  if (!address.empty()) entries_.emplace_back(address, port);
}

void ProxyModel::List::Change(size_t row, const std::wstring& address, const std::wstring& port) {
  if (address.empty() || row >= entries_.size()) return;
  *std::ranges::find(entries_, entries_[row]) = {address, port};
}

void ProxyModel::List::Delete(size_t row) {
  if (row < entries_.size()) entries_.erase(std::ranges::find(entries_, entries_[row]));
}

// The page

ProxyModel::ProxyModel(const ProfileTable& profiles, const std::wstring& file) {
  for (const auto& [id, profile] : profiles) {
    const ProfileColumns& columns = profile->Columns();
    State& state = states_[id];
    state.overrides = !columns.defaultProxy;
    state.modes = {columns.autoProxySetting, columns.manualProxySetting, columns.proxyExceptionsSetting};
  }
  for (const auto& row : RunSql(file, "SELECT * FROM ConfigSettings")) {
    State& state = states_.at(static_cast<uint32_t>(std::stoul(row.at("ProfileId"))));
    Texts& texts = row.at("Automatic") == "1" ? state.automatic : state.manual;
    texts = {FromUtf8(row.at("AutoProxyUrl")), FromUtf8(row.at("ManualProxy")), FromUtf8(row.at("ProxyExceptions"))};
  }
  loaded_ = states_;
}

std::vector<std::vector<std::wstring>> ProxyModel::Rows() const {
  std::vector<std::vector<std::wstring>> rows;
  for (size_t row = 0; row < kTitles.size(); ++row) {
    const wchar_t mode = Mode(row);
    std::wstring value = mode == L'a' ? Chosen().automatic[row] : mode == L'm' ? Chosen().manual[row] : L"";
    rows.push_back({kTitles[row], WordFor(mode), IsLeave(value) ? L"Leave" : value});
  }
  return rows;
}

void ProxyModel::ShowPage() {
  State& chosen = Chosen();
  if (!chosen.first) chosen.first = chosen.modes;
  if (!chosen.overrides) chosen.modes = *chosen.first;
  ShowRow();
}

void ProxyModel::ShowRow() {
  const wchar_t mode = Mode(row_);
  if (WordFor(mode) != L"unknown") checked_ = mode;
  if (row_ != 0) return;
  if (mode == L'a') url_ = Chosen().automatic[0];
  if (mode == L'm') url_ = Chosen().manual[0];
}

void ProxyModel::LeavePage() {
  if (row_ != 0 || Mode(0) != L'm' || url_ == Chosen().manual[0]) return;
  Chosen().manual[0] = FirstUnits(url_, 511);
}

void ProxyModel::ClickOverride() {
  Chosen().overrides = !Chosen().overrides;
  ShowPage();
}

void ProxyModel::SelectRow(size_t row) {
  if (row == row_) return;  // nothing is selected anew
  row_ = row;
  ShowRow();
}

void ProxyModel::ChooseMode(wchar_t mode) {
  Chosen().modes[row_] = mode;
  ShowPage();
}

void ProxyModel::StoreList(const std::wstring& text) {
  Chosen().manual[row_] = text;
  ShowPage();
}

// Saving

std::string ProxyModel::Statements() const {
  std::string statements;
  for (const auto& [id, state] : states_) {
    const State& before = loaded_.at(id);
    const std::string where = " WHERE ProfileId = " + std::to_string(id) + ";";
    if (state.overrides && (!before.overrides || state.modes != before.modes)) {
      const auto mode = [&state](size_t row) { return Quoted(std::wstring(1, state.modes[row])); };
      statements += "UPDATE Profiles SET DefaultProxy = 0, AutoProxySetting = " + mode(0) +
                    ", ManualProxySetting = " + mode(1) + ", ProxyExceptionsSetting = " + mode(2) + where;
    } else if (!state.overrides && before.overrides) {
      statements += "UPDATE Profiles SET DefaultProxy = 1" + where;
    }
    if (state.manual == before.manual) continue;
    statements +=
        "INSERT INTO ConfigSettings (ProfileId, Automatic, AutoProxyUrl, ManualProxy, ProxyExceptions, Dns1, Dns2, "
        "Wins1, Wins2, DomainName, SearchList) VALUES (" +
        std::to_string(id) + ", 0, " + Quoted(state.manual[0]) + ", " + Quoted(state.manual[1]) + ", " +
        Quoted(state.manual[2]) +
        ", '', '', '', '', '', '') ON CONFLICT (ProfileId, Automatic) DO UPDATE SET AutoProxyUrl = "
        "excluded.AutoProxyUrl, ManualProxy = excluded.ManualProxy, ProxyExceptions = excluded.ProxyExceptions;";
  }
  return statements;
}
