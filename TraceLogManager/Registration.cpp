#include "TraceLogManager/Registration.h"

#include <objbase.h>

#include <array>

#include "TraceLogManager/TraceLogManager.h"

namespace {

constexpr wchar_t kClasses[] = LR"(Software\Classes\)";
constexpr wchar_t kServiceName[] = L"Wayline logging service";
constexpr wchar_t kTypeLibraryVersion[] = L"1.0";
// Carries the calls of any interface that a type library describes.
constexpr wchar_t kTypeLibraryMarshaller[] = L"{00020424-0000-0000-C000-000000000046}";

std::wstring IdText(REFGUID id) {
  std::array<wchar_t, 39> text{};  // with braces and terminator
  StringFromGUID2(id, text.data(), static_cast<int>(text.size()));
  return text.data();
}

struct Value {
  std::wstring key;
  std::wstring name;
  std::wstring text;
};

struct Keys {
  std::wstring serviceClass = kClasses + (L"CLSID\\" + IdText(CLSID_TraceLogManager));
  std::wstring serviceInterface = kClasses + (L"Interface\\" + IdText(IID_ITraceLogManager));
  std::wstring typeLibrary = kClasses + (L"TypeLib\\" + IdText(LIBID_TraceLogManagerLib));
};

HKEY RootOf(RegistrationScope scope) {
  return scope == RegistrationScope::Machine ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER;
}

LONG Write(HKEY root, const Value& value) {
  return RegSetKeyValueW(root, value.key.c_str(), value.name.c_str(), REG_SZ, value.text.c_str(),
                         static_cast<DWORD>((value.text.size() + 1) * sizeof(wchar_t)));
}

}  // namespace

LONG RegisterService(RegistrationScope scope, const std::wstring& program) {
  const Keys keys;
  const std::wstring libraryId = IdText(LIBID_TraceLogManagerLib);
  const std::wstring library = keys.typeLibrary + L'\\' + kTypeLibraryVersion;
  const Value values[] = {
      {library, L"", kServiceName},
      {library + L"\\0\\win64", L"", program},
      {library + L"\\FLAGS", L"", L"0"},
      {library + L"\\HELPDIR", L"", program.substr(0, program.find_last_of(L'\\'))},
      {keys.serviceInterface, L"", L"ITraceLogManager"},
      {keys.serviceInterface + L"\\ProxyStubClsid32", L"", kTypeLibraryMarshaller},
      {keys.serviceInterface + L"\\TypeLib", L"", libraryId},
      {keys.serviceInterface + L"\\TypeLib", L"Version", kTypeLibraryVersion},
      {keys.serviceClass, L"", kServiceName},
      {keys.serviceClass + L"\\LocalServer32", L"", L'"' + program + L'"'},
      {keys.serviceClass + L"\\TypeLib", L"", libraryId},
  };
  for (const Value& value : values) {
    if (const LONG code = Write(RootOf(scope), value); code != ERROR_SUCCESS) return code;
  }
  return ERROR_SUCCESS;
}

LONG UnregisterService(RegistrationScope scope) {
  const Keys keys;
  for (const std::wstring& key : {keys.serviceClass, keys.serviceInterface, keys.typeLibrary}) {
    const LONG code = RegDeleteTreeW(RootOf(scope), key.c_str());
    if (code != ERROR_SUCCESS && code != ERROR_FILE_NOT_FOUND) return code;
  }
  return ERROR_SUCCESS;
}
