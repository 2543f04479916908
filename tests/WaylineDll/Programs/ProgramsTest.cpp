// The programs of the machine, registered and linked for the test.

#include "WaylineDll/Programs.h"

#include <windows.h>

#include <gmock/gmock.h>
#include <shlobj.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "NetUtilities/Text/Utf8.h"
#include "tests/support/LibraryLogService.h"
#include "tests/support/RegisteredService.h"
#include "tests/support/ServiceLog.h"
#include "tests/support/StartMenuFolder.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TestRegistryKey.h"

namespace {

using testing::AllOf;
using testing::Contains;
using testing::Field;
using testing::Not;

constexpr wchar_t kUninstall[] = LR"(Software\Microsoft\Windows\CurrentVersion\Uninstall\)";
constexpr wchar_t kAppPaths[] = LR"(Software\Microsoft\Windows\CurrentVersion\App Paths\)";

class ProgramsTest : public testing::Test {
 protected:
  // A file that is there.
  std::wstring MakeFile(const std::wstring& name) const {
    std::ofstream(folder_.Path() / name) << "text";
    return folder_.File(name);
  }

  const LibraryLogService service_;  // what else the machine has installed is logged too
  const ServiceLog& log_ = service_.Log();
  TemporaryFolder folder_;
};

// A program of the list; what is not named is whatever it is.
auto IsProgram(const std::wstring& name, const std::wstring& file, const std::wstring& parameters = {},
               Program::Kind kind = Program::Kind::Application) {
  return AllOf(Field(&Program::name, name), Field(&Program::path, file), Field(&Program::parameters, parameters),
               Field(&Program::kind, kind));
}

auto HasName(const std::wstring& name) { return Field(&Program::name, name); }

std::wstring InstallDirectory(std::wstring program, uint32_t size) {
  std::wstring directory(size, L'#');
  GetProgInstallDirStr(program.data(), static_cast<uint32_t>(program.size() + 1), directory.data(), size);
  directory.resize(directory.find(L'\0'));
  return directory;
}

}  // namespace

TEST_F(ProgramsTest, AreThoseThatTheStartMenusLeadTo) {
  const std::wstring program = MakeFile(L"linked.exe");
  const std::wstring document = MakeFile(L"read me.txt");
  const StartMenuFolder own(FOLDERID_Programs);
  const StartMenuFolder common(FOLDERID_CommonPrograms);
  own.AddLink(L"Pavise linked", program, L"/one \"two three\"");
  common.AddLink(L"Pavise document", document);
  own.AddFile(L"inner\\Pavise page.url", "[InternetShortcut]\r\nURL=https://example.com/pavise?a=b\r\n");
  const auto programs = LoadInstalledProgramList();
  EXPECT_THAT(programs, Contains(IsProgram(L"Pavise linked", program, L"/one \"two three\"")));
  EXPECT_THAT(programs, Contains(IsProgram(L"Pavise document", document, L"", Program::Kind::Document)));
  EXPECT_THAT(programs,
              Contains(IsProgram(L"Pavise page", L"", L"https://example.com/pavise?a=b", Program::Kind::Web)));
}

TEST_F(ProgramsTest, AreThoseThatAreRegisteredForTheMachineAndTheUser) {
  const std::wstring program = MakeFile(L"product.exe");
  const std::wstring other = MakeFile(L"other.exe");
  const std::wstring third = MakeFile(L"third.exe");
  TestRegistryKey product(HKEY_LOCAL_MACHINE, kUninstall + std::wstring(L"PaviseTest"));
  product.SetString(L"DisplayName", L"Pavise product");
  product.SetString(L"DisplayIcon", L'"' + program + L"\",0");
  TestRegistryKey narrow(HKEY_LOCAL_MACHINE,
                         LR"(Software\WOW6432Node\Microsoft\Windows\CurrentVersion\Uninstall\PaviseTest)");
  narrow.SetString(L"DisplayName", L"Pavise narrow");
  narrow.SetString(L"DisplayIcon", other);
  TestRegistryKey appPath(HKEY_CURRENT_USER, kAppPaths + std::wstring(L"pavise-third.exe"));
  appPath.SetString(L"", L'"' + third + L'"');
  const auto programs = LoadInstalledProgramList();
  EXPECT_THAT(programs, Contains(IsProgram(L"Pavise product", program)));
  EXPECT_THAT(programs, Contains(IsProgram(L"Pavise narrow", other)));
  EXPECT_THAT(programs, Contains(IsProgram(L"pavise-third", third)));
}

TEST_F(ProgramsTest, AreFoundThroughVariables) {
  MakeFile(L"product.exe");
  SetEnvironmentVariableW(L"PAVISE_TEST_FOLDER", folder_.Path().c_str());
  TestRegistryKey appPath(HKEY_LOCAL_MACHINE, kAppPaths + std::wstring(L"pavise-test.exe"));
  constexpr wchar_t kText[] = LR"(%PAVISE_TEST_FOLDER%\product.exe)";
  appPath.Set(L"", REG_EXPAND_SZ, kText, sizeof(kText));
  EXPECT_THAT(LoadInstalledProgramList(), Contains(IsProgram(L"pavise-test", folder_.File(L"product.exe"))));
  SetEnvironmentVariableW(L"PAVISE_TEST_FOLDER", nullptr);
}

TEST_F(ProgramsTest, AreOfferedOnceByTheirNameInTheStartMenu) {
  const std::wstring program = MakeFile(L"product.exe");
  TestRegistryKey product(HKEY_LOCAL_MACHINE, kUninstall + std::wstring(L"PaviseTest"));
  product.SetString(L"DisplayName", L"Pavise product 1.0");
  product.SetString(L"DisplayIcon", folder_.File(L"PRODUCT.exe"));
  const StartMenuFolder menu(FOLDERID_CommonPrograms);
  menu.AddLink(L"Pavise", program);
  const auto programs = LoadInstalledProgramList();
  EXPECT_THAT(programs, Contains(IsProgram(L"Pavise", program)));
  EXPECT_THAT(programs, Not(Contains(HasName(L"Pavise product 1.0"))));
}

TEST_F(ProgramsTest, AreInTheOrderInWhichListsShowThem) {
  const StartMenuFolder menu(FOLDERID_Programs);
  for (const wchar_t* name : {L"pavise b", L"Pavise C", L"Pavise A", L"pavise Ä"}) {
    menu.AddLink(name, MakeFile(name + std::wstring(L".exe")));
  }
  std::vector<std::wstring> names;
  for (const Program& program : LoadInstalledProgramList()) {
    if (program.name.substr(1, 6) == L"avise ") names.push_back(program.name);
  }
  EXPECT_THAT(names, testing::ElementsAre(L"Pavise A", L"pavise Ä", L"pavise b", L"Pavise C"));
}

TEST_F(ProgramsTest, AreWithoutWhatNobodyCanStartWhichIsLogged) {
  const std::wstring remover = MakeFile(L"remove.exe");
  const StartMenuFolder menu(FOLDERID_Programs);
  menu.AddLink(L"Pavise broken", folder_.File(L"gone.exe"));
  menu.AddFile(L"Pavise garbage.lnk", "this is no link");
  menu.AddFile(L"Pavise nowhere.url", "[InternetShortcut]\r\n");
  TestRegistryKey number(HKEY_LOCAL_MACHINE, kUninstall + std::wstring(L"PaviseTest1"));
  number.SetString(L"DisplayName", L"Pavise number");
  number.SetDword(L"DisplayIcon", 1);
  TestRegistryKey gone(HKEY_LOCAL_MACHINE, kUninstall + std::wstring(L"PaviseTest2"));
  gone.SetString(L"DisplayName", L"Pavise gone");
  gone.SetString(L"DisplayIcon", folder_.File(L"gone.exe"));
  TestRegistryKey removed(HKEY_LOCAL_MACHINE, kUninstall + std::wstring(L"PaviseTest3"));
  removed.SetString(L"DisplayName", L"Pavise removed");
  removed.SetString(L"DisplayIcon", remover);
  removed.SetString(L"UninstallString", L'"' + remover + L"\" /S");
  TestRegistryKey hidden(HKEY_LOCAL_MACHINE, kUninstall + std::wstring(L"PaviseTest4"));
  hidden.SetString(L"DisplayName", L"Pavise hidden");
  hidden.SetString(L"DisplayIcon", remover);
  hidden.SetDword(L"SystemComponent", 1);
  for (const Program& program : LoadInstalledProgramList()) {
    EXPECT_FALSE(program.name.starts_with(L"Pavise")) << program.name.c_str();
  }
  EXPECT_TRUE(log_.Has("Pavise broken.lnk leads to nothing that is there: "));
  EXPECT_TRUE(log_.Has("Pavise garbage.lnk cannot be read Error "));
  EXPECT_TRUE(log_.Has("Pavise nowhere.url has no address of a web page: "));
  EXPECT_TRUE(log_.Has(R"(Uninstall\PaviseTest1\DisplayIcon is no text: it is ignored)"));
  EXPECT_TRUE(log_.Has(R"(Uninstall\PaviseTest2 names a program that is missing: )"));
}

TEST_F(ProgramsTest, AreThoseOfTheRegistryWhereTheStartMenusCannotBeRead) {
  constexpr wchar_t kFolders[] = LR"(Software\Microsoft\Windows\CurrentVersion\Explorer\User Shell Folders)";
  TestRegistryKey own(HKEY_CURRENT_USER, kFolders);
  own.SetString(L"Programs", MakeFile(L"no folder"));
  TestRegistryKey common(HKEY_LOCAL_MACHINE, kFolders);
  common.SetString(L"Common Programs", folder_.File(L"missing"));
  TestRegistryKey product(HKEY_LOCAL_MACHINE, kUninstall + std::wstring(L"PaviseTest"));
  product.SetString(L"DisplayName", L"Pavise product");
  product.SetString(L"DisplayIcon", MakeFile(L"product.exe"));
  EXPECT_THAT(LoadInstalledProgramList(), Contains(HasName(L"Pavise product")));
  EXPECT_TRUE(log_.Has("The start menu cannot be read in " + ToUtf8(folder_.File(L"no folder")) + " Error 20"));
  EXPECT_TRUE(log_.Has("Failed to get Common Programs folder Error "));
}

TEST_F(ProgramsTest, HaveAFolder) {
  EXPECT_EQ(InstallDirectory(LR"(C:\Program Files\Some\a.exe)", MAX_PATH), LR"(C:\Program Files\Some)");
  EXPECT_EQ(InstallDirectory(LR"("C:\Program Files\Some\a.exe")", MAX_PATH), LR"(C:\Program Files\Some)");
  EXPECT_EQ(InstallDirectory(L"notepad.exe", MAX_PATH), L"");
  EXPECT_EQ(InstallDirectory(L"", MAX_PATH), L"");
}

TEST_F(ProgramsTest, HaveAFolderThatIsCutToTheBuffer) {
  EXPECT_EQ(InstallDirectory(LR"(C:\Some\a.exe)", 8), LR"(C:\Some)");
  EXPECT_EQ(InstallDirectory(LR"(C:\Some\a.exe)", 7), LR"(C:\Som)");
  EXPECT_EQ(InstallDirectory(LR"(C:\Some\a.exe)", 1), L"");
  wchar_t program[] = LR"(C:\Some\a.exe)";
  wchar_t untouched = L'#';
  GetProgInstallDirStr(program, 14, &untouched, 0);
  EXPECT_EQ(untouched, L'#');
  GetProgInstallDirStr(program, 14, nullptr, 5);
  wchar_t directory[MAX_PATH] = L"#";
  GetProgInstallDirStr(nullptr, 0, directory, MAX_PATH);
  EXPECT_STREQ(directory, L"");
  GetProgInstallDirStr(program, 8, directory, MAX_PATH);
  EXPECT_STREQ(directory, LR"(C:\Some)") << "the program ends where its buffer does";
  EXPECT_STREQ(program, LR"(C:\Some\a.exe)");
}

TEST(RegistryString, IsReadByItsPath) {
  TestRegistryKey key(HKEY_LOCAL_MACHINE, LR"(Software\Example\Orders)");
  key.SetString(L"Path", LR"(C:\Orders)");
  key.SetString(L"", L"the default");
  for (const wchar_t* root : {L"HKEY_LOCAL_MACHINE", L"HKLM", L"hkey_local_machine"}) {
    EXPECT_EQ(GetRegistryString(root + std::wstring(LR"(\Software\Example\Orders\Path)")), LR"(C:\Orders)");
  }
  EXPECT_EQ(GetRegistryString(LR"(HKLM\Software\Example\Orders\)"), L"the default");
  TestRegistryKey own(HKEY_CURRENT_USER, LR"(Software\Example)");
  own.SetString(L"Folder", L"mine");
  EXPECT_EQ(GetRegistryString(LR"(HKEY_CURRENT_USER\Software\Example\Folder)"), L"mine");
  TestRegistryKey classes(HKEY_CLASSES_ROOT, L"PaviseTestPage");
  classes.SetString(L"Folder", L"class");
  EXPECT_EQ(GetRegistryString(LR"(HKCR\PaviseTestPage\Folder)"), L"class");
}

TEST(RegistryString, IsEmptyWhereNoneIs) {
  const RegisteredService service;
  const ServiceLog log;
  TestRegistryKey key(HKEY_CURRENT_USER, LR"(Software\Example)");
  key.SetDword(L"Number", 5);
  for (const wchar_t* path : {LR"(HKCU\Software\Example\Number)", LR"(HKCU\Software\Example\Missing)",
                              LR"(HKCU\Software\Example\Missing\Value)", L"HKCU", L""}) {
    EXPECT_EQ(GetRegistryString(path), L"");
  }
  EXPECT_EQ(GetRegistryString(LR"(HKEY_NOWHERE\Software\Value)"), L"");
  EXPECT_TRUE(log.Has(R"(HKEY_NOWHERE\Software\Value names no value of the registry)"));
}

TEST(CommandLineSubstitution, ReplacesAVariable) {
  std::wstring text = LR"(%WINDIR%\x)";
  SubstituteCommandLineStringS(text, L"%windir%", LR"(C:\Windows)", false);
  EXPECT_EQ(text, LR"(C:\Windows\x)");
}

TEST(CommandLineSubstitution, TakesAVariableAwayOnlyWhenItIsTold) {
  std::wstring text = L"a %BrowserMode% b";
  SubstituteCommandLineStringS(text, L"%BrowserMode%", L"", false);
  EXPECT_EQ(text, L"a %BrowserMode% b");
  SubstituteCommandLineStringS(text, L"%BrowserMode%", L"", true);
  EXPECT_EQ(text, L"a  b");
}
