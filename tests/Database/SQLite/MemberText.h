#pragma once

#include <cstdint>
#include <string>

#include "Database/SQLite/SQLRecord.h"
#include "NetUtilities/Text/Utf8.h"

/// What the member of a binding holds, by the type that its kind names. Texts are wide, a character is one too.
inline std::wstring MemberText(const ColumnBinding& binding) {
  switch (binding.kind) {
    case ColumnKind::Text:
      return *static_cast<const std::wstring*>(binding.member);
    case ColumnKind::Character:
      return std::wstring(1, *static_cast<const wchar_t*>(binding.member));
    case ColumnKind::Integer64:
      return std::to_wstring(*static_cast<const int64_t*>(binding.member));
    case ColumnKind::Boolean:
      return *static_cast<const bool*>(binding.member) ? L"true" : L"false";
    case ColumnKind::NarrowText:
      return FromUtf8(*static_cast<const std::string*>(binding.member));
    case ColumnKind::Integer16:
      return std::to_wstring(*static_cast<const uint16_t*>(binding.member));
    default:
      return std::to_wstring(*static_cast<const int32_t*>(binding.member));
  }
}
