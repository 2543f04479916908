#include "Wayline/Options.h"

#include <gmock/gmock.h>

#include "tests/support/ReadCommandLine.h"

using testing::HasSubstr;

namespace {

Options Parsed(const std::vector<std::wstring>& arguments) { return Accepted(ParseCommandLine(arguments)); }

std::string Refusal(const std::vector<std::wstring>& arguments) { return Refused(ParseCommandLine(arguments)); }

}  // namespace

TEST(Options, DefaultToTheWholeSheetOnTheUsersDatabase) {
  const Options options = Parsed({});
  EXPECT_EQ(options.mode, SheetMode::Full);
  EXPECT_EQ(options.profile, std::nullopt);
  EXPECT_EQ(options.database, L"");
  EXPECT_FALSE(options.list);
  EXPECT_FALSE(options.json);
}

TEST(Options, AreReadInAnyOrder) {
  const Options options = Parsed({L"--json", L"--profile", L"2002", L"--mode=3", L"--list"});
  EXPECT_EQ(options.mode, SheetMode::WiFiSwitchingOnly);
  EXPECT_EQ(options.profile, 2002u);
  EXPECT_TRUE(options.list);
  EXPECT_TRUE(options.json);
}

TEST(Options, FileNamesCanHaveBlanksLettersOfEveryAlphabetAndASlashInFront) {
  EXPECT_EQ(Parsed({L"--database", L"C:\\My Data\\Z\u00fcrich \u20ac.db"}).database,
            L"C:\\My Data\\Z\u00fcrich \u20ac.db");
  EXPECT_EQ(Parsed({L"--database", L"/data/x.db"}).database, L"/data/x.db");
}

TEST(Options, RefuseModesThatDoNotExist) {
  for (const wchar_t* mode : {L"0", L"4", L"-1", L"all", L""}) {
    EXPECT_THAT(Refusal({L"--mode", mode}), HasSubstr("--mode"));
  }
}

TEST(Options, RefuseProfilesThatAreNoIds) {
  for (const wchar_t* id : {L"Work", L"-1", L"4294967296", L"2001x"}) {
    EXPECT_THAT(Refusal({L"--profile", id}), HasSubstr("--profile"));
  }
}

TEST(Options, RefuseWhatTheyDoNotKnow) {
  EXPECT_THAT(Refusal({L"--reset"}), HasSubstr("--reset"));
  EXPECT_THAT(Refusal({L"Wayline.db"}), HasSubstr("Wayline.db"));
}

TEST(Options, RefuseAMissingOrEmptyValue) {
  EXPECT_THAT(Refusal({L"--profile"}), HasSubstr("--profile"));
  EXPECT_THAT(Refusal({L"--database", L""}), HasSubstr("--database"));
}

TEST(Options, TakeJsonOnlyWithTheList) { EXPECT_THAT(Refusal({L"--json"}), HasSubstr("--list")); }

TEST(Options, AStateOfTheConnectionIsGivenByItsName) {
  EXPECT_EQ(Parsed({}).connection, std::nullopt);
  EXPECT_EQ(Parsed({L"--connection", L"connected"}).connection, FSMState::Connected);
  EXPECT_EQ(Parsed({L"--connection=disconnected"}).connection, FSMState::Disconnected);
  for (const wchar_t* state : {L"2", L"online", L""}) {
    EXPECT_THAT(Refusal({L"--connection", state}), HasSubstr("--connection"));
  }
}

TEST(Options, ValuesOfTheClientAreGivenByTheirNumbers) {
  const Options options = Parsed({L"--bookmark", L"8=1", L"--bookmark=9=a=b \u20ac", L"--bookmark", L"10="});
  EXPECT_THAT(options.bookmarks,
              testing::ElementsAre(std::pair(8u, std::wstring(L"1")), std::pair(9u, std::wstring(L"a=b \u20ac")),
                                   std::pair(10u, std::wstring())));
  for (const wchar_t* bookmark : {L"8", L"=1", L"x=1", L"-8=1", L"8 =1", L"4294967296=1", L""}) {
    EXPECT_THAT(Refusal({L"--bookmark", bookmark}), HasSubstr("--bookmark"));
  }
}

TEST(Options, TakeNothingToStoreWithTheList) {
  EXPECT_THAT(Refusal({L"--list", L"--connection", L"connected"}), HasSubstr("--list"));
  EXPECT_THAT(Refusal({L"--list", L"--bookmark", L"8=0"}), HasSubstr("--list"));
}

TEST(Options, HelpNamesEveryOption) {
  const std::string help = Answered(ParseCommandLine({L"--help"}));
  for (const char* option :
       {"--mode", "--profile", "--list", "--json", "--database", "--connection", "--bookmark", "--help", "--version"}) {
    EXPECT_THAT(help, HasSubstr(option));
  }
}

TEST(Options, VersionIsOneLine) {
  EXPECT_THAT(Answered(ParseCommandLine({L"--version"})), testing::MatchesRegex("Wayline .+\\..+\\..+\n"));
}
