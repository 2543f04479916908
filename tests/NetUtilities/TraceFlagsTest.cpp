#include "NetUtilities/TraceFlags.h"

#include <gmock/gmock.h>

#include "NetUtilities/ErrorText.h"
#include "NetUtilities/RegistryKey.h"
#include "tests/support/LogCapture.h"
#include "tests/support/OwnProcess.h"
#include "tests/support/TestRegistryKey.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(TraceFlags, AreReadFromTheUsersInstallation) {
  TestRegistryKey install(HKEY_CURRENT_USER, kCurrentInstallKey);
  install.SetDword(L"TraceFlags", 0x80000002);
  InOwnProcess([] {
    EXPECT_EQ(GetTraceFlags(), 0x80000002);
    EXPECT_FALSE(IsTraceFlagSet(0));
    EXPECT_TRUE(IsTraceFlagSet(1));
    EXPECT_TRUE(IsTraceFlagSet(31));
    EXPECT_FALSE(IsTraceFlagSet(34));
    EXPECT_TRUE(IsTraceFlagSet(33)) << "Higher numbers count modulo 32.";
  });
}

TEST(TraceFlags, AreKeptForSomeTime) {
  TestRegistryKey install(HKEY_CURRENT_USER, kCurrentInstallKey);
  install.SetDword(L"TraceFlags", 1);
  InOwnProcess([&install] {
    GetTraceFlags();
    install.SetDword(L"TraceFlags", 2);
    EXPECT_EQ(GetTraceFlags(), 1u);
  });
}

TEST(TraceFlags, Bit32IsAlwaysSetWithoutReadingAnything) {
  TestRegistryKey install(HKEY_CURRENT_USER, kCurrentInstallKey);
  install.Remove(L"TraceFlags");
  InOwnProcess([&install] {
    EXPECT_TRUE(IsTraceFlagSet(32));
    install.SetDword(L"TraceFlags", 4);
    EXPECT_TRUE(IsTraceFlagSet(2)) << "The flags had been read before.";
  });
}

TEST(TraceFlags, NoneIsSetWithoutAValue) {
  TestRegistryKey install(HKEY_CURRENT_USER, kCurrentInstallKey);
  install.Remove(L"TraceFlags");
  InOwnProcess([] { EXPECT_EQ(GetTraceFlags(), 0u); });
}

TEST(ReadInstallDword, ReadsTheUsersValueAnew) {
  TestRegistryKey install(HKEY_CURRENT_USER, kCurrentInstallKey);
  install.SetDword(L"PaviseTest", 3);
  EXPECT_EQ(ReadInstallDword(L"PaviseTest"), 3u);
  install.SetDword(L"PaviseTest", 4);
  EXPECT_EQ(ReadInstallDword(L"PaviseTest"), 4u);
  install.Remove(L"PaviseTest");
  EXPECT_EQ(ReadInstallDword(L"PaviseTest"), 0u);
}

TEST(TraceLevel, Is4WithoutAValue) {
  const LogCapture log;
  TestRegistryKey client(HKEY_LOCAL_MACHINE, kClientKey);
  client.Remove(L"TraceLevel");
  EXPECT_EQ(GetTraceLevel(), 4);
  EXPECT_THAT(log.Messages(), IsEmpty());
}

TEST(TraceLevel, IsReadByEveryCall) {
  TestRegistryKey client(HKEY_LOCAL_MACHINE, kClientKey);
  client.SetDword(L"TraceLevel", 5);
  EXPECT_EQ(GetTraceLevel(), 5);
  client.SetDword(L"TraceLevel", 0);
  EXPECT_EQ(GetTraceLevel(), 0);
}

TEST(TraceLevel, IsCutTo16Bits) {
  TestRegistryKey client(HKEY_LOCAL_MACHINE, kClientKey);
  client.SetDword(L"TraceLevel", 0x10003);
  EXPECT_EQ(GetTraceLevel(), 3);
}

TEST(TraceLevel, Is4AndLoggedWhenItCannotBeRead) {
  const LogCapture log;
  TestRegistryKey client(HKEY_LOCAL_MACHINE, kClientKey);
  client.Set(L"TraceLevel", REG_QWORD, "\x01\0\0\0\0\0\0", 8);
  EXPECT_EQ(GetTraceLevel(), 4);
  EXPECT_THAT(log.Messages(),
              ElementsAre(LogCapture::Message{LogSource::General, LogLevel::Error,
                                              LR"(RegQueryValueEx read enum HKLM\Software\Ostrel\Wayline\TraceLevel)" +
                                                  ErrorSuffix(ERROR_MORE_DATA)}));
}

TEST(DebugOutput, IsOffWithoutAValue) {
  TestRegistryKey install(HKEY_LOCAL_MACHINE, kCurrentInstallKey);
  install.Remove(L"DebugOutput");
  InOwnProcess([] { EXPECT_FALSE(IsDebugOutputEnabled()); });
}

TEST(DebugOutput, IsOnForAnyNumberBut0) {
  TestRegistryKey install(HKEY_LOCAL_MACHINE, kCurrentInstallKey);
  install.SetDword(L"DebugOutput", 8);
  InOwnProcess([] { EXPECT_TRUE(IsDebugOutputEnabled()); });
}

}  // namespace
