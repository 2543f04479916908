#include "TraceLogManager/ServiceOptions.h"

#include <gmock/gmock.h>

#include "tests/support/ReadCommandLine.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Pair;

namespace {

using Action = ServiceOptions::Action;

ServiceOptions Parsed(const std::vector<std::wstring>& arguments) {
  return Accepted(ParseServiceCommandLine(arguments));
}

std::string Refusal(const std::vector<std::wstring>& arguments) { return Refused(ParseServiceCommandLine(arguments)); }

}  // namespace

TEST(ServiceOptions, RegisterForTheMachineUnlessAUserIsNamed) {
  EXPECT_EQ(Parsed({L"--register"}).action, Action::Register);
  EXPECT_EQ(Parsed({L"--register"}).scope, RegistrationScope::Machine);
  EXPECT_EQ(Parsed({L"--user", L"--register"}).scope, RegistrationScope::User);
  EXPECT_EQ(Parsed({L"--unregister"}).action, Action::Unregister);
  EXPECT_EQ(Parsed({L"--unregister", L"--user"}).scope, RegistrationScope::User);
}

TEST(ServiceOptions, SetLevels) {
  const ServiceOptions options =
      Parsed({L"--level", L"5", L"--source-level", L"database=1", L"--source-level", L"36=0"});
  EXPECT_EQ(options.action, Action::Levels);
  EXPECT_EQ(options.globalLevel, 5);
  EXPECT_THAT(options.sourceLevels, ElementsAre(Pair(28u, 1), Pair(36u, 0)));
  EXPECT_FALSE(options.show);
}

TEST(ServiceOptions, ShowLevelsAlsoAfterSettingThem) {
  EXPECT_TRUE(Parsed({L"--show"}).show);
  EXPECT_EQ(Parsed({L"--show"}).globalLevel, std::nullopt);
  EXPECT_THAT(Parsed({L"--show"}).sourceLevels, IsEmpty());
  EXPECT_TRUE(Parsed({L"--level", L"1", L"--show"}).show);
}

TEST(ServiceOptions, FollowTheLogThroughAFilter) {
  EXPECT_EQ(Parsed({L"--tail"}).action, Action::Tail);
  EXPECT_TRUE(Parsed({L"--tail"}).filter.Passes(36, 9));
  const ServiceOptions options = Parsed({L"--tail", L"--source", L"Database", L"--source", L"1", L"--max-level", L"2"});
  EXPECT_THAT(options.filter.sources, ElementsAre(28u, 1u));
  EXPECT_EQ(options.filter.maximumLevel, 2u);
}

TEST(ServiceOptions, RefuseLevelsThatDoNotExist) {
  for (const wchar_t* level : {L"0", L"6", L"-1", L"trace", L"1x", L"10", L""}) {
    EXPECT_THAT(Refusal({L"--level", level}), HasSubstr("--level"));
    EXPECT_THAT(Refusal({L"--tail", L"--max-level", level}), HasSubstr("--max-level"));
  }
}

TEST(ServiceOptions, RefuseSourceLevelsThatAreNone) {
  for (const wchar_t* text : {L"28", L"28=", L"28=6", L"28=-1", L"=3", L"37=3", L"Data=3", L"28=3x", L""}) {
    EXPECT_THAT(Refusal({L"--source-level", text}), HasSubstr("--source-level"));
  }
}

TEST(ServiceOptions, RefuseSourcesThatDoNotExist) {
  for (const wchar_t* source : {L"37", L"-1", L"Data", L""}) {
    EXPECT_THAT(Refusal({L"--tail", L"--source", source}), HasSubstr("--source"));
  }
}

TEST(ServiceOptions, TakeFiltersOnlyForTheLog) {
  EXPECT_THAT(Refusal({L"--source", L"1"}), HasSubstr("--tail"));
  EXPECT_THAT(Refusal({L"--show", L"--max-level", L"1"}), HasSubstr("--tail"));
}

TEST(ServiceOptions, TakeAUserOnlyForTheRegistration) {
  EXPECT_THAT(Refusal({L"--show", L"--user"}), HasSubstr("--user requires --register or --unregister"));
}

TEST(ServiceOptions, RefuseActionsThatExcludeEachOther) {
  EXPECT_THAT(Refusal({L"--register", L"--unregister"}), HasSubstr("--unregister excludes --register"));
  EXPECT_THAT(Refusal({L"--tail", L"--show"}), HasSubstr("--tail excludes --show"));
  EXPECT_THAT(Refusal({L"--level", L"3", L"--unregister"}), HasSubstr("--level excludes --unregister"));
}

TEST(ServiceOptions, RefuseToDoNothing) { EXPECT_THAT(Refusal({}), HasSubstr("--help")); }

TEST(ServiceOptions, RefuseWhatTheyDoNotKnow) {
  EXPECT_THAT(Refusal({L"--reset"}), HasSubstr("--reset"));
  EXPECT_THAT(Refusal({L"/register"}), HasSubstr("/register"));
}

TEST(ServiceOptions, HelpNamesEveryOption) {
  const std::string help = Answered(ParseServiceCommandLine({L"--help"}));
  for (const char* option : {"--register", "--unregister", "--user", "--level", "--source-level", "--show", "--tail",
                             "--source ", "--max-level", "--help", "--version"}) {
    EXPECT_THAT(help, HasSubstr(option));
  }
}

TEST(ServiceOptions, VersionIsOneLine) {
  EXPECT_THAT(Answered(ParseServiceCommandLine({L"--version"})),
              testing::MatchesRegex("TraceLogManager .+\\..+\\..+\n"));
}

TEST(ServiceOptions, ComStartsAServerWithOneOfTwoWords) {
  for (const wchar_t* word : {L"-Embedding", L"/Embedding", L"-embedding"}) EXPECT_TRUE(IsStartedByCom({word}));
  EXPECT_FALSE(IsStartedByCom({}));
  EXPECT_FALSE(IsStartedByCom({L"--register"}));
  EXPECT_FALSE(IsStartedByCom({L"Embedding"}));
}
