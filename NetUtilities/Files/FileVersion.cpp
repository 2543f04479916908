#include "NetUtilities/Files/FileVersion.h"

#include <windows.h>

#include <cstddef>
#include <cwchar>
#include <filesystem>
#include <vector>

#include "NetUtilities/Files/FileVersionPlatform.h"
#include "NetUtilities/Text/Format.h"

FileVersionPlatform fileVersionPlatform;

namespace {

// Under WOW64, the calling thread's access to the System folder is not redirected while this lives.
class RedirectionOff {
 public:
  RedirectionOff() {
    BOOL wow64 = FALSE;
    disabled_ = fileVersionPlatform.isWow64Process(GetCurrentProcess(), &wow64) != FALSE && wow64 != FALSE &&
                fileVersionPlatform.disableRedirection(&previous_) != FALSE;
  }
  ~RedirectionOff() {
    if (disabled_) fileVersionPlatform.revertRedirection(previous_);
  }
  RedirectionOff(const RedirectionOff&) = delete;
  RedirectionOff& operator=(const RedirectionOff&) = delete;

 private:
  bool disabled_ = false;
  void* previous_ = nullptr;
};

// The version resource of a file; empty when it cannot be read.
std::vector<std::byte> ReadVersionResource(const std::wstring& path) {
  DWORD ignored = 0;
  std::vector<std::byte> resource(GetFileVersionInfoSizeW(path.c_str(), &ignored));
  if (resource.empty()) return {};
  const BOOL read =
      fileVersionPlatform.getFileVersionInfo(path.c_str(), 0, static_cast<DWORD>(resource.size()), resource.data());
  return read != FALSE ? resource : std::vector<std::byte>();
}

// A value inside of `resource`, null when there is none; `length` is in the value's own units.
template <typename Value>
const Value* FindValue(const std::vector<std::byte>& resource, const std::wstring& block, UINT& length) {
  void* value = nullptr;
  return VerQueryValueW(resource.data(), block.c_str(), &value, &length) != FALSE ? static_cast<const Value*>(value)
                                                                                  : nullptr;
}

}  // namespace

int GetFileVersionString(const std::wstring& path, const std::wstring& name, std::wstring& out) {
  if (path.empty() || name.empty()) return 0;
  const RedirectionOff redirectionOff;
  std::error_code ignored;
  if (!std::filesystem::exists(path, ignored)) return 0;
  const std::vector<std::byte> resource = ReadVersionResource(path);
  if (resource.empty()) return 0;

  struct Translation {
    WORD language;
    WORD codePage;
  };
  UINT length = 0;
  const auto* translation = FindValue<Translation>(resource, L"\\VarFileInfo\\Translation", length);
  if (translation == nullptr || length < sizeof(Translation)) return 0;
  const auto* text = FindValue<wchar_t>(
      resource, Format(L"\\StringFileInfo\\{:04x}{:04x}\\{}", translation->language, translation->codePage, name),
      length);
  if (text == nullptr) return 0;
  // The length counts the terminator, where the resource has one.
  out.assign(text, wcsnlen(text, length));
  return 1;
}
