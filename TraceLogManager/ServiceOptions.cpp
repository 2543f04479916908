#include "TraceLogManager/ServiceOptions.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <string_view>

#include "NetUtilities/Text/IgnoringCase.h"
#include "NetUtilities/Text/Utf8.h"
#include "TraceLogManager/LogSources.h"

namespace {

using SourceLevel = std::pair<uint32_t, uint16_t>;

std::optional<uint32_t> SourceIn(const std::string& text) { return FindSource(FromUtf8(text)); }

std::optional<uint16_t> LevelIn(std::string_view text) {
  const bool isLevel = text.size() == 1 && text[0] >= '0' && text[0] <= '0' + kHighestLogLevel;
  return isLevel ? std::optional(static_cast<uint16_t>(text[0] - '0')) : std::nullopt;
}

std::optional<uint16_t> LevelAbove0In(const std::string& text) {
  const std::optional<uint16_t> level = LevelIn(text);
  return level > 0 ? level : std::nullopt;
}

// The source and the level in "SOURCE=LEVEL".
std::optional<SourceLevel> SourceLevelIn(const std::string& text) {
  const size_t equals = text.find('=');
  if (equals == std::string::npos) return std::nullopt;
  const std::optional<uint32_t> source = SourceIn(text.substr(0, equals));
  const std::optional<uint16_t> level = LevelIn(std::string_view(text).substr(equals + 1));
  return source && level ? std::optional<SourceLevel>({*source, *level}) : std::nullopt;
}

// Refuses texts in which `read` finds nothing.
template <typename Read>
CLI::Validator Readable(Read read, const std::string& refusal) {
  return CLI::Validator(
      [=](const std::string& text) { return read(text) ? std::string() : "\"" + text + "\" " + refusal; }, "");
}

// The values of options as they are written, each of which has been found readable.
struct ValueTexts {
  std::string globalLevel;
  std::vector<std::string> sourceLevels;
  std::vector<std::string> sources;
  std::string maximumLevel;
};

void ReadValues(const ValueTexts& texts, ServiceOptions& options) {
  if (!texts.globalLevel.empty()) options.globalLevel = LevelIn(texts.globalLevel);
  for (const std::string& text : texts.sourceLevels) {
    if (const auto sourceLevel = SourceLevelIn(text)) options.sourceLevels.push_back(*sourceLevel);
  }
  for (const std::string& text : texts.sources) {
    if (const auto source = SourceIn(text)) options.filter.sources.push_back(*source);
  }
  if (const auto level = LevelIn(texts.maximumLevel)) options.filter.maximumLevel = *level;
}

// An option that says what to do.
struct ActionOption {
  const CLI::Option* option;
  ServiceOptions::Action action;
};

// Stores what the options that are there say; `first` is the first of them, null when there is none. The answer when
// they exclude each other.
std::optional<CommandLineAnswer> ChooseAction(const std::vector<ActionOption>& actions, ServiceOptions::Action& chosen,
                                              const CLI::Option*& first) {
  for (const auto& [option, action] : actions) {
    if (option->count() == 0) continue;
    if (first != nullptr && action != chosen) {
      return NotUnderstood(option->get_name() + " excludes " + first->get_name());
    }
    if (first == nullptr) first = option;
    chosen = action;
  }
  return std::nullopt;
}

}  // namespace

CommandLine<ServiceOptions> ParseServiceCommandLine(const std::vector<std::wstring>& arguments) {
  CommandLine<ServiceOptions> commandLine;
  ServiceOptions& options = commandLine.options;
  ValueTexts texts;

  CLI::App app("Logging service of Wayline: COM starts it when a program logs. Here it is set up and watched.",
               "TraceLogManager");
  const CLI::Validator isLevel = Readable(LevelAbove0In, "is no level from 1 to 5");
  const CLI::Validator isSource = Readable(SourceIn, "is no source");
  const CLI::Validator isSourceLevel = Readable(SourceLevelIn, "is no source and level, such as Database=5");

  const auto addFlag = [&app](const char* name, const std::string& description) {
    return app.add_flag(name, description);
  };
  const CLI::Option* const registers = addFlag("--register", "Register the service for all users");
  const CLI::Option* const unregisters = addFlag("--unregister", "Undo that");
  const CLI::Option* const forUser = addFlag("--user", "Do either for the current user only");
  const CLI::Option* const setsGlobalLevel =
      app.add_option("--level", texts.globalLevel, "Set the level of all sources without one of their own: 1 to 5")
          ->type_name("LEVEL")
          ->check(isLevel);
  const CLI::Option* const setsSourceLevels =
      app.add_option("--source-level", texts.sourceLevels,
                     "Set the level of a source, given by number or name: 1 to 5, or 0 for the level of all")
          ->type_name("SOURCE=LEVEL")
          ->allow_extra_args(false)
          ->check(isSourceLevel);
  const CLI::Option* const shows = addFlag("--show", "Print all levels, and where today's log file is");
  CLI::Option* const tails = addFlag("--tail", "Print the log while it is written, until Ctrl+C");
  app.add_option("--source", texts.sources, "Print this source only, given by number or name; can be repeated")
      ->type_name("SOURCE")
      ->allow_extra_args(false)
      ->check(isSource)
      ->needs(tails);
  app.add_option("--max-level", texts.maximumLevel, "Print messages up to this level only: 1 to 5")
      ->type_name("LEVEL")
      ->check(isLevel)
      ->needs(tails);
  app.set_version_flag("--version", "TraceLogManager " WAYLINE_VERSION);
  app.footer(
      "Levels are 1 fatal, 2 error, 3 info, 4 detail, 5 trace. Running programs take up a new one within about a\n"
      "minute. The exit code is 0 unless something failed; then a line on the error output says what.");

  commandLine.answer = ReadArguments(app, arguments);
  if (commandLine.answer) return commandLine;

  const CLI::Option* first = nullptr;
  commandLine.answer = ChooseAction({{registers, ServiceOptions::Action::Register},
                                     {unregisters, ServiceOptions::Action::Unregister},
                                     {setsGlobalLevel, ServiceOptions::Action::Levels},
                                     {setsSourceLevels, ServiceOptions::Action::Levels},
                                     {shows, ServiceOptions::Action::Levels},
                                     {tails, ServiceOptions::Action::Tail}},
                                    options.action, first);
  if (commandLine.answer) return commandLine;
  if (first == nullptr) {
    commandLine.answer = NotUnderstood("It does not say what to do; --help lists what there is");
  } else if (forUser->count() > 0 && first != registers && first != unregisters) {
    commandLine.answer = NotUnderstood("--user requires --register or --unregister");
  }
  options.show = shows->count() > 0;
  if (forUser->count() > 0) options.scope = RegistrationScope::User;
  ReadValues(texts, options);
  return commandLine;
}

bool IsStartedByCom(const std::vector<std::wstring>& arguments) {
  return std::ranges::any_of(arguments, [](const std::wstring& argument) {
    return EqualsNoCaseAscii(argument, L"-Embedding") || EqualsNoCaseAscii(argument, L"/Embedding");
  });
}
