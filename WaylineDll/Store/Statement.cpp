#include "WaylineDll/Store/Statement.h"

#include <sqlite3.h>

#include "NetUtilities/Text/Utf8.h"

int32_t Statement::Prepare(sqlite3* connection, std::wstring_view sql) {
  const std::string utf8 = ToUtf8(sql);
  sqlite3_stmt* prepared = nullptr;
  const int code = sqlite3_prepare_v2(connection, utf8.data(), static_cast<int>(utf8.size()), &prepared, nullptr);
  statement_.reset(prepared);
  return code;
}

int32_t Statement::BindInteger(int parameter, int64_t value) {
  return sqlite3_bind_int64(statement_.get(), parameter, value);
}

int32_t Statement::BindText(int parameter, std::wstring_view text) {
  const std::string utf8 = ToUtf8(text);
  return sqlite3_bind_text64(statement_.get(), parameter, utf8.data(), utf8.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
}

int32_t Statement::Step() { return sqlite3_step(statement_.get()); }

int64_t Statement::Integer(int column) const { return sqlite3_column_int64(statement_.get(), column); }

std::wstring Statement::Text(int column) const {
  const auto* const text = reinterpret_cast<const char*>(sqlite3_column_text(statement_.get(), column));
  if (text == nullptr) return {};
  return FromUtf8(std::string(text, static_cast<size_t>(sqlite3_column_bytes(statement_.get(), column))));
}

int32_t RunStatement(sqlite3* connection, std::wstring_view sql) {
  Statement statement;
  int32_t code = statement.Prepare(connection, sql);
  if (code != SQLITE_OK) return code;
  do {
    code = statement.Step();
  } while (code == SQLITE_ROW);
  return code == SQLITE_DONE ? SQLITE_OK : code;
}

int32_t ReadNumber(sqlite3* connection, std::wstring_view sql, int64_t& number) {
  Statement statement;
  int32_t code = statement.Prepare(connection, sql);
  if (code == SQLITE_OK) code = statement.Step();
  if (code != SQLITE_ROW) return code;
  number = statement.Integer(0);
  return SQLITE_OK;
}
