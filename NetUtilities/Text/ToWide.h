#pragma once

#include <string>
#include <string_view>

/// `narrowText`, which is in the ANSI code page of the system, as wide text. Characters of value 0 stay.
std::wstring ToWide(std::string_view narrowText);
