#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "LoginProperties/SheetMode.h"
#include "NetUtilities/CommandLine/CommandLine.h"

/// What the user asks the program to do.
struct Options {
  SheetMode mode = SheetMode::Full;
  std::optional<uint32_t> profile;  // the profile to select; the active one when not given
  std::wstring database;            // the settings database; the user's own when empty
  bool list = false;                // print the profiles instead of showing the sheet
  bool json = false;                // print them as JSON
};

/// Reads the arguments, the program's name left out.
CommandLine<Options> ParseCommandLine(const std::vector<std::wstring>& arguments);
