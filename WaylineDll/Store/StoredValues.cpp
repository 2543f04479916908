#include "WaylineDll/Store/StoredValues.h"

#include <sqlite3.h>

#include <charconv>

#include "NetUtilities/Log.h"
#include "NetUtilities/Text/Format.h"
#include "NetUtilities/Text/Utf8.h"
#include "WaylineDll/Store/Failures.h"
#include "WaylineDll/Store/Statement.h"

namespace {

constexpr std::wstring_view kConnectionState = L"ConnectionState";
constexpr std::wstring_view kProxyLocation = L"ProxyLocation";

int32_t Bind(Statement& statement, int parameter, std::wstring_view text) {
  return statement.BindText(parameter, text);
}

int32_t Bind(Statement& statement, int parameter, uint32_t number) { return statement.BindInteger(parameter, number); }

// The text that a statement gives for a key, its only parameter.
template <typename Key>
std::optional<std::wstring> Read(sqlite3* connection, std::wstring_view sql, Key key) {
  Statement statement;
  int32_t code = statement.Prepare(connection, sql);
  if (code == SQLITE_OK) code = Bind(statement, 1, key);
  if (code == SQLITE_OK) code = statement.Step();
  if (code == SQLITE_ROW) return statement.Text(0);
  if (code != SQLITE_DONE)
    Log(LogLevel::Error, Format(L"Value {} cannot be read: {}", key, ReasonText(connection, code)));
  return {};
}

// Stores a value under a key, the parameters of the statement.
template <typename Key>
Failure Write(sqlite3* connection, std::wstring_view sql, Key key, std::wstring_view value) {
  Statement statement;
  int32_t code = statement.Prepare(connection, sql);
  if (code == SQLITE_OK) code = Bind(statement, 1, key);
  if (code == SQLITE_OK) code = statement.BindText(2, value);
  if (code == SQLITE_OK) code = statement.Step();
  return code == SQLITE_DONE ? Failure() : SaveFailure(ReasonText(connection, code));
}

// A number of the client's state that is at most `highest`; 0 when it is missing.
uint32_t ReadState(sqlite3* connection, std::wstring_view name, uint32_t highest) {
  const auto text = Read(connection, L"SELECT Value FROM ClientState WHERE Name = ?1", name);
  if (!text) return 0;
  const std::string digits = ToUtf8(*text);
  uint32_t number = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
  if (error == std::errc() && end == digits.data() + digits.size() && number <= highest) return number;
  Log(LogLevel::Error, Format(L"Value {} is not known: '{}'", name, *text));
  return 0;
}

}  // namespace

FSMState StoredValues::GetConnectionState() const {
  return FSMState{ReadState(connection_, kConnectionState, static_cast<uint32_t>(FSMState::Disconnecting))};
}

Failure StoredValues::SetConnectionState(FSMState state) const {
  return Write(connection_, L"INSERT OR REPLACE INTO ClientState (Name, Value) VALUES (?1, ?2)", kConnectionState,
               std::to_wstring(static_cast<uint32_t>(state)));
}

uint32_t StoredValues::GetProxyLocation() const { return ReadState(connection_, kProxyLocation, UINT32_MAX); }

std::optional<std::wstring> StoredValues::GetBookmark(uint32_t id) const {
  return Read(connection_, L"SELECT Value FROM Bookmarks WHERE BookmarkId = ?1", id);
}

std::optional<bool> StoredValues::GetBookmarkFlag(uint32_t id) const {
  const auto text = GetBookmark(id);
  if (text == L"0") return false;
  if (text == L"1") return true;
  return {};
}

Failure StoredValues::SetBookmark(uint32_t id, std::wstring_view value) const {
  return Write(connection_, L"INSERT OR REPLACE INTO Bookmarks (BookmarkId, Value) VALUES (?1, ?2)", id, value);
}

int32_t ReadLastRemovedProfile(sqlite3* connection, uint32_t& id) {
  int64_t number = 0;
  const int32_t code = ReadNumber(
      connection, L"SELECT max(CAST(Value AS INTEGER)) FROM ClientState WHERE Name = 'LastRemovedProfile'", number);
  id = static_cast<uint32_t>(number);
  return code;
}

int32_t ReadConnectedProfile(sqlite3* connection, uint32_t& id) {
  static_assert(FSMState::Connected == FSMState{2});
  int64_t number = 0;
  const int32_t code = ReadNumber(
      connection,
      L"SELECT max(CAST(Value AS INTEGER)) FROM ClientState WHERE Name = 'ActiveProfile' AND EXISTS (SELECT 1 "
      L"FROM ClientState WHERE Name = 'ConnectionState' AND Value = '2')",
      number);
  id = static_cast<uint32_t>(number);
  return code;
}
