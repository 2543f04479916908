#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

#include "tests/support/FakeDatabasePlatform.h"
#include "tests/support/TemporaryFolder.h"

/// A database file for the inputs of a fuzzer, one after the other. Every connection of the process is limited in what
/// it may cost, whoever opens it: damaged files and made-up statements can have no end.
class DatabaseFuzz {
 public:
  DatabaseFuzz();

  const std::wstring& Folder() const { return FakeDatabasePlatform::state.userDataDirectory; }
  const std::wstring& File() const { return file_; }

  /// Writes the file that an input stands for, and begins to count steps. An input that begins as database files do
  /// is one; every other is a list of changes to `base`: two bytes for the place, and the new byte. Behind the end the
  /// byte says how much of the file stays, in parts of 256. Returns what was written.
  std::string WriteImage(const std::string& base, const uint8_t* data, size_t size) const;

  /// Replaces the file.
  void Write(std::string_view bytes) const;

  /// Begins to count the steps that statements make.
  static void CountSteps();

  /// Whether there were too many of them since then: results mean nothing.
  static bool IsExhausted();

 private:
  FakeDatabasePlatform platform_;
  TemporaryFolder folder_;
  std::wstring file_;
};

/// Runs statements on a file through a connection of their own; ends the program when they fail.
void RunOnFile(const std::wstring& file, const std::string& statements);
