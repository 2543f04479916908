#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "NetUtilities/Text/Utf8.h"
#include "tests/support/FileBytes.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/ThisProgram.h"
#include "tests/support/WaitUntil.h"

/// What a program writes down of how it was started: LaunchedProgram.exe, started by this process while this lives.
class LaunchRecord {
 public:
  LaunchRecord() { SetEnvironmentVariableW(kVariable, file_.c_str()); }
  ~LaunchRecord() { SetEnvironmentVariableW(kVariable, nullptr); }
  LaunchRecord(const LaunchRecord&) = delete;
  LaunchRecord& operator=(const LaunchRecord&) = delete;

  static std::filesystem::path Program() { return ThisProgram().replace_filename(L"LaunchedProgram.exe"); }

  /// Waits for the record of the program that is started next, and takes it.
  void Take() {
    EXPECT_TRUE(WaitUntil([this] { return WasStarted(); })) << "Nothing was started.";
    lines_ = FileBytes(file_);
    std::filesystem::remove(file_);
  }

  bool WasStarted() const { return !FileBytes(file_).empty(); }

  /// The texts behind a word of the record that was taken.
  std::vector<std::wstring> Texts(const std::string& word) const {
    std::vector<std::wstring> texts;
    std::istringstream stream(lines_);
    for (std::string line; std::getline(stream, line);) {
      if (line.starts_with(word + ' ')) texts.push_back(FromUtf8(line.substr(word.size() + 1)));
    }
    return texts;
  }

  std::wstring Text(const std::string& word) const {
    const std::vector<std::wstring> texts = Texts(word);
    return texts.empty() ? std::wstring() : texts.front();
  }

 private:
  static constexpr wchar_t kVariable[] = L"PAVISE_LAUNCH_RECORD";

  TemporaryFolder folder_;
  std::filesystem::path file_ = folder_.Path() / L"record.txt";
  std::string lines_;
};
