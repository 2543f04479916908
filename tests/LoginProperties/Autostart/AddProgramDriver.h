#pragma once

#include <windows.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "LoginProperties/Autostart/AddProgramControls.h"
#include "tests/support/MessageBoxAnswer.h"
#include "WaylineDll/AutoStartItem.h"

/// Texts of a combo box's items, in order.
std::vector<std::wstring> ItemsOf(HWND combo);

/// The dialog in which an entry is edited, over a plain window, as a person in front of it sees and uses it. Operations
/// return when the dialog has dealt with what they did, or shows a dialog of its own. Controls are named by their ids.
class AddProgramDriver {
 public:
  /// Opens the dialog with its template out of the real module, and waits until it is there. The phases are those of
  /// this program's GetContext().
  explicit AddProgramDriver(const std::shared_ptr<AutoStartItem>& item);

  /// Cancels the dialog if it is still open.
  ~AddProgramDriver();

  AddProgramDriver(const AddProgramDriver&) = delete;
  AddProgramDriver& operator=(const AddProgramDriver&) = delete;

  HWND Window() const { return window_; }
  HWND Owner() const { return owner_; }
  RECT Area() const;
  bool IsOpen() const { return IsWindow(window_) != FALSE; }

  // What controls show.
  HWND Control(int id) const { return GetDlgItem(window_, id); }
  std::wstring Text(int id) const;
  bool IsEnabled(int id) const { return IsWindowEnabled(Control(id)) != FALSE; }
  bool IsShown(int id) const { return IsWindowVisible(Control(id)) != FALSE; }
  std::vector<std::wstring> Items(int id) const { return ItemsOf(Control(id)); }
  std::vector<uint32_t> Values(int id) const;
  int SelectedIndex(int id) const;

  /// Text of the selected item; nothing when none is selected.
  std::optional<std::wstring> Selected(int id) const;

  /// The edit that one types into: the control itself, or that of a combo box.
  HWND EditOf(int id) const;

  /// The control with the focus; the combo box when it is its edit.
  int FocusedControl() const;

  // What a person does.
  void Type(int id, const std::wstring& text) const;
  void Pick(int id, const std::wstring& item) const;
  void PickIndex(int id, int index) const;
  void Press(int button) const;
  void ClickAdvanced() const;

  /// Presses a button that brings up a message box, and closes that.
  ShownMessageBox PressAndAnswer(int button) const;

  /// Another dialog of the dialog's thread; null when there is none.
  HWND OtherDialog() const;

  /// Presses a button that closes the dialog; returns what it ended with.
  INT_PTR Close(int button);

  /// What the dialog ended with; waits for that.
  INT_PTR Result();

  DWORD Thread() const { return threadId_; }

 private:
  void Settle() const;
  void Join();

  std::thread thread_;
  DWORD threadId_ = 0;
  HWND owner_ = nullptr;
  HWND window_ = nullptr;
  INT_PTR result_ = 0;
};
