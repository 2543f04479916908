// Statements with any text and values: the result is SQLite's own, and the error line shows the statement with its
// values filled in.

#include <sqlite3.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "Database/SQLite/SQLite.h"
#include "NetUtilities/Text/Utf16.h"
#include "NetUtilities/Text/Utf8.h"
#include "tests/fuzz/DatabaseFuzz.h"
#include "tests/fuzz/FuzzInput.h"
#include "tests/fuzz/Require.h"
#include "tests/support/LogCapture.h"

namespace {

// Statements may read, and nothing else.
int Authorize(void* /*data*/, int action, const char* /*first*/, const char* /*second*/, const char* /*database*/,
              const char* /*trigger*/) {
  switch (action) {
    case SQLITE_SELECT:
    case SQLITE_READ:
    case SQLITE_FUNCTION:
    case SQLITE_RECURSIVE:
      return SQLITE_OK;
    default:
      return SQLITE_DENY;
  }
}

bool EndsName(wchar_t character) {
  return character == L',' || character == L' ' || character == L')' || character == L';';
}

std::wstring Filled(const std::wstring& statement, const std::vector<int32_t>& values) {
  std::vector<std::pair<std::wstring, int32_t>> parameters;
  for (size_t at = 0; at < statement.size() && parameters.size() < values.size(); ++at) {
    if (statement[at] != L'@') continue;
    std::wstring name;
    while (at < statement.size() && !EndsName(statement[at])) name += statement[at++];
    parameters.emplace_back(name, values[parameters.size()]);
  }
  std::wstring text = statement;
  for (const auto& [name, value] : parameters) {
    for (size_t at = 0; at + name.size() <= text.size(); ++at) {
      if (text.compare(at, name.size(), name) != 0) continue;
      text = text.substr(0, at) + std::to_wstring(value) + text.substr(at + name.size());
      break;
    }
  }
  return text;
}

// The result of all that comes before the first step; 0 when that may be taken.
int ExpectedFailure(sqlite3* connection, const std::wstring& statement, size_t values) {
  sqlite3_stmt* prepared = nullptr;
  const int result = sqlite3_prepare16_v2(connection, ToUtf16(statement).c_str(), -1, &prepared, nullptr);
  const auto parameters = static_cast<size_t>(sqlite3_bind_parameter_count(prepared));
  const bool empty = prepared == nullptr;
  sqlite3_finalize(prepared);
  if (result != SQLITE_OK) return result;
  if (empty) return SQLITE_MISUSE;
  return values > parameters ? SQLITE_RANGE : SQLITE_OK;
}

bool HasStatementUnderWay(sqlite3* connection) {
  sqlite3_stmt* statement = nullptr;
  while ((statement = sqlite3_next_stmt(connection, statement)) != nullptr) {
    if (sqlite3_stmt_busy(statement) != 0) return true;
  }
  return false;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const DatabaseFuzz database;
  static SQLite sqlite;
  if (sqlite.GetDatabase() == nullptr) {
    RunOnFile(database.File(),
              "create table Profiles (ProfileId integer primary key, LinkProfile, Name);"
              "insert into Profiles values (1, 0, 'root'), (2, 1, 'leaf')");
    Require(sqlite.Open() == SQLITE_OK);
    sqlite3_set_authorizer(sqlite.GetDatabase()->GetConnection(), Authorize, nullptr);
  }
  sqlite3* const connection = sqlite.GetDatabase()->GetConnection();

  FuzzInput input(data, size);
  std::vector<int32_t> values(input.Byte() % 9);
  for (int32_t& value : values) value = input.Number<int32_t>();
  const std::wstring statement = input.WideRest();
  DatabaseFuzz::CountSteps();
  const int failure = ExpectedFailure(connection, statement, values.size());

  const LogCapture log;
  const std::source_location here = std::source_location::current();
  int32_t result = SQLITE_OK;
  {
    SQLContext context;
    std::wstring given = statement;
    std::vector<int32_t> bound = values;
    result = sqlite.Execute(context, std::move(given), std::move(bound));
    Require(given.empty() && bound.empty());  // NOLINT(bugprone-use-after-move): that is the contract
    Require(failure == SQLITE_OK ? result != SQLITE_OK : result == failure);
    Require(log.Messages().empty());
    sqlite.ReportError(result, here);
    Require(log.Messages().size() == 1);
  }
  const LogCapture::Message& message = log.Messages().front();
  Require(message.source == LogSource::General && message.level == LogLevel::Error);
  Require(message.text == L"SQLite: " + FromUtf8(here.function_name()) + L" Error: " + std::to_wstring(result) +
                              L" - " + FromUtf8(sqlite3_errstr(result)) + L" - " + Filled(statement, values));
  Require(!HasStatementUnderWay(connection));
  return 0;
}
