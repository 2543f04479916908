#include "tests/support/MarkdownPage.h"

#include <algorithm>
#include <filesystem>
#include <sstream>

#include "tests/support/FileBytes.h"

namespace {

std::string CellText(const std::string& cell) {
  const size_t first = cell.find_first_not_of(' ');
  if (first == std::string::npos) return {};
  const std::string text = cell.substr(first, cell.find_last_not_of(' ') - first + 1);
  const bool code = text.size() > 2 && text.front() == '`' && text.find('`', 1) == text.size() - 1;
  return code ? text.substr(1, text.size() - 2) : text;
}

// The cells of a line of a table; none for any other line.
std::vector<std::string> CellsOf(const std::string& line) {
  std::vector<std::string> cells;
  if (!line.starts_with('|')) return cells;
  std::istringstream stream(line.substr(1));
  for (std::string cell; std::getline(stream, cell, '|');) cells.push_back(CellText(cell));
  return cells;
}

}  // namespace

MarkdownPage::MarkdownPage(const std::string& file) {
  std::istringstream stream(FileBytes(std::filesystem::path(PROJECT_ROOT) / file));
  for (std::string line; std::getline(stream, line);) lines_.push_back(line);
}

std::vector<MarkdownPage::Row> MarkdownPage::Rows(const std::string& firstHeading) const {
  std::vector<Row> rows;
  std::vector<std::string> headings;  // of the table that the line is in
  for (const std::string& line : lines_) {
    const std::vector<std::string> cells = CellsOf(line);
    if (cells.empty() || headings.empty()) {
      headings = cells;
    } else if (headings.front() == firstHeading && !cells.front().starts_with("---")) {
      Row& row = rows.emplace_back();
      for (size_t column = 0; column < std::min(headings.size(), cells.size()); ++column) {
        row[headings[column]] = cells[column];
      }
    }
  }
  return rows;
}

std::vector<std::string> MarkdownPage::CodeLines(const std::string& language) const {
  std::vector<std::string> codeLines;
  bool inside = false;
  for (const std::string& line : lines_) {
    if (line.starts_with("```")) {
      inside = !inside && line == "```" + language;
    } else if (inside) {
      codeLines.push_back(line);
    }
  }
  return codeLines;
}
