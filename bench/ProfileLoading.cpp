// What loading a profile takes, beside hand-written code that reads the same values through SQLite: by one statement
// after the other, by a single query that is kept prepared, and by kept statements in one transaction. Prints Markdown
// tables.

#include <malloc.h>
#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <memory>
#include <new>
#include <numeric>
#include <random>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "Database/Profiles/Profiles.h"
#include "Database/SQLite/DatabasePlatform.h"
#include "Database/SQLite/SQLiteDatabaseManager.h"
#include "Database/SQLite/SQLiteHandles.h"
#include "NetUtilities/Module/Singleton.h"
#include "NetUtilities/Text/Utf16.h"
#include "NetUtilities/Text/Utf8.h"
#include "tests/support/TemporaryFolder.h"
#include "WaylineDll/Store/EmbeddedSql.h"

namespace {

// What is allocated while it is on. Nothing here has a second thread.
struct Tally {
  bool on = false;
  int64_t own = 0;     // allocations by operator new
  int64_t sqlite = 0;  // allocations by the SQLite library
  int64_t bytes = 0;   // of both, above those at the start
  int64_t peak = 0;

  void Add(int64_t& allocations, size_t size) {
    if (!on) return;
    ++allocations;
    bytes += static_cast<int64_t>(size);
    peak = std::max(peak, bytes);
  }
  void Remove(size_t size) {
    if (on) bytes -= static_cast<int64_t>(size);
  }
};

Tally tally;

size_t BlockSize(void* block) {
#ifdef _WIN32
  return _msize(block);
#else
  return malloc_usable_size(block);
#endif
}

}  // namespace

void* operator new(size_t size) {
  void* const block = std::malloc(size);
  if (block == nullptr) throw std::bad_alloc();
  if (tally.on) tally.Add(tally.own, BlockSize(block));
  return block;
}

void operator delete(void* block) noexcept {
  if (tally.on && block != nullptr) tally.Remove(BlockSize(block));
  std::free(block);
}

void operator delete(void* block, size_t) noexcept { operator delete(block); }

namespace {

sqlite3_mem_methods sqliteMemory;  // SQLite's own

// Must precede the first use of SQLite.
void TallySqlite() {
  sqlite3_config(SQLITE_CONFIG_GETMALLOC, &sqliteMemory);
  sqlite3_mem_methods tallied = sqliteMemory;
  tallied.xMalloc = [](int size) {
    void* const block = sqliteMemory.xMalloc(size);
    if (tally.on) tally.Add(tally.sqlite, static_cast<size_t>(sqliteMemory.xSize(block)));
    return block;
  };
  tallied.xRealloc = [](void* block, int size) {
    if (tally.on) tally.Remove(static_cast<size_t>(sqliteMemory.xSize(block)));
    void* const moved = sqliteMemory.xRealloc(block, size);
    if (tally.on) tally.Add(tally.sqlite, static_cast<size_t>(sqliteMemory.xSize(moved)));
    return moved;
  };
  tallied.xFree = [](void* block) {
    if (tally.on) tally.Remove(static_cast<size_t>(sqliteMemory.xSize(block)));
    sqliteMemory.xFree(block);
  };
  if (sqlite3_config(SQLITE_CONFIG_MALLOC, &tallied) != SQLITE_OK) throw std::runtime_error("SQLite is in use already");
}

std::span<const ColumnBinding> Columns() {
  static const auto columns = Profile(0).GetBindings();
  return columns;
}

constexpr size_t kColumns = 90;
constexpr size_t kNameColumn = 1;

// What `text` makes of the name and the number of each column, separated by ", ".
template <typename Text>
std::string ForEachColumn(const Text& text) {
  std::string joined;
  for (size_t index = 0; index < kColumns; ++index) {
    if (index > 0) joined += ", ";
    joined += text(ToUtf8(Columns()[index].name), std::to_string(index));
  }
  return joined;
}

void Expect(sqlite3* connection, int expected, int result) {
  if (result != expected) throw std::runtime_error(sqlite3_errmsg(connection));
}

// As the module opens the file, or creating it.
ConnectionHandle Open(const std::wstring& file, int create = 0) {
  sqlite3* opened = nullptr;
  const int result =
      sqlite3_open_v2(ToUtf8(file).c_str(), &opened,
                      SQLITE_OPEN_READWRITE | SQLITE_OPEN_FULLMUTEX | SQLITE_OPEN_EXRESCODE | create, nullptr);
  ConnectionHandle connection(opened);
  Expect(opened, SQLITE_OK, result);
  return connection;
}

StatementHandle Prepare(sqlite3* connection, const std::string& sql, unsigned flags = 0) {
  sqlite3_stmt* prepared = nullptr;
  Expect(connection, SQLITE_OK,
         sqlite3_prepare_v3(connection, sql.c_str(), static_cast<int>(sql.size() + 1), flags, &prepared, nullptr));
  return StatementHandle(prepared);
}

// Chains of links are as long as this. The profiles of one depth lie side by side, their ids from kFirstId on.
constexpr uint32_t kDeepest = 10;
constexpr uint32_t kFirstId = 10'001;  // behind the one id that no profile may have

// A settings database, which is also the user's. A root stores three of four columns, the others one of eight.
class Database {
 public:
  Database(const std::filesystem::path& parent, uint32_t profiles) : chains_(profiles / kDeepest) {
    const std::filesystem::path folder = parent / std::to_string(profiles);
    std::filesystem::create_directories(folder);
    userFolder_ = folder.wstring();
    databasePlatform.userDataDirectory = [] { return userFolder_; };
    file_ = (folder / kSettingsDatabaseFile).wstring();

    const ConnectionHandle connection = Open(file_, SQLITE_OPEN_CREATE);
    Run(connection.get(), "pragma journal_mode = off; pragma synchronous = off");
    Run(connection.get(), kSchemaSql);
    Run(connection.get(), "begin");
    const StatementHandle insert =
        Prepare(connection.get(), "insert into Profiles values (" +
                                      ForEachColumn([](const std::string&, const std::string&) { return "?"; }) + ")");
    for (uint32_t index = 0; index < profiles; ++index) {
      BindProfile(insert.get(), index);
      Expect(connection.get(), SQLITE_DONE, sqlite3_step(insert.get()));
      sqlite3_reset(insert.get());
      sqlite3_clear_bindings(insert.get());
    }
    Run(connection.get(), "commit");
  }
  ~Database() { Singleton<SQLiteDatabaseManager>::Get()->GetDatabase(file_)->Close(); }
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;

  const std::wstring& File() const { return file_; }
  uint32_t Chains() const { return chains_; }

  // The id of the profile at a depth, 1 for the root, of a chain, counted from 0.
  uint32_t Id(uint32_t depth, uint32_t chain) const { return kFirstId + (depth - 1) * chains_ + chain; }

 private:
  static void Run(sqlite3* connection, const char* sql) {
    Expect(connection, SQLITE_OK, sqlite3_exec(connection, sql, nullptr, nullptr, nullptr));
  }

  void BindProfile(sqlite3_stmt* insert, uint32_t index) const {
    const bool root = index < chains_;
    for (size_t column = 0; column < kColumns; ++column) {
      const int parameter = static_cast<int>(column + 1);
      const ColumnKind kind = Columns()[column].kind;
      if (kind == ColumnKind::Key) {
        sqlite3_bind_int64(insert, parameter, kFirstId + index);
      } else if (kind == ColumnKind::ParentKey) {
        if (!root) sqlite3_bind_int64(insert, parameter, kFirstId + index - chains_);
      } else if (column != kNameColumn && (root ? column % 4 == 0 : (column + index / chains_) % 8 != 0)) {
        continue;  // NULL
      } else if (kind == ColumnKind::Text) {
        const std::string text = "value " + std::to_string(column) + " of profile " + std::to_string(index);
        sqlite3_bind_text(insert, parameter, text.c_str(), -1, SQLITE_TRANSIENT);
      } else if (kind == ColumnKind::Character) {
        sqlite3_bind_text(insert, parameter, index % 2 == 0 ? "m" : "n", -1, SQLITE_STATIC);
      } else {
        sqlite3_bind_int64(insert, parameter, kind == ColumnKind::Boolean ? index % 2 : index % 10'000);
      }
    }
  }

  uint32_t chains_;
  std::wstring file_;
  inline static std::wstring userFolder_;
};

// The values of a profile in the order of its columns. A column uses one of both.
struct Row {
  std::array<int64_t, kColumns> numbers{};
  std::array<std::u16string, kColumns> texts;

  bool operator==(const Row&) const = default;
};

Row RowOf(const Profile& profile) {
  Row row;
  for (size_t column = 0; column < kColumns; ++column) {
    const ColumnValue value = Columns()[column].read(profile);
    if (const auto* text = std::get_if<std::wstring>(&value)) {
      row.texts[column] = ToUtf16(*text);
    } else {
      row.numbers[column] = std::get<int64_t>(value);
    }
  }
  return row;
}

int64_t Number(std::u16string_view text) {
  const bool negative = text.starts_with(u'-');
  if (negative) text.remove_prefix(1);
  int64_t number = 0;
  for (const char16_t digit : text) number = number * 10 + (digit - u'0');
  return negative ? -number : number;
}

// The columns of the current row that are not NULL.
void Read(sqlite3_stmt* statement, Row& row) {
  for (size_t index = 0; index < kColumns; ++index) {
    const int column = static_cast<int>(index);
    const auto* const stored = static_cast<const char16_t*>(sqlite3_column_text16(statement, column));
    if (stored == nullptr) continue;
    const std::u16string_view text(stored, static_cast<size_t>(sqlite3_column_bytes16(statement, column)) / 2);
    switch (Columns()[index].kind) {
      case ColumnKind::Text:
        row.texts[index] = text;
        break;
      case ColumnKind::Character:
        row.numbers[index] = text.empty() ? u'\0' : text.front();
        break;
      case ColumnKind::Boolean:
        row.numbers[index] = Number(text) != 0 ? 1 : 0;
        break;
      default:
        row.numbers[index] = Number(text);
    }
  }
}

// The statements for one link, and for the columns of one profile.
constexpr char kLinkQuery[] = "select ProfileId, LinkProfile from Profiles where ProfileId = ?";

std::string ColumnsQuery() {
  return "select " + ForEachColumn([](const std::string& name, const std::string&) { return name; }) +
         " from Profiles where ProfileId = ?";
}

class OneByOne {
 public:
  explicit OneByOne(const Database& database) : connection_(Open(database.File())) {}

  void Load(uint32_t id, Row& row) const {
    row = defaults_;
    std::vector<int> chain;
    for (int link = static_cast<int>(id); link != 0;) {
      const StatementHandle list = Execute(list_, link);
      chain.push_back(link);
      link = sqlite3_column_int(list.get(), 1);
      Expect(connection_.get(), SQLITE_DONE, sqlite3_step(list.get()));
    }
    for (; !chain.empty(); chain.pop_back()) {
      const StatementHandle load = Execute(load_, chain.back());
      Read(load.get(), row);
      Expect(connection_.get(), SQLITE_DONE, sqlite3_step(load.get()));
    }
  }

 private:
  StatementHandle Execute(const std::string& sql, int id) const {
    StatementHandle statement = Prepare(connection_.get(), sql);
    sqlite3_bind_int(statement.get(), 1, id);
    Expect(connection_.get(), SQLITE_ROW, sqlite3_step(statement.get()));
    return statement;
  }

  const Row defaults_ = RowOf(Profile(0));
  const std::string list_ = kLinkQuery;
  const std::string load_ = ColumnsQuery();
  const ConnectionHandle connection_;
};

class KeptStatements {
 public:
  explicit KeptStatements(const Database& database) : connection_(Open(database.File())) {}

  void Load(uint32_t id, Row& row) const {
    row = defaults_;
    Finish(begin_);
    std::vector<int> chain;
    for (int link = static_cast<int>(id); link != 0;) {
      FindRow(list_, link);
      chain.push_back(link);
      link = sqlite3_column_int(list_.get(), 1);
      Finish(list_);
    }
    for (; !chain.empty(); chain.pop_back()) {
      FindRow(load_, chain.back());
      Read(load_.get(), row);
      Finish(load_);
    }
    Finish(commit_);
  }

 private:
  StatementHandle Keep(const std::string& sql) const {
    return Prepare(connection_.get(), sql, SQLITE_PREPARE_PERSISTENT);
  }

  void FindRow(const StatementHandle& statement, int id) const {
    sqlite3_bind_int(statement.get(), 1, id);
    Expect(connection_.get(), SQLITE_ROW, sqlite3_step(statement.get()));
  }

  void Finish(const StatementHandle& statement) const {
    Expect(connection_.get(), SQLITE_DONE, sqlite3_step(statement.get()));
    sqlite3_reset(statement.get());
  }

  const Row defaults_ = RowOf(Profile(0));
  const ConnectionHandle connection_;
  const StatementHandle begin_ = Keep("begin");
  const StatementHandle commit_ = Keep("commit");
  const StatementHandle list_ = Keep(kLinkQuery);
  const StatementHandle load_ = Keep(ColumnsQuery());
};

class OneQuery {
 public:
  explicit OneQuery(const Database& database)
      : connection_(Open(database.File())),
        statement_(Prepare(connection_.get(), Query(), SQLITE_PREPARE_PERSISTENT)) {}

  void Load(uint32_t id, Row& row) const {
    row = defaults_;
    sqlite3_bind_int64(statement_.get(), 1, id);
    Expect(connection_.get(), SQLITE_ROW, sqlite3_step(statement_.get()));
    Read(statement_.get(), row);
    sqlite3_reset(statement_.get());
  }

 private:
  // From the profile up to its root, each column the first value on the way that is not NULL; the root has them all.
  static std::string Query() {
    const std::string values = ForEachColumn([](const std::string&, const std::string& index) { return "C" + index; });
    return "with recursive Chain(Link, " + values + ") as (select LinkProfile, " +
           ForEachColumn([](const std::string& name, const std::string&) { return name; }) +
           " from Profiles where ProfileId = ? union all select P.LinkProfile, " +
           ForEachColumn([](const std::string& name, const std::string& index) {
             return "ifnull(C" + index + ", P." + name + ")";
           }) +
           " from Chain join Profiles as P on P.ProfileId = Link where Link <> 0) select " + values +
           " from Chain where ifnull(Link, 0) = 0";
  }

  const Row defaults_ = RowOf(Profile(0));
  const ConnectionHandle connection_;
  const StatementHandle statement_;
};

// All ways of loading from one database: first those of the module.
class Contest {
 public:
  explicit Contest(const Database& database)
      : database_(database), oneByOne_(database), oneQuery_(database), keptStatements_(database) {}

  static constexpr std::array kNames = {"module", "new object", "new record", "(a)", "(b)", "(c)"};
  static constexpr size_t kOfModule = 3;

  void Load(size_t candidate, uint32_t id) {
    switch (candidate) {
      case 0:
        return ExpectLoaded(profiles_.LoadProfileById(id, *profile_));
      case 1:
        return ExpectLoaded(Profiles().LoadProfileById(id, *profile_));
      case 2:
        return ExpectLoaded(profiles_.LoadProfileById(id, *(profile_ = std::make_shared<Profile>(0))));
      case 3:
        return oneByOne_.Load(id, row_);
      case 4:
        return oneQuery_.Load(id, row_);
      default:
        return keptStatements_.Load(id, row_);
    }
  }

  // Throws when the candidates do not agree.
  void Compare(uint32_t depth) {
    for (int load = 0; load < 20; ++load) {
      const uint32_t id = AnyProfile(depth);
      Load(0, id);
      const Row expected = RowOf(*profile_);
      for (size_t candidate = 1; candidate < kNames.size(); ++candidate) {
        Load(candidate, id);
        if ((candidate < kOfModule ? RowOf(*profile_) : row_) == expected && expected.numbers[0] == id) continue;
        throw std::runtime_error(std::string(kNames[candidate]) + " reads other values than the module of profile " +
                                 std::to_string(id));
      }
    }
  }

  // Any profile of that depth.
  uint32_t AnyProfile(uint32_t depth) {
    return database_.Id(depth, static_cast<uint32_t>(random_() % database_.Chains()));
  }

 private:
  static void ExpectLoaded(bool loaded) {
    if (!loaded) throw std::runtime_error("the module could not load a profile");
  }

  const Database& database_;
  const OneByOne oneByOne_;
  const OneQuery oneQuery_;
  const KeptStatements keptStatements_;
  Profiles profiles_;
  std::shared_ptr<Profile> profile_ = std::make_shared<Profile>(0);
  Row row_;
  std::mt19937 random_;
};

constexpr size_t kCandidates = Contest::kNames.size();

using Clock = std::chrono::steady_clock;
using Microseconds = std::chrono::duration<double, std::micro>;

void MeasureTime(Contest& contest, uint32_t profiles, uint32_t depth) {
  constexpr size_t kRounds = 1'000;
  std::array<std::vector<double>, kCandidates> times;
  std::array<size_t, kCandidates> turns{};
  std::iota(turns.begin(), turns.end(), size_t{0});
  std::mt19937 random;
  for (size_t round = 0; round < kRounds; ++round) {
    // In turns, so that what else the machine does meets all; shuffled, so that nobody always finds its code in the
    // processor's cache.
    std::ranges::shuffle(turns, random);
    for (const size_t candidate : turns) {
      const uint32_t id = contest.AnyProfile(depth);
      const Clock::time_point start = Clock::now();
      contest.Load(candidate, id);
      times[candidate].push_back(Microseconds(Clock::now() - start).count());
    }
  }
  std::printf("| %u | %u |", profiles, depth);
  for (std::vector<double>& samples : times) {
    std::ranges::sort(samples);
    std::printf(" %.0f / %.0f |", samples[kRounds / 2], samples[kRounds * 95 / 100]);
  }
  for (size_t other = Contest::kOfModule; other < kCandidates; ++other) {
    std::printf(" %.2f |", times[0][kRounds / 2] / times[other][kRounds / 2]);
  }
  std::puts("");
}

void MeasureMemory(Contest& contest, const Database& database, uint32_t depth) {
  const uint32_t id = database.Id(depth, 0);
  for (size_t candidate = 0; candidate < kCandidates; ++candidate) {
    contest.Load(candidate, id);
    tally = {.on = true};
    contest.Load(candidate, id);
    tally.on = false;
    std::printf("| %u | %s | %lld | %lld | %lld |\n", depth, Contest::kNames[candidate],
                static_cast<long long>(tally.own), static_cast<long long>(tally.sqlite),
                static_cast<long long>(tally.peak));
  }
}

// What making a record costs that nothing is loaded into; all are kept.
void MeasureRecords() {
  constexpr size_t kRecords = 1'000;
  constexpr size_t kRounds = 51;
  std::vector<std::shared_ptr<Profile>> records(kRecords);
  std::vector<double> times;
  for (size_t round = 0; round < kRounds; ++round) {
    std::ranges::fill(records, nullptr);
    const Clock::time_point start = Clock::now();
    for (auto& record : records) record = std::make_shared<Profile>(0);
    times.push_back(Microseconds(Clock::now() - start).count() * 1000 / kRecords);
  }
  std::ranges::sort(times);
  tally = {.on = true};
  const auto record = std::make_shared<Profile>(0);
  tally.on = false;
  std::printf("| %lld | %lld | %.0f |\n", static_cast<long long>(tally.own), static_cast<long long>(tally.bytes),
              times[kRounds / 2]);
}

constexpr std::array kDepths = {1U, 3U, kDeepest};

void PrintTimesHeader() {
  std::printf("| profiles | depth |");
  for (const char* name : Contest::kNames) std::printf(" %s |", name);
  std::puts(
      " to (a) | to (b) | to (c) |\n"
      "|---:|---:|---:|---:|---:|---:|---:|---:|---:|---:|---:|");
}

// Opens the database anew, as the first process on the machine that uses one does: SQLite tells the module of every
// statement. That goes for all connections of the process, and for ever.
void OpenAsFirstProcess(const Database& database) {
  const auto shared = Singleton<SQLiteDatabaseManager>::Get()->GetDatabase(database.File());
  shared->Close();
  sqlite3_shutdown();
  databasePlatform.createInstanceMutex = [](const std::wstring&) { return InstanceMutex{nullptr, true}; };
  Expect(nullptr, SQLITE_OK, shared->Open(true, database.File()));
}

// Throws when SQLite, which can tell of its statements, does not.
void CheckStatementLog(Contest& contest) {
  static bool asked;
  asked = false;
  const auto isTraceFlagSet = databasePlatform.isTraceFlagSet;
  databasePlatform.isTraceFlagSet = [](unsigned) { return asked = true, false; };
  contest.Load(0, contest.AnyProfile(1));
  databasePlatform.isTraceFlagSet = isTraceFlagSet;
  if (!asked && sqlite3_compileoption_used("ENABLE_SQLLOG") != 0) throw std::runtime_error("SQLite has no log");
}

void MeasureFirstProcess(const std::filesystem::path& folder) {
  PrintTimesHeader();
  const Database database(folder / "first", 1'000U);
  OpenAsFirstProcess(database);
  Contest contest(database);
  CheckStatementLog(contest);
  for (const uint32_t depth : kDepths) contest.Compare(depth);
  for (const uint32_t depth : kDepths) MeasureTime(contest, 1'000U, depth);
}

void MeasureAll() {
  if (Columns().size() != kColumns) throw std::runtime_error("a profile has another number of columns");
  const TemporaryFolder folder;
  PrintTimesHeader();
  for (const uint32_t profiles : {10U, 1'000U, 100'000U}) {
    const Database database(folder.Path(), profiles);
    Contest contest(database);
    for (const uint32_t depth : kDepths) contest.Compare(depth);
    for (const uint32_t depth : kDepths) MeasureTime(contest, profiles, depth);
  }

  std::puts(
      "\n| depth | candidate | C++ allocations | SQLite allocations | peak bytes |\n"
      "|---:|---|---:|---:|---:|");
  {
    const Database database(folder.Path(), 11 * kDeepest);
    Contest contest(database);
    for (const uint32_t depth : kDepths) MeasureMemory(contest, database, depth);
  }

  std::puts("\n| allocations | bytes | ns |\n|---:|---:|---:|");
  MeasureRecords();

  std::puts("");
  MeasureFirstProcess(folder.Path());
}

}  // namespace

int main() {
  try {
    TallySqlite();
    // As a process that is not the first one: SQLite's own log would also burden the hand-written code.
    databasePlatform.createInstanceMutex = [](const std::wstring&) { return InstanceMutex{}; };
    MeasureAll();
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "%s\n", failure.what());
    return 1;
  }
  return 0;
}
