#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "LoginProperties/SheetMode.h"
#include "NetUtilities/CommandLine/CommandLine.h"
#include "WaylineDll/ConnectionState.h"

/// What the user asks the program to do.
struct Options {
  SheetMode mode = SheetMode::Full;
  std::optional<uint32_t> profile;                           // the profile to select; the active one when not given
  std::wstring database;                                     // the settings database; the user's own when empty
  std::optional<FSMState> connection;                        // what the client's connection is said to do
  std::vector<std::pair<uint32_t, std::wstring>> bookmarks;  // values to be stored, with their numbers
  bool list = false;                                         // print the profiles instead of showing the sheet
  bool json = false;                                         // print them as JSON
};

/// Reads the arguments, the program's name left out.
CommandLine<Options> ParseCommandLine(const std::vector<std::wstring>& arguments);
