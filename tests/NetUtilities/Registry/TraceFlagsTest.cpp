#include "NetUtilities/Registry/TraceFlags.h"

#include <gmock/gmock.h>

#include <atomic>
#include <string>

#include "NetUtilities/Registry/RegistryNames.h"
#include "NetUtilities/Registry/RegistryPlatform.h"
#include "NetUtilities/Text/ErrorText.h"
#include "tests/support/InThreads.h"
#include "tests/support/LogCapture.h"
#include "tests/support/OwnProcess.h"
#include "tests/support/Substituted.h"
#include "tests/support/TestRegistryKey.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

LogCapture::Message Error(const std::wstring& text) { return {LogSource::General, LogLevel::Error, text}; }

TEST(TraceFlags, AreReadFromTheUsersInstallation) {
  TestRegistryKey install(HKEY_CURRENT_USER, kCurrentInstallKey);
  install.SetDword(kTraceFlagsValue, 0x80000002);
  InOwnProcess([] {
    EXPECT_EQ(GetTraceFlags(), 0x80000002);
    EXPECT_FALSE(IsTraceFlagSet(0));
    EXPECT_TRUE(IsTraceFlagSet(1));
    EXPECT_TRUE(IsTraceFlagSet(31));
    EXPECT_FALSE(IsTraceFlagSet(34));
    EXPECT_TRUE(IsTraceFlagSet(33)) << "Higher numbers count modulo 32.";
  });
}

// Each of these runs in a process of its own, which has read nothing before. The clock stands, and readings are
// counted.
class KeptSwitches : public testing::Test {
 protected:
  KeptSwitches() {
    openings = 0;
    registry->tickCount = [] { return ticks; };
    registry->openKey = [](HKEY root, LPCWSTR subkey, DWORD options, REGSAM access, PHKEY key) -> LSTATUS {
      ++openings;
      EXPECT_EQ(access, 0x20019u) << "for reading only, in the native view";
      return RegOpenKeyExW(root, subkey, options, access, key);
    };
    user.SetDword(kTraceFlagsValue, 1);
    machine.SetDword(kDebugOutputValue, 0);
  }

  // How often the registry has been opened in all, after `ask` when `milliseconds` have passed since the first reading.
  template <typename Ask>
  int OpeningsAfter(ULONGLONG milliseconds, Ask ask) {
    ticks = kStart + milliseconds;
    ask();
    return openings;
  }

  static constexpr ULONGLONG kStart = 86'400'700;  // not at a whole second
  static inline ULONGLONG ticks = kStart;
  static inline int openings = 0;

  TestRegistryKey user{HKEY_CURRENT_USER, kCurrentInstallKey};
  TestRegistryKey machine{HKEY_LOCAL_MACHINE, kCurrentInstallKey};
  const Substituted<RegistryPlatform> registry{registryPlatform};
};

TEST_F(KeptSwitches, TraceFlagsAreReadAgainAfter11Seconds) {
  InOwnProcess([this] {
    const auto ask = [] { IsTraceFlagSet(0); };
    EXPECT_EQ(OpeningsAfter(0, ask), 1);
    user.SetDword(kTraceFlagsValue, 2);
    for (const ULONGLONG milliseconds : {0u, 1u, 9'000u, 10'000u, 10'999u}) {
      EXPECT_EQ(OpeningsAfter(milliseconds, ask), 1) << milliseconds;
      EXPECT_TRUE(IsTraceFlagSet(0)) << milliseconds;
    }
    EXPECT_EQ(OpeningsAfter(11'000, ask), 2);
    EXPECT_FALSE(IsTraceFlagSet(0));
    EXPECT_TRUE(IsTraceFlagSet(1));
    EXPECT_EQ(GetTraceFlags(), 2u);
    EXPECT_EQ(openings, 2);
  });
}

TEST_F(KeptSwitches, DebugOutputIsReadAgainAfter11Seconds) {
  InOwnProcess([this] {
    const auto ask = [] { IsDebugOutputEnabled(); };
    EXPECT_EQ(OpeningsAfter(0, ask), 1);
    machine.SetDword(kDebugOutputValue, 1);
    for (const ULONGLONG milliseconds : {9'000u, 10'000u, 10'999u}) {
      EXPECT_EQ(OpeningsAfter(milliseconds, ask), 1) << milliseconds;
      EXPECT_FALSE(IsDebugOutputEnabled());
    }
    EXPECT_EQ(OpeningsAfter(11'000, ask), 2);
    EXPECT_TRUE(IsDebugOutputEnabled());
  });
}

TEST_F(KeptSwitches, Bit32IsAlwaysSetWithoutReadingAnything) {
  InOwnProcess([] {
    registryPlatform.openKey = [](HKEY, LPCWSTR, DWORD, REGSAM, PHKEY) -> LSTATUS {
      ++openings;
      return ERROR_FILE_NOT_FOUND;
    };
    EXPECT_TRUE(IsTraceFlagSet(32));
    EXPECT_EQ(openings, 0);
    EXPECT_FALSE(IsTraceFlagSet(0)) << "There is no key.";
    EXPECT_TRUE(IsTraceFlagSet(32));
    EXPECT_EQ(openings, 1);
  });
}

TEST_F(KeptSwitches, AreTheSameForEightThreads) {
  machine.SetDword(kDebugOutputValue, 1);
  InOwnProcess([] {
    constexpr int kCallsPerThread = 10'000;
    std::atomic<int> wrong = 0;
    registryPlatform.openKey = RegOpenKeyExW;  // counting is for one thread
    InThreads([&](int) {
      for (int call = 0; call < kCallsPerThread; ++call) {
        if (!IsTraceFlagSet(0) || IsTraceFlagSet(1) || !IsDebugOutputEnabled()) ++wrong;
      }
    });
    EXPECT_EQ(wrong, 0);
  });
}

TEST(TraceFlags, OnlyTheBitThatIsAlwaysSetIsSetWithoutAKey) {
  const LogCapture log;
  const AbsentRegistryKey install(HKEY_CURRENT_USER, kClientKey);
  InOwnProcess([&log] {
    HKEY key = nullptr;
    EXPECT_EQ(RegOpenKeyExW(HKEY_CURRENT_USER, kCurrentInstallKey, 0, KEY_READ, &key), ERROR_FILE_NOT_FOUND);
    EXPECT_TRUE(IsTraceFlagSet(32));
    EXPECT_FALSE(IsTraceFlagSet(0));
    EXPECT_TRUE(IsTraceFlagSet(32));
    EXPECT_EQ(GetTraceFlags(), 0u);
    EXPECT_THAT(log.Messages(), IsEmpty());
  });
}

TEST(TraceFlags, NoneIsSetWithoutAValue) {
  TestRegistryKey install(HKEY_CURRENT_USER, kCurrentInstallKey);
  install.Remove(kTraceFlagsValue);
  InOwnProcess([] { EXPECT_EQ(GetTraceFlags(), 0u); });
}

TEST(TraceLevel, Is4WithoutAValue) {
  const LogCapture log;
  TestRegistryKey client(HKEY_LOCAL_MACHINE, kClientKey);
  client.Remove(kTraceLevelValue);
  EXPECT_EQ(GetTraceLevel(), 4);
  EXPECT_THAT(log.Messages(), IsEmpty());
}

TEST(TraceLevel, Is4WithoutAKey) {
  const LogCapture log;
  const Substituted registry(registryPlatform);
  registry->openKey = [](HKEY root, LPCWSTR subkey, DWORD, REGSAM access, PHKEY) -> LSTATUS {
    EXPECT_EQ(root, HKEY_LOCAL_MACHINE);
    EXPECT_STREQ(subkey, kClientKey);
    EXPECT_EQ(access, 0x20019u) << "for reading only, in the native view";
    return ERROR_FILE_NOT_FOUND;
  };
  EXPECT_EQ(GetTraceLevel(), 4);
  EXPECT_THAT(log.Messages(), IsEmpty());
}

TEST(TraceLevel, Is4AndLoggedWhenTheKeyCannotBeOpened) {
  const LogCapture log;
  const Substituted registry(registryPlatform);
  registry->openKey = [](HKEY, LPCWSTR, DWORD, REGSAM, PHKEY) -> LSTATUS { return ERROR_ACCESS_DENIED; };
  EXPECT_EQ(GetTraceLevel(), 4);
  EXPECT_THAT(log.Messages(),
              ElementsAre(Error(LR"(RegOpenKeyEx HKLM\Software\Ostrel\Wayline)" + ErrorSuffix(ERROR_ACCESS_DENIED))));
}

TEST(TraceLevel, OfNoBytesIs4AndNotLogged) {
  const LogCapture log;
  TestRegistryKey client(HKEY_LOCAL_MACHINE, kClientKey);
  client.Set(kTraceLevelValue, REG_DWORD, nullptr, 0);
  EXPECT_EQ(GetTraceLevel(), 4);
  EXPECT_THAT(log.Messages(), IsEmpty());
}

TEST(TraceLevel, IsReadByEveryCall) {
  TestRegistryKey client(HKEY_LOCAL_MACHINE, kClientKey);
  client.SetDword(kTraceLevelValue, 5);
  EXPECT_EQ(GetTraceLevel(), 5);
  client.SetDword(kTraceLevelValue, 0);
  EXPECT_EQ(GetTraceLevel(), 0);
}

TEST(TraceLevel, IsCutTo16Bits) {
  TestRegistryKey client(HKEY_LOCAL_MACHINE, kClientKey);
  client.SetDword(kTraceLevelValue, 0x10003);
  EXPECT_EQ(GetTraceLevel(), 3);
}

TEST(TraceLevel, Is4AndLoggedWhenItCannotBeRead) {
  const LogCapture log;
  TestRegistryKey client(HKEY_LOCAL_MACHINE, kClientKey);
  client.Set(kTraceLevelValue, REG_QWORD, "\x01\0\0\0\0\0\0", 8);
  EXPECT_EQ(GetTraceLevel(), 4);
  EXPECT_THAT(log.Messages(),
              ElementsAre(Error(LR"(RegQueryValueEx read enum HKLM\Software\Ostrel\Wayline\TraceLevel)" +
                                ErrorSuffix(ERROR_MORE_DATA))));
}

TEST(DebugOutput, IsOffWithoutAValue) {
  TestRegistryKey install(HKEY_LOCAL_MACHINE, kCurrentInstallKey);
  install.Remove(kDebugOutputValue);
  InOwnProcess([] { EXPECT_FALSE(IsDebugOutputEnabled()); });
}

TEST(DebugOutput, IsOffAndLoggedWhenItCannotBeRead) {
  const LogCapture log;
  TestRegistryKey install(HKEY_LOCAL_MACHINE, kCurrentInstallKey);
  install.Set(kDebugOutputValue, REG_QWORD, "\x01\0\0\0\0\0\0", 8);
  InOwnProcess([&log] {
    EXPECT_FALSE(IsDebugOutputEnabled());
    EXPECT_THAT(
        log.Messages(),
        ElementsAre(Error(LR"(RegQueryValueEx read DWORD64 HKLM\Software\Ostrel\Wayline\CurrentInstall\DebugOutput)" +
                          ErrorSuffix(ERROR_MORE_DATA))));
  });
}

TEST(DebugOutput, IsOnForAnyNumberBut0) {
  TestRegistryKey install(HKEY_LOCAL_MACHINE, kCurrentInstallKey);
  install.SetDword(kDebugOutputValue, 8);
  InOwnProcess([] { EXPECT_TRUE(IsDebugOutputEnabled()); });
}

}  // namespace
