#pragma once

#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>

#include "tests/support/BrowserStandIn.h"

/// The page of a topic exists while this object lives, also when it is not written yet.
class WrittenTopic {
 public:
  explicit WrittenTopic(const std::wstring& page) : file_(HelpPage(page)), added_(!exists(file_)) {
    if (added_) std::ofstream(file_) << "<!DOCTYPE html>";
  }
  ~WrittenTopic() {
    std::error_code ignored;
    if (added_) std::filesystem::remove(file_, ignored);
  }
  WrittenTopic(const WrittenTopic&) = delete;
  WrittenTopic& operator=(const WrittenTopic&) = delete;

 private:
  std::filesystem::path file_;
  bool added_;
};
