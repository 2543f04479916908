#pragma once

// Strings of the client library, ModuleId 0.
#define IDS_FILE_NOT_FOUND 78
#define IDS_PRODUCT_NAME 100
#define IDS_HELP_NOT_OPENED 101
#define IDS_DEFAULT_BROWSER 174
#define IDS_NO_LIMIT_KNOWN 12066
