#include "Wayline/Options.h"

#include <CLI/CLI.hpp>

#include <charconv>
#include <map>
#include <string_view>

#include "NetUtilities/Text/Utf8.h"

namespace {

constexpr int NumberOf(SheetMode mode) { return static_cast<int>(mode); }

const std::map<std::string, FSMState> kConnectionStates = {{"disconnected", FSMState::Disconnected},
                                                           {"connecting", FSMState::Connecting},
                                                           {"connected", FSMState::Connected},
                                                           {"disconnecting", FSMState::Disconnecting}};

// From "NUMBER=VALUE"; nothing when it is none.
std::optional<std::pair<uint32_t, std::wstring>> ReadBookmark(std::string_view text) {
  uint32_t id = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), id);
  const size_t length = static_cast<size_t>(end - text.data());
  if (error != std::errc() || length == text.size() || text[length] != '=') return {};
  return std::pair(id, FromUtf8(std::string(text.substr(length + 1))));
}

}  // namespace

CommandLine<Options> ParseCommandLine(const std::vector<std::wstring>& arguments) {
  CommandLine<Options> commandLine;
  Options& options = commandLine.options;
  auto mode = static_cast<uint32_t>(options.mode);
  std::string database;
  std::string connection;
  std::vector<std::string> bookmarks;

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
  const CLI::Validator isBookmark(
      [](const std::string& value) {
        return ReadBookmark(value) ? std::string() : value + " is not a number, \"=\" and a value";
      },
      "");
  app.add_option("--connection", connection, "Store a state of the connection, to try the sheet out in it")
      ->check(CLI::IsMember(kConnectionStates))
      ->excludes(list);
  app.add_option("--bookmark", bookmarks, "Store a value of the client under its number; can be repeated")
      ->type_name("ID=VALUE")
      ->allow_extra_args(false)
      ->check(isBookmark)
      ->excludes(list);
  app.add_flag("--json", options.json, "Print the profiles as JSON")->needs(list);
  app.set_version_flag("--version", "Wayline " WAYLINE_VERSION);
  app.footer(
      "When the sheet ends, one line of JSON tells its result (1 for OK, 0 for Cancel), whether the changes\n"
      "were saved, the saved records, and what was lost. The exit code is 0 unless something failed; then a line on the\n"
      "error output says what.");

  commandLine.answer = ReadArguments(app, arguments);
  options.mode = SheetMode{mode};
  options.database = FromUtf8(database);
  if (const auto state = kConnectionStates.find(connection); state != kConnectionStates.end()) {
    options.connection = state->second;
  }
  for (const std::string& text : bookmarks) {
    if (auto bookmark = ReadBookmark(text)) options.bookmarks.push_back(*std::move(bookmark));
  }
  return commandLine;
}
