#include "Database/Profiles/ServiceInfo.h"
#include "NetUtilities/Text/Utf8.h"
#include "tests/WaylineDll/Store/StoreTest.h"

namespace {

class SchemaTest : public StoreTest {
 protected:
  void SetUp() override { OpenSample(); }

  // The names of a table's columns, in order.
  std::string Columns(const std::string& table) const {
    return Sql("SELECT group_concat(name, ',') FROM pragma_table_info('" + table + "')");
  }
};

std::string BoundColumns(const SQLRecord& record) {
  std::string names;
  for (const ColumnBinding& column : record.GetBindings()) {
    if (!names.empty()) names += ',';
    names += ToUtf8(column.name);
  }
  return names;
}

}  // namespace

TEST_F(SchemaTest, TablesHaveTheColumnsOfTheirRecordsInOrder) {
  EXPECT_EQ(Columns("Profiles"), BoundColumns(Profile(0)));
  EXPECT_EQ(Columns("Preferences"), BoundColumns(Preference()));
  EXPECT_EQ(Columns("AutoStart"), BoundColumns(AutoStartItem()));
  EXPECT_EQ(Columns("ConfigSettings"), BoundColumns(ConfigSetting()));
  EXPECT_EQ(Columns("Services"), BoundColumns(ServiceRecord()));
}

TEST_F(SchemaTest, AProfileCanInheritEverythingButItsNameAndId) {
  EXPECT_EQ(Sql("SELECT group_concat(name, ',') FROM pragma_table_info('Profiles') WHERE \"notnull\" = 1"),
            "ProfileId,Name");
  EXPECT_EQ(Sql("SELECT count(*) FROM pragma_table_info('Profiles') WHERE dflt_value IS NOT NULL"), "0");
}

TEST_F(SchemaTest, AProfileLinksToOneThatExists) {
  constexpr char kNoParent[] = "the profile that it is linked to does not exist";
  EXPECT_EQ(Sql("INSERT INTO Profiles (ProfileId, Name, LinkProfile) VALUES (3000, 'x', 77)"), kNoParent);
  EXPECT_EQ(Sql("INSERT INTO Profiles (ProfileId, Name, LinkProfile) VALUES (3000, 'x', 3000)"), kNoParent);
  EXPECT_EQ(Sql("UPDATE Profiles SET LinkProfile = 77 WHERE ProfileId = 2001"), kNoParent);
  EXPECT_EQ(Sql("INSERT INTO Profiles (ProfileId, Name, LinkProfile) VALUES (3000, 'x', 2003)"), "");
  EXPECT_EQ(Sql("INSERT INTO Profiles (ProfileId, Name, LinkProfile) VALUES (3001, 'x', 0), (3002, 'x', NULL)"), "");
}

TEST_F(SchemaTest, LinksNeverFormACircle) {
  constexpr char kCircle[] = "its links form a circle";
  EXPECT_EQ(Sql("UPDATE Profiles SET LinkProfile = 1 WHERE ProfileId = 1"), kCircle);
  EXPECT_EQ(Sql("UPDATE Profiles SET LinkProfile = 2003 WHERE ProfileId = 1"), kCircle);
  EXPECT_EQ(Sql("INSERT OR REPLACE INTO Profiles (ProfileId, Name, LinkProfile) VALUES (1, 'x', 2003)"), kCircle);
  EXPECT_EQ(Sql("UPDATE Profiles SET LinkProfile = 100 WHERE ProfileId = 2003"), "");
}

TEST_F(SchemaTest, AProfileThatOthersLinkToStays) {
  EXPECT_EQ(Sql("DELETE FROM Profiles WHERE ProfileId = 1"), "other profiles are linked to it");
  EXPECT_EQ(Sql("UPDATE Profiles SET ProfileId = 9 WHERE ProfileId = 1"), "the id of a profile cannot change");
}

TEST_F(SchemaTest, TheRequestForANewIdIsNoId) {
  EXPECT_THAT(Sql("INSERT INTO Profiles (ProfileId, Name) VALUES (10000, 'x')"),
              testing::HasSubstr("CHECK constraint failed"));
}

TEST_F(SchemaTest, WhatBelongsToAProfileGoesWithIt) {
  EXPECT_EQ(Sql("UPDATE ClientState SET Value = 2004; DELETE FROM Profiles WHERE ProfileId = 2004"), "");
  for (const std::string table : {"Preferences", "AutoStart", "ConfigSettings"}) {
    EXPECT_EQ(Sql("SELECT count(*) FROM " + table + " WHERE ProfileId = 2004"), "0") << table;
    EXPECT_NE(Sql("SELECT count(*) FROM " + table + " WHERE ProfileId = 1"), "0") << table;
  }
  EXPECT_EQ(store_.GetActiveProfileId(), 0u);
}
