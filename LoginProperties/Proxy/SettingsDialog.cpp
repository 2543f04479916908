#include "LoginProperties/Proxy/SettingsDialog.h"

#include "LoginProperties/ProfilePage/CutText.h"
#include "LoginProperties/ProfilePage/DialogHelpers.h"
#include "LoginProperties/ProfilePage/FrozenDrawing.h"
#include "LoginProperties/Proxy/ProxyStrings.h"
#include "LoginProperties/Proxy/SettingsControls.h"
#include "WaylineDll/Appearance.h"
#include "WaylineDll/Help.h"

namespace {

constexpr size_t kLongestText = 63;

constexpr uint32_t kHelpTopic = 1049;
constexpr uint32_t kHelpCommand = 15;

}  // namespace

SettingsDialog::SettingsDialog(HINSTANCE instance, const wchar_t* templateId, HWND parentWindow)
    : BaseDialog(instance, templateId, parentWindow) {}

void SettingsDialog::Load(const std::wstring& text, bool manual) {
  manual_ = manual;
  entries_.Load(text);
}

std::wstring SettingsDialog::Result() const { return entries_.Joined(); }

int SettingsDialog::OnInitDialog(int64_t) {
  CenterWindow(GetWindow(), GetParent(GetWindow()));
  list_.Attach(GetDlgItem(GetWindow(), IDC_SETTINGS_LIST));
  SetDlgItemTextW(GetWindow(), IDC_SETTINGS_CAPTION,
                  OwnString(manual_ ? IDS_MANUAL_PROXY_CAPTION : IDS_PROXY_EXCEPTIONS_CAPTION).c_str());
  columnsWidth_ = list_.Width();
  list_.AddColumn(OwnString(IDS_PROXY_COLUMN_ADDRESS), columnsWidth_ / 2);
  list_.AddColumn(OwnString(IDS_PROXY_COLUMN_PORT), columnsWidth_ / 2);
  if (!manual_) {
    HideControl(GetWindow(), IDC_SETTINGS_PORT);
    HideControl(GetWindow(), IDC_SETTINGS_PORT_LABEL);
  }
  return SetWindowControls();
}

int SettingsDialog::SetWindowControls() {
  FillList();
  FitColumns();
  return 1;
}

void SettingsDialog::FillList() const {
  const FrozenDrawing frozen(list_.Window());
  list_.Clear();
  for (const auto& [address, port] : entries_.All()) list_.AddRow({address, port});
}

// The scroll bar of a long list takes its width from the columns.
void SettingsDialog::FitColumns() {
  const int width = list_.Width();
  if (width == columnsWidth_) return;
  columnsWidth_ = width;
  for (const int column : {0, 1}) list_.SetHeaderWidth(column, width / 2);
}

// The buttons read what they need.
int SettingsDialog::ReadWindowControls() { return 1; }

int SettingsDialog::OnNotify(uint64_t, int64_t record) {
  const auto row = ReportList::SelectedRow(*reinterpret_cast<const NMHDR*>(record));
  if (!row) return 0;
  selectedRow_ = *row;
  ShowSelected();
  return 1;
}

void SettingsDialog::ShowSelected() const {
  const auto& [address, port] = entries_.All().at(selectedRow_);
  SetDlgItemTextW(GetWindow(), IDC_SETTINGS_ADDRESS, CutText(address, kLongestText).c_str());
  if (manual_) SetDlgItemTextW(GetWindow(), IDC_SETTINGS_PORT, CutText(port, kLongestText).c_str());
}

int SettingsDialog::OnCommand(uint64_t command, int64_t) {
  switch (LOWORD(command)) {
    case IDC_SETTINGS_ADD:
      Add();
      return 1;
    case IDC_SETTINGS_CHANGE:
      Change();
      return 1;
    case IDC_SETTINGS_DELETE:
      Delete();
      return 1;
    case IDOK:
      EndDialog(GetWindow(), IDOK);
      return 1;
    case IDCANCEL:
      // As the title bar does it.
      PostMessageW(GetWindow(), WM_SYSCOMMAND, SC_CLOSE, 0);
      return 1;
    case IDHELP:
      DisplayHelp(kHelpTopic, nullptr, kHelpCommand);
      return 1;
    default:
      return 0;
  }
}

ProxyEntry SettingsDialog::ReadEntry() const {
  return {ControlText(GetWindow(), IDC_SETTINGS_ADDRESS, kLongestText),
          manual_ ? ControlText(GetWindow(), IDC_SETTINGS_PORT, kLongestText) : std::wstring()};
}

void SettingsDialog::Add() {
  const ProxyEntry entry = ReadEntry();
  if (entry.address.empty()) return;
  entries_.Add(entry);
  SetWindowControls();
}

void SettingsDialog::Change() {
  const ProxyEntry entry = ReadEntry();
  if (entry.address.empty()) return;
  entries_.ChangeFirstLike(selectedRow_, entry);
  SetWindowControls();
}

void SettingsDialog::Delete() {
  entries_.DeleteFirstLike(selectedRow_);
  SetWindowControls();
}

int SettingsDialog::OnHelp(int64_t) {
  DisplayHelp(kHelpTopic, GetWindow(), kHelpCommand);
  return 1;
}
