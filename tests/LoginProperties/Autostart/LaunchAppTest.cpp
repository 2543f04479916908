// Programs, documents and folders as they are really started, by a small program that writes down how it was.

#include "LoginProperties/Autostart/LaunchApp.h"

#include <windows.h>

#include <gmock/gmock.h>
#include <shobjidl.h>

#include <filesystem>
#include <string>
#include <vector>

#include "LoginProperties/Autostart/BrowserRules.h"
#include "LoginProperties/Autostart/LaunchPlatform.h"
#include "NetUtilities/Text/Utf8.h"
#include "tests/support/LaunchRecord.h"
#include "tests/support/LogCapture.h"
#include "tests/support/Substituted.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TestRegistryKey.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class LaunchAppTest : public testing::Test {
 protected:
  // What the program writes down that was started last; waits for it.
  const LaunchRecord& Record() {
    record_.Take();
    return record_;
  }

  // A copy of the program in a folder of the test.
  RegAppItem ProgramIn(const std::wstring& folder, const std::wstring& name) const {
    std::filesystem::create_directory(folder_.Path() / folder);
    const std::filesystem::path copy = folder_.Path() / folder / name;
    std::filesystem::copy_file(LaunchRecord::Program(), copy);
    return {.command = copy.wstring()};
  }

  const Substituted<LaunchPlatform> platform_{launchPlatform};
  LogCapture log_;
  TemporaryFolder folder_;
  LaunchRecord record_;
  const RegAppItem program_{.command = LaunchRecord::Program().wstring()};
};

std::vector<std::wstring> activations;  // application, arguments and options of each
HRESULT activationResult = S_OK;

// Lives as long as the test program.
class Activation final : public IApplicationActivationManager {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** object) override { return *object = nullptr, E_NOINTERFACE; }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override { return --references_; }

  ULONG References() const { return references_; }

  HRESULT STDMETHODCALLTYPE ActivateApplication(LPCWSTR application, LPCWSTR arguments, ACTIVATEOPTIONS options,
                                                DWORD* process) override {
    *process = 0;
    activations.insert(activations.end(), {application, arguments, std::to_wstring(options)});
    return activationResult;
  }
  HRESULT STDMETHODCALLTYPE ActivateForFile(LPCWSTR, IShellItemArray*, LPCWSTR, DWORD*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE ActivateForProtocol(LPCWSTR, IShellItemArray*, DWORD*) override { return E_NOTIMPL; }

 private:
  ULONG references_ = 0;
};

Activation activation;

HRESULT WINAPI MakeActivation(REFCLSID classId, IUnknown*, DWORD, REFIID interfaceId, void** object) {
  EXPECT_EQ(classId, __uuidof(ApplicationActivationManager));
  EXPECT_EQ(interfaceId, __uuidof(IApplicationActivationManager));
  activation.AddRef();
  *object = static_cast<IApplicationActivationManager*>(&activation);
  return S_OK;
}

RegAppItem Edge() {
  std::vector<RegAppItem> browsers;
  AddEdge(browsers);
  return browsers.at(0);
}

FILETIME Now() {
  FILETIME time{};
  GetSystemTimeAsFileTime(&time);
  return time;
}

}  // namespace

TEST_F(LaunchAppTest, StartsAProgramWithItsParametersInItsDirectory) {
  ASSERT_TRUE(LaunchApp(program_, SW_SHOWNORMAL, L"/quiet one", folder_.Path().c_str()));
  const LaunchRecord& record = Record();
  EXPECT_THAT(record.Texts("argument"), ElementsAre(L"/quiet", L"one"));
  EXPECT_TRUE(std::filesystem::equivalent(record.Text("directory"), folder_.Path()));
  EXPECT_THAT(log_.Messages(), IsEmpty());
}

TEST_F(LaunchAppTest, HandsOverParametersWithBlanksAndQuotesWhole) {
  constexpr wchar_t kParameters[] = LR"("two words" say=\"hi\"  & | > %PATH% ^x ä€)";
  ASSERT_TRUE(LaunchApp(program_, SW_SHOWNORMAL, kParameters));
  const LaunchRecord& record = Record();
  EXPECT_TRUE(record.Text("command").ends_with(kParameters)) << ToUtf8(record.Text("command"));
  EXPECT_THAT(record.Texts("argument"),
              ElementsAre(L"two words", L"say=\"hi\"", L"&", L"|", L">", L"%PATH%", L"^x", L"ä€"));
}

TEST_F(LaunchAppTest, StartsAProgramWhosePathHasBlanks) {
  const RegAppItem program = ProgramIn(L"folder with blanks", L"a program.exe");
  ASSERT_TRUE(LaunchApp(program, SW_SHOWNORMAL, L"one"));
  EXPECT_THAT(Record().Texts("argument"), ElementsAre(L"one"));
}

TEST_F(LaunchAppTest, StartsWithoutParametersAndDirectory) {
  ASSERT_TRUE(LaunchApp(program_, SW_SHOWNORMAL));
  const LaunchRecord& record = Record();
  EXPECT_THAT(record.Texts("argument"), IsEmpty());
  EXPECT_TRUE(std::filesystem::equivalent(record.Text("directory"), std::filesystem::current_path()));
}

TEST_F(LaunchAppTest, TakesAnEmptyDirectoryForNone) {
  ASSERT_TRUE(LaunchApp(program_, SW_SHOWNORMAL, L"", L""));
  EXPECT_TRUE(std::filesystem::equivalent(Record().Text("directory"), std::filesystem::current_path()));
}

TEST_F(LaunchAppTest, ShowsTheWindowAsItIsTold) {
  for (const int show : {SW_SHOWNORMAL, SW_SHOWMAXIMIZED, SW_SHOWMINIMIZED}) {
    ASSERT_TRUE(LaunchApp(program_, show));
    EXPECT_EQ(Record().Text("show"), std::to_wstring(show));
  }
}

TEST_F(LaunchAppTest, StartsTheProgramItself) {
  ASSERT_TRUE(LaunchApp(program_, SW_SHOWNORMAL));
  EXPECT_EQ(Record().Text("parent"), std::to_wstring(GetCurrentProcessId())) << "nothing stands in between";
}

TEST_F(LaunchAppTest, HandsOverTheEnvironment) {
  SetEnvironmentVariableW(L"PAVISE_LAUNCH_TEST", L"a value");
  ASSERT_TRUE(LaunchApp(program_, SW_SHOWNORMAL));
  SetEnvironmentVariableW(L"PAVISE_LAUNCH_TEST", nullptr);
  EXPECT_EQ(Record().Text("variable"), L"a value");
}

TEST_F(LaunchAppTest, OpensADocumentWithItsProgram) {
  TestRegistryKey extension(HKEY_CLASSES_ROOT, L".pavisetest");
  extension.SetString(L"", L"PaviseTestDocument");
  TestRegistryKey command(HKEY_CLASSES_ROOT, LR"(PaviseTestDocument\shell\open\command)");
  command.SetString(L"", L'"' + program_.command + LR"(" "%1")");
  const std::wstring document = folder_.File(L"a document.pavisetest");
  std::ofstream(std::filesystem::path(document)) << "text";
  ASSERT_TRUE(LaunchApp({.command = document}, SW_SHOWNORMAL));
  const auto arguments = Record().Texts("argument");
  ASSERT_EQ(arguments.size(), 1u);
  EXPECT_TRUE(std::filesystem::equivalent(arguments[0], document));
}

TEST_F(LaunchAppTest, AsksTheShellToOpenWhatItIsGiven) {
  static std::vector<std::wstring> texts;
  static SHELLEXECUTEINFOW asked;
  platform_->shellExecute = [](SHELLEXECUTEINFOW* info) -> BOOL {
    asked = *info;
    texts = {info->lpVerb, info->lpFile, info->lpParameters, info->lpDirectory};
    return TRUE;
  };
  EXPECT_TRUE(LaunchApp({.command = LR"(C:\Some Folder)"}, SW_SHOWMAXIMIZED, nullptr, L"D:\\"));
  EXPECT_THAT(texts, ElementsAre(L"open", LR"(C:\Some Folder)", L"", L"D:\\"));
  EXPECT_EQ(asked.cbSize, sizeof(asked));
  EXPECT_EQ(asked.nShow, SW_SHOWMAXIMIZED);
  EXPECT_TRUE(asked.fMask & SEE_MASK_FLAG_NO_UI) << "the shell must not ask the user";
}

TEST_F(LaunchAppTest, SaysThatNothingWasStarted) {
  EXPECT_FALSE(LaunchApp({.command = folder_.File(L"missing.exe")}, SW_SHOWNORMAL));
  EXPECT_FALSE(LaunchApp({}, SW_SHOWNORMAL));
  EXPECT_THAT(log_.Messages(), IsEmpty());
}

TEST_F(LaunchAppTest, TellsTheTimeJustBeforeTheStart) {
  static FILETIME time;
  static bool isEarlier;
  time = {};
  platform_->shellExecute = [](SHELLEXECUTEINFOW*) -> BOOL {
    isEarlier = time.dwLowDateTime != 0 && time.dwHighDateTime != 0;
    return FALSE;
  };
  const FILETIME before = Now();
  EXPECT_FALSE(LaunchApp(program_, SW_SHOWNORMAL, nullptr, nullptr, &time));
  const FILETIME after = Now();
  EXPECT_TRUE(isEarlier) << "also when nothing is started";
  EXPECT_LE(CompareFileTime(&before, &time), 0);
  EXPECT_LE(CompareFileTime(&time, &after), 0);
}

TEST_F(LaunchAppTest, ActivatesEdgeWithTheParametersAlone) {
  platform_->createInstance = MakeActivation;
  platform_->shellExecute = [](SHELLEXECUTEINFOW*) -> BOOL {
    ADD_FAILURE() << "Edge is no file";
    return FALSE;
  };
  activations.clear();
  activationResult = S_OK;
  EXPECT_TRUE(LaunchApp(Edge(), SW_SHOWMAXIMIZED, L"https://example.com", L"C:\\"));
  EXPECT_TRUE(LaunchApp(Edge(), SW_SHOWNORMAL));
  constexpr wchar_t kApplication[] = L"Microsoft.MicrosoftEdge_8wekyb3d8bbwe!MicrosoftEdge";
  EXPECT_THAT(activations, ElementsAre(kApplication, L"https://example.com", L"0", kApplication, L"", L"0"));
  activationResult = E_FAIL;
  EXPECT_FALSE(LaunchApp(Edge(), SW_SHOWNORMAL));
  EXPECT_EQ(activation.References(), 0u);
}

TEST_F(LaunchAppTest, SaysThatEdgeCannotBeActivated) {
  platform_->createInstance = [](REFCLSID, IUnknown*, DWORD, REFIID, void** object) -> HRESULT {
    return *object = nullptr, REGDB_E_CLASSNOTREG;
  };
  EXPECT_FALSE(LaunchApp(Edge(), SW_SHOWNORMAL));
}
