#include "LoginProperties/Autostart/AutostartDialog.h"

#include <windowsx.h>

#include <algorithm>

#include "LoginProperties/Autostart/AddProgramControls.h"
#include "LoginProperties/Autostart/AddProgramDialog.h"
#include "LoginProperties/Autostart/AutostartControls.h"
#include "LoginProperties/Autostart/AutostartStrings.h"
#include "LoginProperties/LoginPropertiesContext.h"
#include "LoginProperties/ProfilePage/CutText.h"
#include "LoginProperties/ProfilePage/DialogHelpers.h"
#include "LoginProperties/ProfilePage/FrozenDrawing.h"
#include "LoginProperties/ProfilePage/ProfileControls.h"
#include "LoginProperties/Resources/StateImages.h"
#include "NetUtilities/Log.h"
#include "NetUtilities/Text/Format.h"
#include "WaylineDll/Appearance.h"
#include "WaylineDll/AutoStart.h"
#include "WaylineDll/Messages.h"
#include "WaylineDll/StringDb.h"

namespace {

constexpr wchar_t kPolicyName[] = L"AutoStart";

constexpr PageTraits kTraits = {
    .helpTopic = 1038,
    .ownsHelpOfButton = false,
    .policyName = kPolicyName,
    .followsDefaults = [](const Profile& profile) { return profile.GetDefaultAutostart(); },
    .followDefaults = [](Profile& profile, bool follow) { profile.SetDefaultAutostart(follow); },
};

// Icons that are shared need not be released.
void SetButtonIcon(HWND page, int id, int icon) {
  constexpr int kSize = 16;
  const HANDLE image = LoadImageW(GetResourceHandle(ModuleId::LoginProperties), MAKEINTRESOURCEW(icon), IMAGE_ICON,
                                  kSize, kSize, LR_SHARED);
  SendDlgItemMessageW(page, id, BM_SETIMAGE, IMAGE_ICON, reinterpret_cast<LPARAM>(image));
}

}  // namespace

AutostartDialog::AutostartDialog(HINSTANCE instance, const wchar_t* templateId, HWND parentWindow)
    : ProfileDataDialog(instance, templateId, parentWindow, kTraits) {}

int AutostartDialog::OnInitDialog(int64_t parameter) {
  tree_.Attach(GetDlgItem(GetWindow(), IDC_AUTOSTART_TREE));
  SetButtonIcon(GetWindow(), IDC_AUTOSTART_UP, IDI_AUTOSTART_UP);
  SetButtonIcon(GetWindow(), IDC_AUTOSTART_DOWN, IDI_AUTOSTART_DOWN);
  ProfileDataDialog::OnInitDialog(parameter);
  // Here the policy also keeps the user from choosing otherwise.
  if (ApplyOverridePolicy()) EnableControl(GetWindow(), IDC_OVERRIDE_CHECK, false);
  return 1;
}

int AutostartDialog::SetWindowControls() {
  ProfileDataDialog::SetWindowControls();
  LoadEntries();
  const bool overrides = !FollowsDefaults();
  CheckControl(GetWindow(), IDC_OVERRIDE_CHECK, overrides);
  const auto topLine =
      static_cast<size_t>(std::ranges::find(items_, TreeView_GetFirstVisible(tree_.Window())) - items_.begin());
  FillTree();
  ScrollTo(topLine);
  tree_.Enable(overrides);
  ShowSelection();
  return 1;
}

// The client hands out the same records for a profile as long as the sheet is open, with what was changed in them.
void AutostartDialog::LoadEntries() {
  LoginPropertiesContext& context = GetContext();
  context.autoStartItems.clear();
  isRead_ = true;
  if (const auto& profile = context.currentProfile) {
    const uint32_t id = FollowsDefaults() ? profile->GetLinkProfile() : profile->GetProfileId();
    isRead_ = GetAutoStart(id, context.autoStartItems);
    if (!isRead_) Log(LogLevel::Error, Format(L"The autostart entries of profile {} cannot be read", id));
  }
  entries_ = InOrder(context.autoStartItems);
}

void AutostartDialog::FillTree() {
  constexpr size_t kLongestName = 259;
  const HWND tree = tree_.Window();
  const FrozenDrawing frozen(tree);
  isFilling_ = true;
  TreeView_DeleteAllItems(tree);
  SetWindowFont(tree, GetProportionalFont(), FALSE);
  TreeView_SetIndent(tree, 0);  // the tree takes the least that it can
  items_.clear();
  HTREEITEM header = TVI_ROOT;
  const auto expand = [&] {
    if (header != TVI_ROOT) TreeView_Expand(tree, header, TVE_EXPAND);
  };
  for (const auto& record : entries_) {
    const std::wstring name = CutText(record->fields.name, kLongestName);
    const auto key = static_cast<LPARAM>(SortKey(*record));
    if (IsEntry(*record)) {
      items_.push_back(tree_.Add(header, {name, key}));
      continue;
    }
    expand();
    header = tree_.Add(TVI_ROOT, {name, key, kStartImage, true});
    items_.push_back(header);
  }
  expand();
  SelectRemembered();
  isFilling_ = false;
}

// Shows the selected item, and otherwise what was shown before. A tree that is not being drawn does not scroll.
void AutostartDialog::ScrollTo(size_t topLine) const {
  const HWND tree = tree_.Window();
  if (topLine < items_.size()) TreeView_SelectSetFirstVisible(tree, items_[topLine]);
  if (const HTREEITEM selected = TreeView_GetSelection(tree)) TreeView_EnsureVisible(tree, selected);
}

// The first item when what was selected is not there any more.
void AutostartDialog::SelectRemembered() {
  if (entries_.empty()) {
    selected_ = nullptr;
    return;
  }
  const size_t place = SelectedPlace().value_or(0);
  selected_ = entries_[place];
  TreeView_SelectItem(tree_.Window(), items_[place]);
}

void AutostartDialog::ShowSelection() const {
  const HWND focused = GetFocus();
  const bool overrides = !FollowsDefaults();
  const auto place = overrides ? SelectedEntry() : std::nullopt;
  // Something added to a list that cannot be read would take the place of all of it.
  EnableControl(GetWindow(), IDC_AUTOSTART_ADD, overrides && isRead_);
  EnableControl(GetWindow(), IDC_AUTOSTART_CHANGE, place.has_value());
  EnableControl(GetWindow(), IDC_AUTOSTART_REMOVE, place.has_value());
  EnableControl(GetWindow(), IDC_AUTOSTART_UP, place && CanMoveUp(entries_, *place));
  EnableControl(GetWindow(), IDC_AUTOSTART_DOWN, place && CanMoveDown(entries_, *place));
  // With a button that goes out of use the keyboard would be lost. In the end: a tree that gets the focus may select.
  if (focused != nullptr && IsChild(GetWindow(), focused) != FALSE && IsWindowEnabled(focused) == FALSE) {
    SendMessageW(GetWindow(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(tree_.Window()), TRUE);
  }
}

int AutostartDialog::OnNotify(uint64_t controlId, int64_t record) {
  const NMHDR& notification = *reinterpret_cast<const NMHDR*>(record);
  if (notification.hwndFrom == nullptr || notification.hwndFrom != tree_.Window()) {
    return ProfileDataDialog::OnNotify(controlId, record);
  }
  switch (notification.code) {
    case TVN_SELCHANGEDW:
      if (!isFilling_) OnSelected(reinterpret_cast<const NMTREEVIEWW&>(notification).itemNew.hItem);
      return 1;
    case NM_DBLCLK:
      // Once the tree has dealt with the click.
      if (SelectedEntry()) PostMessageW(GetWindow(), WM_COMMAND, IDC_AUTOSTART_CHANGE, 0);
      return 0;
    default:
      return 0;
  }
}

void AutostartDialog::OnSelected(HTREEITEM item) {
  const auto found = std::ranges::find(items_, item);
  selected_ = found != items_.end() ? entries_[static_cast<size_t>(found - items_.begin())] : nullptr;
  ShowSelection();
}

int AutostartDialog::OnCommand(uint64_t command, int64_t control) {
  if (IsUnderDialog()) return 1;
  switch (LOWORD(command)) {
    case IDC_AUTOSTART_ADD:
      Add();
      return 1;
    case IDC_AUTOSTART_CHANGE:
      Change();
      return 1;
    case IDC_AUTOSTART_REMOVE:
      Remove();
      return 1;
    case IDC_AUTOSTART_UP:
      Move(MoveUp);
      return 1;
    case IDC_AUTOSTART_DOWN:
      Move(MoveDown);
      return 1;
    default:
      return ProfileDataDialog::OnCommand(command, control);
  }
}

std::optional<size_t> AutostartDialog::SelectedPlace() const {
  const auto found = std::ranges::find(entries_, selected_);
  if (found == entries_.end()) return std::nullopt;
  return static_cast<size_t>(found - entries_.begin());
}

std::optional<size_t> AutostartDialog::SelectedEntry() const {
  const auto place = SelectedPlace();
  return place && IsEntry(*entries_[*place]) ? place : std::nullopt;
}

// The user is told of one that the administrator keeps as it is.
std::optional<size_t> AutostartDialog::SelectedModifiable() const {
  const auto place = SelectedEntry();
  if (!place || entries_[*place]->fields.modifiable) return place;
  DisplayMessage(GetWindow(), ModuleId::LoginProperties, IDS_AUTOSTART_NOT_MODIFIABLE, {}, {});
  return std::nullopt;
}

bool AutostartDialog::Edit(const Record& record) const {
  AddProgramDialog dialog(GetResourceHandle(ModuleId::LoginProperties), MAKEINTRESOURCEW(IDD_ADD_PROGRAM), GetWindow(),
                          record);
  return dialog.DoModal() == IDOK;
}

void AutostartDialog::Add() {
  const auto& profile = GetContext().currentProfile;
  if (!profile || FollowsDefaults()) return;
  const Record added = CreateNewItem(profile->GetProfileId());
  if (!added) return;
  const auto selected = SelectedPlace();
  if (selected) added->fields.phase = entries_[*selected]->fields.phase;
  if (!Edit(added)) return;
  added->fields.order = OrderOfNew(entries_, selected, *added);
  added->SetState(ChangeState::New);
  GetContext().autoStartItems[static_cast<uint32_t>(added->fields.id)] = added;
  SetWindowControls();
}

void AutostartDialog::Change() {
  const auto place = SelectedModifiable();
  if (!place) return;
  const Record changed = entries_[*place];
  const uint16_t phase = changed->fields.phase;
  if (!Edit(changed)) return;
  if (changed->fields.phase != phase) changed->fields.order = OrderInNewPhase(entries_, *changed);
  changed->SetState(ChangeState::Changed);
  SetWindowControls();
}

void AutostartDialog::Remove() {
  const auto place = SelectedModifiable();
  if (!place) return;
  const Record removed = entries_[*place];
  if (AskYesNo(GetWindow(), ModuleId::LoginProperties, IDS_CONFIRM_REMOVE_AUTOSTART, removed->fields.name, {}) == 0) {
    return;
  }
  removed->SetState(ChangeState::Removed);
  selected_ = entries_.at(PlaceAfterRemoval(entries_, *place));
  SetWindowControls();
}

void AutostartDialog::Move(void (*move)(const AutostartList& list, size_t place)) {
  const auto place = SelectedModifiable();
  if (!place) return;
  move(entries_, *place);
  SetWindowControls();
}
