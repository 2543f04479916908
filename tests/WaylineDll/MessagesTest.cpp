#include "WaylineDll/Messages.h"

#include <gmock/gmock.h>

#include <optional>

#include "tests/support/MessageBoxAnswer.h"
#include "tests/support/RegisteredService.h"
#include "tests/support/ServiceLog.h"

namespace {

using testing::ElementsAre;

// A string of the client library with two places: "%1\n\n%2".
constexpr unsigned kTwoPlaces = 78;
constexpr ModuleId kModule = ModuleId::ClientLibrary;

HICON Icon(const wchar_t* id) { return LoadIconW(nullptr, id); }

int Ask(MessageBoxAnswer answer) {
  int result = -1;
  AnswerMessageBox(answer, [&] { result = AskYesNo(nullptr, kModule, kTwoPlaces, L"a", L"b"); });
  return result;
}

class MessagesTest : public testing::Test {
 protected:
  MessagesTest()
      : parent(CreateWindowExW(0, L"STATIC", L"Parent", WS_POPUP | WS_VISIBLE, 0, 0, 200, 100, nullptr, nullptr,
                               nullptr, nullptr)) {}
  ~MessagesTest() override {
    DestroyWindow(parent);
    EXPECT_TRUE(log.Has(": Message: ")) << "Every message is logged.";
  }

  static void SetUpTestSuite() { service.emplace(); }
  static void TearDownTestSuite() { service.reset(); }

  static std::optional<RegisteredService> service;

  const ServiceLog log;
  const HWND parent;
};

std::optional<RegisteredService> MessagesTest::service;

TEST_F(MessagesTest, AnErrorShowsItsTextOverItsParent) {
  const auto box = AnswerMessageBox(MessageBoxAnswer::Button(IDOK),
                                    [&] { DisplayError(parent, kModule, kTwoPlaces, L"first", L"second", L"third"); });
  EXPECT_EQ(box.title, L"Wayline");
  EXPECT_EQ(box.text, L"first\n\nsecond");
  EXPECT_EQ(box.icon, Icon(IDI_ERROR));
  EXPECT_EQ(box.owner, parent);
  EXPECT_FALSE(box.ownerEnabled);
  EXPECT_THAT(box.buttons, ElementsAre(IDOK));
}

TEST_F(MessagesTest, AMessageIsAnInformation) {
  const auto box = AnswerMessageBox(MessageBoxAnswer::Button(IDOK),
                                    [&] { DisplayMessage(parent, kModule, kTwoPlaces, L"first", L""); });
  EXPECT_EQ(box.title, L"Wayline");
  EXPECT_EQ(box.text, L"first\n\n");
  EXPECT_EQ(box.icon, Icon(IDI_INFORMATION));
  EXPECT_EQ(box.owner, parent);
  EXPECT_THAT(box.buttons, ElementsAre(IDOK));
}

TEST_F(MessagesTest, AQuestionOffersYesAndNo) {
  const auto box = AnswerMessageBox(MessageBoxAnswer::Button(IDNO),
                                    [&] { AskYesNo(parent, kModule, kTwoPlaces, L"first", L"second"); });
  EXPECT_EQ(box.title, L"Wayline");
  EXPECT_EQ(box.text, L"first\n\nsecond");
  EXPECT_EQ(box.icon, Icon(IDI_QUESTION));
  EXPECT_EQ(box.owner, parent);
  EXPECT_THAT(box.buttons, ElementsAre(IDYES, IDNO));
}

TEST_F(MessagesTest, OnlyYesIsYes) {
  EXPECT_NE(Ask(MessageBoxAnswer::Button(IDYES)), 0);
  EXPECT_EQ(Ask(MessageBoxAnswer::Button(IDNO)), 0);
  EXPECT_EQ(Ask(MessageBoxAnswer::Escape()), 0);
}

TEST_F(MessagesTest, WhatIsShownAndAnsweredIsInTheLog) {
  Ask(MessageBoxAnswer::Button(IDYES));
  EXPECT_TRUE(log.Has(": Message: a"));
  EXPECT_TRUE(log.Has(": Answer: yes"));
  Ask(MessageBoxAnswer::Button(IDNO));
  EXPECT_TRUE(log.Has(": Answer: no"));
}

TEST_F(MessagesTest, EscapeClosesAnError) {
  const auto box = AnswerMessageBox(MessageBoxAnswer::Escape(),
                                    [&] { DisplayError(nullptr, kModule, kTwoPlaces, L"first", {}, {}); });
  EXPECT_EQ(box.owner, nullptr);
}

}  // namespace
