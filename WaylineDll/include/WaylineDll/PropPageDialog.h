#pragma once

#include "WaylineDll/BaseDialog.h"

/// Base of the pages of a property sheet. The sheet creates and ends a page's window; applying the page is its OK.
class WAYLINE_CLASS PropPageDialog : public BaseDialog {
 public:
  PropPageDialog(HINSTANCE instance, const wchar_t* templateId, HWND parentWindow);

  /// As those of BaseDialog, defined by the module that derives from this class.
  PropPageDialog(const PropPageDialog& other);
  PropPageDialog& operator=(const PropPageDialog& other);

  ~PropPageDialog() override;

 protected:
  /// The sheet is being cancelled; its pages go with it.
  int OnCancel(int64_t parameter) override;
};
