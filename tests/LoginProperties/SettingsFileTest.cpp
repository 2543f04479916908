#include "LoginProperties/SettingsFile.h"

#include "Database/Profiles/Profiles.h"
#include "Database/SQLite/SQLiteDatabaseManager.h"
#include "NetUtilities/Module/Singleton.h"
#include "tests/WaylineDll/Store/StoreTest.h"
#include "WaylineDll/Host.h"

namespace {

class SettingsFileTest : public StoreTest {
 protected:
  SettingsFileTest() { file_ = folder_.File(L"Elsewhere.db"); }
  ~SettingsFileTest() override { CloseSettings(); }
};

}  // namespace

TEST_F(SettingsFileTest, IsTheOneThatTheClientHasOpen) {
  EXPECT_EQ(SettingsFileOfClient(), L"");
  ASSERT_EQ(OpenSettings(file_), Failure());
  EXPECT_EQ(SettingsFileOfClient(), file_);
  CloseSettings();
  EXPECT_EQ(SettingsFileOfClient(), L"");
}

TEST_F(SettingsFileTest, ProfilesAreLoadedFromIt) {
  databasePlatform.settingsFile = SettingsFileOfClient;
  ASSERT_EQ(OpenSettings(file_), Failure());
  ASSERT_EQ(Sql("UPDATE Profiles SET Name = 'Elsewhere' WHERE ProfileId = 2001"), "");
  Profile profile(0);
  EXPECT_TRUE(Profiles().LoadProfileById(2001, profile));
  EXPECT_EQ(profile.GetName(), L"Elsewhere");
  Singleton<SQLiteDatabaseManager>::Get()->GetDatabase(file_)->Close();
}
