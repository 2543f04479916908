#include "WaylineDll/Store/Failures.h"

#include <sqlite3.h>

#include "NetUtilities/Text/Format.h"
#include "NetUtilities/Text/Utf8.h"

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
      return L"the file is protected, in use, or in a folder that does not exist";
    default:
      return FromUtf8(connection != nullptr ? sqlite3_errmsg(connection) : sqlite3_errstr(code));
  }
}

std::wstring ReasonText(sqlite3* connection) { return ReasonText(connection, sqlite3_errcode(connection)); }
