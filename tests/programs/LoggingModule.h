#pragma once

#include <cstdint>

/// Takes a line that the module delivers, on the module's thread.
using LineReceiver = void (*)(const wchar_t* line);

extern "C" {

/// Logs so many messages: the name and a number, from 0.
__declspec(dllexport) void LogNumbers(uint16_t source, uint16_t level, const wchar_t* name, int count);

/// Whether the Logger holds on to the service while nobody logs, as it does during a call of the product.
__declspec(dllexport) void HoldService(bool held);

/// Lets lines go to `receiver`; without it they go to the logging service.
__declspec(dllexport) void SendLinesTo(LineReceiver receiver);

/// Lets what the Logger reports about itself go to `receiver`; without it that goes to the log file of the module.
__declspec(dllexport) void SendReportsTo(LineReceiver receiver);

}  // extern "C"
