// Settings databases with any content: what is loaded is what the same file says when it is asked another way, and the
// file stays as it is.

#include <sqlite3.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <vector>

#include "Database/Profiles/ProfileNames.h"
#include "Database/Profiles/Profiles.h"
#include "Database/Profiles/ServiceInfo.h"
#include "Database/SQLite/SQLiteDatabaseManager.h"
#include "Database/SQLite/SQLiteHandles.h"
#include "NetUtilities/Module/Singleton.h"
#include "NetUtilities/Text/Utf16.h"
#include "NetUtilities/Text/Utf8.h"
#include "tests/Database/SQLite/MemberText.h"
#include "tests/fuzz/DatabaseFuzz.h"
#include "tests/fuzz/DecimalReference.h"
#include "tests/fuzz/Require.h"
#include "tests/support/FileBytes.h"
#include "tests/support/LogCapture.h"

namespace {

// The end of the chain, which leads through all that the base stores, and a profile that is not stored.
constexpr uint32_t kIds[] = {2001, 3};
constexpr size_t kLongestChain = 8;

StatementHandle Prepare(sqlite3* connection, const std::string& sql) {
  sqlite3_stmt* prepared = nullptr;
  sqlite3_prepare_v2(connection, sql.c_str(), -1, &prepared, nullptr);
  return StatementHandle(prepared);
}

// What a loader should find: that the chain has no end, a failure, or the text of each column that is stored.
struct Expected {
  bool endless = false;
  bool failed = false;
  bool found = false;
  std::vector<std::optional<std::u16string>> columns;
};

void ReadRow(sqlite3_stmt* row, Expected& expected) {
  for (size_t column = 0; column < expected.columns.size(); ++column) {
    const auto index = static_cast<int>(column);
    const void* const text = sqlite3_column_text16(row, index);
    if (text == nullptr || expected.columns[column]) continue;
    expected.columns[column].emplace(static_cast<const char16_t*>(text),
                                     static_cast<size_t>(sqlite3_column_bytes16(row, index)) / sizeof(char16_t));
  }
}

// From the profile up to its root; the nearest value counts.
Expected Expect(sqlite3* connection, uint32_t id, const SQLRecord& record) {
  Expected expected;
  expected.columns.resize(record.GetBindings().size());
  const StatementHandle links = Prepare(connection, "select ProfileId, LinkProfile from Profiles where ProfileId = ?1");
  const StatementHandle rows = Prepare(
      connection, "select " + ToUtf8(ColumnNames(record.GetBindings())) + " from Profiles where ProfileId = ?1");
  std::vector<int> chain;
  for (int current = static_cast<int>(id), parent = 0;;) {
    sqlite3_bind_int(links.get(), 1, current);
    int result = SQLITE_MISUSE;
    bool stored = false;
    while ((result = sqlite3_step(links.get())) == SQLITE_ROW) {
      stored = true;
      chain.push_back(sqlite3_column_int(links.get(), 0));
      parent = sqlite3_column_int(links.get(), 1);
    }
    sqlite3_reset(links.get());
    expected.failed = result != SQLITE_DONE;
    if (expected.failed || parent == 0) break;
    expected.endless = !stored || chain.size() > kLongestChain;
    if (expected.endless) return expected;
    current = parent;
  }
  for (const int key : chain) {
    if (expected.failed) break;
    sqlite3_bind_int(rows.get(), 1, key);
    int result = sqlite3_step(rows.get());
    if (result == SQLITE_ROW) {
      expected.found = true;
      ReadRow(rows.get(), expected);
      result = sqlite3_step(rows.get());
    }
    sqlite3_reset(rows.get());
    expected.failed = result != SQLITE_DONE;
  }
  return expected;
}

std::wstring ExpectedText(ColumnKind kind, const std::u16string& stored) {
  const DecimalReference number{std::u16string_view(stored)};
  switch (kind) {
    case ColumnKind::Text:
      return FromUtf16(std::u16string_view(stored));
    case ColumnKind::Character:
      return std::wstring(1, stored.empty() ? L'\0' : static_cast<wchar_t>(stored.front()));
    case ColumnKind::Boolean:
      return number.Clamped<int32_t>() != 0 ? L"true" : L"false";
    case ColumnKind::Integer64:
      return std::to_wstring(number.Clamped<int64_t>());
    default:
      return std::to_wstring(static_cast<int32_t>(number.Clamped<int64_t>()));
  }
}

size_t CountErrors(const LogCapture& log) {
  return static_cast<size_t>(std::ranges::count(log.Messages(), LogLevel::Error, &LogCapture::Message::level));
}

void CheckProfile(sqlite3* connection, uint32_t id) {
  static const Profile defaults(0);
  const Expected expected = Expect(connection, id, defaults);
  if (expected.endless || DatabaseFuzz::IsExhausted()) return;

  const LogCapture log;
  Profiles profiles;
  Profile profile(77);
  const bool loaded = profiles.LoadProfileById(id, profile);
  if (DatabaseFuzz::IsExhausted()) return;
  Require(loaded == !expected.failed);
  Require(CountErrors(log) == (loaded ? 0 : 2));
  if (!loaded) return;
  for (size_t column = 0; column < expected.columns.size(); ++column) {
    const ColumnBinding& binding = profile.GetBindings()[column];
    const auto& stored = expected.columns[column];
    Require(MemberText(profile, binding) ==
            (stored ? ExpectedText(binding.kind, *stored) : MemberText(defaults, binding)));
  }
}

void CheckService(sqlite3* connection, uint32_t id) {
  const LogCapture log;
  const ServiceRecord record;
  const StatementHandle rows =
      Prepare(connection, "select " + ToUtf8(ColumnNames(record.GetBindings())) + " from Services");
  std::optional<std::wstring> displayText;
  int result = SQLITE_MISUSE;
  while ((result = sqlite3_step(rows.get())) == SQLITE_ROW) {
    const auto text = [&rows](int column) {
      const void* const units = sqlite3_column_text16(rows.get(), column);
      return std::u16string(static_cast<const char16_t*>(units != nullptr ? units : u""),
                            static_cast<size_t>(sqlite3_column_bytes16(rows.get(), column)) / sizeof(char16_t));
    };
    const std::u16string serviceId = text(0);
    text(1);
    const std::u16string shown = text(2);
    const auto number = static_cast<int32_t>(DecimalReference{std::u16string_view(serviceId)}.Clamped<int64_t>());
    if (static_cast<uint32_t>(number) == id && !displayText) displayText = FromUtf16(std::u16string_view(shown));
  }
  if (DatabaseFuzz::IsExhausted()) return;
  const bool readable = result == SQLITE_DONE;

  ServiceInfo services;
  const bool found = services.Load(id == ServiceInfo::kDefaultService ? 0 : id);
  if (DatabaseFuzz::IsExhausted()) return;
  Require(found == (readable && displayText.has_value()));
  Require(CountErrors(log) == (found ? 0u : readable ? 1u : 2u));
  Require(services.GetDisplayText() == (found ? *displayText : std::wstring()));
}

// Profile 1 is a root; 2 is linked to it, and 2001 to 2. Small pages, so that there are several.
std::string MakeBase(const DatabaseFuzz& database) {
  const std::string columns = ToUtf8(ColumnNames(Profile(0).GetBindings()));
  RunOnFile(database.File(),
            "pragma page_size = 512; create table Profiles (" + columns +
                ", primary key (ProfileId)); create table Services (ServiceId, Name, DisplayText);"
                "insert into Profiles (ProfileId, Name, Account, DNS1Setting, WarnTime, HelpdeskText) "
                "values (1, 'root', 'Example', 'm', '60', '" +
                std::string(600, 'h') +
                "');"
                "insert into Profiles (ProfileId, Name, LinkProfile, DefaultProxy, STObtainedTimeInSeconds) "
                "values (2, 'middle', 1, 0, 5000000000), (2001, 'leaf', 2, '1', -7);"
                "insert into Services values (400, 'default', 'Any network'), (7, 'other', 'Office')");
  return FileBytes(database.File());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const DatabaseFuzz database;
  static const std::string base = MakeBase(database);
  const std::string image = database.WriteImage(base, data, size);
  const std::shared_ptr<SQLiteDatabase> shared = Singleton<SQLiteDatabaseManager>::Get()->GetDatabase(database.File());
  {
    const LogCapture log;
    if (shared->Open(false, database.File()) != SQLITE_OK) {
      Require(CountErrors(log) == 1);
      return 0;
    }
  }
  for (const uint32_t id : kIds) CheckProfile(shared->GetConnection(), id);
  for (const uint32_t id : {ServiceInfo::kDefaultService, 7u}) CheckService(shared->GetConnection(), id);
  Require(shared->Close() == SQLITE_OK);
  Require(FileBytes(database.File()) == image);
  return 0;
}
