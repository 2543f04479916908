#include "Wayline/Options.h"

#include <CLI/CLI.hpp>

#include "NetUtilities/Text/Utf8.h"

namespace {

constexpr int NumberOf(SheetMode mode) { return static_cast<int>(mode); }

}  // namespace

CommandLine<Options> ParseCommandLine(const std::vector<std::wstring>& arguments) {
  CommandLine<Options> commandLine;
  Options& options = commandLine.options;
  auto mode = static_cast<uint32_t>(options.mode);
  std::string database;

  CLI::App app("Shows the login properties sheet on a settings database and saves what the user changes.", "Wayline");
  // The parser itself takes an empty number for none.
  const CLI::Validator notEmpty([](const std::string& value) { return std::string(value.empty() ? "no value" : ""); },
                                "");
  app.add_option("--mode", mode, "Pages of the sheet: 1 all, 2 Timeouts only, 3 Wi-Fi Switching only")
      ->check(notEmpty)
      ->check(CLI::IsMember(
          {NumberOf(SheetMode::Full), NumberOf(SheetMode::TimeoutsOnly), NumberOf(SheetMode::WiFiSwitchingOnly)}));
  app.add_option("--profile", options.profile, "Id of the profile to select; the active one by default")
      ->check(notEmpty);
  app.add_option("--database", database, "Settings database; created with sample data when it is missing")
      ->check(notEmpty)
      ->type_name("FILE");
  CLI::Option* list = app.add_flag("--list", options.list, "Print the profiles instead of showing the sheet");
  app.add_flag("--json", options.json, "Print the profiles as JSON")->needs(list);
  app.set_version_flag("--version", "Wayline " WAYLINE_VERSION);
  app.footer(
      "When the sheet ends, one line of JSON tells its result (1 for OK, 0 for Cancel), whether the changes\n"
      "were saved, and the saved records. The exit code is 0 unless something failed; then a line on the\n"
      "error output says what.");

  commandLine.answer = ReadArguments(app, arguments);
  options.mode = SheetMode{mode};
  options.database = FromUtf8(database);
  return commandLine;
}
