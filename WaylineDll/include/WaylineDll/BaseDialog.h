#pragma once

#include <windows.h>

#include <prsht.h>

#include <cstdint>

#include "WaylineDll/Api.h"

/// Base of every dialog and page of the client. A derived class overrides the operations that it has a use for; each
/// runs on the thread of the window, in response to a window message. Results: nonzero means handled or success, unless
/// stated. The order of the virtual operations is part of the binary interface.
class WAYLINE_CLASS BaseDialog {
 public:
  /// `instance` holds the dialog template, `templateId` is MAKEINTRESOURCEW of its number, `parentWindow` the owner of
  /// the dialog. Nothing is created yet.
  BaseDialog(HINSTANCE instance, const wchar_t* templateId, HWND parentWindow);

  /// Copies take over instance, template, parent and window handle. Defined by the module that derives its dialogs from
  /// this class, not by the client library.
  BaseDialog(const BaseDialog& other);
  BaseDialog& operator=(const BaseDialog& other);

  // The three values that a property page's description carries.
  explicit operator LPFNPSPCALLBACKW() const;
  explicit operator DLGPROC() const;
  explicit operator int64_t() const;  // the address of this object

 protected:
  /// Moves the object's data into the controls.
  virtual int SetWindowControls();

  /// Moves the controls' contents into the object's data.
  virtual int ReadWindowControls();

  /// Checks the controls; zero keeps the dialog or page open.
  virtual int ValidateWindowControls();

  /// OK was pressed, or the page is applied; zero keeps the dialog open. By default reads the controls.
  virtual int OnOk(int64_t parameter);

  /// The window and its controls exist. Zero means that the keyboard focus has been set. By default fills the controls.
  virtual int OnInitDialog(int64_t parameter);

  /// Cancel was pressed, or the dialog closed in another way. By default ends a modal dialog with IDCANCEL. A modal
  /// dialog that closes its own window here, at once or with a posted message, ends with IDCANCEL and is not asked
  /// again; one that does neither stays open. What is to close the window while it is disabled, as under a message box,
  /// does not come here and is ignored.
  virtual int OnCancel(int64_t parameter);

  /// Help was asked for with F1 or the caption's question mark; `parameter` is the address of a HELPINFO.
  virtual int OnHelp(int64_t parameter);

  /// A character was typed into the dialog itself.
  virtual int OnChar(int64_t parameter);

  /// The window is being destroyed.
  virtual int OnDestroy(int64_t parameter);

  /// A control sent a command: its id in the low and the notification code in the high 16 bits of `command`; `control`
  /// is its window handle.
  virtual int OnCommand(uint64_t command, int64_t control);

  /// A control or the sheet sent a notification; `record` is the address of its NMHDR. The result is handed to the
  /// sender as it is.
  virtual int OnNotify(uint64_t controlId, int64_t record);

  /// Any other message.
  virtual int OnMsg(uint32_t message, uint64_t wordParameter, int64_t longParameter);

 public:
  /// Runs the dialog modally over its parent; returns the code that it ended with (IDOK for OK, IDCANCEL for Cancel),
  /// or -1 when it cannot be created.
  virtual int DoModal();

  virtual ~BaseDialog();

  /// The dialog procedure of every dialog and page: finds the window's object and calls its operations.
  static INT_PTR CALLBACK MyDlgProc(HWND window, UINT message, WPARAM wordParameter, LPARAM longParameter);

  /// The callback of every page description; its description's parameter is the page object's address.
  static UINT CALLBACK MyPropPageProc(HWND window, UINT message, PROPSHEETPAGEW* page);

  /// The dialog's window; null before it is created and after it is destroyed.
  HWND GetWindow() const { return window_; }

  HINSTANCE GetInstance() const { return instance_; }
  const wchar_t* GetTemplateId() const { return templateId_; }
  HWND GetParentWindow() const { return parentWindow_; }

 private:
  INT_PTR Dispatch(UINT message, WPARAM wordParameter, LPARAM longParameter);
  INT_PTR DispatchCommand(WPARAM command, LPARAM control);
  INT_PTR DispatchNotify(WPARAM controlId, LPARAM record);
  int Cancel(int64_t parameter);

  HINSTANCE instance_;
  const wchar_t* templateId_;
  HWND parentWindow_;
  HWND window_ = nullptr;
  bool cancelling_ = false;  // a modal dialog is in its OnCancel, or has asked there to be closed
};
