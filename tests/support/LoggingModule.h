#pragma once

/// Takes a line that the module delivers.
using LineReceiver = void (*)(const wchar_t* line);

extern "C" {

/// Logs so many messages: the name and a number, from 0.
__declspec(dllexport) void LogNumbers(const wchar_t* name, int count);

/// Lets lines go to the test; without it they go to the logging service.
__declspec(dllexport) void SendLinesTo(LineReceiver receiver);

}  // extern "C"
