#pragma once

#include <cstdint>
#include <string>

#include "Database/SQLite/SQLRecord.h"

/// A record with a column of every kind, and values that no test stores.
struct EveryKind : SQLRecord {
  EveryKind() {
    Bind(L"Id", ColumnKind::Key, &id, 1);
    Bind(L"Parent", ColumnKind::ParentKey, &parent);
    Bind(L"Name", ColumnKind::Text, &name);
    Bind(L"Letter", ColumnKind::Character, &letter);
    Bind(L"Number", ColumnKind::Integer32, &number);
    Bind(L"Big", ColumnKind::Integer64, &big);
    Bind(L"Flag", ColumnKind::Boolean, &flag);
    Bind(L"Bytes", ColumnKind::NarrowText, &bytes);
    Bind(L"Small", ColumnKind::Integer16, &small);
  }
  int32_t id = -1;
  int32_t parent = -1;
  std::wstring name = L"unset";
  wchar_t letter = L'?';
  int32_t number = -1;
  int64_t big = -1;
  bool flag = true;
  std::string bytes = "unset";
  uint16_t small = 99;
};
