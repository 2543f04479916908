// What the entry asks of the platform, and what it does where the platform does not show the sheet.

#include "LoginProperties/ShowLoginProperties.h"

#include <gmock/gmock.h>

#include "LoginProperties/SheetPlatform.h"
#include "NetUtilities/Text/ErrorText.h"
#include "tests/support/LogCapture.h"
#include "tests/support/Substituted.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

DWORD reason = ERROR_SUCCESS;     // of the failure that the sheet stands for
std::vector<UINT> pagesAskedFor;  // by each sheet

INT_PTR WINAPI FailToShow(LPCPROPSHEETHEADERW header) {
  pagesAskedFor.push_back(header->nPages);
  // As the platform does: where it has no reason it sets none.
  if (reason != ERROR_SUCCESS) SetLastError(reason);
  GetContext().profiles.clear();
  return kSheetNotShown;
}

class ShowLoginPropertiesTest : public testing::Test {
 protected:
  ShowLoginPropertiesTest() {
    platform_->propertySheet = FailToShow;
    context_.profiles[2001] = std::make_shared<Profile>(2001);
    pagesAskedFor.clear();
  }
  ~ShowLoginPropertiesTest() override { GetContext() = {}; }

  // The errors in the log of a sheet that fails for a reason, where another error has come before.
  std::vector<std::wstring> ErrorsFor(SheetMode mode, DWORD failure) {
    reason = failure;
    context_.mode = mode;
    const LogCapture log;
    SetLastError(ERROR_ACCESS_DENIED);
    EXPECT_EQ(ShowLoginProperties(&context_), kSheetNotShown);
    std::vector<std::wstring> errors;
    for (const LogCapture::Message& message : log.Messages()) {
      if (message.level == LogLevel::Error) errors.push_back(message.text);
    }
    return errors;
  }

  const Substituted<SheetPlatform> platform_{sheetPlatform};
  LoginPropertiesContext context_;
};

}  // namespace

TEST_F(ShowLoginPropertiesTest, AsksForASheetWithoutPagesInAModeThatDoesNotExist) {
  for (const unsigned mode : {0u, 4u}) {
    EXPECT_EQ(ErrorsFor(static_cast<SheetMode>(mode), ERROR_SUCCESS).size(), 1u);
  }
  EXPECT_THAT(pagesAskedFor, ElementsAre(0u, 0u));
}

TEST_F(ShowLoginPropertiesTest, LogsTheSystemsReasonForASheetThatCouldNotBeShown) {
  EXPECT_THAT(
      ErrorsFor(SheetMode::Full, ERROR_INVALID_WINDOW_HANDLE),
      ElementsAre(L"Login properties could not be shown: mode 1, pages 6" + ErrorSuffix(ERROR_INVALID_WINDOW_HANDLE)));
}

TEST_F(ShowLoginPropertiesTest, LogsNoReasonWhereTheSystemGivesNone) {
  EXPECT_THAT(ErrorsFor(SheetMode::WiFiSwitchingOnly, ERROR_SUCCESS),
              ElementsAre(L"Login properties could not be shown: mode 3, pages 1"));
}

TEST_F(ShowLoginPropertiesTest, LeavesTheContextAloneWhereTheSheetCouldNotBeShown) {
  ErrorsFor(SheetMode::TimeoutsOnly, ERROR_SUCCESS);
  EXPECT_THAT(GetContext().profiles, IsEmpty());
  EXPECT_EQ(context_.profiles.size(), 1u);
}

TEST_F(ShowLoginPropertiesTest, ANewRecordNeverGetsTheIdOfAProfileThatThereIs) {
  context_.profiles[2002] = nullptr;
  context_.profiles[10001] = std::make_shared<Profile>(10001);
  ErrorsFor(SheetMode::Full, ERROR_SUCCESS);
  EXPECT_EQ(Profile(Profile::kNewId).GetProfileId(), 2003u);
}
