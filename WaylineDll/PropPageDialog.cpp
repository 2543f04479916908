#include "WaylineDll/PropPageDialog.h"

PropPageDialog::PropPageDialog(HINSTANCE instance, const wchar_t* templateId, HWND parentWindow)
    : BaseDialog(instance, templateId, parentWindow) {}

PropPageDialog::~PropPageDialog() = default;

int PropPageDialog::OnCancel(int64_t) { return 1; }
