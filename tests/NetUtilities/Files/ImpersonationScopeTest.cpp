#include "NetUtilities/Files/ImpersonationScope.h"

#include <gmock/gmock.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "NetUtilities/Files/PathPlatform.h"
#include "NetUtilities/Text/ErrorText.h"
#include "tests/support/LogCapture.h"
#include "tests/support/Substituted.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// It is looked at by nobody.
const HANDLE kToken = reinterpret_cast<HANDLE>(0x1234);

class ImpersonationScopeTest : public testing::Test {
 protected:
  ImpersonationScopeTest() {
    steps.clear();
    platform->impersonate = [](HANDLE token) {
      EXPECT_EQ(token, kToken);
      steps.emplace_back("impersonate");
      return TRUE;
    };
    platform->revertToSelf = [] {
      steps.emplace_back("revert");
      return TRUE;
    };
  }

  static LogCapture::Message Denied(const std::wstring& what) {
    return {LogSource::Impersonation, LogLevel::Error, what + ErrorSuffix(ERROR_PRIVILEGE_NOT_HELD)};
  }

  static inline std::vector<std::string> steps;
  const Substituted<PathPlatform> platform{pathPlatform};
  const LogCapture log;
};

TEST_F(ImpersonationScopeTest, EndsWithTheScope) {
  {
    const ImpersonationScope scope(kToken);
    EXPECT_TRUE(scope.IsActive());
    EXPECT_THAT(steps, ElementsAre("impersonate"));
  }
  EXPECT_THAT(steps, ElementsAre("impersonate", "revert"));
  EXPECT_THAT(log.Messages(), IsEmpty());
}

TEST_F(ImpersonationScopeTest, EndsWhenAnExceptionPasses) {
  const auto fail = [] {
    const ImpersonationScope scope(kToken);
    throw std::runtime_error("what is done meanwhile");
  };
  EXPECT_THROW(fail(), std::runtime_error);
  EXPECT_THAT(steps, ElementsAre("impersonate", "revert"));
}

TEST_F(ImpersonationScopeTest, EndsOnceWhenItIsEndedEarly) {
  {
    ImpersonationScope scope(kToken);
    EXPECT_TRUE(scope.End());
    EXPECT_FALSE(scope.IsActive());
    EXPECT_TRUE(scope.End());
  }
  EXPECT_THAT(steps, ElementsAre("impersonate", "revert"));
}

TEST_F(ImpersonationScopeTest, ThatCouldNotBeginIsLoggedAndHasNoEnd) {
  platform->impersonate = [](HANDLE) -> BOOL { return SetLastError(ERROR_PRIVILEGE_NOT_HELD), FALSE; };
  {
    const ImpersonationScope scope(kToken);
    EXPECT_FALSE(scope.IsActive());
  }
  EXPECT_THAT(steps, IsEmpty());
  EXPECT_THAT(log.Messages(), ElementsAre(Denied(L"ImpersonateLoggedOnUser")));
}

TEST_F(ImpersonationScopeTest, ThatCannotEndIsLoggedOnce) {
  platform->revertToSelf = []() -> BOOL { return SetLastError(ERROR_PRIVILEGE_NOT_HELD), FALSE; };
  {
    ImpersonationScope scope(kToken);
    EXPECT_FALSE(scope.End());
  }
  EXPECT_THAT(log.Messages(), ElementsAre(Denied(L"Error: RevertToSelf")));
}

}  // namespace
