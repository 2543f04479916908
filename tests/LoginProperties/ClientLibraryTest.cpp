#include "LoginProperties/ClientLibrary.h"

#include <gmock/gmock.h>

#include <set>

#include "NetUtilities/Text/ErrorText.h"
#include "tests/support/LogCapture.h"
#include "WaylineDll/ActiveProfile.h"
#include "WaylineDll/StringDb.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr unsigned kProductName = 100;  // a string of the client library itself
constexpr wchar_t kNotLoaded[] = L"LoadString_Db function not loaded from module";

std::wstring FakeLoadStringDb(ModuleId module, unsigned id, bool reserved) {
  return std::to_wstring(static_cast<unsigned>(module)) + L' ' + std::to_wstring(id) +
         (reserved ? L" true" : L" false");
}

// A made-up client library, and what has been done with it.
struct FakeLibrary {
  bool exists = true;
  std::set<std::string> symbols;  // that it has; all of them are FakeLoadStringDb
  DWORD lastError = 0;            // after a failure
  int loaded = 0;
  int freed = 0;
  std::wstring file;
  std::vector<std::string> soughtSymbols;
};
FakeLibrary library;

const HMODULE kModule = reinterpret_cast<HMODULE>(&library);

HMODULE WINAPI Load(LPCWSTR file) {
  library.file = file;
  ++library.loaded;
  SetLastError(library.lastError);
  return library.exists ? kModule : nullptr;
}

FARPROC WINAPI Find(HMODULE module, LPCSTR symbol) {
  EXPECT_EQ(module, kModule);
  library.soughtSymbols.push_back(symbol);
  SetLastError(library.lastError);
  if (!library.symbols.contains(symbol)) return nullptr;
  return reinterpret_cast<FARPROC>(reinterpret_cast<void*>(&FakeLoadStringDb));
}

BOOL WINAPI Free(HMODULE module) {
  EXPECT_EQ(module, kModule);
  ++library.freed;
  return TRUE;
}

constexpr char kLoadStringDb[] = "_Z12LoadStringDbB5cxx118ModuleIdjb";
constexpr char kGetFSMState[] = "_Z11GetFSMStatev";

class ClientLibraryTest : public testing::Test {
 protected:
  ClientLibraryTest() { library = {}; }

  static LogCapture::Message Error(const std::wstring& text) { return {LogSource::General, LogLevel::Error, text}; }

  std::wstring LoadString() { return binding.LoadStringDb(ModuleId::LoginProperties, 1037, true); }

  const LogCapture log;
  ClientLibrary binding{LibraryLoader{Load, Find, Free}};
};

TEST_F(ClientLibraryTest, LoadsTheLibraryOnFirstNeedAndOnlyOnce) {
  library.symbols = {kLoadStringDb};
  EXPECT_EQ(library.loaded, 0);
  EXPECT_EQ(LoadString(), L"3 1037 true");
  EXPECT_EQ(LoadString(), L"3 1037 true");
  EXPECT_EQ(library.loaded, 1);
  EXPECT_EQ(library.file, L"WaylineDll.dll");
  EXPECT_EQ(library.soughtSymbols.size(), 6u);
}

TEST_F(ClientLibraryTest, AMissingLibraryIsLoggedAndStringsAreEmpty) {
  library.exists = false;
  EXPECT_EQ(LoadString(), L"");
  EXPECT_THAT(log.Messages(), ElementsAre(Error(L"Unable to load Library WaylineDll.dll"), Error(kNotLoaded)));
  EXPECT_THAT(library.soughtSymbols, IsEmpty());
}

TEST_F(ClientLibraryTest, AMissingLibraryIsTriedAgain) {
  library.exists = false;
  LoadString();
  library.exists = true;
  library.symbols = {kLoadStringDb};
  EXPECT_EQ(LoadString(), L"3 1037 true");
}

TEST_F(ClientLibraryTest, EachMissingFunctionIsLoggedAndDoesNotStopTheOthers) {
  EXPECT_EQ(LoadString(), L"");
  EXPECT_THAT(log.Messages(), ElementsAre(Error(L"Unable to find LoadString_Db in WaylineDll.dll"),
                                          Error(L"Unable to find LoadStringWithSubS in WaylineDll.dll"),
                                          Error(L"Unable to find GetActiveProfileId in WaylineDll.dll"),
                                          Error(L"Unable to find GetActiveProxyLocationId in WaylineDll.dll"),
                                          Error(L"Unable to find UpdateActivePreference in WaylineDll.dll"),
                                          Error(L"Unable to find GetFSMState in WaylineDll.dll"), Error(kNotLoaded)));
}

TEST_F(ClientLibraryTest, KeepsWhatIsThere) {
  library.symbols = {kGetFSMState};
  LoadString();
  EXPECT_NE(binding.GetFunctions().getFSMState, nullptr);
  EXPECT_EQ(binding.GetFunctions().loadStringDb, nullptr);
  EXPECT_EQ(binding.GetFunctions().updateActiveProfilePreference, nullptr);
}

TEST_F(ClientLibraryTest, AFunctionThatIsMissingIsNotSoughtAgain) {
  LoadString();
  LoadString();
  EXPECT_EQ(library.soughtSymbols.size(), 6u);
}

TEST_F(ClientLibraryTest, AppendsTheSystemsTextForTheLastError) {
  library.exists = false;
  library.lastError = ERROR_MOD_NOT_FOUND;
  LoadString();
  const std::wstring text = SystemErrorText(ERROR_MOD_NOT_FOUND);
  ASSERT_NE(text, L"");
  EXPECT_EQ(log.Messages().at(0), Error(L"Unable to load Library WaylineDll.dll" + text));
}

TEST_F(ClientLibraryTest, AppendsTheSystemsTextForAMissingFunctionToo) {
  library.symbols = {kLoadStringDb};
  library.lastError = ERROR_PROC_NOT_FOUND;
  LoadString();
  EXPECT_EQ(log.Messages().at(0),
            Error(L"Unable to find LoadStringWithSubS in WaylineDll.dll" + SystemErrorText(ERROR_PROC_NOT_FOUND)));
}

TEST_F(ClientLibraryTest, ReleasesTheLibraryOnce) {
  {
    ClientLibrary other{LibraryLoader{Load, Find, Free}};
    other.LoadStringDb(ModuleId::LoginProperties, 1037, false);
    EXPECT_EQ(library.freed, 0);
  }
  EXPECT_EQ(library.freed, 1);
}

TEST_F(ClientLibraryTest, ReleasesNothingThatWasNotLoaded) {
  library.exists = false;
  {
    const ClientLibrary unused{LibraryLoader{Load, Find, Free}};
    ClientLibrary failed{LibraryLoader{Load, Find, Free}};
    failed.LoadStringDb(ModuleId::LoginProperties, 1037, false);
  }
  EXPECT_EQ(library.freed, 0);
}

TEST_F(ClientLibraryTest, FindsAllFunctionsInTheRealLibrary) {
  ClientLibrary real;
  EXPECT_EQ(real.LoadStringDb(ModuleId::ClientLibrary, kProductName, false), L"Wayline");
  const auto& functions = real.GetFunctions();
  EXPECT_EQ(functions.loadStringDb, &LoadStringDb);
  EXPECT_EQ(functions.loadStringWithSubS, &LoadStringWithSubS);
  EXPECT_EQ(functions.getActiveProfileId, &GetActiveProfileIdExoprt);
  EXPECT_EQ(functions.getActiveProxyLocationId, &GetActiveProxyLocationId);
  EXPECT_EQ(functions.updateActiveProfilePreference, &UpdateActiveProfilePreference);
  EXPECT_EQ(functions.getFSMState, &GetFSMState);
  EXPECT_THAT(log.Messages(), IsEmpty());
}

}  // namespace
