#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "NetUtilities/PathData.h"
#include "NetUtilities/Singleton.h"
#include "tests/support/FileBytes.h"
#include "tests/support/WaitUntil.h"

/// What the logging service writes into its files from the beginning of this object on.
class ServiceLog {
 public:
  ServiceLog() : start_(AllText().size()) {}

  /// Waits for a line that contains `text`; false when that takes too long.
  bool Has(std::string_view text) const {
    return WaitUntil([&] { return AllText().find(text, start_) != std::string::npos; });
  }

 private:
  // The files of the days, oldest first.
  static std::string AllText() {
    std::string text;
    const std::filesystem::path folder = Singleton<PathData>::Get()->GetProgramDataPath();
    for (const auto& file : std::filesystem::directory_iterator(folder)) {
      if (file.path().filename().wstring().starts_with(L"TraceLog_")) text += FileBytes(file.path());
    }
    return text;
  }

  size_t start_;
};
