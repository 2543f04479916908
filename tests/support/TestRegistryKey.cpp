#include "tests/support/TestRegistryKey.h"

#include <gtest/gtest.h>

#include <ranges>
#include <stdexcept>

namespace {

bool Exists(HKEY root, const std::wstring& subkey) {
  HKEY key = nullptr;
  if (RegOpenKeyExW(root, subkey.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS) return false;
  RegCloseKey(key);
  return true;
}

// The part of `subkey` down to its first key that does not exist; empty when all exist.
std::wstring FirstMissing(HKEY root, const std::wstring& subkey) {
  for (size_t end = 0; end != std::wstring::npos;) {
    end = subkey.find(L'\\', end + 1);
    std::wstring part = subkey.substr(0, end);
    if (!Exists(root, part)) return part;
  }
  return {};
}

// Where an absent key is kept meanwhile.
std::wstring PlaceBeside(const std::wstring& subkey) { return subkey + L".absent"; }

// Moves a key with everything below it to where none is.
void Move(HKEY root, const std::wstring& from, const std::wstring& to) {
  HKEY target = nullptr;
  const bool moved =
      RegCreateKeyExW(root, to.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &target, nullptr) == ERROR_SUCCESS &&
      RegCopyTreeW(root, from.c_str(), target) == ERROR_SUCCESS && RegDeleteTreeW(root, from.c_str()) == ERROR_SUCCESS;
  RegCloseKey(target);
  EXPECT_TRUE(moved) << "A registry key cannot be moved.";
}

}  // namespace

TestRegistryKey::TestRegistryKey(HKEY root, const std::wstring& subkey)
    : root_(root), firstCreated_(FirstMissing(root, subkey)) {
  if (RegCreateKeyExW(root, subkey.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key_, nullptr) != ERROR_SUCCESS) {
    throw std::runtime_error("A registry key for the test cannot be created.");
  }
}

TestRegistryKey::~TestRegistryKey() {
  for (const Value& value : remembered_ | std::views::reverse) {
    if (value.exists) {
      RegSetValueExW(key_, value.name.c_str(), 0, value.type, value.data.data(), static_cast<DWORD>(value.data.size()));
    } else {
      RegDeleteValueW(key_, value.name.c_str());
    }
  }
  RegCloseKey(key_);
  if (!firstCreated_.empty()) RegDeleteTreeW(root_, firstCreated_.c_str());
}

void TestRegistryKey::SetString(const std::wstring& name, const std::wstring& text) {
  Set(name, REG_SZ, text.c_str(), (text.size() + 1) * sizeof(wchar_t));
}

void TestRegistryKey::SetDword(const std::wstring& name, DWORD number) {
  Set(name, REG_DWORD, &number, sizeof(number));
}

void TestRegistryKey::Set(const std::wstring& name, DWORD type, const void* data, size_t size) {
  Remember(name);
  if (RegSetValueExW(key_, name.c_str(), 0, type, static_cast<const BYTE*>(data), static_cast<DWORD>(size)) !=
      ERROR_SUCCESS) {
    throw std::runtime_error("A registry value for the test cannot be set.");
  }
}

void TestRegistryKey::Remove(const std::wstring& name) {
  Remember(name);
  RegDeleteValueW(key_, name.c_str());
}

void TestRegistryKey::Remember(const std::wstring& name) {
  Value value{name, false, REG_NONE, {}};
  DWORD size = 0;
  if (RegQueryValueExW(key_, name.c_str(), nullptr, &value.type, nullptr, &size) == ERROR_SUCCESS) {
    value.data.resize(size);
    value.exists = RegQueryValueExW(key_, name.c_str(), nullptr, nullptr, value.data.data(), &size) == ERROR_SUCCESS;
  }
  remembered_.push_back(std::move(value));
}

AbsentRegistryKey::AbsentRegistryKey(HKEY root, const std::wstring& subkey)
    : root_(root), subkey_(subkey), existed_(Exists(root, subkey)) {
  if (existed_) Move(root_, subkey_, PlaceBeside(subkey_));
}

AbsentRegistryKey::~AbsentRegistryKey() {
  if (existed_) Move(root_, PlaceBeside(subkey_), subkey_);
}
