#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>

#include "Database/SQLite/ColumnBinding.h"

// How the columns of a record class are bound to its members, and the one place where members are read and written as
// columns. A member is named by pointers: the first leads into the record, each other into what the one before it
// points to, as in Bind<&Record::fields, &Fields::name>(L"Name").

/// The kind of columns whose member has this type; none for a type that no member of a column has.
template <typename Member>
inline constexpr ColumnKind kKindOf{};
template <>
inline constexpr ColumnKind kKindOf<std::wstring> = ColumnKind::Text;
template <>
inline constexpr ColumnKind kKindOf<wchar_t> = ColumnKind::Character;
template <>
inline constexpr ColumnKind kKindOf<int32_t> = ColumnKind::Integer32;
template <>
inline constexpr ColumnKind kKindOf<uint32_t> = ColumnKind::Integer32;
template <>
inline constexpr ColumnKind kKindOf<int64_t> = ColumnKind::Integer64;
template <>
inline constexpr ColumnKind kKindOf<bool> = ColumnKind::Boolean;
template <>
inline constexpr ColumnKind kKindOf<std::string> = ColumnKind::NarrowText;
template <>
inline constexpr ColumnKind kKindOf<uint16_t> = ColumnKind::Integer16;
template <typename Member>
requires std::is_enum_v<Member>
inline constexpr ColumnKind kKindOf<Member> = kKindOf<std::underlying_type_t<Member>>;

/// Whether a column of this kind can have a member of this type. Keys are numbers of 32 bits.
template <typename Member, ColumnKind Kind>
inline constexpr bool kFits = kKindOf<Member> == Kind;
template <typename Member>
inline constexpr bool kFits<Member, ColumnKind::Key> = kKindOf<Member> == ColumnKind::Integer32;
template <typename Member>
inline constexpr bool kFits<Member, ColumnKind::ParentKey> = kKindOf<Member> == ColumnKind::Integer32;
template <typename Member>
inline constexpr bool kFits<Member, ColumnKind{}> = false;

/// The member of a record that a path of pointers leads to.
template <typename Record, typename Part, typename Class, typename... Rest>
constexpr auto& MemberOf(Record& record, Part Class::*part, Rest... rest) {
  if constexpr (sizeof...(rest) == 0) {
    return record.*part;
  } else {
    return MemberOf(record.*part, rest...);
  }
}

/// Reads and writes that member in a record of the class that the first pointer names.
template <auto First, auto... Rest>
class MemberAccess {
  template <typename Class, typename Part>
  static std::type_identity<Class> ClassOf(Part Class::*);
  using Record = typename decltype(ClassOf(First))::type;

 public:
  using Member = std::remove_reference_t<decltype(MemberOf(std::declval<Record&>(), First, Rest...))>;

  static ColumnValue Read(const SQLRecord& record) {
    const Member& member = MemberOf(static_cast<const Record&>(record), First, Rest...);
    if constexpr (std::is_class_v<Member>) {
      return member;
    } else if constexpr (kKindOf<Member> == ColumnKind::Integer32) {
      return int64_t{static_cast<int32_t>(member)};  // tables have signed numbers, also where the member has not
    } else {
      return static_cast<int64_t>(member);
    }
  }

  static void Write(SQLRecord& record, ColumnValue&& value) {
    Member& member = MemberOf(static_cast<Record&>(record), First, Rest...);
    if constexpr (std::is_class_v<Member>) {
      member = std::get<Member>(std::move(value));
    } else {
      member = static_cast<Member>(std::get<int64_t>(value));
    }
  }
};

/// Whether a column of this kind can have the member.
template <ColumnKind Kind, auto... Path>
concept BindableAs = kFits<typename MemberAccess<Path...>::Member, Kind>;

/// The kind that the type of the member tells.
template <auto... Path>
inline constexpr ColumnKind kMemberKind = kKindOf<typename MemberAccess<Path...>::Member>;

/// Binds a column of a kind that must be said: a key.
template <ColumnKind Kind, auto... Path>
requires BindableAs<Kind, Path...>
constexpr ColumnBinding BindAs(std::wstring_view name, uint32_t marker = 0) {
  return {name, Kind, marker, MemberAccess<Path...>::Read, MemberAccess<Path...>::Write};
}

/// Binds a column of the kind that the type of its member tells.
template <auto... Path>
requires BindableAs<kMemberKind<Path...>, Path...>
constexpr ColumnBinding Bind(std::wstring_view name, uint32_t marker = 0) {
  return BindAs<kMemberKind<Path...>, Path...>(name, marker);
}
