#include "WaylineDll/BaseDialog.h"

#include <windowsx.h>

#include <vector>

namespace {

// The page whose window the sheet is about to create. A page's first message carries the sheet's description of the
// page where that of a modal dialog carries the object itself.
thread_local BaseDialog* pageInCreation = nullptr;

bool IsPage(HWND window) { return (GetWindowLongW(window, GWL_STYLE) & WS_CHILD) != 0; }

// Whether the window is to be closed as soon as it looks at its messages.
bool IsClosePosted(HWND window) {
  MSG message{};
  const auto isPosted = [&](UINT id) { return PeekMessageW(&message, window, id, id, PM_NOREMOVE) != FALSE; };
  constexpr WPARAM kSystemCommand = 0xfff0;  // the lowest bits are the system's own
  return isPosted(WM_CLOSE) || (isPosted(WM_SYSCOMMAND) && (message.wParam & kSystemCommand) == SC_CLOSE);
}

// Takes such messages out of the queue for as long as this lives: what is found there then has been posted meanwhile.
class EarlierCloses {
 public:
  explicit EarlierCloses(HWND window) {
    MSG message{};
    for (const UINT id : {UINT{WM_CLOSE}, UINT{WM_SYSCOMMAND}}) {
      while (PeekMessageW(&message, window, id, id, PM_REMOVE) != FALSE) messages_.push_back(message);
    }
  }
  ~EarlierCloses() {
    for (const MSG& message : messages_) PostMessageW(message.hwnd, message.message, message.wParam, message.lParam);
  }
  EarlierCloses(const EarlierCloses&) = delete;
  EarlierCloses& operator=(const EarlierCloses&) = delete;

 private:
  std::vector<MSG> messages_;
};

BaseDialog* ObjectOf(HWND window) { return reinterpret_cast<BaseDialog*>(GetWindowLongPtrW(window, DWLP_USER)); }

}  // namespace

BaseDialog::BaseDialog(HINSTANCE instance, const wchar_t* templateId, HWND parentWindow)
    : instance_(instance), templateId_(templateId), parentWindow_(parentWindow) {}

BaseDialog::~BaseDialog() = default;

int BaseDialog::SetWindowControls() { return 1; }

int BaseDialog::ReadWindowControls() { return 1; }

int BaseDialog::ValidateWindowControls() { return 1; }

int BaseDialog::OnOk(int64_t) { return ReadWindowControls(); }

int BaseDialog::OnInitDialog(int64_t) {
  SetWindowControls();
  return 1;
}

int BaseDialog::OnCancel(int64_t) { return EndDialog(window_, IDCANCEL); }

int BaseDialog::OnHelp(int64_t) { return 0; }

int BaseDialog::OnChar(int64_t) { return 0; }

int BaseDialog::OnDestroy(int64_t) { return 0; }

int BaseDialog::OnCommand(uint64_t, int64_t) { return 0; }

int BaseDialog::OnNotify(uint64_t, int64_t) { return 0; }

int BaseDialog::OnMsg(uint32_t, uint64_t, int64_t) { return 0; }

int BaseDialog::DoModal() {
  // A page whose window could not be created must not take this one.
  pageInCreation = nullptr;
  return static_cast<int>(
      DialogBoxParamW(instance_, templateId_, parentWindow_, MyDlgProc, reinterpret_cast<LPARAM>(this)));
}

INT_PTR CALLBACK BaseDialog::MyDlgProc(HWND window, UINT message, WPARAM wordParameter, LPARAM longParameter) {
  if (message == WM_INITDIALOG) {
    BaseDialog* created = pageInCreation != nullptr ? pageInCreation : reinterpret_cast<BaseDialog*>(longParameter);
    pageInCreation = nullptr;
    created->window_ = window;
    SetWindowLongPtrW(window, DWLP_USER, reinterpret_cast<LONG_PTR>(created));
  }
  // Messages that come before WM_INITDIALOG have no object yet.
  BaseDialog* const dialog = ObjectOf(window);
  return dialog != nullptr ? dialog->Dispatch(message, wordParameter, longParameter) : FALSE;
}

UINT CALLBACK BaseDialog::MyPropPageProc(HWND, UINT message, PROPSHEETPAGEW* page) {
  constexpr UINT kAllowCreation = 1;
  if (message == PSPCB_CREATE) pageInCreation = reinterpret_cast<BaseDialog*>(page->lParam);
  return kAllowCreation;
}

INT_PTR BaseDialog::Dispatch(UINT message, WPARAM wordParameter, LPARAM longParameter) {
  switch (message) {
    case WM_INITDIALOG:
      cancelling_ = false;
      return OnInitDialog(longParameter);
    case WM_COMMAND:
      return DispatchCommand(wordParameter, longParameter);
    case WM_NOTIFY:
      return DispatchNotify(wordParameter, longParameter);
    case WM_HELP:
      return OnHelp(longParameter);
    case WM_CHAR:
      return OnChar(longParameter);
    case WM_DESTROY: {
      const int result = OnDestroy(longParameter);
      SetWindowLongPtrW(window_, DWLP_USER, 0);
      window_ = nullptr;
      return result;
    }
    case WM_CLOSE: {
      // What the system does by itself would come back as the command of Cancel, which a dialog may answer by closing
      // itself.
      const int result = OnMsg(message, wordParameter, longParameter);
      if (result != 0 || IsPage(window_)) return result;
      // Under a message box of its own the dialog must not go.
      return IsWindowEnabled(window_) != FALSE ? Cancel(longParameter) : TRUE;
    }
    default:
      return OnMsg(message, wordParameter, longParameter);
  }
}

int BaseDialog::Cancel(int64_t parameter) {
  if (IsPage(window_)) return OnCancel(parameter);
  if (cancelling_) return EndDialog(window_, IDCANCEL);
  cancelling_ = true;
  const EarlierCloses earlierCloses(window_);
  const int result = OnCancel(parameter);
  cancelling_ = window_ != nullptr && IsClosePosted(window_);
  return result;
}

INT_PTR BaseDialog::DispatchCommand(WPARAM command, LPARAM control) {
  if (const int result = OnCommand(command, control); result != 0) return result;
  switch (LOWORD(command)) {
    case IDOK:
      if (ValidateWindowControls() != 0 && OnOk(control) != 0) EndDialog(window_, IDOK);
      return TRUE;
    case IDCANCEL:
      return Cancel(control);
    case IDHELP:
      return OnHelp(control);
    default:
      return FALSE;
  }
}

INT_PTR BaseDialog::DispatchNotify(WPARAM controlId, LPARAM record) {
  const NMHDR& header = *reinterpret_cast<const NMHDR*>(record);
  LONG_PTR result = OnNotify(controlId, record);
  if (header.code == PSN_APPLY && result == PSNRET_NOERROR) {
    result = OnOk(record) != 0 ? PSNRET_NOERROR : PSNRET_INVALID_NOCHANGEPAGE;
  } else if (header.code == PSN_RESET) {
    OnCancel(record);
  }
  SetWindowLongPtrW(window_, DWLP_MSGRESULT, result);
  return TRUE;
}
