#pragma once

#include <gtest/gtest.h>

#include <regex>
#include <string>
#include <vector>

#include "tests/support/MarkdownPage.h"

/// An example `reg add "KEY" /v VALUE /t TYPE /d DATA /f` of the page for administrators.
struct RegistryExample {
  std::string key, value, type, data;
};

inline std::vector<RegistryExample> RegistryExamples(const MarkdownPage& page) {
  static const std::regex command(R"re(reg add "([^"]+)" /v (\w+) /t (\w+) /d (?:"([^"]+)"|(\w+)) /f)re");
  std::vector<RegistryExample> examples;
  for (const std::string& line : page.CodeLines("bat")) {
    std::smatch parts;
    EXPECT_TRUE(std::regex_match(line, parts, command)) << line;
    if (!parts.empty()) examples.push_back({parts[1], parts[2], parts[3], parts[4].str() + parts[5].str()});
  }
  return examples;
}
