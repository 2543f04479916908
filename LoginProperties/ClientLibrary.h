#pragma once

#include <windows.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "Database/Profiles/PreferenceId.h"
#include "WaylineDll/Connection.h"
#include "WaylineDll/ModuleId.h"

/// How libraries are loaded; tests put others in the place of the platform's functions.
struct LibraryLoader {
  HMODULE(WINAPI* load)(LPCWSTR file) = LoadLibraryW;
  FARPROC(WINAPI* find)(HMODULE module, LPCSTR symbol) = GetProcAddress;
  BOOL(WINAPI* free)(HMODULE module) = FreeLibrary;
};

/// The part of the client library that is bound by name at run time, for code that must also work where the library is
/// missing. What cannot be found is logged once and stays null. Used on the sheet's thread only.
class ClientLibrary {
 public:
  explicit ClientLibrary(const LibraryLoader& loader = {}) : loader_(loader) {}

  /// Lets go of the library.
  ~ClientLibrary();

  ClientLibrary(const ClientLibrary&) = delete;
  ClientLibrary& operator=(const ClientLibrary&) = delete;

  /// The module's one binding.
  static ClientLibrary& Get();

  /// As the library's function of this name; empty when the library or the function is missing. The first call loads
  /// the library.
  std::wstring LoadStringDb(ModuleId module, unsigned id, bool reserved);

  /// Functions of the library; null where one is missing, and all null before the library is loaded.
  struct Functions {
    std::wstring (*loadStringDb)(ModuleId, unsigned, bool) = nullptr;
    std::wstring (*loadStringWithSubS)(ModuleId, unsigned, bool, const std::vector<std::wstring_view>&) = nullptr;
    uint32_t (*getActiveProfileId)() = nullptr;
    uint32_t (*getActiveProxyLocationId)() = nullptr;
    void (*updateActiveProfilePreference)(PreferenceId, bool) = nullptr;
    FSMState (*getFSMState)() = nullptr;
  };

  /// What has been found so far.
  const Functions& GetFunctions() const { return functions_; }

 private:
  void Bind();

  template <typename Function>
  void Find(Function& function, const char* symbol, const std::wstring& messageWhenMissing);

  LibraryLoader loader_;
  HMODULE module_ = nullptr;
  Functions functions_;
};
