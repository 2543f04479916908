#pragma once

// Dialogs of the test program itself.
#define IDD_TEST_DIALOG 1001  // with OK, Cancel and Help
#define IDD_TEST_PAGE 1002

#define IDC_TEST_NAME 2001
