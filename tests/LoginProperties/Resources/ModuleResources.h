#pragma once

#include <windows.h>

#include <cstddef>
#include <memory>
#include <set>
#include <span>
#include <type_traits>

// What lies in the built module, which is loaded as data.

template <auto Free>
struct Freer {
  template <typename Handle>
  void operator()(Handle handle) const {
    Free(handle);
  }
};

/// Owner of a handle that `Free` gives back.
template <typename Handle, auto Free>
using HandlePtr = std::unique_ptr<std::remove_pointer_t<Handle>, Freer<Free>>;
using BitmapPtr = HandlePtr<HBITMAP, DeleteObject>;

/// Null when the module cannot be loaded.
HMODULE Module();

/// The bytes of a resource; none when there is no such resource.
std::span<const std::byte> Resource(const wchar_t* type, WORD id);

/// The numbers of all resources of a type.
std::set<WORD> ResourceIds(const wchar_t* type);
