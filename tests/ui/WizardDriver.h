#pragma once

#include <windows.h>

#include <functional>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "NetUtilities/Module/Owner.h"
#include "WaylineDll/SetupWizard.h"
#include "WaylineDll/SetupWizard/WizardPages.h"

/// A setup wizard as a person in front of it sees and uses it, driven from the test's thread. Operations return when
/// the wizard has dealt with what they did, or shows a message box; controls are named by their ids and are those of
/// the page in front. Whatever takes too long fails the test.
class WizardDriver {
 public:
  /// Opens a wizard over a window on a thread of its own; `data` must outlive this object. Waits until its first page
  /// is there, unless a message is shown in its place.
  WizardDriver(WizardId wizard, SetupWizardData_t* data);

  /// Drives the wizard that a thread shows, over a sheet for instance; waits until it is there.
  explicit WizardDriver(DWORD threadId);

  /// Cancels the wizard if it is still open.
  ~WizardDriver();

  WizardDriver(const WizardDriver&) = delete;
  WizardDriver& operator=(const WizardDriver&) = delete;

  HWND Window() const { return wizard_; }

  /// The window that the wizard was opened over.
  HWND Owner() const { return owner_; }
  HWND Page() const;

  /// The page in front; nothing when it is none of the wizards'.
  std::optional<WizardPage> CurrentPage() const;
  std::wstring Title() const;

  // What controls show.
  HWND Control(int id) const;
  bool IsEnabled(int id) const;
  bool IsChecked(int id) const;
  std::wstring Text(int id) const;

  /// Texts of the items of a combo box or a list, in order.
  std::vector<std::wstring> Items(int id) const;

  /// Values behind them.
  std::vector<uint32_t> Values(int id) const;

  /// Text of the selected item; nothing when none is selected.
  std::optional<std::wstring> Selected(int id) const;

  /// Value behind the selected item; nothing when none is selected.
  std::optional<uint32_t> SelectedValue(int id) const;

  /// Id of the control with the keyboard focus, which may be one of the wizard's buttons.
  int FocusedControl() const;

  /// The part of a field's text that is selected.
  std::wstring SelectedText(int id) const;

  /// Whether a button of the wizard, IDCANCEL or one of the three below, can be pressed.
  bool CanPress(int button) const;

  // What a person does.
  void Click(int id);
  void Pick(int id, const std::wstring& item);

  /// The same by the value behind the item.
  void PickValue(int id, uint32_t value);

  /// Types over what a field holds, which has the focus then.
  void Type(int id, const std::wstring& text);

  /// Pastes over what a field holds, which has the focus then.
  void Paste(int id, const std::wstring& text);

  /// Gives the focus to a control of the page, as Tab does; a field that has it may take it back.
  void TryFocus(int id);

  /// The same for one of the wizard's buttons.
  void TryFocusButton(int button);

  void PressNext();
  void PressBack();
  void PressFinish();
  void PressCancel();

  /// Closes the window by its title bar.
  void CloseWindow();

  /// Presses a key with real input until `effect` holds; false when it never does. As a person would, it presses again
  /// what was lost.
  bool PressKeyUntil(const std::function<bool()>& effect, WORD key, const std::vector<WORD>& modifiers = {});

  /// Clicks on one of the wizard's buttons with the mouse, with real input, until `effect` holds; false when it never
  /// does.
  bool ClickButtonUntil(const std::function<bool()>& effect, int button);

  /// The text of the message box that the wizard shows, or nothing.
  std::optional<std::wstring> MessageBoxText() const;

  /// Closes the message box with one of its buttons, IDOK for instance.
  void AnswerMessageBox(int button = IDOK);

  bool IsOpen() const;

  /// What ShowAsSecondaryWindow returned; waits for the wizard to end. Not for the wizard of another thread.
  int64_t Result();

  // Buttons of every wizard of the platform.
  static constexpr int kBack = 0x3023;
  static constexpr int kNext = 0x3024;
  static constexpr int kFinish = 0x3025;

 private:
  void PickIndex(int id, size_t index);
  void Press(int button);
  bool TryUntil(const std::function<bool()>& effect, const std::function<void()>& input);
  void Act(HWND window, UINT message, WPARAM wordParameter = 0, LPARAM longParameter = 0);
  void Settle() const;
  bool WaitForWizard();
  HWND MessageBoxWindow() const;

  int64_t result_ = 0;
  DWORD threadId_ = 0;
  std::thread thread_;
  ::Owner<HHOOK, UnhookWindowsHookEx> queueHook_;  // sees what the thread takes from its queue
  HWND owner_ = nullptr;
  HWND wizard_ = nullptr;
};
