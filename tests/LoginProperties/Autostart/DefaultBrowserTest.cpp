// Browsers that are registered on the machine, and which of them is the user's.

#include "LoginProperties/Autostart/DefaultBrowser.h"

#include <windows.h>

#include <gmock/gmock.h>
#include <shobjidl.h>

#include <optional>
#include <string>
#include <utility>

#include "LoginProperties/Autostart/LaunchPlatform.h"
#include "NetUtilities/Registry/RegistryPlatform.h"
#include "tests/support/LogCapture.h"
#include "tests/support/Substituted.h"
#include "tests/support/TestRegistryKey.h"

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Field;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

constexpr wchar_t kList[] = LR"(software\clients\StartMenuInternet)";
constexpr wchar_t kMissing[] = L"RegAppItem GetDefaultBrowserApp(const wchar_t*): Missing a default!";

const RegAppItem kEdge = {.name = L"Microsoft Edge",
                          .command = L"LaunchWinApp.exe",
                          .executable = L"MicrosoftEdge.exe",
                          .urlTemplate = L"microsoft-edge:%s"};

struct Query {
  std::wstring text;
  ASSOCIATIONTYPE type;
  ASSOCIATIONLEVEL level;
  bool operator==(const Query&) const = default;
};

std::vector<Query> queries;
std::wstring answer;  // the identifier that the system has; none when empty

// Lives as long as the test program.
class Associations final : public IApplicationAssociationRegistration {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** object) override { return *object = nullptr, E_NOINTERFACE; }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override { return --references_; }

  ULONG References() const { return references_; }

  HRESULT STDMETHODCALLTYPE QueryCurrentDefault(LPCWSTR text, ASSOCIATIONTYPE type, ASSOCIATIONLEVEL level,
                                                LPWSTR* identifier) override {
    queries.push_back({text, type, level});
    *identifier = nullptr;
    if (answer.empty()) return HRESULT_FROM_WIN32(ERROR_NO_ASSOCIATION);
    const size_t size = (answer.size() + 1) * sizeof(wchar_t);
    *identifier = static_cast<wchar_t*>(CoTaskMemAlloc(size));
    memcpy(*identifier, answer.c_str(), size);
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE QueryAppIsDefault(LPCWSTR, ASSOCIATIONTYPE, ASSOCIATIONLEVEL, LPCWSTR, BOOL*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE QueryAppIsDefaultAll(ASSOCIATIONLEVEL, LPCWSTR, BOOL*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE SetAppAsDefault(LPCWSTR, LPCWSTR, ASSOCIATIONTYPE) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE SetAppAsDefaultAll(LPCWSTR) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE ClearUserAssociations() override { return E_NOTIMPL; }

 private:
  ULONG references_ = 0;
};

Associations associations;

HRESULT WINAPI MakeAssociations(REFCLSID classId, IUnknown*, DWORD, REFIID interfaceId, void** object) {
  EXPECT_EQ(classId, __uuidof(ApplicationAssociationRegistration));
  EXPECT_EQ(interfaceId, __uuidof(IApplicationAssociationRegistration));
  associations.AddRef();
  *object = static_cast<IApplicationAssociationRegistration*>(&associations);
  return S_OK;
}

HRESULT WINAPI MakeNothing(REFCLSID, IUnknown*, DWORD, REFIID, void** object) {
  return *object = nullptr, REGDB_E_CLASSNOTREG;
}

BOOL WINAPI IsWindows10(OSVERSIONINFOEXW* wanted, DWORD parts, DWORDLONG comparison) {
  EXPECT_EQ(wanted->dwOSVersionInfoSize, sizeof(*wanted));
  EXPECT_EQ(wanted->dwMajorVersion, 10u);
  EXPECT_EQ(wanted->dwMinorVersion, 0u);
  EXPECT_EQ(wanted->wServicePackMajor, 0);
  EXPECT_EQ(parts, DWORD{VER_MAJORVERSION | VER_MINORVERSION | VER_SERVICEPACKMAJOR});
  DWORDLONG atLeast = 0;
  atLeast = VerSetConditionMask(atLeast, VER_MAJORVERSION, VER_GREATER_EQUAL);
  atLeast = VerSetConditionMask(atLeast, VER_MINORVERSION, VER_GREATER_EQUAL);
  atLeast = VerSetConditionMask(atLeast, VER_SERVICEPACKMAJOR, VER_GREATER_EQUAL);
  EXPECT_EQ(comparison, atLeast);
  return TRUE;
}

BOOL WINAPI IsOlder(OSVERSIONINFOEXW*, DWORD, DWORDLONG) { return FALSE; }

// A browser in the list of the machine.
class RegisteredBrowser {
 public:
  RegisteredBrowser(const std::wstring& key, const std::wstring& name, const std::wstring& command)
      : key_(HKEY_LOCAL_MACHINE, kList + (L'\\' + key)),
        command_(HKEY_LOCAL_MACHINE, kList + (L'\\' + key + LR"(\shell\open\command)")) {
    key_.SetString(L"", name);
    command_.SetString(L"", command);
  }

 private:
  TestRegistryKey key_;
  TestRegistryKey command_;
};

class DefaultBrowser : public testing::Test {
 protected:
  DefaultBrowser() {
    platform_->createInstance = MakeAssociations;
    platform_->verifyVersion = IsOlder;
    queries.clear();
    answer.clear();
    FindBrowsers();
  }
  ~DefaultBrowser() override { EXPECT_EQ(associations.References(), 0u); }

  // What starts a file or protocol with this identifier.
  void RegisterHandler(const std::wstring& identifier, const std::wstring& command) {
    handler_.emplace(HKEY_CLASSES_ROOT, identifier + LR"(\shell\open\command)").SetString(L"", command);
    answer = identifier;
  }

  const Substituted<LaunchPlatform> platform_{launchPlatform};
  const Substituted<RegistryPlatform> registry_{registryPlatform};
  const AbsentRegistryKey noOthers_{HKEY_LOCAL_MACHINE, kList};
  TestRegistryKey list_{HKEY_LOCAL_MACHINE, kList};
  LogCapture log_;
  std::optional<TestRegistryKey> handler_;
};

}  // namespace

TEST_F(DefaultBrowser, IsLookedForAmongThoseThatAreRegistered) {
  const RegisteredBrowser first(L"A-FIRST", L"First Browser", LR"("C:\Program Files\First\first.exe" --home)");
  const RegisteredBrowser second(L"B-SECOND", L"Second Browser", LR"(C:\Second\second.exe)");
  EXPECT_THAT(FindBrowsers(),
              ElementsAre(RegAppItem{.name = L"First Browser", .command = LR"(C:\Program Files\First\first.exe)"},
                          RegAppItem{.name = L"Second Browser", .command = LR"(C:\Second\second.exe)"}));
  EXPECT_THAT(log_.Messages(), IsEmpty());
}

TEST_F(DefaultBrowser, ListTakesABrowserWithWhatItHas) {
  const TestRegistryKey bare(HKEY_LOCAL_MACHINE, kList + std::wstring(LR"(\BARE)"));
  EXPECT_THAT(FindBrowsers(), ElementsAre(RegAppItem()));
  EXPECT_THAT(log_.Messages(), IsEmpty()) << "what is missing is no failure";
}

TEST_F(DefaultBrowser, ListSaysWhatCannotBeRead) {
  const RegisteredBrowser first(L"FIRST", L"First", LR"(C:\first.exe)");
  registry_->queryValue = [](HKEY, LPCWSTR, LPDWORD, LPDWORD, LPBYTE, LPDWORD) -> LSTATUS {
    return ERROR_ACCESS_DENIED;
  };
  EXPECT_THAT(FindBrowsers(), ElementsAre(RegAppItem()));
  EXPECT_THAT(log_.Messages(), SizeIs(2)) << "name and command";
}

TEST_F(DefaultBrowser, ListIsReadAnewEachTime) {
  EXPECT_THAT(FindBrowsers(), IsEmpty());
  const RegisteredBrowser later(L"LATER", L"Later", LR"(C:\later.exe)");
  EXPECT_THAT(FindBrowsers(), SizeIs(1));
}

TEST_F(DefaultBrowser, ListOffersEdgeOnWindows10ThoughItIsNotRegistered) {
  platform_->verifyVersion = IsWindows10;
  const RegisteredBrowser first(L"FIRST", L"First", LR"(C:\first.exe)");
  EXPECT_THAT(FindBrowsers(), ElementsAre(RegAppItem{.name = L"First", .command = LR"(C:\first.exe)"}, kEdge));
}

TEST_F(DefaultBrowser, ListOffersARegisteredEdgeOnce) {
  platform_->verifyVersion = IsWindows10;
  const RegisteredBrowser edge(L"Microsoft Edge", L"Microsoft Edge", LR"("C:\Edge\msedge.exe")");
  EXPECT_THAT(FindBrowsers(), ElementsAre(RegAppItem{.name = L"Microsoft Edge", .command = LR"(C:\Edge\msedge.exe)"}));
}

TEST_F(DefaultBrowser, ListHasNoEdgeBeforeWindows10) { EXPECT_THAT(FindBrowsers(), Not(Contains(kEdge))); }

TEST_F(DefaultBrowser, IsTheOneWithTheCommandOfTheHandler) {
  const RegisteredBrowser first(L"A-FIRST", L"First", LR"("C:\Program Files\First\first.exe")");
  const RegisteredBrowser second(L"B-SECOND", L"Second", LR"("C:\Program Files\Second\second.exe")");
  FindBrowsers();
  RegisterHandler(L"PaviseTestPage", LR"("c:\program files\second\SECOND.EXE" --single-argument %1)");
  EXPECT_EQ(GetDefaultBrowserApp().name, L"Second");
  EXPECT_THAT(log_.Messages(), IsEmpty());
}

TEST_F(DefaultBrowser, IsFoundThoughTheListWasNotMadeBefore) {
  const RegisteredBrowser first(L"FIRST", L"First", LR"(C:\first.exe)");
  RegisterHandler(L"PaviseTestPage", LR"(C:\first.exe %1)");
  EXPECT_EQ(GetDefaultBrowserApp().name, L"First");
}

TEST_F(DefaultBrowser, IsLookedForInTheListAsItIs) {
  const RegisteredBrowser first(L"FIRST", L"First", LR"(C:\first.exe)");
  FindBrowsers();
  const RegisteredBrowser later(L"LATER", L"Later", LR"(C:\later.exe)");
  RegisterHandler(L"PaviseTestPage", LR"(C:\later.exe %1)");
  EXPECT_EQ(GetDefaultBrowserApp(), RegAppItem());
}

TEST_F(DefaultBrowser, IsEmptyForAHandlerThatIsNoBrowser) {
  const RegisteredBrowser first(L"FIRST", L"First", LR"(C:\first.exe)");
  FindBrowsers();
  RegisterHandler(L"PaviseTestPage", LR"(C:\other.exe %1)");
  EXPECT_EQ(GetDefaultBrowserApp(), RegAppItem());
  EXPECT_THAT(log_.Messages(), IsEmpty());
}

TEST_F(DefaultBrowser, IsAskedForByProtocolOrExtension) {
  GetDefaultBrowserApp();
  GetDefaultBrowserApp(L"");
  GetDefaultBrowserApp(L"https");
  GetDefaultBrowserApp(L".html");
  EXPECT_THAT(
      queries,
      ElementsAre(Query{L"http", AT_URLPROTOCOL, AL_EFFECTIVE}, Query{L"http", AT_URLPROTOCOL, AL_EFFECTIVE},
                  Query{L"https", AT_URLPROTOCOL, AL_EFFECTIVE}, Query{L".html", AT_FILEEXTENSION, AL_EFFECTIVE}));
}

TEST_F(DefaultBrowser, IsThereForProtocolsOfAtMost14Characters) {
  GetDefaultBrowserApp(L"abcdefghijklmn");
  EXPECT_THAT(queries, ElementsAre(Query{L"abcdefghijklmn", AT_URLPROTOCOL, AL_EFFECTIVE}));
  EXPECT_EQ(GetDefaultBrowserApp(L"abcdefghijklmno"), RegAppItem());
  EXPECT_THAT(queries, SizeIs(1));
}

TEST_F(DefaultBrowser, IsInternetExplorerWithoutALookInTheRegistry) {
  const RegisteredBrowser explorer(L"IE", L"Internet Explorer",
                                   LR"("C:\Program Files\Internet Explorer\iexplore.exe")");
  FindBrowsers();
  answer = L"IEXPLORE.EXE";
  registry_->openKey = [](HKEY, LPCWSTR subkey, DWORD, REGSAM, PHKEY) -> LSTATUS {
    ADD_FAILURE() << "looked for a key";
    return subkey != nullptr ? ERROR_FILE_NOT_FOUND : ERROR_INVALID_PARAMETER;
  };
  EXPECT_EQ(GetDefaultBrowserApp().name, L"Internet Explorer");
}

TEST_F(DefaultBrowser, IsKnownByTheFirst260CharactersOfItsIdentifier) {
  const std::wstring start(255, L'x');
  const RegisteredBrowser browser(L"LONG", L"Long", start + L"iexplorer");
  FindBrowsers();
  answer = start + L"iexplore.exe";
  EXPECT_EQ(GetDefaultBrowserApp(), RegAppItem()) << "what makes it a command is cut off";
}

TEST_F(DefaultBrowser, ThatIsMissingIsLoggedAndTheListReadAnew) {
  const RegisteredBrowser first(L"FIRST", L"First", LR"(C:\first.exe)");
  FindBrowsers();
  const RegisteredBrowser later(L"LATER", L"Later", LR"(C:\later.exe)");
  EXPECT_EQ(GetDefaultBrowserApp(), RegAppItem());
  EXPECT_THAT(log_.Messages(), ElementsAre(LogCapture::Message{LogSource::General, LogLevel::Error, kMissing}));
  RegisterHandler(L"PaviseTestPage", LR"(C:\later.exe %1)");
  EXPECT_EQ(GetDefaultBrowserApp().name, L"Later");
}

TEST_F(DefaultBrowser, IsMissingWithoutACommand) {
  RegisterHandler(L"PaviseTestPage", L"");
  EXPECT_EQ(GetDefaultBrowserApp(), RegAppItem());
  answer = L"PaviseTestPageThatIsNotThere";
  EXPECT_EQ(GetDefaultBrowserApp(), RegAppItem());
  EXPECT_THAT(log_.Messages(),
              ElementsAre(Field(&LogCapture::Message::text, kMissing), Field(&LogCapture::Message::text, kMissing)));
}

TEST_F(DefaultBrowser, IsMissingWhereTheSystemCannotBeAsked) {
  platform_->createInstance = MakeNothing;
  EXPECT_EQ(GetDefaultBrowserApp(), RegAppItem());
  EXPECT_THAT(log_.Messages(), ElementsAre(Field(&LogCapture::Message::text, kMissing)));
}

TEST_F(DefaultBrowser, IsWhatTheSystemSays) {
  platform_->createInstance = CoCreateInstance;
  const RegisteredBrowser first(L"FIRST", L"First", LR"("C:\Program Files\First\first.exe")");
  FindBrowsers();
  RegisterHandler(L"PaviseTestPage", LR"("C:\Program Files\First\first.exe" %1)");
  TestRegistryKey choice(HKEY_CURRENT_USER,
                         LR"(Software\Microsoft\Windows\Shell\Associations\UrlAssociations\)"
                         LR"(pavisetest\UserChoice)");
  choice.SetString(L"ProgId", L"PaviseTestPage");
  EXPECT_EQ(GetDefaultBrowserApp(L"pavisetest").name, L"First");
}
