#include "NetUtilities/Registry/InstallDword.h"

#include <windows.h>

#include <gmock/gmock.h>

#include <string>
#include <utility>
#include <vector>

#include "NetUtilities/Registry/RegistryNames.h"
#include "NetUtilities/Registry/RegistryPlatform.h"
#include "NetUtilities/Registry/UserAccount.h"
#include "NetUtilities/Text/ErrorText.h"
#include "tests/support/LogCapture.h"
#include "tests/support/Substituted.h"
#include "tests/support/TestRegistryKey.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr wchar_t kValue[] = L"PaviseTest";

LogCapture::Message Error(const std::wstring& text) { return {LogSource::General, LogLevel::Error, text}; }
LogCapture::Message Trace(const std::wstring& text) { return {LogSource::General, LogLevel::Trace, text}; }

TEST(InstallDword, IsReadAnewFromTheUsersKey) {
  TestRegistryKey install(HKEY_CURRENT_USER, kCurrentInstallKey);
  install.SetDword(kValue, 3);
  EXPECT_EQ(ReadInstallDword(kValue), 3u);
  install.SetDword(kValue, 4);
  EXPECT_EQ(ReadInstallDword(kValue), 4u);
}

TEST(InstallDword, Is0AndNotLoggedWithoutAValue) {
  const LogCapture log;
  EXPECT_EQ(ReadInstallDword(L"PaviseTestMissing"), 0u);
  EXPECT_THAT(log.Messages(), IsEmpty());
}

TEST(InstallDword, IsLoggedWhenItIsNoDword) {
  const LogCapture log;
  TestRegistryKey install(HKEY_CURRENT_USER, kCurrentInstallKey);
  install.Set(kValue, REG_QWORD, "\1\0\0\0\0\0\0", 8);
  EXPECT_EQ(ReadInstallDword(kValue), 0u);
  EXPECT_THAT(log.Messages(),
              ElementsAre(Error(LR"(RegQueryValueEx read DWORD64 HKCU\Software\Ostrel\Wayline\CurrentInstall\)" +
                                std::wstring(kValue) + ErrorSuffix(ERROR_MORE_DATA))));
}

TEST(InstallDword, TakesTheUsersOwnRoadWhenTheUserIsUnknown) {
  const Substituted accounts(accountPlatform);
  accounts->getUserName = [](LPWSTR, LPDWORD) -> BOOL { return FALSE; };
  TestRegistryKey install(HKEY_CURRENT_USER, kCurrentInstallKey);
  install.SetDword(kValue, 5);
  EXPECT_EQ(ReadInstallDword(kValue), 5u);
}

// The process pretends to run as SYSTEM; the user who is logged on is the one who really runs it.
class InstallDwordOfSystem : public testing::Test {
 protected:
  InstallDwordOfSystem() {
    PretendToBe(L"SYSTEM");
    client.SetString(kLoggedOnUserValue, user);
    own.SetDword(kValue, 7);
    opened.clear();
    registry->openKey = [](HKEY root, LPCWSTR subkey, DWORD options, REGSAM access, PHKEY key) -> LSTATUS {
      opened.emplace_back(root, subkey);
      EXPECT_EQ(access, 0x20019u) << "for reading only, in the native view";
      return RegOpenKeyExW(root, subkey, options, access, key);
    };
  }

  void PretendToBe(const wchar_t* name) {
    pretended = name;
    accounts->getUserName = [](LPWSTR out, LPDWORD) -> BOOL { return wcscpy(out, pretended), TRUE; };
  }

  std::wstring SidOfUser() const {
    std::wstring sid;
    EXPECT_EQ(UserNameToSidString(user, sid), DWORD{ERROR_SUCCESS});
    return sid;
  }

  static inline const wchar_t* pretended = nullptr;
  static inline std::vector<std::pair<HKEY, std::wstring>> opened;

  const std::wstring user = CurrentUserName();
  const LogCapture log;
  const Substituted<AccountPlatform> accounts{accountPlatform};
  const Substituted<RegistryPlatform> registry{registryPlatform};
  TestRegistryKey client{HKEY_LOCAL_MACHINE, kClientKey};
  TestRegistryKey own{HKEY_CURRENT_USER, kCurrentInstallKey};
};

TEST_F(InstallDwordOfSystem, IsReadFromTheHiveOfTheUserWhoIsLoggedOn) {
  EXPECT_EQ(ReadInstallDword(kValue), 7u);
  EXPECT_THAT(opened, ElementsAre(std::pair(HKEY_LOCAL_MACHINE, std::wstring(kClientKey)),
                                  std::pair(HKEY_USERS, SidOfUser() + L'\\' + kCurrentInstallKey)));
  EXPECT_THAT(log.Messages(), IsEmpty());
}

TEST_F(InstallDwordOfSystem, IsThatOfTheProcessWhenTheNameIsSpelledOtherwise) {
  for (const wchar_t* name : {L"system", L"System", L"SYSTEM2", L""}) {
    opened.clear();
    PretendToBe(name);
    EXPECT_EQ(ReadInstallDword(kValue), 7u) << name;
    EXPECT_THAT(opened, ElementsAre(std::pair(HKEY_CURRENT_USER, std::wstring(kCurrentInstallKey)))) << name;
  }
}

TEST_F(InstallDwordOfSystem, Is0WhenNobodyIsNotedAsLoggedOn) {
  client.Remove(kLoggedOnUserValue);
  SetLastError(ERROR_ACCESS_DENIED);
  EXPECT_EQ(ReadInstallDword(kValue), 0u);
  EXPECT_THAT(opened, SizeIs(1)) << "No user's key was looked for.";
  EXPECT_THAT(log.Messages(), ElementsAre(Trace(L"ReadValue failed! " + SystemErrorText(ERROR_ACCESS_DENIED))))
      << "The text is that of the thread's last error, whatever it was.";
}

TEST_F(InstallDwordOfSystem, Is0WhenTheNotedUserIsNoText) {
  client.SetDword(kLoggedOnUserValue, 1);
  SetLastError(ERROR_SUCCESS);
  EXPECT_EQ(ReadInstallDword(kValue), 0u);
  EXPECT_THAT(log.Messages(), ElementsAre(Trace(L"ReadValue failed! " + SystemErrorText(ERROR_SUCCESS))));
}

TEST_F(InstallDwordOfSystem, Is0WithoutTheClientsKey) {
  registry->openKey = [](HKEY, LPCWSTR, DWORD, REGSAM, PHKEY) -> LSTATUS { return ERROR_FILE_NOT_FOUND; };
  SetLastError(ERROR_INVALID_NAME);
  EXPECT_EQ(ReadInstallDword(kValue), 0u);
  EXPECT_THAT(log.Messages(), ElementsAre(Trace(L"OpenKey failed! " + SystemErrorText(ERROR_INVALID_NAME))));
}

TEST_F(InstallDwordOfSystem, Is0WhenTheClientsKeyCannotBeOpened) {
  registry->openKey = [](HKEY, LPCWSTR, DWORD, REGSAM, PHKEY) -> LSTATUS { return ERROR_ACCESS_DENIED; };
  SetLastError(ERROR_INVALID_NAME);
  EXPECT_EQ(ReadInstallDword(kValue), 0u);
  EXPECT_THAT(log.Messages(),
              ElementsAre(Error(LR"(RegOpenKeyEx HKLM\Software\Ostrel\Wayline)" + ErrorSuffix(ERROR_ACCESS_DENIED)),
                          Trace(L"OpenKey failed! " + SystemErrorText(ERROR_INVALID_NAME))));
}

TEST_F(InstallDwordOfSystem, Is0WhenTheNotedUserIsUnknown) {
  client.SetString(kLoggedOnUserValue, L"nobody of this name");
  EXPECT_EQ(ReadInstallDword(kValue), 0u);
  EXPECT_THAT(log.Messages(), ElementsAre(Error(L"LookupAccountName failed!" + ErrorSuffix(ERROR_NONE_MAPPED))));
}

TEST_F(InstallDwordOfSystem, Is0WithoutTheUsersKey) {
  // An account that never logs on has no hive.
  client.SetString(kLoggedOnUserValue, L"Guests");
  EXPECT_EQ(ReadInstallDword(kValue), 0u);
  EXPECT_THAT(opened, SizeIs(2));
  EXPECT_THAT(log.Messages(), IsEmpty());
}

TEST_F(InstallDwordOfSystem, Is0WhenTheUsersKeyCannotBeOpened) {
  registry->openKey = [](HKEY root, LPCWSTR subkey, DWORD options, REGSAM access, PHKEY key) -> LSTATUS {
    return root == HKEY_USERS ? ERROR_ACCESS_DENIED : RegOpenKeyExW(root, subkey, options, access, key);
  };
  EXPECT_EQ(ReadInstallDword(kValue), 0u);
  EXPECT_THAT(log.Messages(), ElementsAre(Error(L"RegOpenKeyEx HKU\\" + SidOfUser() + L'\\' + kCurrentInstallKey +
                                                ErrorSuffix(ERROR_ACCESS_DENIED))));
}

}  // namespace
