// Stands in for the Windows machine where the portable code is tested on another system.

#include <iostream>

#include "Database/SQLite/DatabasePlatform.h"
#include "NetUtilities/Format.h"
#include "NetUtilities/Logger/LogPlatform.h"
#include "NetUtilities/Text.h"

LogPlatform logPlatform = {
    [] { return LogTime{1, 1, 0, 0, 0, 0}; },
    [] { return uint32_t{1}; },
    [] { return uint32_t{1}; },
    [] { return uint16_t{4}; },
    [](const LogRecord& record) { std::cerr << ToUtf8(record.text) << '\n'; },
    [](unsigned) { return false; },
    [] { return std::chrono::nanoseconds(0); },
};

DatabasePlatform databasePlatform = {
    [] { return uint32_t{1}; },
    [] { return std::wstring(L"/host"); },
    [] { return std::wstring(L"."); },
    [](const std::wstring&) { return InstanceMutex{}; },
    [](unsigned) { return false; },
    [](int32_t code) { return Format(L" Error {} ({:#x})", code, static_cast<uint32_t>(code)); },
    [](std::wstring_view message) { std::cerr << ToUtf8(message) << '\n'; },
};
