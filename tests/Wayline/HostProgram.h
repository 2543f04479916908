#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

#include "NetUtilities/Module/Handle.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/ui/SheetDriver.h"

/// Wayline.exe as a user starts it, on a database of its own unless another one is named.
class HostProgram {
 public:
  /// Starts the program, and waits for its sheet.
  void Start(const std::wstring& options);

  /// Starts the program.
  void Launch(const std::wstring& options);

  /// Answers the box that the program shows, which must be this one.
  void ExpectMessage(int button, const std::wstring& text, const std::vector<int>& buttons) const;

  /// Waits for the end of the program; its exit code.
  DWORD Wait() const;

  /// What it has printed, with both streams in one.
  std::string Printed() const;

 private:
  TemporaryFolder folder_;
  std::wstring outputFile_ = folder_.File(L"output.txt");
  Handle process_;

 public:
  std::wstring database = folder_.File(L"Wayline.db");
  DWORD threadId = 0;
  std::optional<SheetDriver> sheet;
};
