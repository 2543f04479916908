#include "tests/support/SourceText.h"

#include <algorithm>
#include <cctype>
#include <filesystem>

#include "tests/support/FileBytes.h"

namespace {

bool IsNamePart(char character) { return std::isalnum(static_cast<unsigned char>(character)) != 0 || character == '_'; }

bool IsRaw(std::string_view code, size_t quote) { return quote > 0 && code[quote - 1] == 'R'; }

// The end of the literal whose opening quote is at `at`; `at` itself when there is no literal. A quote behind a digit
// separates digits.
size_t EndOfLiteral(std::string_view code, size_t at) {
  const char quote = code[at];
  const bool character = quote == '\'' && (at == 0 || std::isdigit(static_cast<unsigned char>(code[at - 1])) == 0);
  if (quote != '"' && !character) return at;
  if (quote == '"' && IsRaw(code, at)) return std::min(code.find(")\"", at), code.size() - 2) + 2;
  for (++at; at < code.size() && code[at] != quote; ++at) {
    if (code[at] == '\\') ++at;
  }
  return std::min(at + 1, code.size());
}

std::string WithoutComments(std::string_view code) {
  std::string bare;
  for (size_t at = 0; at < code.size();) {
    if (code.substr(at, 2) == "//") {
      at = std::min(code.find('\n', at), code.size());
    } else if (code.substr(at, 2) == "/*") {
      at = std::min(code.find("*/", at), code.size() - 2) + 2;
    } else {
      const size_t end = std::max(EndOfLiteral(code, at), at + 1);
      bare += code.substr(at, end - at);
      at = end;
    }
  }
  return bare;
}

// The value of a literal that is no raw one, from what is between its quotes.
std::string Unescaped(std::string_view text) {
  std::string value;
  for (size_t at = 0; at < text.size(); ++at) {
    if (text[at] == '\\') ++at;
    value += text[at];
  }
  return value;
}

// The end of the parenthesis that is open at `at`.
size_t EndOfParenthesis(std::string_view code, size_t at) {
  for (int depth = 1; at < code.size(); ++at) {
    if (const size_t end = EndOfLiteral(code, at); end != at) {
      at = end - 1;
    } else if (code[at] == '(') {
      ++depth;
    } else if (code[at] == ')' && --depth == 0) {
      break;
    }
  }
  return at;
}

}  // namespace

std::vector<SourceText> SourcesOf(const std::string& folder) {
  const std::filesystem::path root = PROJECT_ROOT;
  std::vector<SourceText> sources;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(root / folder)) {
    const auto extension = entry.path().extension();
    if (extension != ".cpp" && extension != ".h") continue;
    sources.push_back(
        {entry.path().lexically_relative(root).generic_string(), WithoutComments(FileBytes(entry.path()))});
  }
  std::sort(sources.begin(), sources.end(),
            [](const SourceText& left, const SourceText& right) { return left.file < right.file; });
  return sources;
}

std::vector<std::string> ArgumentsOfCalls(std::string_view code, std::string_view function) {
  const std::string call = std::string(function) + '(';
  std::vector<std::string> arguments;
  for (size_t at = code.find(call); at != std::string_view::npos; at = code.find(call, at + 1)) {
    if (at > 0 && IsNamePart(code[at - 1])) continue;
    const size_t start = at + call.size();
    arguments.emplace_back(code.substr(start, EndOfParenthesis(code, start) - start));
  }
  return arguments;
}

std::vector<std::string> WideLiterals(std::string_view code) {
  std::vector<std::string> literals;
  for (size_t at = 0; at < code.size(); ++at) {
    const size_t end = EndOfLiteral(code, at);
    if (end == at) continue;
    const bool raw = IsRaw(code, at);
    const size_t prefix = at - (raw ? 1 : 0);
    if (code[at] == '"' && prefix > 0 && code[prefix - 1] == 'L') {
      literals.push_back(raw ? std::string(code.substr(at + 2, end - at - 4))
                             : Unescaped(code.substr(at + 1, end - at - 2)));
    }
    at = end - 1;
  }
  return literals;
}

std::vector<std::string> TextsBetween(std::string_view code, std::string_view start, std::string_view end) {
  std::vector<std::string> texts;
  for (size_t at = code.find(start); at != std::string_view::npos; at = code.find(start, at)) {
    at += start.size();
    texts.emplace_back(code.substr(at, code.find(end, at) - at));
  }
  return texts;
}
