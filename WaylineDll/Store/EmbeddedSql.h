#pragma once

// Statements in UTF-8, compiled in from the files of their names.

/// Makes the tables of an empty settings database.
extern const char kSchemaSql[];

/// Fills new tables.
extern const char kSampleDataSql[];

/// Lead a settings database of the version in their name to the next one.
extern const char kUpgrade1Sql[];
