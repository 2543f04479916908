#pragma once

#include <optional>
#include <sstream>
#include <string>

#include "tests/ui/sequence/Chance.h"
#include "tests/ui/sequence/SheetModel.h"
#include "tests/ui/sequence/StoredSettings.h"
#include "tests/ui/SheetDriver.h"

/// One sheet over a database, and what is told of it.
struct SheetScene {
  Chance chance;
  std::ostringstream story;  // what was done since the sheet was opened
  std::wstring file;
  StoredSettings stored;  // what others see in the file
  std::optional<SheetModel> model;
  std::optional<SheetDriver> sheet;
};
