// Loads random trees of profiles twice: through the module, and by one recursive query that shares nothing with it.

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <random>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "Database/Profiles/Profiles.h"
#include "Database/SQLite/SQLiteHandles.h"
#include "NetUtilities/Text/Utf16.h"
#include "tests/Database/SQLite/MemberText.h"
#include "tests/Database/SQLite/UserDatabase.h"
#include "tests/support/LogCapture.h"

namespace {

using namespace std::string_view_literals;

// PAVISE_TREES in the environment takes the place of kTrees, PAVISE_SEED that of a random seed.
constexpr uint64_t kTrees = 1500;
constexpr int kTreesInTheTable = 50;
constexpr int kDeepest = 12;
constexpr int kMostBranches = 4;

uint64_t NumberInEnvironment(const char* variable, uint64_t otherwise) {
  const char* const text = std::getenv(variable);
  return text != nullptr ? std::stoull(text) : otherwise;
}

constexpr std::array kNumbers = {int64_t{0},
                                 int64_t{1},
                                 int64_t{-1},
                                 int64_t{INT16_MAX},
                                 int64_t{INT16_MIN},
                                 int64_t{UINT16_MAX},
                                 int64_t{UINT16_MAX} + 1,
                                 int64_t{INT32_MAX},
                                 int64_t{INT32_MAX} + 1,
                                 int64_t{INT32_MIN},
                                 int64_t{INT32_MIN} - 1,
                                 int64_t{UINT32_MAX},
                                 int64_t{UINT32_MAX} + 1,
                                 INT64_MAX,
                                 INT64_MIN};

constexpr std::array kTexts = {
    "a"sv,
    "manual"sv,
    "0"sv,
    "-7"sv,
    "+7"sv,
    " \t\n\v\f\r12"sv,
    "- 12"sv,
    "12 apples"sv,
    "007"sv,
    "0x10"sv,
    "1e3"sv,
    ".5"sv,
    "-"sv,
    "true"sv,
    "65536"sv,
    "2147483648"sv,
    "-2147483649"sv,
    "4294967296"sv,
    "9223372036854775807"sv,
    "9223372036854775808"sv,
    "-9223372036854775809"sv,
    "99999999999999999999999999"sv,
    "12\0"
    "34"sv,
    "\0x"sv,
    "it's; -- \"quoted\""sv,
    "Z\xc3\xbcrich \xe2\x82\xac"sv,
    "\xf0\x9f\x92\xa1 idea"sv,
    "\xd9\xa1\xd9\xa2"sv,  // Arabic digits
    "\xc2\xa0"
    "12"sv,  // behind a blank that is no ASCII
};

// A statement that is stepped and reset again and again.
class Repeated {
 public:
  Repeated(sqlite3* connection, const std::string& sql) {
    sqlite3_stmt* prepared = nullptr;
    EXPECT_EQ(sqlite3_prepare_v2(connection, sql.c_str(), -1, &prepared, nullptr), SQLITE_OK)
        << sqlite3_errmsg(connection);
    statement_.reset(prepared);
  }

  sqlite3_stmt* Get() const { return statement_.get(); }

  void Run() const {
    ASSERT_EQ(sqlite3_step(Get()), SQLITE_DONE);
    sqlite3_reset(Get());
  }

 private:
  StatementHandle statement_;
};

std::span<const ColumnBinding> Columns() {
  static const auto columns = Profile(0).GetBindings();
  return columns;
}

// What `text` makes of the name and the number of each column, separated by ", ".
template <typename Text>
std::string ForEachColumn(const Text& text) {
  std::string joined;
  for (size_t index = 0; index < Columns().size(); ++index) {
    if (index > 0) joined += ", ";
    joined += text(ToUtf8(Columns()[index].name), std::to_string(index));
  }
  return joined;
}

// The lower 32 bits of an integer, as a signed number.
std::string Truncated(const std::string& integer) {
  return "((((" + integer + ") & 4294967295) + 2147483648) & 4294967295) - 2147483648";
}

// What SQLite itself makes of a stored value by the rules of a column's kind: the text's number, whatever was stored.
std::string Converted(ColumnKind kind, const std::string& column) {
  std::string text = "cast(" + column + " as text)";
  std::string integer = "cast(" + text + " as integer)";
  switch (kind) {
    case ColumnKind::Text:
      return text;
    case ColumnKind::Character:
      return "case when " + column + " is not null then ifnull(unicode(" + text + "), 0) end";
    case ColumnKind::Integer64:
      return integer;
    case ColumnKind::Boolean:
      return integer + " <> 0";
    default:
      return Truncated(integer);
  }
}

// From the profile up to its root, each column the first value on the way that is not NULL; the last row has them all.
std::string Oracle() {
  const auto parent = [](const std::string& column) {
    return "ifnull(" + Truncated("cast(" + column + " as integer)") + ", 0)";
  };
  return "with recursive Chain(Depth, Next, " +
         ForEachColumn([](const std::string&, const std::string& index) { return "C" + index; }) + ") as (select 0, " +
         parent("LinkProfile") + ", " +
         ForEachColumn([](const std::string& name, const std::string&) { return name; }) +
         " from Profiles where ProfileId = ?1 union all select Depth + 1, " + parent("P.LinkProfile") + ", " +
         ForEachColumn([](const std::string& name, const std::string& index) {
           return "ifnull(C" + index + ", P." + name + ")";
         }) +
         " from Chain join Profiles as P on P.ProfileId = Chain.Next where Chain.Next <> 0) select " +
         ForEachColumn([](const std::string&, const std::string& index) {
           return Converted(Columns()[std::stoul(index)].kind, "C" + index);
         }) +
         " from Chain order by Depth desc limit 1";
}

class ProfileTrees : public testing::Test {
 protected:
  ProfileTrees() {
    database_.Run("create table Profiles (" + ToUtf8(ColumnNames(Columns())) + ", primary key (ProfileId))");
    sqlite3* opened = nullptr;
    sqlite3_open(ToUtf8(database_.File()).c_str(), &opened);
    connection_.reset(opened);
    Sql("pragma journal_mode = off; pragma synchronous = off");
    insert_ = std::make_unique<Repeated>(
        opened, "insert into Profiles values (" +
                    ForEachColumn([](const std::string&, const std::string&) { return "?"; }) + ")");
    oracle_ = std::make_unique<Repeated>(opened, Oracle());
  }

  void Sql(const char* statements) const {
    ASSERT_EQ(sqlite3_exec(connection_.get(), statements, nullptr, nullptr, nullptr), SQLITE_OK);
  }

  int64_t Between(int64_t lowest, int64_t highest) {
    return std::uniform_int_distribution<int64_t>(lowest, highest)(random_);
  }

  template <typename Choices>
  auto AnyOf(const Choices& choices) {
    return choices[static_cast<size_t>(Between(0, std::ssize(choices) - 1))];
  }

  void BindText(int parameter, std::string_view text) const {
    sqlite3_bind_text64(insert_->Get(), parameter, text.data(), text.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
  }

  void BindAnyValue(int parameter) {
    sqlite3_stmt* const row = insert_->Get();
    switch (Between(0, 15)) {
      case 0:
        return BindText(parameter, "");
      case 1:
        sqlite3_bind_int64(row, parameter, Between(INT64_MIN, INT64_MAX));
        return;
      case 2:
        sqlite3_bind_int64(row, parameter, Between(-100, 100));
        return;
      case 3:
        sqlite3_bind_int64(row, parameter, AnyOf(kNumbers));
        return;
      case 4:
        return BindText(parameter, std::to_string(AnyOf(kNumbers)));
      case 5:
      case 6:
        return BindText(parameter, AnyOf(kTexts));
      case 7:
        sqlite3_bind_double(row, parameter, static_cast<double>(Between(-1000000, 1000000)) / 64);
        return;
      case 8: {
        const std::string_view text = AnyOf(kTexts);
        sqlite3_bind_blob64(row, parameter, text.data(), text.size(), SQLITE_TRANSIENT);
        return;
      }
      default:
        sqlite3_bind_null(row, parameter);
    }
  }

  // A root's link is everything that means no parent.
  void BindNoParent(int parameter) {
    constexpr std::array kNone = {""sv, "0"sv, "none"sv, "4294967296"sv};
    switch (Between(0, 3)) {
      case 0:
        return BindText(parameter, AnyOf(kNone));
      case 1:
        sqlite3_bind_int64(insert_->Get(), parameter, 0);
        return;
      case 2:
        sqlite3_bind_int64(insert_->Get(), parameter, int64_t{1} << 32);
        return;
      default:
        sqlite3_bind_null(insert_->Get(), parameter);
    }
  }

  void BindParent(int parameter, int64_t id) {
    switch (Between(0, 3)) {
      case 0:
        return BindText(parameter, " " + std::to_string(id) + " and more");
      case 1:
        sqlite3_bind_int64(insert_->Get(), parameter, id + (Between(-3, 3) << 32));
        return;
      default:
        sqlite3_bind_int64(insert_->Get(), parameter, id);
    }
  }

  // Adds a profile with random values below another, or a root for parent 0; its id.
  int64_t AddProfile(int64_t parent) {
    int64_t id = 0;
    do {
      id = Between(0, 9) == 0 ? INT32_MAX - Between(0, 99) : Between(1, INT32_MAX);
    } while (!ids_.insert(id).second);
    sqlite3_bind_int64(insert_->Get(), 1, id);
    BindAnyValue(2);
    parent == 0 ? BindNoParent(3) : BindParent(3, parent);
    for (int parameter = 4; parameter <= std::ssize(Columns()); ++parameter) BindAnyValue(parameter);
    insert_->Run();
    return id;
  }

  // Adds a tree; its deepest profile or any.
  int64_t AddTree() {
    std::vector<int64_t> tree = {AddProfile(0)};
    for (int64_t depth = Between(1, kDeepest); depth > 1; --depth) tree.push_back(AddProfile(tree.back()));
    const int64_t deepest = tree.back();
    for (int64_t branches = Between(0, kMostBranches); branches > 0; --branches) {
      tree.push_back(AddProfile(AnyOf(tree)));
    }
    return Between(0, 1) == 0 ? deepest : AnyOf(tree);
  }

  // The value of a column in the oracle's row, as MemberText has it.
  std::wstring Expected(size_t index) const {
    const int column = static_cast<int>(index);
    if (sqlite3_column_type(oracle_->Get(), column) == SQLITE_NULL) return MemberText(defaults_, Columns()[index]);
    switch (Columns()[index].kind) {
      case ColumnKind::Text: {
        const auto* const text = reinterpret_cast<const char*>(sqlite3_column_text(oracle_->Get(), column));
        return FromUtf8({text, static_cast<size_t>(sqlite3_column_bytes(oracle_->Get(), column))});
      }
      case ColumnKind::Character: {
        const auto character = static_cast<uint32_t>(sqlite3_column_int(oracle_->Get(), column));
        const uint32_t unit = character < 0x10000 ? character : 0xD800 + ((character - 0x10000) >> 10);
        return std::wstring(1, static_cast<wchar_t>(unit));
      }
      case ColumnKind::Boolean:
        return sqlite3_column_int(oracle_->Get(), column) != 0 ? L"true" : L"false";
      default:
        return std::to_wstring(sqlite3_column_int64(oracle_->Get(), column));
    }
  }

  void CompareProfile(int64_t id) {
    ASSERT_TRUE(profiles_.LoadProfileById(static_cast<uint32_t>(id), profile_)) << id;
    sqlite3_bind_int64(oracle_->Get(), 1, id);
    ASSERT_EQ(sqlite3_step(oracle_->Get()), SQLITE_ROW) << id;
    for (size_t index = 0; index < Columns().size(); ++index) {
      EXPECT_EQ(MemberText(profile_, Columns()[index]), Expected(index))
          << "profile " << id << ", " << ToUtf8(Columns()[index].name);
    }
    sqlite3_reset(oracle_->Get());
  }

  UserDatabase database_;
  ConnectionHandle connection_;
  std::unique_ptr<Repeated> insert_;
  std::unique_ptr<Repeated> oracle_;
  std::mt19937_64 random_;
  std::set<int64_t> ids_;
  Profiles profiles_;
  Profile profile_{0};
  const Profile defaults_{0};
};

}  // namespace

TEST_F(ProfileTrees, LoadAsOneRecursiveQueryHasThem) {
  const LogCapture log;
  const uint64_t trees = NumberInEnvironment("PAVISE_TREES", kTrees);
  const uint64_t seed = NumberInEnvironment("PAVISE_SEED", std::random_device()());
  std::cout << trees << " trees of profiles, PAVISE_SEED=" << seed << '\n';
  random_.seed(seed);
  for (uint64_t made = 0; made < trees && !HasFailure(); made += kTreesInTheTable) {
    ids_.clear();
    std::vector<int64_t> compared;
    Sql("begin; delete from Profiles");
    for (int tree = 0; tree < kTreesInTheTable; ++tree) compared.push_back(AddTree());
    Sql("commit");
    for (const int64_t id : compared) CompareProfile(id);
  }
  EXPECT_TRUE(log.Messages().empty());
}
