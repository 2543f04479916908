#pragma once

#include <windows.h>

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "LoginProperties/LoginPropertiesContext.h"
#include "LoginProperties/SheetResult.h"

/// The sheet as a person in front of it sees and uses it: it is shown by the real module on a thread of its own, and
/// driven from the test's thread. Operations return when the sheet has dealt with what they did, or shows a message
/// box; controls are named by their ids and are those of the page in front. Whatever takes too long fails the test.
class SheetDriver {
 public:
  /// Opens the sheet on `context`, which must outlive this object, and waits until its first page is there.
  explicit SheetDriver(LoginPropertiesContext& context);

  /// Drives the sheet that a thread of another program shows; waits until it is there.
  explicit SheetDriver(DWORD threadId);

  /// Cancels the sheet if it is still open.
  ~SheetDriver();

  SheetDriver(const SheetDriver&) = delete;
  SheetDriver& operator=(const SheetDriver&) = delete;

  HWND Sheet() const { return sheet_; }

  /// The window that stands for the client's main window; the sheet belongs to it.
  HWND Owner() const { return owner_; }
  HWND Page() const;
  std::wstring Title() const;
  std::vector<std::wstring> Tabs() const;
  std::wstring CurrentTab() const;

  /// Asks for another page; the one in front may refuse to give way.
  void SelectTab(const std::wstring& title);
  void SelectTab(size_t index);

  // What controls show.
  HWND Control(int id) const;
  bool IsEnabled(int id) const;
  bool IsChecked(int id) const;
  bool HasFocus(int id) const;

  /// Text of a control: what an edit holds, what a label says.
  std::wstring Text(int id) const;

  /// Texts of a list's items, in order.
  std::vector<std::wstring> Items(int id) const;

  /// Values behind a list's items, in order.
  std::vector<uint32_t> Values(int id) const;

  /// Text of the selected item; nothing when none is selected.
  std::optional<std::wstring> Selected(int id) const;

  /// Value behind the selected item; nothing when none is selected.
  std::optional<uint32_t> SelectedValue(int id) const;

  // What a person does.
  void Click(int id);
  void Pick(int id, const std::wstring& item);

  /// The same by the value behind the item.
  void PickValue(int id, uint32_t value);

  /// Types over what the edit with the focus holds. As from the keyboard, it may refuse characters.
  void Type(const std::wstring& text);

  /// Takes the selection of a list away, which no user can do.
  void ClearSelection(int id);

  /// Presses a key with real input, as PressKeyUntil of DialogWindows.h does.
  bool PressKeyUntil(const std::function<bool()>& effect, WORD key, const std::vector<WORD>& modifiers = {});

  /// Clicks on a point of the screen with the mouse, with real input, `times` times in a row. The click gives the focus
  /// away to what is clicked, if that takes it; only then does it do something there.
  void ClickByMouse(POINT point, int times = 1) const;

  /// The same again and again until `effect` holds; false when it never does. A click is lost where the screen reports
  /// another place of the pointer in the middle of it.
  bool ClickByMouseUntil(const std::function<bool()>& effect, POINT point, int times = 1) const;

  /// The same on the middle of a window.
  bool ClickByMouseUntil(const std::function<bool()>& effect, HWND window) const;

  /// Asks for another page with the mouse; the one in front may refuse to give way.
  void SelectTabByMouse(const std::wstring& title);

  /// Gives a control the keyboard focus, as Tab does.
  void Focus(int id);

  /// Gives the focus away to a control; the one that has it may bring up a message box and take it back.
  void TryFocus(int id);
  void TryFocus(HWND control);

  /// Id of the control with the keyboard focus.
  int FocusedControl() const;

  /// The message box or dialog that stands over the sheet; null when there is none.
  HWND MessageBoxWindow() const;

  /// The text of the message box that the sheet shows, or nothing.
  std::optional<std::wstring> MessageBoxText() const;

  /// Closes the message box with one of its buttons, IDOK for instance.
  void AnswerMessageBox(int button);

  void PressHelp();

  /// Presses OK. The sheet may stay open when its page refuses.
  void PressOk();
  void PressCancel();

  // The same with the mouse. A page may answer with a message box instead.
  void PressOkByMouse();
  void PressCancelByMouse();

  bool IsOpen() const;

  /// What ShowLoginProperties returned (SheetResult.h); waits for the sheet to end. Not for the sheet of another
  /// program.
  INT_PTR Result();

 private:
  void Act(HWND window, UINT message, WPARAM wordParameter = 0, LPARAM longParameter = 0);
  void PickIndex(int id, int index);
  void PressEnding(int button);
  void Settle() const;
  void PressEndingByMouse(int button);
  size_t IndexOfTab(const std::wstring& title) const;
  bool WaitForSheet();

  INT_PTR result_ = 0;
  DWORD threadId_ = 0;
  std::thread thread_;
  HWND owner_ = nullptr;
  HWND sheet_ = nullptr;
};

/// The real module's entry; loads the module on first use.
INT_PTR ShowSheetOfModule(LoginPropertiesContext* context);
