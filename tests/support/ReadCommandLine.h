#pragma once

#include <gmock/gmock.h>

#include <string>

#include "NetUtilities/CommandLine/CommandLine.h"

// What came of a command line that a program has read.

/// The options of one that was understood.
template <typename Options>
Options Accepted(const CommandLine<Options>& read) {
  EXPECT_FALSE(read.answer) << read.answer->text;
  return read.options;
}

/// The one line that says why the arguments were refused.
template <typename Options>
std::string Refused(const CommandLine<Options>& read) {
  if (!read.answer) return "accepted";
  EXPECT_TRUE(read.answer->isError);
  EXPECT_EQ(read.answer->text.find('\n'), read.answer->text.size() - 1);
  EXPECT_THAT(read.answer->text, testing::StartsWith("The command line is not understood: "));
  EXPECT_THAT(read.answer->text, testing::EndsWith(".\n"));
  return read.answer->text;
}

/// The text for one that asked for it: help, or the version.
template <typename Options>
std::string Answered(const CommandLine<Options>& read) {
  if (!read.answer) return "accepted";
  EXPECT_FALSE(read.answer->isError);
  return read.answer->text;
}
