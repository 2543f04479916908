// Walks through the open sheet of another process, so that a script can take a picture of each tab and dialog:
//
//   SheetTour --tabs       prints the titles of the tabs, one a line
//   SheetTour --select N   shows tab N, counted from 1, and prints where the sheet is: WIDTHxHEIGHT+LEFT+TOP
//   SheetTour --dialogs    prints the names of the dialogs that its tabs open, one a line
//   SheetTour --open NAME  opens a dialog as a user would, and prints where it is; nothing if its tab does not let one
//   SheetTour --close      cancels the dialog
//   SheetTour --cancel     presses Cancel and waits until the sheet is gone
//
// Each waits for the sheet to appear. Ends with 0 when done; otherwise with 1 and a sentence on stderr.
#include <windows.h>

#include <commctrl.h>

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "LoginProperties/Autostart/AddProgramControls.h"
#include "LoginProperties/Autostart/AutostartControls.h"
#include "LoginProperties/General/GeneralControls.h"
#include "LoginProperties/ProfilePage/ProfileControls.h"
#include "LoginProperties/Proxy/ProxyControls.h"
#include "NetUtilities/Module/Handle.h"
#include "NetUtilities/Text/Utf8.h"
#include "tests/support/WaitUntil.h"

namespace {

constexpr std::wstring_view kTitleEnd = L" - Login Properties";
constexpr UINT kAnswerLimit = 10'000;  // milliseconds

/// What a user does with a control on the way to a dialog, or in it.
struct Step {
  enum class Kind : uint8_t { Tick, ChooseNextLine, Press };
  Kind kind;
  int control;
};

/// A dialog, and how it is reached from its tab.
struct Dialog {
  std::string_view name;
  std::wstring_view tab;
  std::vector<Step> way;     // the last step opens it
  std::vector<Step> inside;  // once it is open
};

const std::vector<Dialog>& Dialogs() {
  using enum Step::Kind;
  static const std::vector<Step> kNewEntry = {{Tick, IDC_OVERRIDE_CHECK}, {Press, IDC_AUTOSTART_ADD}};
  static const std::vector<Dialog> kDialogs = {
      {.name = "rename-profile", .tab = L"General", .way = {{Press, IDC_GENERAL_RENAME}}, .inside = {}},
      {.name = "new-profile-1-name", .tab = L"General", .way = {{Press, IDC_GENERAL_NEW}}, .inside = {}},
      {.name = "autostart-entry", .tab = L"Autostart", .way = kNewEntry, .inside = {}},
      {.name = "autostart-entry-advanced",
       .tab = L"Autostart",
       .way = kNewEntry,
       .inside = {{Tick, IDC_PROGRAM_ADVANCED_CHECK}}},
      {.name = "program-settings-proxies",
       .tab = L"Proxy",
       .way = {{Tick, IDC_OVERRIDE_CHECK},
               {ChooseNextLine, IDC_PROXY_LIST},
               {Tick, IDC_PROXY_MANUAL_RADIO},
               {Press, IDC_PROXY_SETTINGS}},
       .inside = {}},
  };
  return kDialogs;
}

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

std::vector<std::wstring> TabTitles(HWND sheet) {
  const HWND tabs = Tabs(sheet);
  std::vector<std::wstring> titles(static_cast<size_t>(Ask(tabs, TCM_GETITEMCOUNT)));
  for (size_t index = 0; index < titles.size(); ++index) titles[index] = TabTitle(tabs, static_cast<int>(index));
  return titles;
}

/// The number of the tab with a title, counted from 1; 0 when the sheet has no such tab.
int FindTab(HWND sheet, std::wstring_view title) {
  const std::vector<std::wstring> titles = TabTitles(sheet);
  const auto found = std::ranges::find(titles, title);
  return found != titles.end() ? static_cast<int>(found - titles.begin()) + 1 : 0;
}

int PrintTabs(HWND sheet) {
  const std::vector<std::wstring> titles = TabTitles(sheet);
  for (const std::wstring& title : titles) {
    if (title.empty()) return Fail("A tab does not tell its title.");
    std::printf("%s\n", ToUtf8(title).c_str());
  }
  return titles.empty() ? Fail("The sheet has no tabs.") : 0;
}

int PrintDialogs(HWND sheet) {
  for (const Dialog& dialog : Dialogs()) {
    if (FindTab(sheet, dialog.tab) != 0)
      std::printf("%.*s\n", static_cast<int>(dialog.name.size()), dialog.name.data());
  }
  return 0;
}

bool IsPainted(HWND window) { return IsWindowVisible(window) && GetUpdateRect(window, nullptr, FALSE) == 0; }

int PrintPlace(HWND window) {
  RECT place = {};
  GetWindowRect(window, &place);
  std::printf("%ldx%ld+%ld+%ld\n", place.right - place.left, place.bottom - place.top, place.left, place.top);
  return 0;
}

/// The page of a tab, once it can be seen; null when it does not come.
HWND ShowTab(HWND sheet, int number) {
  // A control under the pointer would look as if somebody were about to click it.
  SetCursorPos(0, 0);
  const int index = number - 1;
  if (Ask(sheet, PSM_SETCURSEL, static_cast<WPARAM>(index)) == 0) return nullptr;
  // Answered once the page has been created and filled; painting follows.
  HWND page = nullptr;
  const bool painted = WaitUntil([&] {
    page = reinterpret_cast<HWND>(Ask(sheet, PSM_GETCURRENTPAGEHWND));
    return page != nullptr && IsPainted(page) && IsPainted(sheet) && Ask(Tabs(sheet), TCM_GETCURSEL, 0, 0, -1) == index;
  });
  return painted ? page : nullptr;
}

int SelectTab(HWND sheet, int number) {
  return ShowTab(sheet, number) != nullptr ? PrintPlace(sheet) : Fail("The sheet does not show that tab.");
}

BOOL CALLBACK KeepIfInUse(HWND window, LPARAM found) {
  if (!IsWindowVisible(window) || !IsWindowEnabled(window)) return TRUE;
  *reinterpret_cast<HWND*>(found) = window;
  return FALSE;
}

/// The dialog that is open over the sheet; null when there is none.
HWND FindDialog(HWND sheet) {
  if (IsWindowEnabled(sheet)) return nullptr;
  HWND dialog = nullptr;
  EnumThreadWindows(GetWindowThreadProcessId(sheet, nullptr), &KeepIfInUse, reinterpret_cast<LPARAM>(&dialog));
  return dialog;
}

/// False when the control cannot be used.
bool Take(const Step& step, HWND window) {
  const HWND control = GetDlgItem(window, step.control);
  if (control == nullptr || !IsWindowEnabled(control)) return false;
  switch (step.kind) {
    case Step::Kind::Tick:
      if (Ask(control, BM_GETCHECK) != BST_CHECKED) Ask(control, BM_CLICK);
      return Ask(control, BM_GETCHECK) == BST_CHECKED;
    case Step::Kind::ChooseNextLine:
      Ask(control, WM_KEYDOWN, VK_DOWN);
      return true;
    case Step::Kind::Press:
      return PostMessageW(control, BM_CLICK, 0, 0) != 0;  // which returns when the dialog closes
  }
  return false;
}

bool TakeAll(const std::vector<Step>& steps, HWND window) {
  return std::ranges::all_of(steps, [&](const Step& step) { return Take(step, window); });
}

int OpenDialog(HWND sheet, std::string_view name) {
  const auto dialog = std::ranges::find(Dialogs(), name, &Dialog::name);
  if (dialog == Dialogs().end()) return Fail("There is no such dialog.");
  const HWND page = ShowTab(sheet, FindTab(sheet, dialog->tab));
  if (page == nullptr) return Fail("The sheet does not show the tab of the dialog.");
  if (!TakeAll(dialog->way, page)) return 0;

  HWND window = nullptr;
  if (!WaitUntil([&] { return (window = FindDialog(sheet)) != nullptr && IsPainted(window); }) ||
      !TakeAll(dialog->inside, window) || !WaitUntil([&] { return IsPainted(window); })) {
    return Fail("The dialog did not appear.");
  }
  return PrintPlace(window);
}

int CloseDialog(HWND sheet) {
  const HWND dialog = FindDialog(sheet);
  if (dialog == nullptr) return Fail("There is no dialog to close.");
  PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
  return WaitUntil([&] { return IsWindowEnabled(sheet) != FALSE; }) ? 0 : Fail("The dialog did not close.");
}

int Cancel(HWND sheet) {
  PostMessageW(sheet, PSM_PRESSBUTTON, PSBTN_CANCEL, 0);
  return WaitUntil([&] { return !IsWindow(sheet); }) ? 0 : Fail("The sheet did not close.");
}

}  // namespace

int main(int argc, char** argv) {
  const std::string_view command = argc > 1 ? argv[1] : "";
  const std::string_view argument = argc > 2 ? argv[2] : "";
  const int number = std::atoi(argument.data());
  const bool known = command == "--tabs" || command == "--dialogs" || command == "--close" || command == "--cancel" ||
                     (command == "--select" && number > 0) || (command == "--open" && !argument.empty());
  if (!known) return Fail("SheetTour takes --tabs, --select N, --dialogs, --open NAME, --close or --cancel.");

  HWND sheet = nullptr;
  if (!WaitUntil([&] { return (sheet = FindSheet()) != nullptr; })) return Fail("No sheet appeared.");
  if (command == "--tabs") return PrintTabs(sheet);
  if (command == "--select") return SelectTab(sheet, number);
  if (command == "--dialogs") return PrintDialogs(sheet);
  if (command == "--open") return OpenDialog(sheet, argument);
  if (command == "--close") return CloseDialog(sheet);
  return Cancel(sheet);
}
