// Command lines: each of the programs answers it or has options from it that it can work with.

#include <algorithm>
#include <string>
#include <vector>

#include "NetUtilities/Log.h"
#include "tests/fuzz/FuzzInput.h"
#include "tests/fuzz/Require.h"
#include "TraceLogManager/LogSources.h"
#include "TraceLogManager/ServiceOptions.h"
#include "Wayline/Options.h"

namespace {

using Arguments = std::vector<std::wstring>;

void CheckAnswer(const CommandLineAnswer& answer) {
  Require(answer.text.ends_with('\n'));
  if (answer.isError) Require(answer.text.starts_with("The command line is not understood: "));
}

// How often an argument stands there by itself.
auto Count(const Arguments& arguments, std::wstring_view argument) { return std::ranges::count(arguments, argument); }

void CheckService(const Arguments& arguments) {
  const CommandLine<ServiceOptions> commandLine = ParseServiceCommandLine(arguments);
  Require(!arguments.empty() || (commandLine.answer && commandLine.answer->isError));
  if (commandLine.answer) {
    CheckAnswer(*commandLine.answer);
    return;
  }
  const ServiceOptions& options = commandLine.options;
  using Action = ServiceOptions::Action;
  const auto isLevel = [](unsigned level) { return level <= kHighestLogLevel; };
  if (options.globalLevel) Require(*options.globalLevel > 0 && isLevel(*options.globalLevel));
  for (const auto& [source, level] : options.sourceLevels) Require(source < kLogSourceCount && isLevel(level));
  for (const uint32_t source : options.filter.sources) Require(source < kLogSourceCount);
  const LogViewFilter everything;
  if (options.action != Action::Tail) {
    Require(options.filter.sources.empty() && options.filter.maximumLevel == everything.maximumLevel);
  }
  const bool sets = options.globalLevel || !options.sourceLevels.empty() || options.show;
  Require(sets == (options.action == Action::Levels));
  if (options.scope == RegistrationScope::User) {
    Require(options.action == Action::Register || options.action == Action::Unregister);
  }
}

void CheckHost(const Arguments& arguments) {
  const CommandLine<Options> commandLine = ParseCommandLine(arguments);
  if (commandLine.answer) {
    CheckAnswer(*commandLine.answer);
    return;
  }
  const Options& options = commandLine.options;
  Require(options.mode >= SheetMode::Full && options.mode <= SheetMode::WiFiSwitchingOnly);
  Require(!options.json || options.list);
  if (arguments.empty())
    Require(options.mode == SheetMode::Full && !options.profile && options.database.empty() && !options.list);
  // An id is taken as it is written.
  const auto written = std::ranges::find(arguments, L"--profile");
  if (written != arguments.end() && std::next(written) != arguments.end() && Count(arguments, L"--database") == 0 &&
      Count(arguments, L"--mode") == 0) {
    const std::wstring& id = *std::next(written);
    const bool decimal = !id.empty() && id.front() != L'0' && id.size() < 10 &&
                         id.find_first_not_of(L"0123456789") == std::wstring::npos;
    if (decimal) Require(options.profile && std::to_wstring(*options.profile) == id);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  FuzzInput input(data, size);
  Arguments arguments;
  while (!input.IsAtEnd() && arguments.size() < 16) arguments.push_back(input.WideLine());
  CheckService(arguments);
  CheckHost(arguments);
  return 0;
}
