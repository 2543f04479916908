#pragma once

#include <cstdint>
#include <string>
#include <variant>

#include "Database/SQLite/SQLRecord.h"
#include "NetUtilities/Text/Utf8.h"

/// What the member of a column holds. Texts are wide, a character is one too.
inline std::wstring MemberText(const SQLRecord& record, const ColumnBinding& column) {
  const ColumnValue value = column.read(record);
  switch (column.kind) {
    case ColumnKind::Text:
      return std::get<std::wstring>(value);
    case ColumnKind::Character:
      return std::wstring(1, static_cast<wchar_t>(std::get<int64_t>(value)));
    case ColumnKind::Boolean:
      return std::get<int64_t>(value) != 0 ? L"true" : L"false";
    case ColumnKind::NarrowText:
      return FromUtf8(std::get<std::string>(value));
    default:
      return std::to_wstring(std::get<int64_t>(value));
  }
}
