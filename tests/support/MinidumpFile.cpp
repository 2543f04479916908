#include "tests/support/MinidumpFile.h"

#include <cstring>

#include "tests/support/FileBytes.h"

MinidumpFile::MinidumpFile(const std::filesystem::path& file)
    : bytes_(FileBytes(file)), header_(At<MINIDUMP_HEADER>(0).value_or(MINIDUMP_HEADER{})) {}

bool MinidumpFile::IsMinidump() const {
  return bytes_.starts_with("MDMP") && LOWORD(header_.Version) == MINIDUMP_VERSION;
}

ULONG64 MinidumpFile::Type() const { return header_.Flags; }

std::optional<MINIDUMP_EXCEPTION_STREAM> MinidumpFile::Exception() const {
  const auto stream = FindStream(ExceptionStream);
  return stream ? At<MINIDUMP_EXCEPTION_STREAM>(stream->Rva) : std::nullopt;
}

std::vector<ULONG32> MinidumpFile::ThreadIds() const {
  std::vector<ULONG32> ids;
  for (const auto& thread : List<MINIDUMP_THREAD>(ThreadListStream)) ids.push_back(thread.ThreadId);
  return ids;
}

std::vector<MinidumpFile::Module> MinidumpFile::Modules() const {
  std::vector<Module> modules;
  for (const auto& module : List<MINIDUMP_MODULE>(ModuleListStream)) {
    modules.push_back({TextAt(module.ModuleNameRva), module.BaseOfImage, module.SizeOfImage});
  }
  return modules;
}

template <typename T>
std::optional<T> MinidumpFile::At(size_t offset) const {
  if (offset > bytes_.size() || bytes_.size() - offset < sizeof(T)) return std::nullopt;
  T value;
  std::memcpy(&value, bytes_.data() + offset, sizeof(T));
  return value;
}

std::optional<MINIDUMP_LOCATION_DESCRIPTOR> MinidumpFile::FindStream(MINIDUMP_STREAM_TYPE type) const {
  for (ULONG32 i = 0; i < header_.NumberOfStreams; ++i) {
    const auto entry = At<MINIDUMP_DIRECTORY>(header_.StreamDirectoryRva + i * sizeof(MINIDUMP_DIRECTORY));
    if (!entry) break;
    if (entry->StreamType == static_cast<ULONG32>(type)) return entry->Location;
  }
  return std::nullopt;
}

// The entries of a stream that is their number and then they.
template <typename Entry>
std::vector<Entry> MinidumpFile::List(MINIDUMP_STREAM_TYPE type) const {
  std::vector<Entry> entries;
  const auto stream = FindStream(type);
  if (!stream) return entries;
  const ULONG32 count = At<ULONG32>(stream->Rva).value_or(0);
  for (ULONG32 i = 0; i < count; ++i) {
    const auto entry = At<Entry>(stream->Rva + sizeof(count) + i * sizeof(Entry));
    if (!entry) break;
    entries.push_back(*entry);
  }
  return entries;
}

// A text that follows its length in bytes.
std::wstring MinidumpFile::TextAt(size_t offset) const {
  const size_t size = At<ULONG32>(offset).value_or(0);
  const size_t start = offset + sizeof(ULONG32);
  if (start > bytes_.size() || bytes_.size() - start < size) return {};
  std::wstring text(size / sizeof(wchar_t), L'\0');
  std::memcpy(text.data(), bytes_.data() + start, text.size() * sizeof(wchar_t));
  return text;
}
