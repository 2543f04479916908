#pragma once

#include <string>

/// A browser that is registered on the machine, or a program to be launched.
struct RegAppItem {
  std::wstring name;         // as the user reads it
  std::wstring command;      // what is started, without arguments: a path without quotes
  std::wstring executable;   // file name of the program
  std::wstring urlTemplate;  // when not empty, a packaged application that is activated; "%s" stands for the address

  bool operator==(const RegAppItem&) const = default;
};
