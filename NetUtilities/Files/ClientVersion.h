#pragma once

#include <string>

/// The client's executable, in the install directory.
inline constexpr wchar_t kClientFileName[] = L"Wayline.exe";

/// The product version of the client's executable; empty when it cannot be read.
std::wstring GetClientVersion();
