#pragma once

#include <windows.h>

#include <dbghelp.h>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

/// A crash dump as it lies in its file. What the file does not have, or not in full, is empty.
class MinidumpFile {
 public:
  explicit MinidumpFile(const std::filesystem::path& file);

  /// Whether the file starts as a dump of the version in use does.
  bool IsMinidump() const;

  /// The MINIDUMP_TYPE bits that it was written with.
  ULONG64 Type() const;

  std::optional<MINIDUMP_EXCEPTION_STREAM> Exception() const;

  std::vector<ULONG32> ThreadIds() const;

  struct Module {
    std::wstring file;
    ULONG64 base;
    ULONG64 size;  // in bytes
  };

  std::vector<Module> Modules() const;

 private:
  template <typename T>
  std::optional<T> At(size_t offset) const;
  std::optional<MINIDUMP_LOCATION_DESCRIPTOR> FindStream(MINIDUMP_STREAM_TYPE type) const;
  template <typename Entry>
  std::vector<Entry> List(MINIDUMP_STREAM_TYPE type) const;
  std::wstring TextAt(size_t offset) const;

  std::string bytes_;
  MINIDUMP_HEADER header_{};
};
