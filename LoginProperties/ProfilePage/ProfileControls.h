#pragma once

// Controls that several pages have in common.

#define IDC_OVERRIDE_CHECK 1036
#define IDC_PROFILE_LABEL 1172
#define IDC_PROFILE_COMBO 7100
