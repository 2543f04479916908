#include "WaylineDll/Store/OpenConnection.h"

#include <sqlite3.h>

#include "NetUtilities/Text/Utf8.h"

int32_t OpenConnection(const std::wstring& file, int flags, ConnectionHandle& connection) {
  sqlite3* opened = nullptr;
  const int code = sqlite3_open_v2(ToUtf8(file).c_str(), &opened, flags | SQLITE_OPEN_EXRESCODE, nullptr);
  connection.reset(opened);
  if (code == SQLITE_OK) sqlite3_busy_timeout(opened, kBusyTimeout);
  return code;
}
