#pragma once

#include <string>

/// The text that log lines give for an `errno` value of the C runtime; the decimal number for a value without one.
std::wstring ErrnoText(int code);
