#include "NetUtilities/Files/TextFileCache.h"

#include <array>
#include <chrono>
#include <fstream>
#include <string>

#include "NetUtilities/Text/DecodeText.h"

namespace {

// Two changes within this time may leave the same last-write time: it counts in steps, of up to two seconds.
constexpr std::chrono::seconds kStepOfFileTimes(2);

// The bytes of a file; nothing when it cannot be read.
std::optional<std::string> ReadBytes(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  std::string bytes;
  std::array<char, 4096> block;
  while (stream) {
    stream.read(block.data(), block.size());
    bytes.append(block.data(), static_cast<size_t>(stream.gcount()));
  }
  // The end of the file was met; anything else is a failure to open or to read it.
  return stream.eof() && !stream.bad() ? std::optional(std::move(bytes)) : std::nullopt;
}

}  // namespace

TextFileCache::Text TextFileCache::TextOf(const std::filesystem::path& file) {
  const std::scoped_lock lock(mutex_);
  Copy& copy = copies_[file];
  // Taken before reading, so that a change meanwhile is seen by the next call.
  const auto now = std::filesystem::file_time_type::clock::now();
  std::error_code missing;
  const auto lastWrite = std::filesystem::last_write_time(file, missing);
  if (missing) {
    copy = {};
  } else if (copy.lastWrite != lastWrite) {
    if (const auto bytes = ReadBytes(file)) {
      copy = {std::make_shared<std::wstring>(DecodeText(*bytes)), lastWrite};
      // The next change of a file that was written just now may be no later by its time.
      if (lastWrite > now - kStepOfFileTimes) copy.lastWrite.reset();
    }
  }
  return copy.text;
}
