#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "NetUtilities/CommandLine/CommandLine.h"
#include "TraceLogManager/LogView.h"

/// Whom the service is registered for.
enum class RegistrationScope {
  Machine,  // all users; only administrators can do that
  User,     // the current user
};

/// What the user asks the logging service's program to do.
struct ServiceOptions {
  enum class Action {
    Register,
    Unregister,
    Levels,  // set the levels below, and show all if asked to
    Tail,    // follow the log file
  };
  Action action = Action::Levels;
  RegistrationScope scope = RegistrationScope::Machine;

  std::optional<uint16_t> globalLevel;                      // to set, 1 to 5
  std::vector<std::pair<uint32_t, uint16_t>> sourceLevels;  // to set: source and level, 0 for the global one
  bool show = false;

  LogViewFilter filter;
};

/// Reads the arguments, the program's name left out.
CommandLine<ServiceOptions> ParseServiceCommandLine(const std::vector<std::wstring>& arguments);

/// Whether the arguments are those with which COM starts a server.
bool IsStartedByCom(const std::vector<std::wstring>& arguments);
