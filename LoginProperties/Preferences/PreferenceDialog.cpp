#include "LoginProperties/Preferences/PreferenceDialog.h"

#include <windowsx.h>

#include "LoginProperties/LoginPropertiesContext.h"
#include "LoginProperties/Preferences/PreferenceControls.h"
#include "LoginProperties/ProfilePage/DialogHelpers.h"
#include "LoginProperties/ProfilePage/FrozenDrawing.h"
#include "LoginProperties/ProfilePage/ProfileControls.h"
#include "NetUtilities/Log.h"
#include "NetUtilities/Registry/RegistryKey.h"
#include "NetUtilities/Registry/RegistryNames.h"
#include "NetUtilities/Text/Format.h"
#include "WaylineDll/Appearance.h"
#include "WaylineDll/CertificateAuth.h"
#include "WaylineDll/MultiHoming.h"
#include "WaylineDll/Preferences.h"

namespace {

constexpr wchar_t kPolicyName[] = L"Preference";

constexpr PageTraits kTraits = {
    .helpTopic = 1033,
    .policyName = kPolicyName,
    .followsDefaults = [](const Profile& profile) { return profile.GetDefaultPreferences(); },
    .followDefaults = [](Profile& profile, bool follow) { profile.SetDefaultPreferences(follow); },
};

bool HasSavedCertificate() {
  const auto& profile = GetContext().currentProfile;
  if (!profile) return false;
  const std::wstring digits = profile->GetHexDigCertHash();
  const auto parsed = ParseCertificateHash(digits);
  if (!parsed && !digits.empty()) {
    Log(LogLevel::Error,
        Format(L"Profile {} has a certificate hash that cannot be read: '{}'", profile->GetProfileId(), digits));
  }
  // Without a hash, one of zeros, which no certificate has.
  const CertificateHash hash = parsed.value_or(CertificateHash(kMd5Size));
  return CertificateAuth().HasSavedCertificate(hash.data(), static_cast<uint32_t>(hash.size()));
}

TreeConditions ReadConditions(bool overrides) {
  constexpr DWORD kBypass = 1;
  TreeConditions conditions;
  bool preventMultiHoming = false;
  if (IsMultiHomingControlAuthorized(&preventMultiHoming)) conditions.preventMultiHoming = preventMultiHoming;
  if (overrides) {
    conditions.bypassHardwareRendering =
        ReadRegistryDword(HKEY_LOCAL_MACHINE, kClientKey, kBypassHardwareRenderingValue, 0) == kBypass;
  }
  return conditions;
}

std::wstring LabelOf(const PreferenceEntry& entry) {
  const bool hasText = entry.kind == EntryKind::CheckBoxWithText || entry.kind == EntryKind::RadioOptionWithText;
  return hasText ? entry.text : OwnString(static_cast<unsigned>(entry.id));
}

// An item as the log names it.
uintptr_t Number(HTREEITEM item) { return reinterpret_cast<uintptr_t>(item); }

}  // namespace

PreferenceDialog::PreferenceDialog(HINSTANCE instance, const wchar_t* templateId, HWND parentWindow)
    : ProfileDataDialog(instance, templateId, parentWindow, kTraits), hasSavedCertificate_(HasSavedCertificate()) {}

int PreferenceDialog::OnInitDialog(int64_t parameter) {
  ProfileDataDialog::OnInitDialog(parameter);
  tree_.Attach(GetDlgItem(GetWindow(), IDC_PREFERENCE_TREE));
  inputFilter_.Attach(tree_.Window(), GetWindow());
  if (ApplyOverridePolicy()) {
    EnableControl(GetWindow(), IDC_OVERRIDE_CHECK, true);
    SetWindowControls();
  }
  return 1;
}

int PreferenceDialog::SetWindowControls() {
  ProfileDataDialog::SetWindowControls();
  LoginPropertiesContext& context = GetContext();
  if (!context.currentProfile) return 1;
  const Profile& edited = *context.currentProfile;
  Log(LogLevel::Trace, Format(L"SetWindowControls profile id {}", edited.GetProfileId()));
  const bool overrides = !FollowsDefaults();
  inputFilter_.SetEditable(overrides);
  context.preferences.clear();
  GetPreferences(ProfileToLoad(edited), context.preferences);
  // Anew, because what is not in the table has its built-in state, not that of the profile shown before.
  description_ = MakePreferenceTree(hasSavedCertificate_);
  ApplyPreferences(context.preferences, description_);

  const HWND tree = tree_.Window();
  const FrozenDrawing frozen(tree);
  TreeView_DeleteAllItems(tree);
  SetWindowFont(tree, GetProportionalFont(), FALSE);
  CheckControl(GetWindow(), IDC_OVERRIDE_CHECK, overrides);
  FillTree(ReadConditions(overrides));
  tree_.Enable(overrides);
  TreeView_SelectSetFirstVisible(tree, TreeView_GetRoot(tree));
  return 1;
}

// A click writes its preference at once.
int PreferenceDialog::ReadWindowControls() { return 1; }

void PreferenceDialog::FillTree(const TreeConditions& conditions) {
  TreeView_SetIndent(tree_.Window(), 0);  // the tree takes the least that it can
  for (const PreferenceGroup& group : description_) {
    const HTREEITEM heading = AddGroup(group);
    for (const PreferenceEntry& entry : group.entries) {
      if (const auto state = ShownState(entry, conditions)) AddEntry(heading, entry, *state);
    }
    TreeView_Expand(tree_.Window(), heading, TVE_EXPAND);
  }
}

HTREEITEM PreferenceDialog::AddGroup(const PreferenceGroup& group) {
  const std::wstring text = OwnString(static_cast<unsigned>(group.id));
  const HTREEITEM item = tree_.Add(TVI_ROOT, {text, static_cast<LPARAM>(group.id), group.headingImage, true});
  Log(LogLevel::Trace, Format(L"Header {} {} - item {:#08x}", text, static_cast<int32_t>(group.id), Number(item)));
  return item;
}

void PreferenceDialog::AddEntry(HTREEITEM group, const PreferenceEntry& entry, int32_t state) {
  const std::wstring text = LabelOf(entry);
  const HTREEITEM item = tree_.Add(group, {text, static_cast<LPARAM>(entry.id), StateImage(entry.kind, state)});
  Log(LogLevel::Trace, Format(L"AddChildrenToTreeView {} {} - state {} item {:#08x}", text,
                              static_cast<int32_t>(entry.id), state, Number(item)));
}

PreferenceId PreferenceDialog::IdOf(HTREEITEM item) const { return static_cast<PreferenceId>(tree_.ValueOf(item)); }

void PreferenceDialog::ToggleItem(HTREEITEM item) {
  const auto images = Toggle(IdOf(item), description_, GetContext().preferences);
  if (images.empty()) return;
  const HWND tree = tree_.Window();
  HTREEITEM sibling = TreeView_GetChild(tree, TreeView_GetParent(tree, item));
  for (; sibling != nullptr; sibling = TreeView_GetNextSibling(tree, sibling)) {
    const auto image = images.find(IdOf(sibling));
    if (image != images.end()) tree_.SetImage(sibling, image->second);
  }
}

int PreferenceDialog::OnMsg(uint32_t message, uint64_t item, int64_t) {
  if (message != TreeInputFilter::kToggleItem) return 0;
  ToggleItem(reinterpret_cast<HTREEITEM>(item));
  return 1;
}
