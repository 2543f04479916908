#pragma once

#include <windows.h>

#include <string>
#include <vector>

/// An open registry key. Failures are returned as Win32 codes and logged as errors, except that a key or value that is
/// not there (code 2) is never logged. Not to be shared between threads.
class RegistryKey {
 public:
  RegistryKey() = default;
  ~RegistryKey() { Close(); }
  RegistryKey(const RegistryKey&) = delete;
  RegistryKey& operator=(const RegistryKey&) = delete;

  /// Opens `subkey` of a root hive; a key that is open is closed first. A null root gives 160 (ERROR_BAD_ARGUMENTS) and
  /// changes nothing.
  LONG Open(HKEY root, const std::wstring& subkey, REGSAM access);

  /// Closes the key, if it is open; 0 or the error of closing.
  LONG Close();

  /// The names of the immediate subkeys in the registry's order; those found so far when enumerating fails, which is
  /// not logged.
  std::vector<std::wstring> GetSubkeyNames() const;

  /// Reads a string value as it is stored, unexpanded. `out` keeps `defaultValue` on failure; a value that is no string
  /// gives 13 (ERROR_INVALID_DATA), which is not logged.
  LONG ReadString(const std::wstring& valueName, std::wstring& out, const std::wstring& defaultValue) const;

  /// Reads a 32-bit value, of whatever type; `out` keeps `defaultValue` on failure. A value of fewer than four bytes
  /// replaces only the lower bytes of `defaultValue`; a longer one gives 234 (ERROR_MORE_DATA).
  LONG ReadDword(const std::wstring& valueName, DWORD& out, DWORD defaultValue) const;

  /// As ReadDword with what `out` holds for its default; a failure is logged as "RegQueryValueEx read ", `what` and
  /// the value's path.
  LONG ReadDwordAs(const wchar_t* what, const std::wstring& valueName, DWORD& out) const;

  /// Whether failures of this key are logged, which they are at first.
  void SetLogErrors(bool logErrors) { logErrors_ = logErrors; }

  /// The key as log lines name it: root, a backslash, the subkey. It stays set after a failed Open.
  const std::wstring& Path() const { return path_; }

 private:
  LONG QueryDword(const std::wstring& valueName, DWORD& out, DWORD& size) const;
  bool IsLogged(LONG code) const;

  HKEY handle_ = nullptr;
  std::wstring path_;
  bool logErrors_ = true;
};

/// Reads a DWORD of a key that is opened for it; `defaultValue` when the key or the value cannot be read.
DWORD ReadRegistryDword(HKEY root, const std::wstring& subkey, const std::wstring& valueName, DWORD defaultValue);

/// Reads a string below HKEY_LOCAL_MACHINE; `defaultValue` when the key or the value cannot be read.
std::wstring ReadHklmString(const std::wstring& subkey, const std::wstring& valueName,
                            const std::wstring& defaultValue);
