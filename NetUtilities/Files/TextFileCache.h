#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "NetUtilities/Module/Mutex.h"

/// The texts of files, kept per path and read again when a file has changed. Any thread may ask.
class TextFileCache {
 public:
  using Text = std::shared_ptr<const std::wstring>;

  /// The text of `file` as it is now; empty for a file that is missing, never null. A file that cannot be read at the
  /// moment, because another process has locked it, keeps the text it had and is tried again by the next call. What is
  /// returned does not change any more.
  Text TextOf(const std::filesystem::path& file);

 private:
  struct Copy {
    Text text = std::make_shared<std::wstring>();
    /// The last-write time of the file that this is the text of; nothing when it must be read again in any case.
    std::optional<std::filesystem::file_time_type> lastWrite = {};
  };

  Mutex mutex_;
  std::map<std::filesystem::path, Copy> copies_;
};
