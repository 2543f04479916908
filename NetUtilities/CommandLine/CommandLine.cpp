#include "NetUtilities/CommandLine/CommandLine.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <iterator>

#include "NetUtilities/Text/Utf8.h"

CommandLineAnswer NotUnderstood(const std::string& reason) {
  return {"The command line is not understood: " + reason + ".\n", true};
}

std::optional<CommandLineAnswer> ReadArguments(CLI::App& parser, const std::vector<std::wstring>& arguments) {
  // A slash begins a path.
  parser.allow_windows_style_options(false);
  // The parser takes its arguments from the end of the list.
  std::vector<std::string> reversed;
  std::transform(arguments.rbegin(), arguments.rend(), std::back_inserter(reversed), ToUtf8);
  try {
    parser.parse(reversed);
  } catch (const CLI::CallForHelp&) {
    return CommandLineAnswer{parser.help()};
  } catch (const CLI::CallForVersion& version) {
    return CommandLineAnswer{version.what() + std::string("\n")};
  } catch (const CLI::ParseError& error) {
    return NotUnderstood(error.what());
  }
  return std::nullopt;
}
