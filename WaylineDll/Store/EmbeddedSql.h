#pragma once

/// Statements that make the tables of an empty settings database: the text of Schema.sql, in UTF-8.
extern const char kSchemaSql[];

/// Statements that fill new tables: the text of SampleData.sql, in UTF-8.
extern const char kSampleDataSql[];
