#pragma once

#include <windows.h>

#include <cstddef>
#include <set>
#include <span>

#include "NetUtilities/Module/Owner.h"

// What lies in the built module, which is loaded as data.

using BitmapPtr = Owner<HBITMAP, DeleteObject>;

/// Null when the module cannot be loaded.
HMODULE Module();

/// The bytes of a resource; none when there is no such resource.
std::span<const std::byte> Resource(const wchar_t* type, WORD id);

/// The numbers of all resources of a type.
std::set<WORD> ResourceIds(const wchar_t* type);
