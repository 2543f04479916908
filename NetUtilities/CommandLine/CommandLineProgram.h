#pragma once

#include <functional>
#include <optional>
#include <string>

#include "NetUtilities/CommandLine/CommandLine.h"

// The exit codes of a program.
inline constexpr int kSuccess = 0;
inline constexpr int kFailed = 1;
inline constexpr int kBadCommandLine = 2;

/// Prints a sentence on the error output and gives the exit code of a failure.
int Fail(const std::wstring& sentence);

/// What a program does with a command line that was read: prints the answer, if there is one, or runs `run`, whose exit
/// code it gives. An exception is a failure, of which a sentence tells, beginning with the program's name.
int AnswerOrRun(const std::wstring& program, const std::optional<CommandLineAnswer>& answer,
                const std::function<int()>& run);
