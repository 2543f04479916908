#pragma once

#include <memory>
#include <type_traits>

/// Gives back with `Release` what an Owner holds.
template <auto Release>
struct ReleasedBy {
  template <typename Pointer>
  void operator()(Pointer pointer) const {
    Release(pointer);
  }
};

/// Owns what a system or library has handed out as a pointer of type `Pointer`, until `Release`, a function of one
/// argument, takes it back: Owner<HMODULE, FreeLibrary>. Null owns nothing.
template <typename Pointer, auto Release>
using Owner = std::unique_ptr<std::remove_pointer_t<Pointer>, ReleasedBy<Release>>;
