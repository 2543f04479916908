// Stands in for the Windows machine where the portable code is tested on another system.

#include <iostream>
#include <thread>
#include <utility>

#include "Database/SQLite/DatabasePlatform.h"
#include "NetUtilities/Logger/LogPlatform.h"
#include "NetUtilities/Module/ModuleThread.h"
#include "NetUtilities/Text/Format.h"
#include "NetUtilities/Text/Utf8.h"

LogPlatform logPlatform = {
    .localTime = [] { return LogTime{1, 1, 0, 0, 0, 0}; },
    .ticks = [] { return uint64_t{0}; },
    .processId = [] { return uint32_t{1}; },
    .threadId = [] { return uint32_t{1}; },
    .traceLevel = [] { return uint16_t{4}; },
    .isTraceFlagSet = [](unsigned) { return false; },
    .steadyTime = [] { return std::chrono::nanoseconds(std::chrono::steady_clock::now().time_since_epoch()); },
    .enterServiceThread = [] { return int32_t{0}; },
    .leaveServiceThread = [] {},
    .connect = [](int32_t& result) -> std::unique_ptr<LogService> { return result = -1, nullptr; },
    .reportToFile = [](std::wstring_view line) { std::cerr << ToUtf8(line) << '\n'; },
    .reportToDebugger = [](std::wstring_view line) { std::cerr << ToUtf8(line) << '\n'; },
    .errorText = [](uint32_t code) { return Format(L"text of {}", code); },
    .errorSuffix = [](int32_t code) { return Format(L" Error {} ({:#x})", code, static_cast<uint32_t>(code)); },
    .moduleLabel = [] { return std::wstring(L"host -> module"); },
};

ThreadPlatform threadPlatform = {
    [](std::function<void()> body) { return std::thread(std::move(body)).detach(), uint32_t{0}; },
    [] { return false; },
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
