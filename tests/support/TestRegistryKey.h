#pragma once

#include <windows.h>

#include <string>
#include <vector>

/// A registry key whose values a test sets. It is created when it is missing; in the end it is as it was, or
/// gone.
class TestRegistryKey {
 public:
  TestRegistryKey(HKEY root, const std::wstring& subkey);
  ~TestRegistryKey();
  TestRegistryKey(const TestRegistryKey&) = delete;
  TestRegistryKey& operator=(const TestRegistryKey&) = delete;

  void SetString(const std::wstring& name, const std::wstring& text);
  void SetDword(const std::wstring& name, DWORD number);

  /// Sets a value of any type to the `size` bytes at `data`.
  void Set(const std::wstring& name, DWORD type, const void* data, size_t size);

  void Remove(const std::wstring& name);

 private:
  struct Value {
    std::wstring name;
    bool exists;
    DWORD type;
    std::vector<BYTE> data;
  };

  void Remember(const std::wstring& name);

  HKEY root_;
  HKEY key_ = nullptr;
  std::wstring firstCreated_;      // the uppermost key that was not there, or empty
  std::vector<Value> remembered_;  // what each changed value was, in the order of the changes
};

/// While it lives a registry key is not there, nor is what lies below it; in the end all is as it was.
class AbsentRegistryKey {
 public:
  AbsentRegistryKey(HKEY root, const std::wstring& subkey);
  ~AbsentRegistryKey();
  AbsentRegistryKey(const AbsentRegistryKey&) = delete;
  AbsentRegistryKey& operator=(const AbsentRegistryKey&) = delete;

 private:
  HKEY root_;
  std::wstring subkey_;
  bool existed_;
};
