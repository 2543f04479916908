#include "tests/LoginProperties/Resources/ModuleResources.h"

namespace {

BOOL CALLBACK AddId(HMODULE, LPCWSTR, LPWSTR name, LONG_PTR ids) {
  reinterpret_cast<std::set<WORD>*>(ids)->insert(static_cast<WORD>(reinterpret_cast<ULONG_PTR>(name)));
  return TRUE;
}

}  // namespace

HMODULE Module() {
  static const Owner<HMODULE, FreeLibrary> module(
      LoadLibraryExW(L"Pavise.dll", nullptr, LOAD_LIBRARY_AS_DATAFILE | LOAD_LIBRARY_AS_IMAGE_RESOURCE));
  return module.get();
}

std::span<const std::byte> Resource(const wchar_t* type, WORD id) {
  const HRSRC resource = FindResourceW(Module(), MAKEINTRESOURCEW(id), type);
  if (!resource) return {};
  return {static_cast<const std::byte*>(LockResource(LoadResource(Module(), resource))),
          SizeofResource(Module(), resource)};
}

std::set<WORD> ResourceIds(const wchar_t* type) {
  std::set<WORD> ids;
  EnumResourceNamesW(Module(), type, AddId, reinterpret_cast<LONG_PTR>(&ids));
  return ids;
}
