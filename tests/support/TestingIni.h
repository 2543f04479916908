#pragma once

#include <chrono>
#include <filesystem>
#include <fstream>
#include <string_view>

#include "NetUtilities/IniFile.h"
#include "NetUtilities/PathData.h"
#include "NetUtilities/Singleton.h"

/// The file of test switches, "Testing.ini" in the program-data folder, while it lives.
class TestingIni {
 public:
  explicit TestingIni(std::string_view text) { Write(text); }
  ~TestingIni() { Remove(); }
  TestingIni(const TestingIni&) = delete;
  TestingIni& operator=(const TestingIni&) = delete;

  /// Replaces the text. No two writings have the same time, however fast they follow each other.
  void Write(std::string_view text) {
    std::ofstream(file_, std::ios::binary) << text;
    static auto lastWrite = std::filesystem::file_time_type::clock::now();
    lastWrite += std::chrono::seconds(1);
    std::filesystem::last_write_time(file_, lastWrite);
  }

  void Remove() {
    std::error_code ignored;
    std::filesystem::remove(file_, ignored);
  }

 private:
  std::filesystem::path file_ =
      std::filesystem::path(Singleton<PathData>::Get()->GetProgramDataPath()) / kTestingIniFile;
};
