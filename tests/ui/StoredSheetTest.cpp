#include "tests/ui/StoredSheetTest.h"

#include <sqlite3.h>

#include <algorithm>
#include <iterator>
#include <string_view>

#include "LoginProperties/SheetResult.h"
#include "tests/ui/SaveContext.h"
#include "WaylineDll/Host.h"

StoredSheetTest::StoredSheetTest() {
  EXPECT_EQ(OpenSettings(file), std::nullopt);
  Load(kSampleWork);
}

StoredSheetTest::~StoredSheetTest() {
  sheet.reset();
  CloseSettings();
}

void StoredSheetTest::Load(uint32_t profile) {
  sheet.reset();
  context = {};
  context.mode = SheetMode::Full;
  EXPECT_EQ(LoadProfiles(context.profiles), std::nullopt);
  context.currentProfile = context.profiles.at(profile);
}

void StoredSheetTest::SaveWithOk() {
  if (sheet->IsOpen()) sheet->PressOk();
  EXPECT_EQ(sheet->Result(), kSheetConfirmed);
  sheet.reset();
  SaveContext(context);
}

std::string TextOfRow(const std::string& table, const Row& row) {
  std::string text = table;
  for (const auto& [column, value] : row) {
    const bool isNumberOfRow = column == "ConfigId" || (table == "AutoStart" && column == "Id");
    if (value != "NULL" && !isNumberOfRow) text.append(" ").append(column).append("=").append(value);
  }
  return text;
}

std::multiset<std::string> AllRows(const std::wstring& file) {
  std::multiset<std::string> rows;
  for (const Row& table : RunSql(file,
                                 "SELECT name FROM sqlite_schema WHERE type = 'table' AND name NOT LIKE "
                                 "'sqlite_%'")) {
    const std::string& name = table.at("name");
    for (const Row& row : RunSql(file, "SELECT * FROM " + name)) rows.insert(TextOfRow(name, row));
  }
  return rows;
}

std::multiset<std::string> Without(const std::multiset<std::string>& rows, const std::multiset<std::string>& others) {
  std::multiset<std::string> difference;
  std::ranges::set_difference(rows, others, std::inserter(difference, difference.begin()));
  return difference;
}
