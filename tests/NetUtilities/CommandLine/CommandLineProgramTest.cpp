#include "NetUtilities/CommandLine/CommandLineProgram.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

// What a program prints, and its exit code.
struct Ended {
  int code;
  std::string output;
  std::string error;
  bool operator==(const Ended&) const = default;
  friend void PrintTo(const Ended& ended, std::ostream* out) {
    *out << ended.code << ", output \"" << ended.output << "\", error output \"" << ended.error << '"';
  }
};

Ended End(const std::function<int()>& program) {
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  const int code = program();
  return {code, testing::internal::GetCapturedStdout(), testing::internal::GetCapturedStderr()};
}

Ended Outcome(const std::optional<CommandLineAnswer>& answer, const std::function<int()>& run) {
  return End([&] { return AnswerOrRun(L"Z\u00fcrich", answer, run); });
}

int NeverRun() {
  ADD_FAILURE() << "There is an answer.";
  return kFailed;
}

TEST(CommandLineProgram, PrintsAnAnswerThatWasAskedForAndSucceeds) {
  EXPECT_EQ(Outcome(CommandLineAnswer{"Help\n"}, NeverRun), (Ended{0, "Help\n", ""}));
}

TEST(CommandLineProgram, PrintsARefusalOnTheErrorOutputAndHasACodeForIt) {
  EXPECT_EQ(Outcome(CommandLineAnswer{"Wrong.\n", true}, NeverRun), (Ended{2, "", "Wrong.\n"}));
}

TEST(CommandLineProgram, RunsWithoutAnAnswerAndEndsWithItsCode) {
  EXPECT_EQ(Outcome(std::nullopt, [] { return 0; }), (Ended{0, "", ""}));
  EXPECT_EQ(Outcome(std::nullopt, [] { return 7; }), (Ended{7, "", ""}));
}

TEST(CommandLineProgram, FailsWithASentence) {
  EXPECT_EQ(End([] { return Fail(L"Z\u00fcrich is closed."); }), (Ended{1, "", "Z\xc3\xbcrich is closed.\n"}));
}

TEST(CommandLineProgram, FailsWithTheSentenceOfAnException) {
  EXPECT_EQ(Outcome(std::nullopt, []() -> int { throw std::runtime_error("out of ideas"); }),
            (Ended{1, "", "Z\xc3\xbcrich failed: out of ideas.\n"}));
}

}  // namespace
