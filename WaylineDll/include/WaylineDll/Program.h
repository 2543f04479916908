#pragma once

#include <cstdint>
#include <string>

/// One installed program that can be started automatically.
struct Program {
  enum class Kind : uint32_t {
    Application = 1,
    Document = 2,
    Web = 3,  // `parameters` is the address
  };

  std::wstring name = {};
  uint32_t id = 0;
  std::wstring path = {};  // empty when the program is not started by a path
  std::wstring parameters = {};
  Kind kind = Kind::Application;
};
