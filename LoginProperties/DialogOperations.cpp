// The operations of the client library's dialog classes that the module provides. Pavise.def exports them.

#include "WaylineDll/PropPageDialog.h"

BaseDialog::BaseDialog(const BaseDialog& other) = default;
BaseDialog& BaseDialog::operator=(const BaseDialog& other) = default;

BaseDialog::operator LPFNPSPCALLBACKW() const { return MyPropPageProc; }
BaseDialog::operator DLGPROC() const { return MyDlgProc; }
BaseDialog::operator int64_t() const { return reinterpret_cast<int64_t>(this); }

PropPageDialog::PropPageDialog(const PropPageDialog& other) = default;
PropPageDialog& PropPageDialog::operator=(const PropPageDialog& other) = default;
