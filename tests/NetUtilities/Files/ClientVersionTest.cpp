#include "NetUtilities/Files/ClientVersion.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <filesystem>

#include "NetUtilities/Files/FileVersion.h"
#include "NetUtilities/Registry/RegistryNames.h"
#include "tests/support/OwnProcess.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TestRegistryKey.h"
#include "tests/support/ThisProgram.h"

namespace {

using std::filesystem::path;

// Puts the real client, which is found in the search path, into a folder.
void InstallClient(const path& folder) {
  wchar_t file[MAX_PATH];
  const DWORD length = SearchPathW(nullptr, kClientFileName, nullptr, MAX_PATH, file, nullptr);
  copy_file(std::wstring(file, length), folder / kClientFileName);
}

// Runs `body` in a process whose executable is a copy of this one at `program`.
void InProcessOf(const path& program, const std::function<void()>& body) {
  if (ThisProgram() != program) copy_file(ThisProgram(), program);
  InOwnProcess(body, {.program = program.wstring()});
}

TEST(ClientVersion, IsThatOfTheClientBesideTheProgram) {
  const TemporaryFolder folder;
  InstallClient(folder.Path());
  InProcessOf(folder.File(L"Program.exe"), [] { EXPECT_EQ(GetClientVersion(), CLIENT_VERSION); });
}

TEST(ClientVersion, IsEmptyWithoutAClientBesideTheProgram) {
  const TemporaryFolder folder;
  InProcessOf(folder.File(L"Program.exe"), [] { EXPECT_EQ(GetClientVersion(), L""); });
}

// As InProcessOf, with a program in the System folder.
void InHostProcess(const std::function<void()>& body) {
  wchar_t system[MAX_PATH];
  const UINT length = GetSystemDirectoryW(system, MAX_PATH);
  const path host = path(std::wstring(system, length)) / L"ClientVersionTest.exe";
  if (ThisProgram() != host) remove(host);
  InProcessOf(host, body);
  std::error_code ignored;
  remove(host, ignored);
}

TEST(ClientVersion, OfAHostIsThatOfTheClientThatTheRegistryNames) {
  const TemporaryFolder folder;
  InstallClient(folder.Path());
  TestRegistryKey install(HKEY_LOCAL_MACHINE, kCurrentInstallKey);
  install.SetString(kInstallPathValue, folder.Path().wstring() + L'\\');
  InHostProcess([] { EXPECT_EQ(GetClientVersion(), CLIENT_VERSION); });
}

TEST(ClientVersion, IsEmptyWithoutAnInstallDirectoryWhateverTheCurrentOneHolds) {
  TestRegistryKey install(HKEY_LOCAL_MACHINE, kCurrentInstallKey);
  install.Remove(kInstallPathValue);
  InHostProcess([] {
    const TemporaryFolder folder;
    InstallClient(folder.Path());
    const path previous = std::filesystem::current_path();
    std::filesystem::current_path(folder.Path());
    std::wstring inCurrentDirectory;
    EXPECT_NE(GetFileVersionString(kClientFileName, L"ProductVersion", inCurrentDirectory), 0);
    EXPECT_EQ(GetClientVersion(), L"");
    std::filesystem::current_path(previous);
  });
}

}  // namespace
