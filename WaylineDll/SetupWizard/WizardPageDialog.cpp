#include "WaylineDll/SetupWizard/WizardPageDialog.h"

#include <commctrl.h>
#include <windowsx.h>

#include <algorithm>

#include "WaylineDll/Messages.h"
#include "WaylineDll/SetupWizard/FieldRules.h"
#include "WaylineDll/SetupWizard/PasteTrimming.h"
#include "WaylineDll/StringDb.h"

namespace {

// Posted by a page to itself: the field in `wordParameter` has lost the focus, and where it went is known by now.
constexpr UINT kFieldLeft = WM_APP + 1;

constexpr int kBackButton = 0x3023;  // on every wizard of the platform

constexpr int kStay = -1;

std::wstring TextOf(HWND control) {
  std::wstring text(static_cast<size_t>(GetWindowTextLengthW(control)) + 1, L'\0');
  text.resize(static_cast<size_t>(GetWindowTextW(control, text.data(), static_cast<int>(text.size()))));
  return text;
}

bool IsEdit(HWND control) {
  wchar_t name[8] = {};
  GetClassNameW(control, name, ARRAYSIZE(name));
  return _wcsicmp(name, WC_EDITW) == 0;
}

}  // namespace

WizardPageDialog::WizardPageDialog(WizardRun& run, WizardPage page)
    : PropPageDialog(GetResourceHandle(ModuleId::ClientLibrary), MAKEINTRESOURCEW(static_cast<int>(page)), nullptr),
      run_(run),
      page_(page) {}

std::wstring WizardPageDialog::Text(int id) const { return Trimmed(TextOf(Control(id))); }

// The controls are filled whenever the page comes to the front, and that is about to happen.
int WizardPageDialog::OnInitDialog(int64_t) {
  for (const int field : GetFields()) {
    if (IsEdit(Control(field))) TrimPastes(Control(field));
  }
  return 1;
}

int WizardPageDialog::OnNotify(uint64_t, int64_t record) {
  switch (reinterpret_cast<const NMHDR*>(record)->code) {
    case PSN_SETACTIVE:
      return OnActivated();
    case PSN_WIZNEXT:
      return OnNext();
    case PSN_WIZBACK:
      return OnBack();
    case PSN_WIZFINISH:
      return OnFinish();
    default:
      return 0;
  }
}

int WizardPageDialog::OnActivated() {
  SetWindowControls();
  const DWORD back = run_.Before(page_) ? PSWIZB_BACK : 0;
  PropSheet_SetWizButtons(Sheet(), back | (run_.After(page_) ? PSWIZB_NEXT : PSWIZB_FINISH));
  // The page cannot have the focus before it is shown.
  const HWND first = GetNextDlgTabItem(GetWindow(), nullptr, FALSE);
  PostMessageW(Sheet(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(first), TRUE);
  return 0;
}

int WizardPageDialog::OnNext() {
  leftField_ = 0;
  if (ValidateWindowControls() == 0) return kStay;
  ReadWindowControls();
  const auto next = run_.After(page_);
  return next ? static_cast<int>(*next) : kStay;
}

int WizardPageDialog::OnBack() {
  leftField_ = 0;
  ReadWindowControls();
  const auto previous = run_.Before(page_);
  return previous ? static_cast<int>(*previous) : kStay;
}

// Nonzero keeps the wizard open.
int WizardPageDialog::OnFinish() {
  leftField_ = 0;
  if (ValidateWindowControls() == 0) return 1;
  ReadWindowControls();
  return run_.Finish(Sheet()) ? 0 : 1;
}

int WizardPageDialog::OnCommand(uint64_t command, int64_t) {
  if (HIWORD(command) != EN_KILLFOCUS) return 0;
  const int id = LOWORD(command);
  if (!telling_ && std::ranges::count(GetFields(), id) != 0) {
    leftField_ = id;
    PostMessageW(GetWindow(), kFieldLeft, static_cast<WPARAM>(id), 0);
  }
  return 1;
}

int WizardPageDialog::OnMsg(uint32_t message, uint64_t wordParameter, int64_t) {
  if (message != kFieldLeft) return 0;
  OnFieldLeft(static_cast<int>(wordParameter));
  return 1;
}

void WizardPageDialog::OnFieldLeft(int field) {
  if (leftField_ != field) return;  // the page has been left since then, and its fields were checked if need be
  leftField_ = 0;
  if (IsLeaving(field)) CheckField(field);
}

// Whether the focus is on another control of the wizard, and not on one with which wrong fields are left behind.
bool WizardPageDialog::IsLeaving(int field) const {
  const HWND next = GetFocus();
  if (next == nullptr || IsChild(Sheet(), next) == FALSE) return false;
  if (GetParent(next) == Sheet()) return GetDlgCtrlID(next) != IDCANCEL && GetDlgCtrlID(next) != kBackButton;
  return GetDlgCtrlID(next) != field && !BelongTogether(field, GetDlgCtrlID(next));
}

int WizardPageDialog::ValidateWindowControls() {
  const std::vector<int> fields = GetFields();
  return std::ranges::all_of(fields, [this](int field) { return CheckField(field); }) ? 1 : 0;
}

bool WizardPageDialog::CheckField(int field) {
  if (IsWindowEnabled(Control(field)) == FALSE) return true;
  const Verdict verdict = Judge(field, Text(field));
  if (verdict.message != 0) {
    Tell(field, verdict);
    return false;
  }
  if (IsEdit(Control(field)) && TextOf(Control(field)) != verdict.accepted) {
    SetWindowTextW(Control(field), verdict.accepted.c_str());
  }
  return true;
}

void WizardPageDialog::Tell(int field, const Verdict& verdict) {
  // The message takes the release of the mouse button. What was pressed would wait for it.
  if (const HWND pressed = GetCapture()) SendMessageW(pressed, WM_CANCELMODE, 0, 0);
  telling_ = true;
  DisplayError(Sheet(), ModuleId::ClientLibrary, verdict.message, verdict.messageItem, {}, {});
  SendMessageW(Sheet(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(Control(field)), TRUE);
  if (IsEdit(Control(field))) Edit_SetSel(Control(field), 0, -1);
  telling_ = false;
}
