#include "WaylineDll/Store/Failures.h"

#include <sqlite3.h>

#include "NetUtilities/Log.h"
#include "NetUtilities/Text/Format.h"
#include "NetUtilities/Text/Utf8.h"

namespace {

constexpr std::wstring_view kUnreachableFile = L"the file is protected, in use, or in a folder that does not exist";

}  // namespace

Failure UseFailure(const std::wstring& file, std::wstring_view reason) {
  return Format(L"The file \"{}\" cannot be used: {}.", file, reason);
}

Failure CreateFailure(const std::wstring& file, std::wstring_view reason) {
  return Format(L"The settings database \"{}\" cannot be created: {}.", file, reason);
}

Failure SaveFailure(std::wstring_view reason) { return Format(L"Nothing was saved: {}.", reason); }

Failure RowFailure(std::wstring_view record, std::wstring_view reason) {
  return Format(L"Nothing was saved, because {} could not be stored: {}.", record, reason);
}

Failure UseFailure(const std::wstring& file, sqlite3* connection, int32_t code) {
  return UseFailure(file, ReasonText(connection, code));
}

std::wstring ReasonText(sqlite3* connection, int32_t code) {
  Log(LogSource::Database, LogLevel::Error,
      Format(L"({}) {}", code, FromUtf8(connection != nullptr ? sqlite3_errmsg(connection) : sqlite3_errstr(code))));
  switch (code) {
    case SQLITE_READONLY_DIRECTORY:
      return std::wstring(kReadOnlyFolder);
    case SQLITE_READONLY_ROLLBACK:
      return L"a save was interrupted, and whoever opens the file first must be allowed to write it";
    case SQLITE_READONLY_DBMOVED:
      return L"the settings database has been moved or deleted";
    case SQLITE_CONSTRAINT_TRIGGER:
      // The words of our own triggers.
      if (connection != nullptr) return FromUtf8(sqlite3_errmsg(connection));
      break;
    case SQLITE_CONSTRAINT_PRIMARYKEY:
    case SQLITE_CONSTRAINT_ROWID:
    case SQLITE_CONSTRAINT_UNIQUE:
      return L"there is another one with its id";
    default:
      break;
  }
  constexpr int32_t kPrimaryCode = 0xFF;
  switch (code & kPrimaryCode) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return L"the settings database is in use by another program";
    case SQLITE_READONLY:
      return std::wstring(kReadOnlyFile);
    case SQLITE_FULL:
      return L"the disk is full";
    case SQLITE_NOTADB:
      return std::wstring(kForeignFile);
    case SQLITE_CORRUPT:
      return L"the settings database is damaged";
    case SQLITE_CANTOPEN:
      return std::wstring(kUnreachableFile);
    case SQLITE_ERROR:
      // The statements are sound; what they name is not there.
      return L"the settings database is incomplete";
    case SQLITE_IOERR:
      return L"the settings database cannot be read or written";
    case SQLITE_NOMEM:
      return L"there is not enough memory";
    case SQLITE_CONSTRAINT:
    case SQLITE_MISMATCH:
    case SQLITE_TOOBIG:
      return L"the settings database does not allow one of the values";
    default:
      return Format(L"something unexpected has happened (error {})", code);
  }
}

std::wstring ReasonText(sqlite3* connection) { return ReasonText(connection, sqlite3_errcode(connection)); }

std::wstring ReasonText(const std::error_code& error) {
  Log(LogSource::Database, LogLevel::Error, Format(L"({}) {}", error.value(), FromUtf8(error.message())));
  return error == std::errc::no_space_on_device ? L"the disk is full" : std::wstring(kUnreachableFile);
}
