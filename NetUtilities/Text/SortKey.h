#pragma once

#include <windows.h>

#include <string>

/// Bytes that compare as sorted lists with this locale compare names, without regard to case. Making them costs as much
/// as comparing once.
std::string SortKey(const std::wstring& name, LCID locale);
