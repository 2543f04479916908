#pragma once

#include <windows.h>

#include <prsht.h>

/// The platform's function that shows the sheet, whose failures a test cannot provoke. Tests put another in its place.
struct SheetPlatform {
  decltype(&PropertySheetW) propertySheet = PropertySheetW;
};

extern SheetPlatform sheetPlatform;
