#include "NetUtilities/ClientVersion.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <filesystem>

#include "NetUtilities/FileVersion.h"
#include "NetUtilities/RegistryNames.h"
#include "tests/support/OwnProcess.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TestRegistryKey.h"

namespace {

using std::filesystem::path;

path ThisProgram() {
  wchar_t file[MAX_PATH];
  return std::wstring(file, GetModuleFileNameW(nullptr, file, MAX_PATH));
}

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

TEST(ClientVersion, IsEmptyWithoutAnInstallDirectoryWhateverTheCurrentOneHolds) {
  TestRegistryKey install(HKEY_LOCAL_MACHINE, kCurrentInstallKey);
  install.Remove(kInstallPathValue);
  wchar_t system[MAX_PATH];
  const UINT length = GetSystemDirectoryW(system, MAX_PATH);
  const path hosted = path(std::wstring(system, length)) / L"ClientVersionTest.exe";
  if (ThisProgram() != hosted) remove(hosted);
  InProcessOf(hosted, [] {
    const TemporaryFolder folder;
    InstallClient(folder.Path());
    const path previous = std::filesystem::current_path();
    std::filesystem::current_path(folder.Path());
    std::wstring inCurrentDirectory;
    EXPECT_NE(GetFileVersionString(kClientFileName, L"ProductVersion", inCurrentDirectory), 0);
    EXPECT_EQ(GetClientVersion(), L"");
    std::filesystem::current_path(previous);
  });
  std::error_code ignored;
  remove(hosted, ignored);
}

}  // namespace
