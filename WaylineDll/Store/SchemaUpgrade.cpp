#include "WaylineDll/Store/SchemaUpgrade.h"

#include <sqlite3.h>

#include <array>
#include <filesystem>

#include "NetUtilities/Text/Format.h"
#include "WaylineDll/Store/EmbeddedSql.h"
#include "WaylineDll/Store/Failures.h"
#include "WaylineDll/Store/OpenConnection.h"
#include "WaylineDll/Store/UnfinishedFile.h"

namespace {

using std::filesystem::path;

// The first is that from the oldest version, each leads to the next one.
constexpr std::array kUpgrades = {kUpgrade1Sql};
static_assert(kUpgrades.size() == kCurrentVersion - kOldestVersion);

Failure CopyFailure(const std::wstring& file, std::wstring_view reason) {
  return UseFailure(
      file, Format(L"it is of an older version of Wayline, and cannot be copied before it is upgraded: {}", reason));
}

// Reads through a connection of its own: one that is in a transaction cannot be copied from.
Failure Copy(const std::wstring& file, const std::wstring& copy) {
  const UnfinishedFile unfinished(copy);
  {
    ConnectionHandle source;
    int32_t code = OpenConnection(file, SQLITE_OPEN_READONLY, source);
    if (code != SQLITE_OK) return CopyFailure(file, ReasonText(source.get(), code));
    ConnectionHandle target;
    code = OpenConnection(unfinished.Name(), SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, target);
    if (code == SQLITE_CANTOPEN) return CopyFailure(file, kReadOnlyFolder);
    sqlite3_backup* const backup =
        code == SQLITE_OK ? sqlite3_backup_init(target.get(), "main", source.get(), "main") : nullptr;
    if (backup != nullptr) {
      sqlite3_backup_step(backup, -1);
      code = sqlite3_backup_finish(backup);
    } else if (code == SQLITE_OK) {
      code = sqlite3_extended_errcode(target.get());
    }
    if (code != SQLITE_OK) return CopyFailure(file, ReasonText(target.get(), code));
  }
  const std::error_code error = unfinished.TakePlace();
  return error ? CopyFailure(file, ReasonText(error)) : Failure();
}

}  // namespace

std::wstring CopyBeforeUpgrade(const std::wstring& file, int64_t version) {
  const path original(file);
  const std::wstring name =
      Format(L"{}.version{}{}", original.stem().wstring(), version, original.extension().wstring());
  return (original.parent_path() / name).wstring();
}

Failure UpgradeSchema(sqlite3* connection, const std::wstring& file, int64_t version) {
  if (Failure failure = Copy(file, CopyBeforeUpgrade(file, version))) return failure;
  for (int64_t from = version; from < kCurrentVersion; ++from) {
    const char* const statements = kUpgrades.at(static_cast<size_t>(from - kOldestVersion));
    const int32_t code = sqlite3_exec(connection, statements, nullptr, nullptr, nullptr);
    if (code != SQLITE_OK) return UseFailure(file, connection, code);
  }
  return {};
}
