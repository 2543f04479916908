// The module on a machine without its logging service: the installation is broken, and the first message ends the
// process.

#include <windows.h>

#include <gtest/gtest.h>
#include <objbase.h>

#include <array>
#include <memory>
#include <optional>
#include <string>

#include "LoginProperties/LoginPropertiesContext.h"
#include "NetUtilities/Crash/CrashHandlers.h"
#include "NetUtilities/Registry/RegistryNames.h"
#include "NetUtilities/Text/ErrorText.h"
#include "NetUtilities/Text/Utf8.h"
#include "tests/support/ClientProcess.h"
#include "tests/support/DebugMonitor.h"
#include "tests/support/LoadedModule.h"
#include "tests/support/OwnProcess.h"
#include "tests/support/RegisteredService.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TestRegistryKey.h"
#include "TraceLogManager/TraceLogManager.h"

namespace {

std::wstring ServiceKey() {
  std::array<wchar_t, 39> id{};
  StringFromGUID2(CLSID_TraceLogManager, id.data(), static_cast<int>(id.size()));
  return LR"(Software\Classes\CLSID\)" + std::wstring(id.data());
}

class MissingServiceTest : public testing::Test {
 protected:
  MissingServiceTest() {
    // A server that runs needs no registration.
    EXPECT_TRUE(RegisteredService::WaitForEndOfServers());
    client_.Remove(L"TraceLevel");
    // Without a folder for it there is no dump, which takes Wine seconds to write.
    shellFolders_.SetString(L"Common AppData", folder_.Path().wstring());
    // Nor does Wine's debugger start.
    debugger_.SetString(L"Debugger", L"none");
  }

 private:
  const AbsentRegistryKey service_{HKEY_LOCAL_MACHINE, ServiceKey()};
  const TemporaryFolder folder_;
  TestRegistryKey client_{HKEY_LOCAL_MACHINE, kClientKey};
  TestRegistryKey shellFolders_{HKEY_LOCAL_MACHINE,
                                LR"(Software\Microsoft\Windows\CurrentVersion\Explorer\User Shell Folders)"};
  TestRegistryKey debugger_{HKEY_LOCAL_MACHINE, LR"(Software\Microsoft\Windows NT\CurrentVersion\AeDebug)"};
};

}  // namespace

TEST_F(MissingServiceTest, EndsTheProcessAtTheFirstMessage) {
  EXPECT_EQ(ClientProcess(L"missing 1 1").WaitForEnd(), kModuleException);
}

TEST_F(MissingServiceTest, IsNoMatterToAMessageThatIsFilteredOut) {
  EXPECT_EQ(ClientProcess(L"missing 1 1 level=5").WaitForEnd(), ClientProcess::kDone);
}

TEST_F(MissingServiceTest, IsNoMatterToAMessageOfASourceThatDoesNotExist) {
  EXPECT_EQ(ClientProcess(L"missing 1 1 source=37").WaitForEnd(), ClientProcess::kDone);
}

TEST_F(MissingServiceTest, IsReportedToTheDebugger) {
  TestRegistryKey install(HKEY_LOCAL_MACHINE, kCurrentInstallKey);
  install.SetDword(L"DebugOutput", 1);
  DebugMonitor monitor;
  EXPECT_EQ(ClientProcess(L"missing 1 1 level=5").WaitForEnd(), ClientProcess::kDone);
  EXPECT_EQ(monitor.Receive(),
            ToUtf8(L"TARN: Unable to Create Instance of TraceLogManager!" + ErrorSuffix(REGDB_E_CLASSNOTREG) + L"\n"));
}

TEST_F(MissingServiceTest, EndsTheProcessThatShowsTheSheet) {
  InOwnProcess(
      [] {
        constexpr uint32_t kProfile = 2001;
        const LoadedModule pavise(L"Pavise.dll");
        LoginPropertiesContext context;
        context.resourceInstance = pavise.Handle();
        context.mode = SheetMode::TimeoutsOnly;  // the page logs when it is shown
        context.currentProfile = std::make_shared<Profile>(kProfile);
        context.profiles.emplace(kProfile, context.currentProfile);
        pavise.Find<INT_PTR (*)(LoginPropertiesContext*)>("ShowLoginProperties")(&context);
      },
      {.end = kModuleException});
}
