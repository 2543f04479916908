#pragma once

#include <gmock/gmock.h>

#include <cstdint>
#include <optional>
#include <set>
#include <string>

#include "LoginProperties/LoginPropertiesContext.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/ui/OtherConnection.h"
#include "tests/ui/SheetDriver.h"

// Profiles of the sample data.
inline constexpr uint32_t kSampleWork = 2001;    // the active profile; follows the defaults of id 1
inline constexpr uint32_t kSampleOffice = 2004;  // overrides those of id 2000
inline constexpr uint32_t kSampleVisitor = 10001;

/// The sheet over a settings database of one test, which is new and holds the sample data.
class StoredSheetTest : public testing::Test {
 protected:
  StoredSheetTest();
  ~StoredSheetTest() override;

  /// Loads the profiles anew, as the client does at every start; a sheet that is open is cancelled.
  void Load(uint32_t profile);

  SheetDriver& Open() { return sheet.emplace(context); }

  SheetDriver& OpenOn(uint32_t profile) {
    Load(profile);
    return Open();
  }

  /// Presses OK unless that was done, and saves what the sheet hands back, as the client does.
  void SaveWithOk();

  TemporaryFolder folder;
  std::wstring file = folder.File(L"Wayline.db");
  LoginPropertiesContext context;
  std::optional<SheetDriver> sheet;
};

/// A row as text: the table's name, and the columns that are not NULL. Without the number of a row that means nothing.
std::string TextOfRow(const std::string& table, const Row& row);

/// Every row of a settings database as text.
std::multiset<std::string> AllRows(const std::wstring& file);

/// The rows that are in `rows` and not in `others`.
std::multiset<std::string> Without(const std::multiset<std::string>& rows, const std::multiset<std::string>& others);
