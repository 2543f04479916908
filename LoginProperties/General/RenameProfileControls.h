#pragma once

#define IDD_RENAME_PROFILE 132

#define IDC_RENAME_NAME 1114
