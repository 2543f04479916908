#pragma once

#include <windows.h>

#include <string>
#include <string_view>
#include <vector>

#include "WaylineDll/Api.h"
#include "WaylineDll/ModuleId.h"

/// The instance whose resources hold a module's dialog templates, pictures and strings; null when the module is not
/// loaded. The handle is not to be freed.
WAYLINE_API HINSTANCE GetResourceHandle(ModuleId module);

/// The text with number `id` of a module's string database; empty when there is none. `reserved` is passed as false.
WAYLINE_API std::wstring LoadStringDb(ModuleId module, unsigned id, bool reserved);

/// As LoadStringDb, with "%1", "%2", ... replaced by `items` in order. A number without an item stays in the text, and
/// what an item brings in is not replaced again.
WAYLINE_API std::wstring LoadStringWithSubS(ModuleId module, unsigned id, bool reserved,
                                            const std::vector<std::wstring_view>& items);

/// The name of the product as windows show it. `reserved` is passed as false. Exported as ordinal 8110 only.
std::wstring GetProductDisplayName(bool reserved);
