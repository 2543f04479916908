#pragma once

#include <windows.h>

#include <commctrl.h>

#include <string>
#include <vector>

#include "LoginProperties/Autostart/AddProgramControls.h"
#include "LoginProperties/Autostart/AutostartControls.h"
#include "tests/support/TreeItems.h"
#include "tests/support/WaitUntil.h"
#include "tests/ui/DialogWindows.h"
#include "tests/ui/ModalDriver.h"
#include "tests/ui/SheetDriver.h"

/// The page "Autostart", which is in front of a sheet.
class AutostartPageDriver {
 public:
  explicit AutostartPageDriver(SheetDriver& sheet) : sheet_(sheet) {}

  HWND Tree() const { return sheet_.Control(IDC_AUTOSTART_TREE); }

  /// The titles of the phases, and the names of the entries with a blank in front, from top to bottom.
  std::vector<std::wstring> Lines() const {
    std::vector<std::wstring> lines;
    for (HTREEITEM item = TreeView_GetRoot(Tree()); item != nullptr; item = TreeView_GetNextVisible(Tree(), item)) {
      const bool isEntry = TreeView_GetParent(Tree(), item) != nullptr;
      lines.push_back((isEntry ? L" " : L"") + TreeItemText(Tree(), item));
    }
    return lines;
  }

  /// The place of the selected line; -1 when none is.
  int SelectedLine() const {
    const HTREEITEM selected = TreeView_GetSelection(Tree());
    int line = -1;
    for (HTREEITEM item = selected; item != nullptr; ++line) item = TreeView_GetPrevVisible(Tree(), item);
    return line;
  }

  /// The text of the selected item; empty when none is.
  std::wstring Selected() const {
    const HTREEITEM item = TreeView_GetSelection(Tree());
    return item != nullptr ? TreeItemText(Tree(), item) : L"";
  }

  /// Selects a line, as the arrow keys do; a disabled tree takes none.
  void SelectLine(int line) const {
    HTREEITEM item = TreeView_GetRoot(Tree());
    for (; line > 0; --line) item = TreeView_GetNextVisible(Tree(), item);
    Select(item);
  }
  void Select(const std::wstring& text) const { Select(FindTreeItem(Tree(), text)); }
  void SelectNothing() const { Select(nullptr); }

  bool CanMoveUp() const { return sheet_.IsEnabled(IDC_AUTOSTART_UP); }
  bool CanMoveDown() const { return sheet_.IsEnabled(IDC_AUTOSTART_DOWN); }
  bool CanChange() const { return sheet_.IsEnabled(IDC_AUTOSTART_CHANGE); }
  bool CanRemove() const { return sheet_.IsEnabled(IDC_AUTOSTART_REMOVE); }
  bool CanAdd() const { return sheet_.IsEnabled(IDC_AUTOSTART_ADD); }

 private:
  void Select(HTREEITEM item) const {
    if (sheet_.IsEnabled(IDC_AUTOSTART_TREE)) TreeView_SelectItem(Tree(), item);
  }

  SheetDriver& sheet_;
};

/// The editor of an entry over a sheet.
class EntryEditorDriver : public ModalDriver {
 public:
  /// Presses "Add..." or "Change..." of the sheet's page and waits for the editor.
  EntryEditorDriver(SheetDriver& sheet, int button) : ModalDriver(sheet, button) {}

  std::wstring Name() const { return Text(IDC_PROGRAM_NAME); }

  /// The title of the phase that is chosen.
  std::wstring Phase() const {
    const HWND phases = Control(IDC_PROGRAM_PHASE);
    wchar_t text[512] = {};
    SendMessageW(phases, WM_GETTEXT, ARRAYSIZE(text), reinterpret_cast<LPARAM>(text));
    return text;
  }

  /// Enters what every entry must have.
  void Enter(const std::wstring& name, const std::wstring& program = L"C:\\Tools\\program.exe") const {
    SetDlgItemTextW(Window(), IDC_PROGRAM_NAME, name.c_str());
    SetDlgItemTextW(Window(), IDC_PROGRAM_FILE, program.c_str());
  }

  void PickPhase(const std::wstring& title) const {
    const HWND phases = Control(IDC_PROGRAM_PHASE);
    const auto index =
        SendMessageW(phases, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(title.c_str()));
    if (index == CB_ERR) Fail("the editor does not offer the phase");
    SendMessageW(phases, CB_SETCURSEL, static_cast<WPARAM>(index), 0);
    SendMessageW(Window(), WM_COMMAND, MAKEWPARAM(IDC_PROGRAM_PHASE, CBN_SELCHANGE), reinterpret_cast<LPARAM>(phases));
  }
};
