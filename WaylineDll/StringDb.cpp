#include "WaylineDll/StringDb.h"

#include "WaylineDll/Resources/StringIds.h"
#include "WaylineDll/Substitution.h"

namespace {

const wchar_t* FileOf(ModuleId module) {
  switch (module) {
    case ModuleId::ClientLibrary:
      return L"WaylineDll.dll";
    case ModuleId::LoginProperties:
      return L"Pavise.dll";
  }
  return L"";
}

}  // namespace

HINSTANCE GetResourceHandle(ModuleId module) { return GetModuleHandleW(FileOf(module)); }

std::wstring LoadStringDb(ModuleId module, unsigned id, bool) {
  const HINSTANCE instance = GetResourceHandle(module);
  if (instance == nullptr) return {};
  // With a buffer size of 0 the address of the text itself is handed out; it has no terminator.
  const wchar_t* text = nullptr;
  const int length = LoadStringW(instance, id, reinterpret_cast<wchar_t*>(&text), 0);
  return length > 0 ? std::wstring(text, static_cast<size_t>(length)) : std::wstring();
}

std::wstring LoadStringWithSubS(ModuleId module, unsigned id, bool reserved,
                                const std::vector<std::wstring_view>& items) {
  return SubstituteItems(LoadStringDb(module, id, reserved), items);
}

std::wstring GetProductDisplayName(bool reserved) {
  return LoadStringDb(ModuleId::ClientLibrary, IDS_PRODUCT_NAME, reserved);
}
