#pragma once

#include <windows.h>

#include <memory>
#include <string>
#include <type_traits>

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
  struct Free {
    void operator()(HMODULE module) const { FreeLibrary(module); }
  };
  std::unique_ptr<std::remove_pointer_t<HMODULE>, Free> module_;
};
