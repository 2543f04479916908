#include "NetUtilities/Registry/RegistryKey.h"

#include <utility>

#include "NetUtilities/Log.h"
#include "NetUtilities/Registry/RegistryPlatform.h"
#include "NetUtilities/Text/ErrorText.h"
#include "NetUtilities/Text/Format.h"

RegistryPlatform registryPlatform;

namespace {

const wchar_t* RootName(HKEY root) {
  if (root == HKEY_CLASSES_ROOT) return L"HKCR";
  if (root == HKEY_CURRENT_USER) return L"HKCU";
  if (root == HKEY_LOCAL_MACHINE) return L"HKLM";
  if (root == HKEY_USERS) return L"HKU";
  return L"";
}

void LogFailure(LONG code, const std::wstring& message) { Log(LogLevel::Error, message + ErrorSuffix(code)); }

}  // namespace

LONG RegistryKey::Open(HKEY root, const std::wstring& subkey, REGSAM access) {
  if (root == nullptr) return ERROR_BAD_ARGUMENTS;
  Close();
  path_ = Format(L"{}\\{}", RootName(root), subkey);
  const LONG code = registryPlatform.openKey(root, subkey.c_str(), 0, access, &handle_);
  if (code != ERROR_SUCCESS) {
    handle_ = nullptr;
    if (IsLogged(code)) LogFailure(code, Format(L"RegOpenKeyEx {}", path_));
  }
  return code;
}

LONG RegistryKey::Close() {
  path_.clear();
  HKEY open = std::exchange(handle_, nullptr);
  return open != nullptr ? registryPlatform.closeKey(open) : ERROR_SUCCESS;
}

std::vector<std::wstring> RegistryKey::GetSubkeyNames() const {
  std::vector<std::wstring> names;
  DWORD longest = 0;
  if (registryPlatform.queryInfo(handle_, nullptr, nullptr, nullptr, nullptr, &longest, nullptr, nullptr, nullptr,
                                 nullptr, nullptr, nullptr) != ERROR_SUCCESS) {
    return names;
  }
  std::wstring buffer(longest + 1, L'\0');
  for (DWORD index = 0;; ++index) {
    auto length = static_cast<DWORD>(buffer.size());
    if (registryPlatform.enumKey(handle_, index, buffer.data(), &length, nullptr, nullptr, nullptr, nullptr) !=
        ERROR_SUCCESS) {
      return names;
    }
    names.emplace_back(buffer.c_str());
  }
}

LONG RegistryKey::ReadString(const std::wstring& valueName, std::wstring& out, const std::wstring& defaultValue) const {
  out = defaultValue;
  DWORD type = REG_NONE;
  DWORD size = 0;
  LONG code = registryPlatform.queryValue(handle_, valueName.c_str(), nullptr, &type, nullptr, &size);
  if (code != ERROR_SUCCESS) {
    if (IsLogged(code)) LogFailure(code, Format(L"RegQueryValueEx get size read wstring {}\\{}", path_, valueName));
    return code;
  }
  if (type != REG_SZ && type != REG_EXPAND_SZ) return ERROR_INVALID_DATA;
  if (size == 0) {
    out.clear();
    return ERROR_SUCCESS;
  }
  // Half a character at the end has its place too, and is dropped.
  std::wstring data((size + 1) / sizeof(wchar_t), L'\0');
  code = registryPlatform.queryValue(handle_, valueName.c_str(), nullptr, &type, reinterpret_cast<BYTE*>(data.data()),
                                     &size);
  if (code != ERROR_SUCCESS) {
    if (IsLogged(code)) LogFailure(code, Format(L"RegQueryValueEx read wstring {}\\{}", path_, valueName));
    return code;
  }
  // The terminator goes by count: a value that was stored without one loses its last character.
  const size_t stored = size / sizeof(wchar_t);
  data.resize(stored > 0 ? stored - 1 : 0);
  out = std::move(data);
  return ERROR_SUCCESS;
}

LONG RegistryKey::ReadDword(const std::wstring& valueName, DWORD& out, DWORD defaultValue) const {
  constexpr DWORD kBitsPerByte = 8;
  out = defaultValue;
  DWORD size = 0;
  const LONG code = QueryDword(valueName, out, size);
  // The size is what the query reported: an eight-byte value is named as 64 bits wide.
  if (IsLogged(code)) {
    LogFailure(code, Format(L"RegQueryValueEx read DWORD{} {}\\{}", size * kBitsPerByte, path_, valueName));
  }
  return code;
}

LONG RegistryKey::ReadDwordAs(const wchar_t* what, const std::wstring& valueName, DWORD& out) const {
  DWORD size = 0;
  const LONG code = QueryDword(valueName, out, size);
  if (IsLogged(code)) LogFailure(code, Format(L"RegQueryValueEx read {}{}\\{}", what, path_, valueName));
  return code;
}

LONG RegistryKey::QueryDword(const std::wstring& valueName, DWORD& out, DWORD& size) const {
  // A value of fewer bytes replaces only the lower ones, and a failure may leave anything behind.
  DWORD value = out;
  size = sizeof(value);
  const LONG code =
      registryPlatform.queryValue(handle_, valueName.c_str(), nullptr, nullptr, reinterpret_cast<BYTE*>(&value), &size);
  if (code == ERROR_SUCCESS) out = value;
  return code;
}

bool RegistryKey::IsLogged(LONG code) const {
  // A key or value that is not there is no failure.
  return logErrors_ && code != ERROR_SUCCESS && code != ERROR_FILE_NOT_FOUND;
}

DWORD ReadRegistryDword(HKEY root, const std::wstring& subkey, const std::wstring& valueName, DWORD defaultValue) {
  RegistryKey key;
  DWORD value = defaultValue;
  if (key.Open(root, subkey, KEY_READ) == ERROR_SUCCESS) key.ReadDword(valueName, value, defaultValue);
  return value;
}

std::wstring ReadHklmString(const std::wstring& subkey, const std::wstring& valueName,
                            const std::wstring& defaultValue) {
  RegistryKey key;
  std::wstring value = defaultValue;
  if (key.Open(HKEY_LOCAL_MACHINE, subkey, KEY_READ) == ERROR_SUCCESS) {
    key.ReadString(valueName, value, defaultValue);
  }
  return value;
}
