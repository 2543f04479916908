#pragma once

#include <map>
#include <string>
#include <vector>

/// A Markdown page of the project, for tests that compare it with the code.
class MarkdownPage {
 public:
  /// Reads a page; `file` is relative to the root of the project.
  explicit MarkdownPage(const std::string& file);

  /// A row of a table: the cells by the headings of their columns. A cell that is nothing but code has no backticks.
  using Row = std::map<std::string, std::string>;

  /// The rows of all tables whose first column has this heading.
  std::vector<Row> Rows(const std::string& firstHeading) const;

  /// The lines of all code blocks in this language.
  std::vector<std::string> CodeLines(const std::string& language) const;

 private:
  std::vector<std::string> lines_;
};
