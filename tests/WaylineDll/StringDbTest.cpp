#include "WaylineDll/StringDb.h"

#include <gtest/gtest.h>

#include "Database/Profiles/PreferenceId.h"
#include "LoginProperties/Resources/SheetStrings.h"
#include "tests/support/LoadedModule.h"

namespace {

// Ids of the client library's own strings.
constexpr unsigned kProductName = 100;
constexpr unsigned kNoLimitKnown = 12066;

constexpr auto kPreferIPv6 = static_cast<unsigned>(PreferenceId::PreferIPv6);

TEST(StringDb, HasTheStringsOfTheClientLibrary) {
  EXPECT_EQ(LoadStringDb(ModuleId::ClientLibrary, kProductName, false), L"Wayline");
  EXPECT_EQ(LoadStringDb(ModuleId::ClientLibrary, kNoLimitKnown, false), L"not limited");
}

TEST(StringDb, HasTheStringsOfTheLoadedLoginProperties) {
  const LoadedModule pavise(L"Pavise.dll");
  EXPECT_EQ(LoadStringDb(ModuleId::LoginProperties, IDS_SHEET_TITLE, false), L"%1 - Login Properties");
  EXPECT_EQ(GetResourceHandle(ModuleId::LoginProperties), pavise.Handle());
}

TEST(StringDb, KeepsABlankAtTheEnd) {
  const LoadedModule pavise(L"Pavise.dll");
  EXPECT_EQ(LoadStringDb(ModuleId::LoginProperties, kPreferIPv6, false), L"Prefer IPv6 ");
}

TEST(StringDb, IsEmptyForAnUnknownId) { EXPECT_EQ(LoadStringDb(ModuleId::ClientLibrary, 9999, false), L""); }

TEST(StringDb, IsEmptyForAModuleThatIsUnknownOrNotLoaded) {
  for (const ModuleId module : {ModuleId{99}, ModuleId::LoginProperties}) {
    EXPECT_EQ(GetResourceHandle(module), nullptr);
    EXPECT_EQ(LoadStringDb(module, IDS_SHEET_TITLE, false), L"");
    EXPECT_EQ(LoadStringWithSubS(module, IDS_SHEET_TITLE, false, {L"Wayline"}), L"");
  }
}

TEST(StringDb, PutsItemsIntoAString) {
  const LoadedModule pavise(L"Pavise.dll");
  EXPECT_EQ(LoadStringWithSubS(ModuleId::LoginProperties, IDS_SHEET_TITLE, false, {L"Wayline"}),
            L"Wayline - Login Properties");
}

TEST(StringDb, KnowsTheProductsName) { EXPECT_EQ(GetProductDisplayName(false), L"Wayline"); }

}  // namespace
