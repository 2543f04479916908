#pragma once

#include <string>

/// A browser that is registered on the machine, or a program to be launched.
struct RegAppItem {
  std::wstring name = {};         // as the user reads it
  std::wstring command = {};      // what is started, without arguments: a path without quotes
  std::wstring executable = {};   // file name of the program
  std::wstring urlTemplate = {};  // not empty for a packaged application, which is activated; "%s" is the address

  bool operator==(const RegAppItem&) const = default;
};
