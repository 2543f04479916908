#include "NetUtilities/Registry/RegistryKey.h"

#include <gmock/gmock.h>

#include <cstring>

#include "NetUtilities/Registry/RegistryPlatform.h"
#include "NetUtilities/Text/ErrorText.h"
#include "tests/support/LogCapture.h"
#include "tests/support/Substituted.h"
#include "tests/support/TestRegistryKey.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const std::wstring kSubkey = LR"(Software\PaviseTest)" + std::to_wstring(GetCurrentProcessId());

LogCapture::Message Error(const std::wstring& text) { return {LogSource::General, LogLevel::Error, text}; }

class RegistryKeyTest : public testing::Test {
 protected:
  RegistryKeyTest() { key.Open(HKEY_CURRENT_USER, kSubkey, KEY_READ); }

  LONG ReadString(const std::wstring& name) { return key.ReadString(name, text, L"default"); }
  LONG ReadDword(const std::wstring& name) { return key.ReadDword(name, number, 77); }

  // What ReadString makes of a value with these bytes.
  std::wstring TextOf(DWORD type, const void* data, size_t size) {
    stored.Set(L"Value", type, data, size);
    EXPECT_EQ(ReadString(L"Value"), ERROR_SUCCESS);
    return text;
  }

  const LogCapture log;
  TestRegistryKey stored{HKEY_CURRENT_USER, kSubkey};
  RegistryKey key;
  std::wstring text;
  DWORD number = 0;
};

TEST_F(RegistryKeyTest, ReadsAString) {
  stored.SetString(L"Name", L"Wayline");
  EXPECT_EQ(ReadString(L"Name"), ERROR_SUCCESS);
  EXPECT_EQ(text, L"Wayline");
}

TEST_F(RegistryKeyTest, ReadsAnExpandableStringAsItIsStored) {
  constexpr wchar_t kStored[] = L"%SystemRoot%\\x";
  EXPECT_EQ(TextOf(REG_EXPAND_SZ, kStored, sizeof(kStored)), kStored);
}

TEST_F(RegistryKeyTest, ReadsAnEmptyStringAsEmpty) { EXPECT_EQ(TextOf(REG_SZ, L"", sizeof(wchar_t)), L""); }

TEST_F(RegistryKeyTest, ReadsAStringOfSize0AsEmpty) { EXPECT_EQ(TextOf(REG_SZ, nullptr, 0), L""); }

TEST_F(RegistryKeyTest, AStringWithoutTerminatorLosesItsLastCharacter) {
  EXPECT_EQ(TextOf(REG_SZ, L"abcd", 3 * sizeof(wchar_t)), L"ab");
}

TEST_F(RegistryKeyTest, KeepsTerminatorsInsideAString) {
  constexpr wchar_t kStored[] = L"a\0b";
  EXPECT_EQ(TextOf(REG_SZ, kStored, sizeof(kStored)), std::wstring(L"a\0b", 3));
}

TEST_F(RegistryKeyTest, AStringOfOddSizeLosesItsHalfCharacterToo) {
  EXPECT_EQ(TextOf(REG_SZ, L"abc", 5), L"a");
  EXPECT_EQ(TextOf(REG_SZ, L"abc", 1), L"");
}

TEST_F(RegistryKeyTest, GivesTheDefaultForAMissingStringAndLogsNothing) {
  EXPECT_EQ(ReadString(L"Missing"), ERROR_FILE_NOT_FOUND);
  EXPECT_EQ(text, L"default");
  EXPECT_THAT(log.Messages(), IsEmpty());
}

TEST_F(RegistryKeyTest, GivesTheDefaultForAStringOfAnotherTypeAndLogsNothing) {
  stored.SetDword(L"Number", 1);
  EXPECT_EQ(ReadString(L"Number"), ERROR_INVALID_DATA);
  EXPECT_EQ(text, L"default");
  EXPECT_THAT(log.Messages(), IsEmpty());
}

TEST_F(RegistryKeyTest, LogsAnyOtherFailureToReadAString) {
  key.Close();
  EXPECT_EQ(ReadString(L"Name"), ERROR_INVALID_HANDLE);
  EXPECT_EQ(text, L"default");
  EXPECT_THAT(log.Messages(),
              ElementsAre(Error(L"RegQueryValueEx get size read wstring \\Name" + ErrorSuffix(ERROR_INVALID_HANDLE))));
}

TEST_F(RegistryKeyTest, LogsAStringThatCannotBeReadAfterItsSize) {
  stored.SetString(L"Name", L"Wayline");
  const Substituted registry(registryPlatform);
  registry->queryValue = [](HKEY handle, LPCWSTR name, LPDWORD reserved, LPDWORD type, LPBYTE data,
                            LPDWORD size) -> LSTATUS {
    return data != nullptr ? ERROR_MORE_DATA : RegQueryValueExW(handle, name, reserved, type, data, size);
  };
  EXPECT_EQ(ReadString(L"Name"), ERROR_MORE_DATA);
  EXPECT_EQ(text, L"default");
  EXPECT_THAT(log.Messages(), ElementsAre(Error(L"RegQueryValueEx read wstring HKCU\\" + kSubkey + L"\\Name" +
                                                ErrorSuffix(ERROR_MORE_DATA))));
}

TEST_F(RegistryKeyTest, KeepsASilentKeysFailuresToItself) {
  key.SetLogErrors(false);
  stored.Set(L"Wide", REG_QWORD, "\1\0\0\0\0\0\0", 8);
  EXPECT_EQ(ReadDword(L"Wide"), ERROR_MORE_DATA);
  EXPECT_EQ(key.ReadDwordAs(L"enum ", L"Wide", number), ERROR_MORE_DATA);
  key.Close();
  EXPECT_EQ(ReadString(L"Name"), ERROR_INVALID_HANDLE);
  const auto noKey = reinterpret_cast<HKEY>(INT_PTR{0x7ffffff4});
  EXPECT_EQ(key.Open(noKey, L"Sub", KEY_READ), ERROR_INVALID_HANDLE);
  EXPECT_THAT(log.Messages(), IsEmpty());
}

TEST_F(RegistryKeyTest, ReadsADword) {
  stored.SetDword(L"Number", 0xfffffffe);
  EXPECT_EQ(ReadDword(L"Number"), ERROR_SUCCESS);
  EXPECT_EQ(number, 0xfffffffe);
}

TEST_F(RegistryKeyTest, ReadsFourBytesOfAnotherTypeAsADword) {
  stored.Set(L"Number", REG_BINARY, "\x04\x03\x02\x01", 4);
  EXPECT_EQ(ReadDword(L"Number"), ERROR_SUCCESS);
  EXPECT_EQ(number, 0x01020304u);
}

TEST_F(RegistryKeyTest, AShorterValueReplacesTheLowerBytesOfTheDefault) {
  stored.Set(L"None", REG_BINARY, nullptr, 0);
  EXPECT_EQ(key.ReadDword(L"None", number, 0x12345678), ERROR_SUCCESS);
  EXPECT_EQ(number, 0x12345678u);
  stored.Set(L"Two", REG_BINARY, "\xcd\xab", 2);
  EXPECT_EQ(key.ReadDword(L"Two", number, 0x12345678), ERROR_SUCCESS);
  EXPECT_EQ(number, 0x1234abcdu);
  number = 0x87654321;
  EXPECT_EQ(key.ReadDwordAs(L"enum ", L"Two", number), ERROR_SUCCESS);
  EXPECT_EQ(number, 0x8765abcdu);
  EXPECT_THAT(log.Messages(), IsEmpty());
}

TEST_F(RegistryKeyTest, GivesTheDefaultWhenAReadingFailsHalfway) {
  const Substituted registry(registryPlatform);
  registry->queryValue = [](HKEY, LPCWSTR, LPDWORD, LPDWORD, LPBYTE data, LPDWORD) -> LSTATUS {
    data[0] = 1;
    return ERROR_READ_FAULT;
  };
  EXPECT_EQ(ReadDword(L"Number"), ERROR_READ_FAULT);
  EXPECT_EQ(number, 77u);
}

TEST_F(RegistryKeyTest, GivesTheDefaultForAMissingDwordAndLogsNothing) {
  EXPECT_EQ(ReadDword(L"Missing"), ERROR_FILE_NOT_FOUND);
  EXPECT_EQ(number, 77u);
  EXPECT_THAT(log.Messages(), IsEmpty());
}

TEST_F(RegistryKeyTest, NamesAQwordReadAsADwordAs64Bits) {
  stored.Set(L"Wide", REG_QWORD, "\x01\x02\x03\x04\x05\x06\x07\x08", 8);
  EXPECT_EQ(ReadDword(L"Wide"), ERROR_MORE_DATA);
  EXPECT_EQ(number, 77u);
  EXPECT_THAT(log.Messages(), ElementsAre(Error(L"RegQueryValueEx read DWORD64 HKCU\\" + kSubkey + L"\\Wide" +
                                                ErrorSuffix(ERROR_MORE_DATA))));
}

TEST_F(RegistryKeyTest, LogsAnyOtherFailureToReadADword) {
  key.Close();
  EXPECT_EQ(ReadDword(L"Number"), ERROR_INVALID_HANDLE);
  EXPECT_THAT(log.Messages(),
              ElementsAre(Error(L"RegQueryValueEx read DWORD32 \\Number" + ErrorSuffix(ERROR_INVALID_HANDLE))));
}

TEST_F(RegistryKeyTest, ReadDwordAsNamesWhatWasReadAndLeavesTheNumberAlone) {
  stored.Set(L"Wide", REG_QWORD, "\x01\x02\x03\x04\x05\x06\x07\x08", 8);
  number = 5;
  EXPECT_EQ(key.ReadDwordAs(L"enum ", L"Wide", number), ERROR_MORE_DATA);
  EXPECT_EQ(number, 5u);
  EXPECT_THAT(log.Messages(), ElementsAre(Error(L"RegQueryValueEx read enum HKCU\\" + kSubkey + L"\\Wide" +
                                                ErrorSuffix(ERROR_MORE_DATA))));
}

TEST_F(RegistryKeyTest, AMissingKeyIsNotLoggedAndStillNamed) {
  EXPECT_EQ(key.Open(HKEY_LOCAL_MACHINE, kSubkey + L"\\Missing", KEY_READ), ERROR_FILE_NOT_FOUND);
  EXPECT_EQ(key.Path(), L"HKLM\\" + kSubkey + L"\\Missing");
  key.Close();
  EXPECT_EQ(key.Path(), L"");
  EXPECT_THAT(log.Messages(), IsEmpty());
}

TEST_F(RegistryKeyTest, ANullRootIsABadArgument) {
  const Substituted registry(registryPlatform);
  registry->openKey = [](HKEY, LPCWSTR, DWORD, REGSAM, PHKEY) -> LSTATUS {
    ADD_FAILURE() << "Nothing is opened.";
    return ERROR_SUCCESS;
  };
  EXPECT_EQ(key.Open(nullptr, kSubkey, KEY_READ), ERROR_BAD_ARGUMENTS);
  EXPECT_EQ(key.Path(), L"HKCU\\" + kSubkey);
  EXPECT_THAT(log.Messages(), IsEmpty());
}

TEST_F(RegistryKeyTest, LogsAnyOtherFailureToOpenAKey) {
  const auto noKey = reinterpret_cast<HKEY>(INT_PTR{0x7ffffff4});
  EXPECT_EQ(key.Open(noKey, L"Sub", KEY_READ), ERROR_INVALID_HANDLE);
  EXPECT_THAT(log.Messages(), ElementsAre(Error(L"RegOpenKeyEx \\Sub" + ErrorSuffix(ERROR_INVALID_HANDLE))));
}

TEST_F(RegistryKeyTest, NamesItsRoot) {
  const std::pair<HKEY, const wchar_t*> roots[] = {
      {HKEY_CLASSES_ROOT, L"HKCR"}, {HKEY_CURRENT_USER, L"HKCU"}, {HKEY_LOCAL_MACHINE, L"HKLM"}, {HKEY_USERS, L"HKU"}};
  for (const auto& [root, name] : roots) {
    key.Open(root, L"x", KEY_READ);
    EXPECT_EQ(key.Path(), std::wstring(name) + L"\\x");
  }
}

TEST_F(RegistryKeyTest, OpeningAnotherKeyLeavesTheFirst) {
  stored.SetDword(L"Number", 1);
  TestRegistryKey other(HKEY_CURRENT_USER, kSubkey + L"\\Other");
  other.SetDword(L"Number", 2);
  EXPECT_EQ(key.Open(HKEY_CURRENT_USER, kSubkey + L"\\Other", KEY_READ), ERROR_SUCCESS);
  EXPECT_EQ(ReadDword(L"Number"), ERROR_SUCCESS);
  EXPECT_EQ(number, 2u);
}

TEST_F(RegistryKeyTest, ClosingForgetsThePath) {
  EXPECT_EQ(key.Close(), ERROR_SUCCESS);
  EXPECT_EQ(key.Path(), L"");
  EXPECT_EQ(key.Close(), ERROR_SUCCESS);
}

TEST_F(RegistryKeyTest, ClosingGivesTheErrorOfClosing) {
  const Substituted registry(registryPlatform);
  registry->closeKey = [](HKEY handle) -> LSTATUS { return RegCloseKey(handle), ERROR_INVALID_HANDLE; };
  EXPECT_EQ(key.Close(), ERROR_INVALID_HANDLE);
  EXPECT_EQ(key.Close(), ERROR_SUCCESS) << "It is closed all the same.";
}

TEST_F(RegistryKeyTest, ClosesTheKeyAtTheEnd) {
  static int closed;
  closed = 0;
  const Substituted registry(registryPlatform);
  registry->closeKey = [](HKEY handle) -> LSTATUS { return ++closed, RegCloseKey(handle); };
  {
    RegistryKey other;
    ASSERT_EQ(other.Open(HKEY_CURRENT_USER, kSubkey, KEY_READ), ERROR_SUCCESS);
    EXPECT_EQ(closed, 0);
    ASSERT_EQ(other.Open(HKEY_CURRENT_USER, kSubkey, KEY_READ), ERROR_SUCCESS);
    EXPECT_EQ(closed, 1);
    EXPECT_EQ(other.Open(HKEY_CURRENT_USER, kSubkey + L"\\Missing", KEY_READ), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(closed, 2);
  }
  EXPECT_EQ(closed, 2) << "Nothing was open at the end.";
  {
    RegistryKey other;
    ASSERT_EQ(other.Open(HKEY_CURRENT_USER, kSubkey, KEY_READ), ERROR_SUCCESS);
    EXPECT_EQ(closed, 2);
  }
  EXPECT_EQ(closed, 3);
}

TEST_F(RegistryKeyTest, OpensTheNativeViewForReadingOnly) {
  static REGSAM rights;
  const Substituted registry(registryPlatform);
  registry->openKey = [](HKEY, LPCWSTR, DWORD, REGSAM access, PHKEY) -> LSTATUS {
    rights = access;
    return ERROR_FILE_NOT_FOUND;
  };
  for (const auto& read :
       {+[] { ReadRegistryDword(HKEY_CURRENT_USER, kSubkey, L"x", 0); }, +[] { ReadHklmString(kSubkey, L"x", L""); }}) {
    rights = 0;
    read();
    EXPECT_EQ(rights, 0x20019u);
  }
}

TEST_F(RegistryKeyTest, NamesTheSubkeysInTheRegistrysOrder) {
  const std::wstring longest(255, L'k');
  const TestRegistryKey first(HKEY_CURRENT_USER, kSubkey + L"\\alpha");
  const TestRegistryKey second(HKEY_CURRENT_USER, kSubkey + L"\\" + longest);
  const TestRegistryKey below(HKEY_CURRENT_USER, kSubkey + L"\\m\\below");
  EXPECT_THAT(key.GetSubkeyNames(), ElementsAre(L"alpha", longest, L"m"));
}

TEST_F(RegistryKeyTest, NamesNoSubkeysWhereThereAreNone) { EXPECT_THAT(key.GetSubkeyNames(), IsEmpty()); }

TEST_F(RegistryKeyTest, NamesNoSubkeysOfAClosedKeyAndLogsNothing) {
  key.Close();
  EXPECT_THAT(key.GetSubkeyNames(), IsEmpty());
  EXPECT_THAT(log.Messages(), IsEmpty());
}

TEST_F(RegistryKeyTest, KeepsTheSubkeysFoundBeforeAFailure) {
  const TestRegistryKey first(HKEY_CURRENT_USER, kSubkey + L"\\a");
  const TestRegistryKey second(HKEY_CURRENT_USER, kSubkey + L"\\b");
  const Substituted registry(registryPlatform);
  registry->enumKey = [](HKEY handle, DWORD index, LPWSTR name, LPDWORD length, LPDWORD reserved, LPWSTR className,
                         LPDWORD classLength, PFILETIME time) -> LSTATUS {
    return index == 1 ? ERROR_KEY_DELETED
                      : RegEnumKeyExW(handle, index, name, length, reserved, className, classLength, time);
  };
  EXPECT_THAT(key.GetSubkeyNames(), ElementsAre(L"a"));
  EXPECT_THAT(log.Messages(), IsEmpty());
}

TEST_F(RegistryKeyTest, TheOneShotReadersReadAValue) {
  stored.SetDword(L"Number", 12);
  EXPECT_EQ(ReadRegistryDword(HKEY_CURRENT_USER, kSubkey, L"Number", 5), 12u);
  TestRegistryKey machine(HKEY_LOCAL_MACHINE, kSubkey);
  machine.SetString(L"Name", L"text");
  EXPECT_EQ(ReadHklmString(kSubkey, L"Name", L"default"), L"text");
}

TEST_F(RegistryKeyTest, TheOneShotReadersGiveTheDefaultWhenKeyOrValueIsMissing) {
  EXPECT_EQ(ReadRegistryDword(HKEY_CURRENT_USER, kSubkey, L"Missing", 5), 5u);
  EXPECT_EQ(ReadRegistryDword(HKEY_CURRENT_USER, kSubkey + L"\\Missing", L"Number", 5), 5u);
  EXPECT_EQ(ReadHklmString(L"Software", L"PaviseTestMissing", L"default"), L"default");
  EXPECT_EQ(ReadHklmString(kSubkey + L"\\Missing", L"Name", L"default"), L"default");
  EXPECT_THAT(log.Messages(), IsEmpty());
}

}  // namespace
