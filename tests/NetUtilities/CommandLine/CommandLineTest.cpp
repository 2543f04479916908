#include "NetUtilities/CommandLine/CommandLine.h"

#include <CLI/CLI.hpp>
#include <gmock/gmock.h>

#include "NetUtilities/Text/Utf8.h"
#include "tests/support/ReadCommandLine.h"

using testing::ElementsAre;
using testing::HasSubstr;

namespace {

struct Order {
  std::vector<std::string> files;
  bool quickly = false;
};

CommandLine<Order> Read(const std::vector<std::wstring>& arguments) {
  CommandLine<Order> read;
  CLI::App parser("Does what it is told.", "Servant");
  parser.add_flag("--quickly", read.options.quickly, "Do not take your time");
  parser.add_option("files", read.options.files, "What to do it with");
  parser.set_version_flag("--version", "Servant 1.2.3");
  read.answer = ReadArguments(parser, arguments);
  return read;
}

TEST(CommandLine, IsReadFromFrontToBack) {
  const Order order = Accepted(Read({L"first", L"--quickly", L"second"}));
  EXPECT_THAT(order.files, ElementsAre("first", "second"));
  EXPECT_TRUE(order.quickly);
  EXPECT_FALSE(Accepted(Read({})).quickly);
}

TEST(CommandLine, GivesTextsAsUtf8) {
  EXPECT_THAT(Accepted(Read({L"Z\u00fcrich \u20ac"})).files, ElementsAre(ToUtf8(L"Z\u00fcrich \u20ac")));
}

TEST(CommandLine, TakesWhatBeginsWithASlashForAPath) {
  EXPECT_THAT(Accepted(Read({L"/quickly"})).files, ElementsAre("/quickly"));
}

TEST(CommandLine, IsAnsweredWithHelp) {
  const std::string help = Answered(Read({L"--quickly", L"--help"}));
  EXPECT_THAT(help, HasSubstr("Does what it is told."));
  EXPECT_THAT(help, HasSubstr("--quickly"));
  EXPECT_THAT(help, testing::EndsWith("\n"));
}

TEST(CommandLine, IsAnsweredWithTheVersionOnALine) { EXPECT_EQ(Answered(Read({L"--version"})), "Servant 1.2.3\n"); }

TEST(CommandLine, IsRefusedForWhatNobodyKnows) { EXPECT_THAT(Refused(Read({L"--slowly"})), HasSubstr("--slowly")); }

TEST(CommandLine, IsRefusedForAReason) {
  const CommandLineAnswer answer = NotUnderstood("It is too early");
  EXPECT_EQ(answer.text, "The command line is not understood: It is too early.\n");
  EXPECT_TRUE(answer.isError);
}

}  // namespace
