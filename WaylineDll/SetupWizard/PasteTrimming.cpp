#include "WaylineDll/SetupWizard/PasteTrimming.h"

#include <commctrl.h>
#include <windowsx.h>

#include <optional>
#include <string>

#include "WaylineDll/SetupWizard/FieldRules.h"

namespace {

constexpr UINT_PTR kSubclass = 1;

// Keeps the clipboard open.
class OpenedClipboard {
 public:
  explicit OpenedClipboard(HWND window) : open_(OpenClipboard(window) != FALSE) {}
  ~OpenedClipboard() {
    if (open_) CloseClipboard();
  }
  OpenedClipboard(const OpenedClipboard&) = delete;
  OpenedClipboard& operator=(const OpenedClipboard&) = delete;

  // The text in it, which stays the clipboard's; nothing when there is none.
  std::optional<std::wstring> Text() const {
    const HANDLE memory = open_ ? GetClipboardData(CF_UNICODETEXT) : nullptr;
    const auto* const text = memory != nullptr ? static_cast<const wchar_t*>(GlobalLock(memory)) : nullptr;
    if (text == nullptr) return std::nullopt;
    std::wstring copy(text, wcsnlen(text, GlobalSize(memory) / sizeof(wchar_t)));
    GlobalUnlock(memory);
    return copy;
  }

 private:
  bool open_;
};

LRESULT CALLBACK TrimmingProc(HWND edit, UINT message, WPARAM wordParameter, LPARAM longParameter, UINT_PTR,
                              DWORD_PTR) {
  if (message == WM_NCDESTROY) RemoveWindowSubclass(edit, TrimmingProc, kSubclass);
  if (message == WM_PASTE) {
    if (const auto text = OpenedClipboard(edit).Text()) {
      SendMessageW(edit, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(PastedText(*text).c_str()));
      return 0;
    }
  }
  return DefSubclassProc(edit, message, wordParameter, longParameter);
}

}  // namespace

void TrimPastes(HWND edit) { SetWindowSubclass(edit, TrimmingProc, kSubclass, 0); }
