#pragma once

#include <windows.h>

#include <objbase.h>

#include "NetUtilities/Module/Owner.h"

/// Owns a kernel object: an event, a file, a mutex, a process, a thread, a token.
using Handle = Owner<HANDLE, CloseHandle>;

/// Owns what CreateFileW and its like return, whose value for a failure is not null.
inline Handle OwnUnlessInvalid(HANDLE handle) { return Handle(handle != INVALID_HANDLE_VALUE ? handle : nullptr); }

/// Owns memory that LocalFree takes back.
template <typename Element>
using LocalMemory = Owner<Element*, LocalFree>;

/// Owns memory that CoTaskMemFree takes back.
template <typename Element>
using TaskMemory = Owner<Element*, CoTaskMemFree>;
