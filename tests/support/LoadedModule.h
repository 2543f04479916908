#pragma once

#include <windows.h>

#include <string>

#include "NetUtilities/Module/Owner.h"

/// A library that is loaded while this lives.
class LoadedModule {
 public:
  explicit LoadedModule(const std::wstring& file) : module_(LoadLibraryW(file.c_str())) {}

  /// Null when the library could not be loaded.
  HMODULE Handle() const { return module_.get(); }

  template <typename Pointer = void*>
  Pointer Find(const char* symbol) const {
    return reinterpret_cast<Pointer>(reinterpret_cast<void*>(GetProcAddress(Handle(), symbol)));
  }

 private:
  Owner<HMODULE, FreeLibrary> module_;
};
