#pragma once

#include <cstdint>
#include <string>

#include "Database/SQLite/MemberBinding.h"
#include "Database/SQLite/SQLRecord.h"

/// A record with a column of every kind, and values that no test stores.
struct EveryKind : SQLRecord {
  int32_t id = -1;
  int32_t parent = -1;
  std::wstring name = L"unset";
  wchar_t letter = L'?';
  int32_t number = -1;
  int64_t big = -1;
  bool flag = true;
  std::string bytes = "unset";
  uint16_t small = 99;

  std::span<const ColumnBinding> GetBindings() const override {
    static constexpr ColumnBinding kBindings[] = {
        BindAs<ColumnKind::Key, &EveryKind::id>(L"Id", 1),
        BindAs<ColumnKind::ParentKey, &EveryKind::parent>(L"Parent"),
        Bind<&EveryKind::name>(L"Name"),
        Bind<&EveryKind::letter>(L"Letter"),
        Bind<&EveryKind::number>(L"Number"),
        Bind<&EveryKind::big>(L"Big"),
        Bind<&EveryKind::flag>(L"Flag"),
        Bind<&EveryKind::bytes>(L"Bytes"),
        Bind<&EveryKind::small>(L"Small"),
    };
    return kBindings;
  }
};
