#pragma once

#include <map>
#include <string>
#include <string_view>

/// How many messages of each name there are in `log`, text of the logging service's files, among the names that begin
/// with `start`. Such a message is "NAME NUMBER". The test fails when the numbers of a name do not count up from 0, or
/// when a line that tells of such a name is no complete record.
std::map<std::string, int> CountNumberedMessages(const std::string& log, std::string_view start);
