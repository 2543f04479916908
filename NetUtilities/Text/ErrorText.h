#pragma once

#include <cstdint>
#include <string>
#include <system_error>

/// The system's English message for a Win32 error code or HRESULT, without carriage returns and final line feeds; empty
/// when the system has none.
std::wstring SystemErrorText(uint32_t code);

/// What log lines append for a failure: " Error 5 (0x5)" and, when the system has a text for the code, " - " and it.
/// The decimal number is signed, so HRESULTs print negative.
std::wstring ErrorSuffix(int32_t code);

/// The same for an error of the standard library, whose number is often one of C's and not the system's.
std::wstring ErrorSuffix(const std::error_code& error);
