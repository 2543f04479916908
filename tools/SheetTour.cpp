// Walks through the open sheet of another process, so that a script can take a picture of each tab:
//
//   SheetTour --tabs      prints the titles of the tabs, one a line
//   SheetTour --select N  shows tab N, counted from 1, and prints where the sheet is: WIDTHxHEIGHT+LEFT+TOP
//   SheetTour --cancel    presses Cancel and waits until the sheet is gone
//
// Each waits for the sheet to appear. Ends with 0 when done; otherwise with 1 and a sentence on stderr.
#include <windows.h>

#include <commctrl.h>

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "NetUtilities/Module/Handle.h"
#include "NetUtilities/Text/Utf8.h"
#include "tests/support/WaitUntil.h"

namespace {

constexpr std::wstring_view kTitleEnd = L" - Login Properties";
constexpr UINT kAnswerLimit = 10'000;  // milliseconds

/// Memory in the process that owns a window, for messages whose pointers only mean something there.
class RemoteMemory {
 public:
  RemoteMemory(HWND window, size_t size) {
    DWORD id = 0;
    GetWindowThreadProcessId(window, &id);
    process_.reset(OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE, FALSE, id));
    if (process_) {
      address_ = static_cast<std::byte*>(
          VirtualAllocEx(process_.get(), nullptr, size, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE));
    }
  }
  RemoteMemory(const RemoteMemory&) = delete;
  RemoteMemory& operator=(const RemoteMemory&) = delete;
  ~RemoteMemory() {
    if (address_ != nullptr) VirtualFreeEx(process_.get(), address_, 0, MEM_RELEASE);
  }

  /// Null when there is none.
  std::byte* Address() const { return address_; }
  bool Write(const void* source, size_t size) {
    return WriteProcessMemory(process_.get(), address_, source, size, nullptr) != 0;
  }
  bool Read(const std::byte* from, void* target, size_t size) {
    return ReadProcessMemory(process_.get(), from, target, size, nullptr) != 0;
  }

 private:
  Handle process_;
  std::byte* address_ = nullptr;
};

/// The window's answer; `failure` when it does not answer in time.
LRESULT Ask(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0, LRESULT failure = 0) {
  DWORD_PTR answer = 0;
  const LRESULT answered = SendMessageTimeoutW(window, message, wParam, lParam, SMTO_NORMAL, kAnswerLimit, &answer);
  return answered != 0 ? static_cast<LRESULT>(answer) : failure;
}

BOOL CALLBACK KeepIfSheet(HWND window, LPARAM found) {
  wchar_t title[256] = {};
  GetWindowTextW(window, title, 256);
  if (!IsWindowVisible(window) || !std::wstring_view(title).ends_with(kTitleEnd)) return TRUE;
  *reinterpret_cast<HWND*>(found) = window;
  return FALSE;
}

HWND FindSheet() {
  HWND sheet = nullptr;
  EnumWindows(&KeepIfSheet, reinterpret_cast<LPARAM>(&sheet));
  return sheet;
}

HWND Tabs(HWND sheet) { return reinterpret_cast<HWND>(Ask(sheet, PSM_GETTABCONTROL)); }

/// The title of a tab, empty when it cannot be had.
std::wstring TabTitle(HWND tabs, int index) {
  struct {
    TCITEMW item;
    wchar_t text[256];
  } request = {};
  RemoteMemory memory(tabs, sizeof request);
  if (memory.Address() == nullptr) {
    return {};
  }

  std::byte* const text = memory.Address() + offsetof(decltype(request), text);
  request.item.mask = TCIF_TEXT;
  request.item.pszText = reinterpret_cast<wchar_t*>(text);
  request.item.cchTextMax = 255;
  if (!memory.Write(&request, sizeof request) ||
      Ask(tabs, TCM_GETITEMW, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(memory.Address())) == 0 ||
      !memory.Read(text, request.text, sizeof request.text)) {
    return {};
  }
  return request.text;
}

int Fail(const char* sentence) {
  std::fprintf(stderr, "%s\n", sentence);
  return 1;
}

int PrintTabs(HWND sheet) {
  const HWND tabs = Tabs(sheet);
  const auto count = static_cast<int>(Ask(tabs, TCM_GETITEMCOUNT));
  for (int index = 0; index < count; ++index) {
    const std::wstring title = TabTitle(tabs, index);
    if (title.empty()) return Fail("A tab does not tell its title.");
    std::printf("%s\n", ToUtf8(title).c_str());
  }
  return count > 0 ? 0 : Fail("The sheet has no tabs.");
}

int SelectTab(HWND sheet, int number) {
  // A control under the pointer would look as if somebody were about to click it.
  SetCursorPos(0, 0);
  const int index = number - 1;
  if (Ask(sheet, PSM_SETCURSEL, static_cast<WPARAM>(index)) == 0) return Fail("The sheet does not show that tab.");
  // Answered once the page has been created and filled; painting follows.
  const bool painted = WaitUntil([&] {
    const HWND page = reinterpret_cast<HWND>(Ask(sheet, PSM_GETCURRENTPAGEHWND));
    return page != nullptr && IsWindowVisible(page) && Ask(Tabs(sheet), TCM_GETCURSEL, 0, 0, -1) == index &&
           GetUpdateRect(page, nullptr, FALSE) == 0 && GetUpdateRect(sheet, nullptr, FALSE) == 0;
  });
  if (!painted) return Fail("The tab was selected, but its page did not appear.");

  RECT place = {};
  GetWindowRect(sheet, &place);
  std::printf("%ldx%ld+%ld+%ld\n", place.right - place.left, place.bottom - place.top, place.left, place.top);
  return 0;
}

int Cancel(HWND sheet) {
  PostMessageW(sheet, PSM_PRESSBUTTON, PSBTN_CANCEL, 0);
  return WaitUntil([&] { return !IsWindow(sheet); }) ? 0 : Fail("The sheet did not close.");
}

}  // namespace

int main(int argc, char** argv) {
  const std::string_view command = argc > 1 ? argv[1] : "";
  const int number = argc > 2 ? std::atoi(argv[2]) : 0;
  if (command != "--tabs" && command != "--cancel" && (command != "--select" || number < 1)) {
    return Fail("SheetTour takes --tabs, --select N or --cancel.");
  }

  HWND sheet = nullptr;
  if (!WaitUntil([&] { return (sheet = FindSheet()) != nullptr; })) return Fail("No sheet appeared.");
  if (command == "--tabs") return PrintTabs(sheet);
  if (command == "--select") return SelectTab(sheet, number);
  return Cancel(sheet);
}
