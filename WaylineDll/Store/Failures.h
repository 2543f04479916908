#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <system_error>

#include "WaylineDll/SettingsTables.h"

struct sqlite3;

// The sentences in which the store tells people what went wrong. A reason is the end of a sentence, without its stop.

inline constexpr std::wstring_view kForeignFile = L"it is not a settings database of Wayline";
inline constexpr std::wstring_view kReadOnlyFile = L"the settings database is read-only";
inline constexpr std::wstring_view kNoProfileIdLeft = L"there are as many login profiles as there can be";
inline constexpr std::wstring_view kReadOnlyFolder = L"the folder of the settings database cannot be written to";

/// A file that exists cannot be used.
Failure UseFailure(const std::wstring& file, std::wstring_view reason);

/// The same for the reason that a SQLite result code tells. `connection` is the one that failed, or null.
Failure UseFailure(const std::wstring& file, sqlite3* connection, int32_t code);

/// A new file cannot be made.
Failure CreateFailure(const std::wstring& file, std::wstring_view reason);

/// All that was to be saved is as it was.
Failure SaveFailure(std::wstring_view reason);

/// The same because of one record.
Failure RowFailure(std::wstring_view record, std::wstring_view reason);

/// The reason for the last failure of a connection.
std::wstring ReasonText(sqlite3* connection);

/// The reason for a SQLite result code. `connection` is the one that failed, or null. What SQLite itself says is for
/// the log, and is logged here.
std::wstring ReasonText(sqlite3* connection, int32_t code);

/// The reason for a failure of the file system, which is logged likewise.
std::wstring ReasonText(const std::error_code& error);
