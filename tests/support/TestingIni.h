#pragma once

#include <chrono>
#include <filesystem>
#include <fstream>
#include <string_view>

#include "NetUtilities/Files/IniFile.h"
#include "NetUtilities/Files/PathData.h"
#include "NetUtilities/Module/Singleton.h"

/// The file of test switches, "Testing.ini" in the program-data folder, while it lives.
class TestingIni {
 public:
  explicit TestingIni(std::string_view text) { Write(text); }
  ~TestingIni() { Remove(); }
  TestingIni(const TestingIni&) = delete;
  TestingIni& operator=(const TestingIni&) = delete;

  /// Replaces the text.
  void Write(std::string_view text) { std::ofstream(file_, std::ios::binary) << text; }

  /// Makes the file one that was written long ago.
  void MakeOld() {
    std::filesystem::last_write_time(file_, std::filesystem::file_time_type::clock::now() - std::chrono::hours(1));
  }

  void Remove() {
    std::error_code ignored;
    std::filesystem::remove(file_, ignored);
  }

 private:
  std::filesystem::path file_ =
      std::filesystem::path(Singleton<PathData>::Get()->GetProgramDataPath()) / kTestingIniFile;
};
