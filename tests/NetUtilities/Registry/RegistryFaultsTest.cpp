// What those who read the registry give and log when a call to it fails: the first, the second and so on, once or from
// then on.

#include <windows.h>

#include <gmock/gmock.h>

#include <cwchar>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "NetUtilities/Crash/CrashDump.h"
#include "NetUtilities/Crash/CrashPlatform.h"
#include "NetUtilities/Registry/RegistryNames.h"
#include "NetUtilities/Registry/RegistryPlatform.h"
#include "NetUtilities/Registry/TraceFlags.h"
#include "NetUtilities/Registry/UserAccount.h"
#include "NetUtilities/Text/ErrorText.h"
#include "NetUtilities/Text/Format.h"
#include "tests/support/FaultPlan.h"
#include "tests/support/LogCapture.h"
#include "tests/support/OwnProcess.h"
#include "tests/support/Substituted.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TestRegistryKey.h"

namespace {

using testing::ElementsAreArray;

// Nobody reads kept values again before that.
constexpr ULONGLONG kKeptMilliseconds = 11'000;

using Lines = std::vector<LogCapture::Message>;

LogCapture::Message OpenError(const std::wstring& key) {
  return {LogSource::General, LogLevel::Error, L"RegOpenKeyEx " + key + ErrorSuffix(ERROR_ACCESS_DENIED)};
}

LogCapture::Message QueryError(const std::wstring& what, const std::wstring& value) {
  return {LogSource::General, LogLevel::Error,
          Format(L"RegQueryValueEx {} {}{}", what, value, ErrorSuffix(ERROR_NOT_ENOUGH_MEMORY))};
}

LogCapture::Message Trace(const std::wstring& text) { return {LogSource::General, LogLevel::Trace, text}; }

// A registry whose calls to open keys and to query values fail as planned.
class RegistryFaults : public testing::Test {
 protected:
  RegistryFaults() {
    openKeys = 0;
    registry->openKey = [](HKEY root, LPCWSTR subkey, DWORD options, REGSAM access, PHKEY key) -> LSTATUS {
      if (plan.Fails()) return ERROR_ACCESS_DENIED;
      const LSTATUS code = RegOpenKeyExW(root, subkey, options, access, key);
      if (code == ERROR_SUCCESS) ++openKeys;
      return code;
    };
    registry->queryValue = [](HKEY key, LPCWSTR name, LPDWORD reserved, LPDWORD type, LPBYTE data,
                              LPDWORD size) -> LSTATUS {
      if (!plan.Fails()) return RegQueryValueExW(key, name, reserved, type, data, size);
      if (data != nullptr) *data = 0xFF;  // a failure may leave anything behind
      return ERROR_NOT_ENOUGH_MEMORY;
    };
    registry->closeKey = [](HKEY key) -> LSTATUS {
      --openKeys;
      return RegCloseKey(key);
    };
    registry->tickCount = [] { return ticks; };
  }

  // `read` gives `value`, and when its n-th call fails `defaultValue`, with the n-th of `lines` in the log.
  static void Loop(const std::function<DWORD()>& read, DWORD value, DWORD defaultValue,
                   const std::vector<Lines>& lines) {
    for (const FaultPlan::Mode mode : {FaultPlan::Mode::Once, FaultPlan::Mode::FromThenOn}) {
      for (size_t fault = 0; fault <= lines.size(); ++fault) {
        SCOPED_TRACE(testing::Message() << "call " << fault << (mode == FaultPlan::Mode::Once ? "" : " and later"));
        const bool hit = fault < lines.size();
        const LogCapture log;
        ticks += kKeptMilliseconds;
        SetLastError(ERROR_SUCCESS);
        plan.Arm(static_cast<int>(fault) + 1, mode);
        EXPECT_EQ(read(), hit ? defaultValue : value);
        EXPECT_EQ(plan.WasHit(), hit);
        EXPECT_THAT(log.Messages(), ElementsAreArray(hit ? lines[fault] : Lines()));
        EXPECT_EQ(openKeys, 0) << "What was opened is closed.";

        ticks += kKeptMilliseconds;
        plan.Arm(0, mode);
        EXPECT_EQ(read(), value) << "Nothing is left of the fault.";
      }
    }
  }

  inline static FaultPlan plan;
  inline static int openKeys = 0;
  inline static ULONGLONG ticks = 86'400'000;
  const Substituted<RegistryPlatform> registry{registryPlatform};
  TestRegistryKey client{HKEY_LOCAL_MACHINE, kClientKey};
  TestRegistryKey install{HKEY_LOCAL_MACHINE, kCurrentInstallKey};
  TestRegistryKey user{HKEY_CURRENT_USER, kCurrentInstallKey};
};

TEST_F(RegistryFaults, GiveTraceLevel4) {
  client.SetDword(kTraceLevelValue, 2);
  Loop(GetTraceLevel, 2, 4,
       {{OpenError(LR"(HKLM\Software\Ostrel\Wayline)")},
        {QueryError(L"read enum", LR"(HKLM\Software\Ostrel\Wayline\TraceLevel)")}});
}

TEST_F(RegistryFaults, GiveNoTraceFlags) {
  user.SetDword(kTraceFlagsValue, 0x10001);
  InOwnProcess([] {
    Loop(GetTraceFlags, 0x10001, 0,
         {{OpenError(LR"(HKCU\Software\Ostrel\Wayline\CurrentInstall)")},
          {QueryError(L"read DWORD32", LR"(HKCU\Software\Ostrel\Wayline\CurrentInstall\TraceFlags)")}});
  });
}

TEST_F(RegistryFaults, GiveTheSystemAccountNoTraceFlags) {
  user.SetDword(kTraceFlagsValue, 0x10001);
  const std::wstring name = CurrentUserName();
  std::wstring sid;
  ASSERT_EQ(UserNameToSidString(name, sid), DWORD{ERROR_SUCCESS});
  client.SetString(kLoggedOnUserValue, name);
  const Substituted accounts(accountPlatform);
  accounts->getUserName = [](LPWSTR out, LPDWORD) -> BOOL { return std::wcscpy(out, L"SYSTEM"), TRUE; };
  InOwnProcess([&sid] {
    const std::wstring lastError = SystemErrorText(ERROR_SUCCESS);
    const std::wstring userValue = LR"(HKLM\Software\Ostrel\Wayline\LoggedOnUser)";
    const std::wstring usersKey = Format(LR"(HKU\{}\Software\Ostrel\Wayline\CurrentInstall)", sid);
    Loop(GetTraceFlags, 0x10001, 0,
         {{OpenError(LR"(HKLM\Software\Ostrel\Wayline)"), Trace(L"OpenKey failed! " + lastError)},
          {QueryError(L"get size read wstring", userValue), Trace(L"ReadValue failed! " + lastError)},
          {QueryError(L"read wstring", userValue), Trace(L"ReadValue failed! " + lastError)},
          {OpenError(usersKey)},
          {QueryError(L"read DWORD32", usersKey + L"\\TraceFlags")}});
  });
}

TEST_F(RegistryFaults, SwitchTheDebugOutputOff) {
  install.SetDword(kDebugOutputValue, 1);
  InOwnProcess([] {
    Loop([] { return DWORD{IsDebugOutputEnabled()}; }, 1, 0,
         {{OpenError(LR"(HKLM\Software\Ostrel\Wayline\CurrentInstall)")},
          {QueryError(L"read DWORD32", LR"(HKLM\Software\Ostrel\Wayline\CurrentInstall\DebugOutput)")}});
  });
}

TEST_F(RegistryFaults, MakeACrashDumpANormalOne) {
  static std::wstring programData;
  static DWORD written;
  const TemporaryFolder folder;
  programData = folder.Path().wstring();
  create_directories(folder.Path() / L"Ostrel" / L"Wayline");
  client.SetDword(kDumpTypeValue, MiniDumpWithHandleData);
  const Substituted crash(crashPlatform);
  crash->folderPath = [](HWND, int, HANDLE, DWORD, LPWSTR out) -> HRESULT {
    return std::wcscpy(out, programData.c_str()), S_OK;
  };
  crash->writeDump = [](HANDLE, DWORD, HANDLE, MINIDUMP_TYPE type, PMINIDUMP_EXCEPTION_INFORMATION,
                        PMINIDUMP_USER_STREAM_INFORMATION, PMINIDUMP_CALLBACK_INFORMATION) -> BOOL {
    written = type;
    return TRUE;
  };
  const auto dumpType = [] {
    constexpr DWORD kNone = 0xFFFFFFFF;
    written = kNone;
    WriteCrashDump(nullptr);
    return written;
  };
  Loop(dumpType, MiniDumpWithHandleData, MiniDumpNormal,
       {{OpenError(LR"(HKLM\Software\Ostrel\Wayline)")},
        {QueryError(L"read DWORD32", LR"(HKLM\Software\Ostrel\Wayline\DumpType)")}});
}

}  // namespace
