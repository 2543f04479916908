#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

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

/// A command line that was read: the options, or a text that answers it at once.
struct ServiceCommandLine {
  ServiceOptions options;

  struct Answer {
    std::string text;      // UTF-8, with its line ends
    bool isError = false;  // the command line was not understood
  };
  std::optional<Answer> answer;
};

/// Reads the arguments, the program's name left out.
ServiceCommandLine ParseServiceCommandLine(const std::vector<std::wstring>& arguments);

/// Whether the arguments are those with which COM starts a server.
bool IsStartedByCom(const std::vector<std::wstring>& arguments);
