#include "WaylineDll/SetupWizard/ServersPage.h"

#include <algorithm>
#include <utility>

#include "WaylineDll/SetupWizard/FieldRules.h"
#include "WaylineDll/SetupWizard/ListItems.h"
#include "WaylineDll/SetupWizard/WizardStrings.h"
#include "WaylineDll/StringDb.h"

std::span<const ServersPage::Row> ServersPage::RowsOf(WizardPage page) {
  static constexpr Row kServers[] = {
      {ServerField::Dns1, IDC_WIZARD_DNS1_MODE, IDC_WIZARD_DNS1_LABEL, IDC_WIZARD_DNS1, IDS_DNS1_EXPECTED},
      {ServerField::Dns2, IDC_WIZARD_DNS2_MODE, IDC_WIZARD_DNS2_LABEL, IDC_WIZARD_DNS2, IDS_DNS2_EXPECTED},
      {ServerField::Wins1, IDC_WIZARD_WINS1_MODE, IDC_WIZARD_WINS1_LABEL, IDC_WIZARD_WINS1, IDS_WINS1_EXPECTED},
      {ServerField::Wins2, IDC_WIZARD_WINS2_MODE, IDC_WIZARD_WINS2_LABEL, IDC_WIZARD_WINS2, IDS_WINS2_EXPECTED},
  };
  static constexpr Row kDomains[] = {
      {ServerField::DomainName, IDC_WIZARD_DOMAIN_MODE, IDC_WIZARD_DOMAIN_LABEL, IDC_WIZARD_DOMAIN,
       IDS_DOMAIN_EXPECTED},
      {ServerField::SearchList, IDC_WIZARD_SUFFIXES_MODE, IDC_WIZARD_SUFFIXES_LABEL, IDC_WIZARD_SUFFIXES,
       IDS_SUFFIXES_EXPECTED},
  };
  if (page == WizardPage::Servers) return kServers;
  return kDomains;
}

ServersPage::ServersPage(WizardRun& run, WizardPage page) : WizardPageDialog(run, page), rows_(RowsOf(page)) {}

std::vector<int> ServersPage::GetFields() const {
  std::vector<int> fields;
  for (const Row& row : rows_) fields.push_back(row.value);
  return fields;
}

WizardPageDialog::Verdict ServersPage::Judge(int field, const std::wstring& text) const {
  const Row& row = *std::ranges::find(rows_, field, &Row::value);
  const ServerSetting before = Draft().GetServerBefore(row.field);
  const auto mode = SelectedComboItem(Control(row.mode));
  if (text == Trimmed(before.value) && (!mode || *mode == before.mode)) return {.accepted = before.value};
  const auto accepted = AcceptedServer(row.field, text);
  return {.accepted = accepted.value_or(text), .message = accepted ? 0U : row.expected};
}

bool ServersPage::BelongTogether(int field, int control) const {
  return std::ranges::any_of(rows_, [&](const Row& row) { return row.value == field && row.mode == control; });
}

int ServersPage::OnInitDialog(int64_t parameter) {
  constexpr std::pair<wchar_t, unsigned> kModes[] = {
      {kAutomaticServer, IDS_SERVER_AUTOMATIC}, {kManualServer, IDS_SERVER_MANUAL}, {kNoServer, IDS_SERVER_NONE}};
  for (const Row& row : rows_) {
    for (const auto& [letter, text] : kModes) {
      AddComboItem(Control(row.mode), LoadStringDb(ModuleId::ClientLibrary, text, false), letter);
    }
  }
  return WizardPageDialog::OnInitDialog(parameter);
}

int ServersPage::SetWindowControls() {
  for (const Row& row : rows_) {
    const ServerSetting server = Draft().GetServer(row.field);
    SelectComboItem(Control(row.mode), server.mode);
    SetDlgItemTextW(GetWindow(), row.value, server.value.c_str());
    EnableValue(row);
  }
  return 1;
}

int ServersPage::ReadWindowControls() {
  for (const Row& row : rows_) {
    const auto chosen = SelectedComboItem(Control(row.mode));
    Draft().SetServer(row.field, {.mode = chosen ? static_cast<wchar_t>(*chosen) : Draft().GetServer(row.field).mode,
                                  .value = Text(row.value)});
  }
  return 1;
}

int ServersPage::OnCommand(uint64_t command, int64_t control) {
  const auto row = std::ranges::find(rows_, static_cast<int>(LOWORD(command)), &Row::mode);
  if (row != rows_.end() && HIWORD(command) == CBN_SELCHANGE) EnableValue(*row);
  return WizardPageDialog::OnCommand(command, control);
}

void ServersPage::EnableValue(const Row& row) {
  const BOOL manual = SelectedComboItem(Control(row.mode)) == kManualServer ? TRUE : FALSE;
  EnableWindow(Control(row.label), manual);
  EnableWindow(Control(row.value), manual);
}
