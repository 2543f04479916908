#include "Database/SQLite/MemberBinding.h"

#include <gmock/gmock.h>

#include <limits>

#include "tests/Database/SQLite/EveryKind.h"

namespace {

enum class Colour : int32_t { Red = 1, Blue = -5 };
enum class Size : uint32_t { Small, Large = 0xFFFFFFFF };
enum class Phase : uint16_t { First = 300, Last = 65535 };

// Members that columns are bound to by the kind of their numbers, and such that no column has.
struct Numbers : SQLRecord {
  struct Part {
    Colour colour = Colour::Red;
    std::wstring name;
  } part;
  Size size = Size::Small;
  Phase phase = Phase::First;
  uint32_t count = 0;

  int16_t narrow = 0;
  int8_t byte = 0;
  uint64_t wide = 0;
  double real = 0;
  char letter = 'a';
  char16_t unit = u'a';
  const int32_t fixed = 0;
  std::wstring_view view;
  const wchar_t* pointer = L"";
  void* address = nullptr;

  std::span<const ColumnBinding> GetBindings() const override { return {}; }
};

// Whether the code that binds the member compiles.
template <auto... Path>
concept Binds = requires {
  Bind<Path...>(L"Name");
};
template <ColumnKind Kind, auto... Path>
concept BindsAs = requires {
  BindAs<Kind, Path...>(L"Name");
};

// How many of all kinds, and of the numbers that stand for none, the member can be bound as.
template <auto... Path>
constexpr int CountKinds() {
  return []<uint32_t... Kinds>(std::integer_sequence<uint32_t, Kinds...>) {
    return (0 + ... + (BindsAs<ColumnKind{Kinds}, Path...> ? 1 : 0));
  }
  (std::make_integer_sequence<uint32_t, 12>());
}

int64_t Number(const ColumnBinding& column, const SQLRecord& record) { return std::get<int64_t>(column.read(record)); }

}  // namespace

// That this file compiles is the test: a column of the wrong kind for its member would not.

static_assert(Bind<&EveryKind::name>(L"").kind == ColumnKind::Text);
static_assert(Bind<&EveryKind::letter>(L"").kind == ColumnKind::Character);
static_assert(Bind<&EveryKind::number>(L"").kind == ColumnKind::Integer32);
static_assert(Bind<&EveryKind::big>(L"").kind == ColumnKind::Integer64);
static_assert(Bind<&EveryKind::flag>(L"").kind == ColumnKind::Boolean);
static_assert(Bind<&EveryKind::bytes>(L"").kind == ColumnKind::NarrowText);
static_assert(Bind<&EveryKind::small>(L"").kind == ColumnKind::Integer16);
static_assert(Bind<&Numbers::count>(L"").kind == ColumnKind::Integer32);
static_assert(Bind<&Numbers::size>(L"").kind == ColumnKind::Integer32);
static_assert(Bind<&Numbers::phase>(L"").kind == ColumnKind::Integer16);
static_assert(Bind<&Numbers::part, &Numbers::Part::colour>(L"").kind == ColumnKind::Integer32);
static_assert(Bind<&Numbers::part, &Numbers::Part::name>(L"").kind == ColumnKind::Text);
static_assert(BindAs<ColumnKind::Key, &EveryKind::id>(L"").kind == ColumnKind::Key);
static_assert(BindAs<ColumnKind::ParentKey, &EveryKind::parent>(L"").kind == ColumnKind::ParentKey);

// A number of 32 bits can also be either key, everything else has one kind.
static_assert(CountKinds<&EveryKind::number>() == 3);
static_assert(CountKinds<&Numbers::count>() == 3);
static_assert(CountKinds<&Numbers::part, &Numbers::Part::colour>() == 3);
static_assert(BindsAs<ColumnKind::Key, &Numbers::count> && BindsAs<ColumnKind::ParentKey, &Numbers::count>);
static_assert(CountKinds<&EveryKind::name>() == 1 && BindsAs<ColumnKind::Text, &EveryKind::name>);
static_assert(CountKinds<&EveryKind::letter>() == 1);
static_assert(CountKinds<&EveryKind::big>() == 1);
static_assert(CountKinds<&EveryKind::flag>() == 1);
static_assert(CountKinds<&EveryKind::bytes>() == 1);
static_assert(CountKinds<&EveryKind::small>() == 1);
static_assert(CountKinds<&Numbers::phase>() == 1);

static_assert(!BindsAs<ColumnKind::Boolean, &EveryKind::name>);
static_assert(!BindsAs<ColumnKind::Integer32, &EveryKind::flag>);
static_assert(!BindsAs<ColumnKind::Integer32, &EveryKind::letter>);
static_assert(!BindsAs<ColumnKind::Key, &EveryKind::big>);
static_assert(!BindsAs<ColumnKind::Character, &EveryKind::small>);
static_assert(!BindsAs<ColumnKind::NarrowText, &EveryKind::name>);

// What is no value of a column is bound as nothing.
static_assert(Binds<&Numbers::count> && Binds<&Numbers::part, &Numbers::Part::name>);
static_assert(!Binds<&Numbers::part> && CountKinds<&Numbers::part>() == 0);
static_assert(!Binds<&Numbers::narrow> && CountKinds<&Numbers::narrow>() == 0);
static_assert(!Binds<&Numbers::byte> && CountKinds<&Numbers::byte>() == 0);
static_assert(!Binds<&Numbers::wide> && CountKinds<&Numbers::wide>() == 0);
static_assert(!Binds<&Numbers::real> && CountKinds<&Numbers::real>() == 0);
static_assert(!Binds<&Numbers::letter> && CountKinds<&Numbers::letter>() == 0);
static_assert(!Binds<&Numbers::unit> && CountKinds<&Numbers::unit>() == 0);
static_assert(!Binds<&Numbers::fixed> && CountKinds<&Numbers::fixed>() == 0);
static_assert(!Binds<&Numbers::view> && CountKinds<&Numbers::view>() == 0);
static_assert(!Binds<&Numbers::pointer> && CountKinds<&Numbers::pointer>() == 0);
static_assert(!Binds<&Numbers::address> && CountKinds<&Numbers::address>() == 0);

TEST(MemberBinding, KeepsTheOrderOfTheListAndWhatItSays) {
  const EveryKind record;
  const auto columns = record.GetBindings();
  ASSERT_EQ(columns.size(), 9u);
  EXPECT_EQ(columns[0].name, L"Id");
  EXPECT_EQ(columns[0].kind, ColumnKind::Key);
  EXPECT_EQ(columns[0].marker, 1u);
  EXPECT_EQ(columns[2].name, L"Name");
  EXPECT_EQ(columns[2].marker, 0u);
  EXPECT_EQ(ColumnNames(columns), L"Id, Parent, Name, Letter, Number, Big, Flag, Bytes, Small");
}

TEST(MemberBinding, IsOneListForAllRecordsOfAClass) {
  const EveryKind record;
  const EveryKind other;
  EXPECT_EQ(record.GetBindings().data(), other.GetBindings().data());
}

TEST(MemberBinding, ReadsTheMemberOfTheRecordThatItIsGiven) {
  EveryKind record;
  record.name = L"text";
  record.letter = L'\u20ac';
  record.big = std::numeric_limits<int64_t>::min();
  record.bytes = "\xff";
  record.small = 65535;
  const auto columns = record.GetBindings();
  EXPECT_EQ(columns[2].read(record), ColumnValue(L"text"));
  EXPECT_EQ(columns[2].read(EveryKind()), ColumnValue(L"unset"));
  EXPECT_EQ(columns[7].read(record), ColumnValue("\xff"));
  EXPECT_EQ(Number(columns[0], record), -1);
  EXPECT_EQ(Number(columns[3], record), 0x20AC);
  EXPECT_EQ(Number(columns[5], record), std::numeric_limits<int64_t>::min());
  EXPECT_EQ(Number(columns[6], record), 1);
  EXPECT_EQ(Number(columns[8], record), 65535);
}

TEST(MemberBinding, WritesTheMemberOfTheRecordThatItIsGiven) {
  EveryKind record;
  const EveryKind copyFromBefore(record);
  const auto columns = record.GetBindings();
  for (const ColumnBinding& column : columns) {
    if (column.kind == ColumnKind::Text) {
      column.write(record, L"text");
    } else if (column.kind == ColumnKind::NarrowText) {
      column.write(record, "bytes");
    } else {
      column.write(record, int64_t{0});
    }
  }
  EXPECT_EQ(record.id, 0);
  EXPECT_EQ(record.parent, 0);
  EXPECT_EQ(record.name, L"text");
  EXPECT_EQ(record.letter, L'\0');
  EXPECT_EQ(record.number, 0);
  EXPECT_EQ(record.big, 0);
  EXPECT_FALSE(record.flag);
  EXPECT_EQ(record.bytes, "bytes");
  EXPECT_EQ(record.small, 0);
  EXPECT_EQ(copyFromBefore.name, L"unset");
  EXPECT_EQ(copyFromBefore.id, -1);
}

TEST(MemberBinding, StoresANumberInAsManyBitsAsTheMemberHas) {
  constexpr int64_t kNumber = 0x1'2345'6789'ABCD;
  EveryKind record;
  const auto columns = record.GetBindings();
  for (const size_t column : {0U, 4U, 5U, 6U, 8U}) columns[column].write(record, kNumber);
  EXPECT_EQ(record.id, 0x6789ABCD);
  EXPECT_EQ(record.number, 0x6789ABCD);
  EXPECT_EQ(record.big, kNumber);
  EXPECT_TRUE(record.flag);
  EXPECT_EQ(record.small, 0xABCD);
}

TEST(MemberBinding, TakesUnsignedNumbersAndEnumerationsOf32BitsAsSignedNumbers) {
  Numbers record;
  constexpr ColumnBinding kCount = Bind<&Numbers::count>(L"Count");
  constexpr ColumnBinding kSize = Bind<&Numbers::size>(L"Size");
  constexpr ColumnBinding kColour = Bind<&Numbers::part, &Numbers::Part::colour>(L"Colour");
  constexpr ColumnBinding kPhase = Bind<&Numbers::phase>(L"Phase");
  for (const ColumnBinding& column : {kCount, kSize}) {
    column.write(record, int64_t{-1});
    EXPECT_EQ(Number(column, record), -1);
  }
  EXPECT_EQ(record.count, 0xFFFFFFFF);
  EXPECT_EQ(record.size, Size::Large);
  kColour.write(record, int64_t{-5});
  EXPECT_EQ(record.part.colour, Colour::Blue);
  EXPECT_EQ(Number(kColour, record), -5);
  kPhase.write(record, int64_t{-1});
  EXPECT_EQ(record.phase, Phase::Last);
  EXPECT_EQ(Number(kPhase, record), 65535);
}

TEST(MemberBinding, RefusesAValueOfAnotherType) {
  EveryKind record;
  const auto columns = record.GetBindings();
  EXPECT_THROW(columns[2].write(record, int64_t{1}), std::bad_variant_access);
  EXPECT_THROW(columns[2].write(record, "narrow"), std::bad_variant_access);
  EXPECT_THROW(columns[4].write(record, L"1"), std::bad_variant_access);
  EXPECT_EQ(record.name, L"unset");
  EXPECT_EQ(record.number, -1);
}
