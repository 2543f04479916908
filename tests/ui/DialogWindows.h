#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

// Dialogs of other threads, as those who drive them find and read them.

/// Text of a window: what an edit holds, what a label or a caption says.
std::wstring TextOf(HWND window);

/// The first visible top-level dialog of a thread that `wanted` accepts; null when there is none.
HWND FindDialog(DWORD threadId, const std::function<bool(HWND)>& wanted);

/// Whether a dialog is a property sheet; wizards are ones, too.
bool IsSheet(HWND dialog);

/// Whether a dialog is a wizard.
bool IsWizard(HWND dialog);

/// The text of a message box.
std::wstring TextOfMessageBox(HWND box);

/// Closes a message box with one of its buttons, IDOK for instance; false when it stays open.
bool CloseMessageBox(HWND box, int button);

/// The window of a thread that has the keyboard focus; null when none has it.
HWND FocusOf(DWORD threadId);

/// Presses a key with real input, together with modifiers, in whichever window is in the foreground.
void SendKey(WORD key, const std::vector<WORD>& modifiers = {});

/// Clicks with the left mouse button on a point of the screen, with real input.
void SendClick(POINT point, int times = 1);

/// Waits until a window is in the foreground, where real input goes.
void BringToForeground(HWND window);

/// Presses a key in a window with real input, together with the modifiers (VK_SHIFT, VK_CONTROL, VK_MENU), until
/// `effect` holds; false when it never does. As a person would, it presses again what was lost: the screen forgets keys
/// while it hands the keyboard over to a window.
bool PressKeyUntil(HWND window, const std::function<bool()>& effect, WORD key, const std::vector<WORD>& modifiers = {});

/// Ends the test with a picture: what is still on the screen now is gone when the test learns of the failure.
[[noreturn]] void Fail(const char* what);
