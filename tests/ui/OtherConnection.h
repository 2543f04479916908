#pragma once

#include <map>
#include <string>
#include <vector>

#include "Database/SQLite/SQLiteHandles.h"

/// A row of an answer: the texts of its columns by their names, "NULL" where there is none.
using Row = std::map<std::string, std::string>;

/// Runs statements on a settings database as another program would, on a connection that is opened for them alone.
std::vector<Row> RunSql(const std::wstring& file, const std::string& statements);

/// The first value that a statement finds in the database; empty when it finds none.
std::string StoredValue(const std::wstring& file, const std::string& statement);

/// Another program's connection that has begun something ("BEGIN EXCLUSIVE") and holds its locks while it lives.
ConnectionHandle LockDatabase(const std::wstring& file, const std::string& begin);
