#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <string>
#include <string_view>

#include "NetUtilities/Files/PathData.h"
#include "NetUtilities/Module/Singleton.h"
#include "tests/support/WaitUntil.h"

/// What the logging service writes into its files from the beginning of this object on.
class ServiceLog {
 public:
  ServiceLog() {
    for (const std::filesystem::path& file : Files()) sizes_[file] = std::filesystem::file_size(file);
  }

  /// All of it; UTF-8, lines ended by CR LF.
  std::string Text() const {
    std::string text;
    for (const std::filesystem::path& file : Files()) {
      const auto known = sizes_.find(file);
      const uintmax_t start = known == sizes_.end() ? 0 : known->second;
      const uintmax_t end = std::filesystem::file_size(file);
      const size_t before = text.size();
      text.resize(before + static_cast<size_t>(end - start));
      std::ifstream stream(file, std::ios::binary);
      stream.seekg(static_cast<std::streamoff>(start));
      stream.read(text.data() + before, static_cast<std::streamsize>(end - start));
    }
    return text;
  }

  /// Waits for a line that contains `text`; false when that takes too long.
  bool Has(std::string_view text) const {
    return WaitUntil([&] { return Text().find(text) != std::string::npos; });
  }

 private:
  // Those of the days, oldest first.
  static std::set<std::filesystem::path> Files() {
    std::set<std::filesystem::path> files;
    std::error_code ignored;
    const std::filesystem::path folder = Singleton<PathData>::Get()->GetProgramDataPath();
    for (const auto& entry : std::filesystem::directory_iterator(folder, ignored)) {
      if (entry.path().filename().wstring().starts_with(L"TraceLog_")) files.insert(entry.path());
    }
    return files;
  }

  std::map<std::filesystem::path, uintmax_t> sizes_;  // of the files that were there in the beginning
};
