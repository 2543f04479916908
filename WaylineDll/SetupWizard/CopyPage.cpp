#include "WaylineDll/SetupWizard/CopyPage.h"

#include <windowsx.h>

#include <optional>
#include <string>

#include "WaylineDll/OpenStore.h"
#include "WaylineDll/SetupWizard/DialogKeys.h"
#include "WaylineDll/SetupWizard/ListItems.h"
#include "WaylineDll/SetupWizard/WizardStrings.h"
#include "WaylineDll/Store/SettingsStore.h"
#include "WaylineDll/StringDb.h"

namespace {

constexpr uint32_t kNoSource = 0;

std::wstring Line(unsigned text, std::wstring_view item = {}) {
  return LoadStringWithSubS(ModuleId::ClientLibrary, text, false, {item}) + L"\r\n";
}

// Nothing when it cannot be read.
std::optional<CopiedSettings> LoadCopied(uint32_t profileId) {
  PreferenceTable preferences;
  AutoStartTable items;
  SettingsStore* const store = OpenStore();
  if (store == nullptr || !store->LoadPreferences(profileId, preferences) || !store->LoadAutoStart(profileId, items)) {
    return std::nullopt;
  }
  store->LoadOwnPreferences(profileId, preferences);
  store->LoadOwnAutoStart(profileId, items);
  return CopiedOf(preferences, items);
}

// As the sheet calls it.
std::wstring NameOf(PreferenceId preference) {
  const auto id = static_cast<unsigned>(preference);
  const std::wstring label = LoadStringDb(ModuleId::LoginProperties, id, false);
  return !label.empty() ? label : std::to_wstring(id);
}

unsigned HeadingOf(const CopiedSettings& copied) {
  if (!copied.hasAutoStartList) return IDS_COPIED_NO_PROGRAMS;
  return copied.programs.empty() ? IDS_COPIED_EMPTY_PROGRAMS : IDS_COPIED_PROGRAMS;
}

std::wstring TextOf(const CopiedSettings& copied, const Profile& source) {
  std::wstring text =
      Line(source.GetDefaultPreferences() ? IDS_COPIED_FOLLOWS_PREFERENCES : IDS_COPIED_OVERRIDES_PREFERENCES);
  text += Line(source.GetDefaultAutostart() ? IDS_COPIED_FOLLOWS_AUTOSTART : IDS_COPIED_OVERRIDES_AUTOSTART);
  text += Line(HeadingOf(copied));
  for (const std::wstring& program : copied.programs) text += Line(IDS_COPIED_ENTRY, program);
  text += Line(copied.preferences.empty() ? IDS_COPIED_NO_PREFERENCES : IDS_COPIED_PREFERENCES);
  for (const PreferenceId preference : copied.preferences) text += Line(IDS_COPIED_ENTRY, NameOf(preference));
  return text;
}

}  // namespace

int CopyPage::OnInitDialog(int64_t parameter) {
  const HWND list = Control(IDC_WIZARD_COPY);
  for (const OfferedProfile& source : SourcesToCopy(Run().Profiles())) AddComboItem(list, source.name, source.id);
  // Comes first, whatever the names are.
  const std::wstring nothing = LoadStringDb(ModuleId::ClientLibrary, IDS_COPY_NOTHING, false);
  ComboBox_SetItemData(list, ComboBox_InsertString(list, 0, nothing.c_str()), kNoSource);
  LeaveKeysToDialog(Control(IDC_WIZARD_COPIED));
  return WizardPageDialog::OnInitDialog(parameter);
}

int CopyPage::SetWindowControls() {
  SelectComboItem(Control(IDC_WIZARD_COPY), Draft().copySource);
  ShowCopied();
  return 1;
}

int CopyPage::ReadWindowControls() {
  Draft().copySource = ChosenSource();
  return 1;
}

int CopyPage::OnCommand(uint64_t command, int64_t control) {
  if (LOWORD(command) == IDC_WIZARD_COPY && HIWORD(command) == CBN_SELCHANGE) ShowCopied();
  return WizardPageDialog::OnCommand(command, control);
}

uint32_t CopyPage::ChosenSource() const { return SelectedComboItem(Control(IDC_WIZARD_COPY)).value_or(kNoSource); }

void CopyPage::ShowCopied() {
  const uint32_t source = ChosenSource();
  std::wstring text;
  if (source != kNoSource) {
    const auto copied = LoadCopied(source);
    text = copied ? TextOf(*copied, *Run().Profiles().at(source)) : Line(IDS_COPIED_UNREADABLE);
  }
  SetDlgItemTextW(GetWindow(), IDC_WIZARD_COPIED, text.c_str());
  EnableWindow(Control(IDC_WIZARD_COPIED_LABEL), source != kNoSource ? TRUE : FALSE);
  EnableWindow(Control(IDC_WIZARD_COPIED), source != kNoSource ? TRUE : FALSE);
}
