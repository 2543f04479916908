#include "NetUtilities/Logger/LogOutputHelper.h"

#include <windows.h>

#include <gtest/gtest.h>

#include "NetUtilities/Logger/Log.h"
#include "NetUtilities/RegistryKey.h"
#include "NetUtilities/RegistryNames.h"
#include "tests/support/DebugMonitor.h"
#include "tests/support/OwnProcess.h"
#include "tests/support/TestRegistryKey.h"

namespace {

TEST(LogOutputHelper, WritesToTheDebuggerWhileDebugOutputIsOn) {
  TestRegistryKey install(HKEY_LOCAL_MACHINE, kCurrentInstallKey);
  install.SetDword(L"DebugOutput", 1);
  InOwnProcess([] {
    DebugMonitor monitor;
    LogOutputHelper::GetLogOutput(LogOutput::Debugger)(L"hello");
    EXPECT_EQ(monitor.Receive(), "TARN: hello\n");
  });
}

TEST(LogOutputHelper, IsSilentWhileDebugOutputIsOff) {
  TestRegistryKey install(HKEY_LOCAL_MACHINE, kCurrentInstallKey);
  install.SetDword(L"DebugOutput", 0);
  InOwnProcess([] {
    DebugMonitor monitor;
    LogOutputHelper::GetLogOutput(LogOutput::Debugger)(L"hello");
    EXPECT_EQ(monitor.Receive(), std::nullopt);
    OutputDebugStringW(L"heard");
    EXPECT_EQ(monitor.Receive(), "heard");
  });
}

TEST(LogOutputHelper, ASwitchThatCannotBeReadIsOffWhileItsFailureIsLogged) {
  TestRegistryKey install(HKEY_LOCAL_MACHINE, kCurrentInstallKey);
  install.Set(L"DebugOutput", REG_QWORD, "\x01\0\0\0\0\0\0", 8);
  InOwnProcess([] {
    DebugMonitor monitor;
    // Every line asks for the switch, that of the failure too.
    Log(LogLevel::Error, L"hello");
    EXPECT_EQ(monitor.Receive(), std::nullopt);
  });
}

}  // namespace
