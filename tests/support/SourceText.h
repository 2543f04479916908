#pragma once

#include <string>
#include <string_view>
#include <vector>

/// A source file of the project, for tests that compare code with its description.
struct SourceText {
  std::string file;  // relative to the root of the project, with slashes
  std::string code;  // without comments
};

/// The C++ files of a folder of the project and of those below it, by name.
std::vector<SourceText> SourcesOf(const std::string& folder);

/// The arguments of every call of `function` in `code`, with everything that is nested in them. Declarations of the
/// function are among them.
std::vector<std::string> ArgumentsOfCalls(std::string_view code, std::string_view function);

/// The values of the wide string literals in `code`.
std::vector<std::string> WideLiterals(std::string_view code);

/// What follows each occurrence of `start` in `code`, up to the next `end`.
std::vector<std::string> TextsBetween(std::string_view code, std::string_view start, std::string_view end);
