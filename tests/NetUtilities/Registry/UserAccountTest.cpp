#include "NetUtilities/Registry/UserAccount.h"

#include <gmock/gmock.h>

#include "NetUtilities/Text/ErrorText.h"
#include "tests/support/LogCapture.h"
#include "tests/support/Substituted.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

TEST(CurrentUserName, IsThatOfTheProcess) {
  wchar_t name[257];
  DWORD length = 257;
  ASSERT_NE(GetUserNameW(name, &length), FALSE);
  EXPECT_EQ(CurrentUserName(), name);
}

TEST(CurrentUserName, OffersRoomForTheLongestName) {
  const Substituted accounts(accountPlatform);
  accounts->getUserName = [](LPWSTR name, LPDWORD length) -> BOOL {
    EXPECT_EQ(*length, 257u);
    std::wstring(256, L'n').copy(name, 256);
    return TRUE;
  };
  EXPECT_EQ(CurrentUserName(), std::wstring(256, L'n'));
}

TEST(CurrentUserName, IsEmptyWhenItCannotBeDetermined) {
  const Substituted accounts(accountPlatform);
  accounts->getUserName = [](LPWSTR name, LPDWORD) -> BOOL { return name[0] = L'x', FALSE; };
  EXPECT_EQ(CurrentUserName(), L"");
}

class UserNameToSid : public testing::Test {
 protected:
  const LogCapture log;
  const Substituted<AccountPlatform> accounts{accountPlatform};
  std::wstring sid = L"before";
};

TEST_F(UserNameToSid, GivesTheAccountsSidInStringForm) {
  EXPECT_EQ(UserNameToSidString(CurrentUserName(), sid), DWORD{ERROR_SUCCESS});
  EXPECT_THAT(sid, StartsWith(L"S-1-"));
  EXPECT_THAT(log.Messages(), IsEmpty());
}

TEST_F(UserNameToSid, IsEmptyForANameThatIsNotThere) {
  const DWORD code = UserNameToSidString(L"nobody of this name", sid);
  EXPECT_EQ(code, DWORD{ERROR_NONE_MAPPED});
  EXPECT_EQ(sid, L"");
  EXPECT_THAT(log.Messages(),
              ElementsAre(LogCapture::Message{LogSource::General, LogLevel::Error,
                                              L"LookupAccountName failed!" + ErrorSuffix(ERROR_NONE_MAPPED)}));
}

TEST_F(UserNameToSid, OffersRoomForTheLongestSidAndADomain) {
  accounts->lookupAccountName = [](LPCWSTR system, LPCWSTR, PSID, LPDWORD sidSize, LPWSTR, LPDWORD domainLength,
                                   PSID_NAME_USE) -> BOOL {
    EXPECT_EQ(system, nullptr) << "The machine's own accounts count.";
    EXPECT_EQ(*sidSize, 68u);
    EXPECT_EQ(*domainLength, 64u);
    SetLastError(ERROR_INSUFFICIENT_BUFFER);
    return FALSE;
  };
  EXPECT_EQ(UserNameToSidString(L"any", sid), DWORD{ERROR_INSUFFICIENT_BUFFER});
}

TEST_F(UserNameToSid, IsEmptyWhenTheSidHasNoText) {
  accounts->convertSidToStringSid = [](PSID, LPWSTR*) -> BOOL { return SetLastError(ERROR_INVALID_SID), FALSE; };
  EXPECT_EQ(UserNameToSidString(CurrentUserName(), sid), DWORD{ERROR_INVALID_SID});
  EXPECT_EQ(sid, L"");
  EXPECT_THAT(log.Messages(),
              ElementsAre(LogCapture::Message{LogSource::General, LogLevel::Error,
                                              L"ConvertSidToStringSid failed!" + ErrorSuffix(ERROR_INVALID_SID)}));
}

}  // namespace
