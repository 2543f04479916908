// The page for administrators names what the module's sources name: whoever changes one of them changes both.

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "NetUtilities/Files/IniText.h"
#include "NetUtilities/Logger/LogLine.h"
#include "NetUtilities/Registry/RefreshedDword.h"
#include "NetUtilities/Text/Utf8.h"
#include "tests/docs/RegistryExamples.h"
#include "tests/support/FileBytes.h"
#include "tests/support/MarkdownPage.h"
#include "tests/support/SourceText.h"
#include "TraceLogManager/LogFileFormat.h"

namespace {

using testing::AnyOf;
using testing::ContainerEq;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Le;
using testing::MatchesRegex;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;
using Texts = std::set<std::string>;
using Pairs = std::set<std::pair<std::string, std::string>>;

const MarkdownPage& Page() {
  static const MarkdownPage page("docs/administration.md");
  return page;
}

// The page as it is written.
const std::string& PageText() {
  static const std::string text = FileBytes(std::filesystem::path(PROJECT_ROOT) / "docs/administration.md");
  return text;
}

const std::vector<SourceText>& Sources() {
  static const std::vector<SourceText> sources = [] {
    std::vector<SourceText> all;
    for (const char* folder : {"NetUtilities", "Database", "LoginProperties", "WaylineDll/Programs"}) {
      std::ranges::move(SourcesOf(folder), std::back_inserter(all));
    }
    return all;
  }();
  return sources;
}

std::string CodeOf(const std::string& file) {
  const auto source = std::ranges::find(Sources(), file, &SourceText::file);
  return source != Sources().end() ? source->code : std::string();
}

// A column of the page's tables whose first column has the heading `table`.
Texts Column(const std::string& table, const std::string& column) {
  Texts texts;
  for (MarkdownPage::Row& row : Page().Rows(table)) texts.insert(row[column]);
  return texts;
}

Pairs Columns(const std::string& table, const std::string& left, const std::string& right) {
  Pairs pairs;
  for (MarkdownPage::Row& row : Page().Rows(table)) pairs.emplace(row[left], row[right]);
  return pairs;
}

// The texts of the module's constants whose name ends so.
Texts ConstantsNamed(std::string_view ending) {
  Texts texts;
  for (const SourceText& source : Sources()) {
    for (const std::string& constant : TextsBetween(source.code, "constexpr wchar_t ", ";")) {
      if (constant.substr(0, constant.find('[')).ends_with(ending)) texts.merge(Texts{WideLiterals(constant).at(0)});
    }
  }
  return texts;
}

// All wide literals of the module that match.
Texts LiteralsLike(const std::string& pattern) {
  const std::regex expression(pattern, std::regex::icase);
  Texts texts;
  for (const SourceText& source : Sources()) {
    for (const std::string& literal : WideLiterals(source.code)) {
      if (std::regex_match(literal, expression)) texts.insert(literal);
    }
  }
  return texts;
}

// The enumerators of an enumeration in Log.h: number and name.
Pairs Enumerators(const std::string& enumeration) {
  static const std::regex enumerator(R"((\w+) = (\d+))");
  Pairs pairs;
  for (const std::string& body : TextsBetween(CodeOf("NetUtilities/Log.h"), "enum class " + enumeration, "}")) {
    for (std::sregex_iterator found(body.begin(), body.end(), enumerator), end; found != end; ++found) {
      pairs.emplace((*found)[2], (*found)[1]);
    }
  }
  return pairs;
}

}  // namespace

TEST(AdministrationPage, NamesEveryRegistryKey) {
  Texts keys;
  for (const std::string& key : Column("Key", "Key")) {
    EXPECT_THAT(key, AnyOf(StartsWith(R"(HKLM\)"), StartsWith(R"(HKCU\)")));
    keys.insert(key.substr(5, key.find('<') - 5));
  }
  EXPECT_THAT(keys, ContainerEq(LiteralsLike(R"(.*\\ostrel\\.*)")));
}

TEST(AdministrationPage, NamesEveryRegistryValue) {
  constexpr char kNameIt[] = ": give the registry value a name, k...Value.";
  EXPECT_THAT(Column("Key", "Value"), ContainerEq(ConstantsNamed("Value")));
  for (const SourceText& source : Sources()) {
    for (const char* reader : {"ReadString", "ReadDword", "ReadRegistryDword", "ReadHklmString", "ReadInstallDword"}) {
      for (const std::string& arguments : ArgumentsOfCalls(source.code, reader)) {
        EXPECT_THAT(WideLiterals(arguments), Each(Not(MatchesRegex("\\w+")))) << source.file << kNameIt;
      }
    }
    for (const std::string& arguments : ArgumentsOfCalls(source.code, "ReadDwordAs")) {
      EXPECT_THAT(WideLiterals(arguments), SizeIs(Le(1))) << source.file << kNameIt;
    }
  }
}

TEST(AdministrationPage, ShowsHowToSetEveryRegistryValue) {
  std::set<std::array<std::string, 3>> examples;
  for (const RegistryExample& example : RegistryExamples(Page()))
    examples.insert({example.key, example.value, example.type});
  std::set<std::array<std::string, 3>> values;
  for (MarkdownPage::Row& row : Page().Rows("Key")) {
    const std::string key = std::regex_replace(row["Key"], std::regex("<page>"), "Timeouts");
    values.insert({key, row["Value"], row["Type"]});
  }
  EXPECT_THAT(examples, ContainerEq(values));
}

TEST(AdministrationPage, ExplainsRegistryValuesInTheOrderOfTheTable) {
  size_t last = 0;
  for (MarkdownPage::Row& row : Page().Rows("Key")) {
    const size_t section = PageText().find("\n### " + row["Value"] + '\n');
    ASSERT_NE(section, std::string::npos) << row["Value"];
    EXPECT_GT(section, last) << row["Value"];
    last = section;
  }
}

TEST(AdministrationPage, SaysHowLongRegistryValuesAreKept) {
  static int64_t second = 0;
  static uint32_t readings = 0;
  RefreshedDword kept([] { return ++readings; },
                      [] { return std::chrono::steady_clock::time_point(std::chrono::seconds(second)); });
  while (kept.Get() == 1) ++second;

  Texts keptValues;
  for (MarkdownPage::Row& row : Page().Rows("Key")) {
    if (row["When it is read"].ends_with("kept for " + std::to_string(second) + " seconds")) {
      keptValues.insert(row["Value"]);
    }
  }
  EXPECT_THAT(keptValues, ElementsAre("DebugOutput", "TraceFlags"));
}

TEST(AdministrationPage, NamesThePolicyOfEveryTab) {
  Pairs policies;
  for (const SourceText& source : Sources()) {
    // The folder of a page has the name of its tab.
    const std::string folder = std::filesystem::path(source.file).parent_path().filename().string();
    for (const std::string& name : TextsBetween(source.code, "kPolicyName[] = ", ";")) {
      policies.emplace(folder, WideLiterals(name).at(0));
    }
    for (const std::string& arguments : ArgumentsOfCalls(source.code, "ApplyOverridePolicy")) {
      EXPECT_THAT(WideLiterals(arguments), IsEmpty()) << source.file << ": give the policy a name, kPolicyName.";
    }
  }
  EXPECT_THAT(Columns("Tab", "Tab", "<page>"), ContainerEq(policies));
}

TEST(AdministrationPage, NamesEveryTraceFlag) {
  Pairs flags;
  for (const SourceText& source : Sources()) {
    for (const std::string& constant : TextsBetween(source.code, "constexpr unsigned ", ";")) {
      std::smatch parts;
      if (!std::regex_match(constant, parts, std::regex(R"(k\w+TraceFlag = (\d+))"))) continue;
      flags.emplace(parts[1], std::to_string(1u << std::stoul(parts[1])));
    }
  }
  EXPECT_THAT(Columns("Bit", "Bit", "Number to add"), ContainerEq(flags));
}

TEST(AdministrationPage, NamesEveryTestSwitch) {
  Pairs switches;
  for (const SourceText& source : Sources()) {
    for (const std::string& constant : TextsBetween(source.code, "constexpr IniSwitch ", ";")) {
      const std::vector<std::string> names = WideLiterals(constant);
      switches.emplace(names.at(0), names.at(1));
    }
    for (const std::string& arguments : ArgumentsOfCalls(source.code, "GetBool")) {
      EXPECT_THAT(WideLiterals(arguments), IsEmpty()) << source.file << ": make it an IniSwitch.";
    }
  }
  EXPECT_THAT(Columns("Section", "Section", "Switch"), ContainerEq(switches));
}

TEST(AdministrationPage, ShowsHowToTurnEveryTestSwitchOn) {
  std::string file;
  for (const std::string& line : Page().CodeLines("ini")) file += line + "\r\n";
  for (MarkdownPage::Row& row : Page().Rows("Section")) {
    const auto value = FindIniValue(FromUtf8(file), FromUtf8(row["Section"]), FromUtf8(row["Switch"]));
    EXPECT_TRUE(value && IsIniSwitchOn(*value)) << row["Switch"];
  }
}

TEST(AdministrationPage, NamesEveryFileAndFolder) {
  Texts files;
  Texts folders;
  for (const std::string& path : Column("File or folder", "File or folder")) {
    std::istringstream stream(path);
    for (std::string part; std::getline(stream, part, '\\');) {
      if (part.starts_with('%') || part.starts_with('<')) continue;
      (part.find('.') != std::string::npos ? files : folders).insert(part);
    }
  }
  files.merge(Column("Program", "Program"));
  EXPECT_THAT(files, ContainerEq(LiteralsLike(R"(\w+\.[a-z]{2,4})")));
  EXPECT_THAT(folders, ContainerEq(ConstantsNamed("Folder")));
}

TEST(AdministrationPage, NamesTheLogOnDesktop) {
  const std::vector<std::string> named = TextsBetween(PageText(), "on the log-on desktop (`", "`)");
  EXPECT_THAT(Texts(named.begin(), named.end()), ContainerEq(ConstantsNamed("Desktop")));
}

TEST(AdministrationPage, NamesTheLevelsAndSourcesOfTheLog) {
  EXPECT_THAT(Columns("Level", "Level", "Name"), ContainerEq(Enumerators("LogLevel")));
  EXPECT_THAT(Columns("Source", "Source", "Name"), ContainerEq(Enumerators("LogSource")));
}

TEST(AdministrationPage, ShowsLogLinesAsTheyAreInTheLogFile) {
  const std::string prefix = ToUtf8(LogLinePrefix({11, 15, 6, 10, 17, 42}, 0x1a2c, 0xf3b8));
  EXPECT_THAT(Page().CodeLines("text"), Not(IsEmpty()));
  for (const std::string& line : Page().CodeLines("text")) {
    const LogFileLine parts = ParseLogFileLine(line);
    EXPECT_TRUE(parts.beginsRecord) << line;
    EXPECT_THAT(std::string(parts.text), StartsWith(prefix));
  }
}

TEST(AdministrationPage, NamesTheLogFile) {
  EXPECT_THAT(PageText(), HasSubstr('`' + ToUtf8(LogFileName({2026, 11, 15})) + '`'));
}

namespace {

// Log lines as "level, source: text", with {} for every value in the text.
std::string Line(const std::string& level, const std::string& source, const std::string& text) {
  return level + ", " + source + ": " + text;
}

// `name` of "qualifier::name" in the arguments of a call; empty when there is none.
std::string Enumerator(const std::string& arguments, const std::string& qualifier) {
  std::smatch found;
  return std::regex_search(arguments, found, std::regex(qualifier + R"(::(\w+))")) ? found[1] : std::string();
}

// The number of the source that a call of Log names.
std::string SourceNumber(const std::string& arguments) {
  const std::string named = Enumerator(arguments, "LogSource");
  for (const auto& [number, name] : Enumerators("LogSource")) {
    if (name == (named.empty() ? "General" : named)) return number;
  }
  return {};
}

// The strings of all pages.
std::string StringTables() {
  std::string tables;
  const auto module = std::filesystem::path(PROJECT_ROOT) / "LoginProperties";
  for (const auto& entry : std::filesystem::recursive_directory_iterator(module)) {
    if (entry.path().filename().string().ends_with("Strings.rc")) tables += FileBytes(entry.path());
  }
  return tables;
}

// The texts in a call, also those that it takes from a string table.
std::vector<std::string> TextsIn(const std::string& arguments) {
  static const std::string stringTables = StringTables();
  static const std::regex values(R"(\{[^}]*\}|%1)");
  static const std::regex stringId(R"(IDS_\w+)");
  std::vector<std::string> texts = WideLiterals(arguments);
  for (std::sregex_iterator found(arguments.begin(), arguments.end(), stringId), end; found != end; ++found) {
    const std::string line = TextsBetween(stringTables, found->str() + ' ', "\n").at(0);
    texts.push_back(TextsBetween(line, "\"", "\"").at(0));
  }
  for (std::string& text : texts) text = std::regex_replace(text, values, "{}");
  return texts;
}

// Functions that pass their callers' texts on to the log, with the level and the sources that they log them with.
struct Relay {
  const char* function;
  const char* level;
  std::vector<const char*> sources;
};

const std::vector<Relay>& Relays() {
  static const std::vector<Relay> relays = {
      {"Find", "Error", {"1"}},                     // ClientLibrary.cpp
      {"GetKnownFolder", "Error", {"1"}},           // PathData.cpp
      {"KnownFolder", "Error", {"1"}},              // KnownFolder.cpp
      {"LogError", "Error", {"1", "28"}},           // SQLite.cpp
      {"LogFailure", "Error", {"1"}},               // RegistryKey.cpp
      {"LogImpersonationFailure", "Error", {"8"}},  // ImpersonationScope.cpp
      {"LogLastError", "Error", {"1"}},             // UserAccount.cpp
      {"LogMissing", "Error", {"1"}},               // ClientLibrary.cpp
      {"debuggerOutput", "-", {"-"}},               // to the debugger output, past the log
  };
  return relays;
}

// The lines that the module writes; in `passedOn` where Log is called with a text that comes from elsewhere.
Texts LinesInSources(std::multiset<std::string>& passedOn) {
  Texts lines;
  for (const SourceText& source : Sources()) {
    for (const std::string& arguments : ArgumentsOfCalls(source.code, "Log")) {
      const std::string level = Enumerator(arguments, "LogLevel");
      if (level.empty()) continue;  // a declaration
      const std::vector<std::string> texts = TextsIn(arguments);
      if (texts.empty()) passedOn.insert(Line(level, SourceNumber(arguments), source.file));
      for (const std::string& text : texts) lines.insert(Line(level, SourceNumber(arguments), text));
    }
    for (const Relay& relay : Relays()) {
      for (const std::string& arguments : ArgumentsOfCalls(source.code, relay.function)) {
        for (const std::string& text : TextsIn(arguments)) {
          for (const char* number : relay.sources) lines.insert(Line(relay.level, number, text));
        }
      }
    }
  }
  // The callers of RegistryKey::ReadDwordAs say what is read.
  EXPECT_EQ(lines.erase(Line("Error", "1", R"(RegQueryValueEx read {}{}\{})")), 1u);
  for (const SourceText& source : Sources()) {
    for (const std::string& arguments : ArgumentsOfCalls(source.code, "ReadDwordAs")) {
      for (const std::string& what : TextsIn(arguments)) {
        lines.insert(Line("Error", "1", "RegQueryValueEx read " + what + R"({}\{})"));
      }
    }
  }
  return lines;
}

Texts LinesInPage() {
  static const std::regex error("<error>$");
  static const std::regex values("<[^>]*>");
  static const std::regex separator(", ");
  Texts lines;
  for (MarkdownPage::Row& row : Page().Rows("Line")) {
    const std::string text = std::regex_replace(std::regex_replace(row["Line"], error, ""), values, "{}");
    const std::string& sources = row["Source"];
    for (std::sregex_token_iterator source(sources.begin(), sources.end(), separator, -1), end; source != end;
         ++source) {
      lines.insert(Line(row["Level"], *source, text));
    }
  }
  return lines;
}

}  // namespace

TEST(AdministrationPage, NamesEveryLogLine) {
  std::multiset<std::string> passedOn;
  Texts written = LinesInSources(passedOn);
  written.insert(Line("Detail", "28", "{}"));  // statements of the database, from OnSqliteStatement
  EXPECT_THAT(LinesInPage(), ContainerEq(written));

  EXPECT_THAT(passedOn, ElementsAre("Detail, 28: Database/SQLite/SQLiteDatabase.cpp",       // OnSqliteStatement
                                    "Error, 1: Database/SQLite/SQLite.cpp",                 // LogError
                                    "Error, 1: LoginProperties/ClientLibrary.cpp",          // LogMissing
                                    "Error, 1: NetUtilities/Files/KnownFolder.cpp",         // KnownFolder
                                    "Error, 1: NetUtilities/Registry/RegistryKey.cpp",      // LogFailure
                                    "Error, 1: NetUtilities/Registry/UserAccount.cpp",      // LogLastError
                                    "Error, 28: Database/SQLite/SQLite.cpp",                // LogError
                                    "Error, 8: NetUtilities/Files/ImpersonationScope.cpp",  // LogImpersonationFailure
                                    "Trace, 1: NetUtilities/Logger/TraceScope.cpp"))        // WriteToLog
      << "A function that passes texts on to the log belongs into Relays().";
}
