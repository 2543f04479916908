#pragma once

#include <optional>
#include <string>
#include <vector>

namespace CLI {
class App;
}

/// A text that answers a command line at once, in place of what the program does otherwise.
struct CommandLineAnswer {
  std::string text;      // UTF-8, with its line ends
  bool isError = false;  // the command line was not understood
};

/// A command line that was read: the options, or an answer.
template <typename Options>
struct CommandLine {
  Options options;
  std::optional<CommandLineAnswer> answer;
};

/// The answer to a command line that is not understood, for a reason without a full stop.
CommandLineAnswer NotUnderstood(const std::string& reason);

/// Reads the arguments, the program's name left out, by the parser's description of them. The answer to those that ask
/// for help or the version, or that are wrong; nothing when all were read.
std::optional<CommandLineAnswer> ReadArguments(CLI::App& parser, const std::vector<std::wstring>& arguments);
