#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "WaylineDll/AutoStartItem.h"
#include "WaylineDll/Program.h"

// The names that an entry can have: those of the installed programs, each with its number behind it, and the one that
// the entry has already, with the entry's kind behind it. No program has a kind for its number.

/// What stands behind the name that an entry has already.
uint32_t ValueOfOwnName(const AutoStartItem::Fields& entry);

/// The program whose name has `value` behind it; null for the entry's own name.
const Program* FindProgram(const std::vector<Program>& programs, uint32_t value);

/// What the choice of an installed program enters.
struct ProgramTexts {
  std::wstring program;
  std::wstring parameters;
  std::wstring directory;
  bool operator==(const ProgramTexts&) const = default;
};

/// Where a choice finds what the program itself does not tell.
struct ProgramOperations {
  std::function<std::wstring(const std::wstring& program)> installFolder;
  std::function<std::wstring()> defaultBrowser;  // its program; empty when there is none
};

/// Nothing for a program that is not started by a path and is no web page.
std::optional<ProgramTexts> TextsOf(const Program& program, const ProgramOperations& operations);

/// Whether an entry with this name stands for the default browser, whose entries have the name `browserName`.
bool IsDefaultBrowserName(std::wstring_view name, std::wstring_view browserName);
