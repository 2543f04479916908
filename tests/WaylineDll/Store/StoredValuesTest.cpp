#include "WaylineDll/Store/StoredValues.h"

#include "tests/WaylineDll/Store/StoreTest.h"

namespace {

class StoredValuesTest : public StoreTest {
 protected:
  void SetUp() override { OpenSample(); }
};

}  // namespace

TEST_F(StoredValuesTest, ANewDatabaseIsDisconnectedAndShowsTheServers) {
  EXPECT_EQ(store_.Values().GetConnectionState(), FSMState::Disconnected);
  EXPECT_EQ(store_.Values().GetProxyLocation(), 0u);
  EXPECT_EQ(store_.Values().GetBookmarkFlag(8), true);
  EXPECT_EQ(store_.Values().GetBookmark(8), L"1");
}

TEST_F(StoredValuesTest, TellWhatWasStored) {
  const StoredValues values = store_.Values();
  for (const FSMState state :
       {FSMState::Connected, FSMState::Connecting, FSMState::Disconnecting, FSMState::Disconnected}) {
    EXPECT_EQ(values.SetConnectionState(state), Failure());
    EXPECT_EQ(values.GetConnectionState(), state);
  }
  Sql("UPDATE ClientState SET Value = '4294967295' WHERE Name = 'ProxyLocation'");
  EXPECT_EQ(values.GetProxyLocation(), 4294967295u);
  EXPECT_EQ(values.SetBookmark(8, L"0"), Failure());
  EXPECT_EQ(values.GetBookmarkFlag(8), false);
  EXPECT_EQ(values.SetBookmark(9, L"Z\u00fcrich \u20ac"), Failure());
  EXPECT_EQ(values.GetBookmark(9), L"Z\u00fcrich \u20ac");
  EXPECT_EQ(Sql("SELECT group_concat(BookmarkId) FROM Bookmarks"), "8,9");
  EXPECT_EQ(store_.GetActiveProfileId(), 2001u);
}

TEST_F(StoredValuesTest, WhatIsMissingIsNoFailure) {
  Sql("DELETE FROM ClientState; DELETE FROM Bookmarks");
  EXPECT_EQ(store_.Values().GetConnectionState(), FSMState::Disconnected);
  EXPECT_EQ(store_.Values().GetProxyLocation(), 0u);
  EXPECT_EQ(store_.Values().GetBookmark(8), std::nullopt);
  EXPECT_EQ(store_.Values().GetBookmarkFlag(8), std::nullopt);
  EXPECT_THAT(log_.Messages(), testing::IsEmpty());
}

TEST_F(StoredValuesTest, ATextThatIsNoFlagIsNone) {
  for (const wchar_t* text : {L"", L"2", L"yes", L"01"}) {
    ASSERT_EQ(store_.Values().SetBookmark(8, text), Failure());
    EXPECT_EQ(store_.Values().GetBookmarkFlag(8), std::nullopt);
  }
}

TEST_F(StoredValuesTest, AStateThatIsNotKnownIsLoggedAndTakenAsMissing) {
  for (const std::string text : {"4", "", "x", "-1", "1x", "99999999999"}) {
    Sql("UPDATE ClientState SET Value = '" + text + "' WHERE Name = 'ConnectionState'");
    EXPECT_EQ(store_.Values().GetConnectionState(), FSMState::Disconnected) << text;
  }
  EXPECT_EQ(log_.Messages().size(), 6u);
  EXPECT_EQ(log_.Messages().front().text, L"Value ConnectionState is not known: '4'");
}

TEST_F(StoredValuesTest, WhatCannotBeReadIsLoggedAndTakenAsMissing) {
  const FileLock otherProgram(file_, "BEGIN EXCLUSIVE");
  EXPECT_EQ(store_.Values().GetConnectionState(), FSMState::Disconnected);
  EXPECT_EQ(store_.Values().GetBookmark(8), std::nullopt);
  EXPECT_EQ(log_.Messages().back().text, L"Value 8 cannot be read: the settings database is in use by another program");
}

TEST_F(StoredValuesTest, WhatCannotBeStoredIsSaid) {
  const FileLock otherProgram(file_, "BEGIN IMMEDIATE");
  const Failure inUse = L"Nothing was saved: the settings database is in use by another program.";
  EXPECT_EQ(store_.Values().SetConnectionState(FSMState::Connected), inUse);
  EXPECT_EQ(store_.Values().SetBookmark(8, L"0"), inUse);
}
