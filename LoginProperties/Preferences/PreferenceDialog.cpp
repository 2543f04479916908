#include "LoginProperties/Preferences/PreferenceDialog.h"

#include <windowsx.h>

#include "LoginProperties/LoginPropertiesContext.h"
#include "LoginProperties/Preferences/PreferenceControls.h"
#include "LoginProperties/ProfilePage/DialogHelpers.h"
#include "LoginProperties/ProfilePage/ProfileControls.h"
#include "LoginProperties/Resources/StateImages.h"
#include "NetUtilities/Log.h"
#include "NetUtilities/Registry/RegistryKey.h"
#include "NetUtilities/Registry/RegistryNames.h"
#include "NetUtilities/Text/Format.h"
#include "WaylineDll/Appearance.h"
#include "WaylineDll/CertificateAuth.h"
#include "WaylineDll/LiveState.h"
#include "WaylineDll/Messages.h"
#include "WaylineDll/Records.h"
#include "WaylineDll/StringDb.h"

namespace {

constexpr uint32_t kHelpTopic = 1033;
constexpr wchar_t kPolicyName[] = L"Preference";

// While it lives, changes of a window are not drawn.
class FrozenDrawing {
 public:
  explicit FrozenDrawing(HWND window) : window_(window) { SetWindowRedraw(window, FALSE); }
  ~FrozenDrawing() {
    SetWindowRedraw(window_, TRUE);
    InvalidateRect(window_, nullptr, TRUE);
  }
  FrozenDrawing(const FrozenDrawing&) = delete;
  FrozenDrawing& operator=(const FrozenDrawing&) = delete;

 private:
  HWND window_;
};

bool HasSavedCertificate() {
  const auto& profile = GetContext().currentProfile;
  if (!profile) return false;
  const CertificateHash hash = ParseCertificateHash(profile->GetHexDigCertHash());
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

HTREEITEM InsertItem(HWND tree, HTREEITEM parent, std::wstring& text, PreferenceId id, int stateImage, bool isHeading) {
  TVINSERTSTRUCTW insert{};
  insert.hParent = parent;
  insert.hInsertAfter = TVI_LAST;
  insert.item.mask = TVIF_TEXT | TVIF_PARAM | TVIF_STATE | TVIF_CHILDREN;
  insert.item.pszText = text.data();
  insert.item.lParam = static_cast<LPARAM>(id);
  insert.item.state = INDEXTOSTATEIMAGEMASK(static_cast<UINT>(stateImage));
  insert.item.stateMask = TVIS_STATEIMAGEMASK;
  insert.item.cChildren = isHeading ? 1 : 0;
  return TreeView_InsertItem(tree, &insert);
}

PreferenceId IdOf(HWND tree, HTREEITEM item) {
  TVITEMW data{};
  data.mask = TVIF_PARAM;
  data.hItem = item;
  TreeView_GetItem(tree, &data);
  return static_cast<PreferenceId>(data.lParam);
}

// Not every system shows by itself that a tree is disabled.
void EnableTree(HWND tree, bool enable) {
  constexpr COLORREF kSystemsColour = static_cast<COLORREF>(-1);
  EnableWindow(tree, enable);
  TreeView_SetTextColor(tree, enable ? kSystemsColour : GetSysColor(COLOR_GRAYTEXT));
}

// An item as the log names it.
uintptr_t Number(HTREEITEM item) { return reinterpret_cast<uintptr_t>(item); }

}  // namespace

PreferenceDialog::PreferenceDialog(HINSTANCE instance, const wchar_t* templateId, HWND parentWindow)
    : ProfileDataDialog(instance, templateId, parentWindow), description_(MakePreferenceTree(HasSavedCertificate())) {}

int PreferenceDialog::OnInitDialog(int64_t parameter) {
  ProfileDataDialog::OnInitDialog(parameter);
  tree_ = GetDlgItem(GetWindow(), IDC_PREFERENCE_TREE);
  inputFilter_.Attach(tree_, GetWindow());
  stateImages_.reset(ImageList_LoadImageW(GetResourceHandle(ModuleId::LoginProperties),
                                          MAKEINTRESOURCEW(IDB_STATE_IMAGES), kStateImageSize, 0, RGB(255, 255, 255),
                                          IMAGE_BITMAP, LR_CREATEDIBSECTION));
  TreeView_SetImageList(tree_, stateImages_.get(), TVSIL_STATE);
  TreeView_SetExtendedStyle(tree_, TVS_EX_DOUBLEBUFFER, TVS_EX_DOUBLEBUFFER);
  if (ApplyOverridePolicy(kPolicyName, &Profile::SetDefaultPreferences)) SetWindowControls();
  return 1;
}

int PreferenceDialog::SetWindowControls() {
  ProfileDataDialog::SetWindowControls();
  LoginPropertiesContext& context = GetContext();
  if (!context.currentProfile) return 1;
  const Profile& edited = *context.currentProfile;
  Log(LogLevel::Trace, Format(L"SetWindowControls profile id {}", edited.GetProfileId()));
  const bool overrides = !edited.GetDefaultPreferences();
  inputFilter_.SetEditable(overrides);
  context.preferences.clear();
  GetPreferences(ProfileToLoad(edited), context.preferences);
  ApplyPreferences(context.preferences, description_);

  const FrozenDrawing frozen(tree_);
  TreeView_DeleteAllItems(tree_);
  SetWindowFont(tree_, GetProportionalFont(), FALSE);
  CheckControl(GetWindow(), IDC_OVERRIDE_CHECK, overrides);
  FillTree(ReadConditions(overrides));
  EnableTree(tree_, overrides);
  TreeView_SelectSetFirstVisible(tree_, TreeView_GetRoot(tree_));
  return 1;
}

// A click writes its preference at once.
int PreferenceDialog::ReadWindowControls() { return 1; }

void PreferenceDialog::FillTree(const TreeConditions& conditions) {
  TreeView_SetIndent(tree_, 0);  // the tree takes the least that it can
  for (const PreferenceGroup& group : description_) {
    const HTREEITEM heading = AddGroup(group);
    for (const PreferenceEntry& entry : group.entries) {
      if (const auto state = ShownState(entry, conditions)) AddEntry(heading, entry, *state);
    }
    TreeView_Expand(tree_, heading, TVE_EXPAND);
  }
}

HTREEITEM PreferenceDialog::AddGroup(const PreferenceGroup& group) {
  std::wstring text = OwnString(static_cast<unsigned>(group.id));
  const HTREEITEM item = InsertItem(tree_, TVI_ROOT, text, group.id, group.headingImage, true);
  Log(LogLevel::Trace, Format(L"Header {} {} - item {:#08x}", text, static_cast<int32_t>(group.id), Number(item)));
  return item;
}

void PreferenceDialog::AddEntry(HTREEITEM group, const PreferenceEntry& entry, int32_t state) {
  std::wstring text = LabelOf(entry);
  const HTREEITEM item = InsertItem(tree_, group, text, entry.id, StateImage(entry.kind, state), false);
  Log(LogLevel::Trace, Format(L"AddChildrenToTreeView {} {} - state {} item {:#08x}", text,
                              static_cast<int32_t>(entry.id), state, Number(item)));
}

void PreferenceDialog::ToggleItem(HTREEITEM item) {
  const auto images = Toggle(IdOf(tree_, item), description_, GetContext().preferences);
  if (images.empty()) return;
  HTREEITEM sibling = TreeView_GetChild(tree_, TreeView_GetParent(tree_, item));
  for (; sibling != nullptr; sibling = TreeView_GetNextSibling(tree_, sibling)) {
    const auto image = images.find(IdOf(tree_, sibling));
    if (image == images.end()) continue;
    TreeView_SetItemState(tree_, sibling, INDEXTOSTATEIMAGEMASK(static_cast<UINT>(image->second)), TVIS_STATEIMAGEMASK);
  }
}

int PreferenceDialog::OnHelp(int64_t) {
  DisplayHelp(kHelpTopic, nullptr, kHelpCommand);
  return 1;
}

int PreferenceDialog::OnCommand(uint64_t command, int64_t) {
  switch (LOWORD(command)) {
    case IDC_OVERRIDE_CHECK:
      return OnOverrideClicked(&Profile::SetDefaultPreferences);
    case IDC_PROFILE_COMBO:
      return HIWORD(command) == CBN_SELCHANGE ? OnProfileSelected() : 0;
    default:
      return 0;
  }
}

int PreferenceDialog::OnNotify(uint64_t, int64_t record) {
  return OnSheetNotification(record, kHelpTopic, GetWindow());
}

int PreferenceDialog::OnMsg(uint32_t message, uint64_t item, int64_t) {
  if (message != TreeInputFilter::kToggleItem) return 0;
  ToggleItem(reinterpret_cast<HTREEITEM>(item));
  return 1;
}
