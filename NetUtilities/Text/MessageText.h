#pragma once

#include <string>

/// A message of the system as it goes into a log line: without carriage returns, and without the line feeds at its end.
/// A line feed that is all that there is stays.
std::wstring CleanMessageText(std::wstring message);
