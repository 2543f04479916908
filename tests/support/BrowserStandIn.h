#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "tests/support/FileBytes.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TestRegistryKey.h"
#include "tests/support/ThisProgram.h"
#include "tests/support/WaitUntil.h"

/// The help page of a topic beside the client library, whether it exists or not.
inline std::filesystem::path HelpPage(const std::wstring& name) {
  wchar_t file[MAX_PATH];
  const DWORD length = GetModuleFileNameW(GetModuleHandleW(L"WaylineDll.dll"), file, MAX_PATH);
  return std::filesystem::path(std::wstring(file, length)).parent_path() / L"help" / name;
}

/// While it lives, web pages are opened with a small program that notes which page it was.
class BrowserStandIn {
 public:
  BrowserStandIn() {
    extension_.SetString(L"", L"PaviseTestPage");
    SetProgram(ThisProgram().replace_filename(L"TestBrowser.exe"));
  }

  /// Takes another program, which may be missing.
  void SetProgram(const std::filesystem::path& program) {
    open_.SetString(L"", L'"' + program.wstring() + L"\" \"" + opened_.wstring() + L"\" \"%1\"");
  }

  /// Whether a page was opened. While the program still gives its file the name it exists, but cannot be read.
  bool HasOpened() const { return !FileBytes(opened_).empty(); }

  /// The page that was opened; waits for it.
  std::filesystem::path OpenedPage() const {
    EXPECT_TRUE(WaitUntil([this] { return HasOpened(); })) << "No page was opened.";
    return FileBytes(opened_);
  }

 private:
  TemporaryFolder folder_;
  std::filesystem::path opened_ = folder_.Path() / L"opened.txt";
  TestRegistryKey extension_{HKEY_CLASSES_ROOT, LR"(.html)"};
  TestRegistryKey open_{HKEY_CLASSES_ROOT, LR"(PaviseTestPage\shell\open\command)"};
};
