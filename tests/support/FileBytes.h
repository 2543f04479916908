#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

/// All bytes of a file; empty when it cannot be read.
inline std::string FileBytes(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}
