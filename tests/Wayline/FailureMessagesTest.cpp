#include "Wayline/FailureMessages.h"

#include <gmock/gmock.h>

#include "tests/support/MessageBoxAnswer.h"
#include "WaylineDll/StringDb.h"

using testing::ElementsAre;

namespace {

// Fails once.
class Attempt {
 public:
  Failure operator()() { return ++count == 1 ? Failure(L"It failed.") : Failure(); }
  int count = 0;
};

}  // namespace

TEST(FailureMessages, WhatSucceedsIsNotTold) {
  EXPECT_EQ(AttemptUntilCancelled([] { return Failure(); }), Failure());
  TellLost({});
}

TEST(FailureMessages, RetryAttemptsItAgain) {
  Attempt attempt;
  Failure failure = L"untouched";
  const auto box =
      AnswerMessageBox(MessageBoxAnswer::Button(IDRETRY), [&] { failure = AttemptUntilCancelled(std::ref(attempt)); });
  EXPECT_EQ(failure, Failure());
  EXPECT_EQ(attempt.count, 2);
  EXPECT_EQ(box.title, GetProductDisplayName(false));
  EXPECT_EQ(box.text, L"It failed.");
  EXPECT_THAT(box.buttons, ElementsAre(IDRETRY, IDCANCEL));
}

TEST(FailureMessages, CancelEndsTheAttempts) {
  for (const auto answer : {MessageBoxAnswer::Button(IDCANCEL), MessageBoxAnswer::Escape()}) {
    Attempt attempt;
    Failure failure;
    AnswerMessageBox(answer, [&] { failure = AttemptUntilCancelled(std::ref(attempt)); });
    EXPECT_EQ(failure, Failure(L"It failed."));
    EXPECT_EQ(attempt.count, 1);
  }
}

TEST(FailureMessages, WhatCancellingCostsIsSaidInAParagraphOfItsOwn) {
  const auto box = AnswerMessageBox(MessageBoxAnswer::Button(IDCANCEL), [] {
    Attempt attempt;
    EXPECT_EQ(AttemptUntilCancelled(std::ref(attempt), L"All is lost then."), Failure(L"It failed."));
  });
  EXPECT_EQ(box.text, L"It failed.\n\nAll is lost then.");
}

TEST(FailureMessages, WhatCannotBeRepeatedCanOnlyBeRead) {
  const auto box = AnswerMessageBox(MessageBoxAnswer::Button(IDOK), [] { TellFailure(L"It failed."); });
  EXPECT_EQ(box.title, GetProductDisplayName(false));
  EXPECT_EQ(box.text, L"It failed.");
  EXPECT_THAT(box.buttons, ElementsAre(IDOK));
}

TEST(FailureMessages, WhatWasLostIsToldInOneBox) {
  const auto box = AnswerMessageBox(MessageBoxAnswer::Button(IDOK), [] { TellLost({L"A is gone.", L"B is gone."}); });
  EXPECT_EQ(box.title, GetProductDisplayName(false));
  EXPECT_EQ(box.text, L"A is gone.\nB is gone.");
  EXPECT_THAT(box.buttons, ElementsAre(IDOK));
}
