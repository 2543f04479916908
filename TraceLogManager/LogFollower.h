#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "TraceLogManager/LogFileFormat.h"
#include "TraceLogManager/LogView.h"

/// Follows the daily log file while it is written, and from day to day.
class LogFollower {
 public:
  /// `folder` is that of the log files; `today` gives the date.
  LogFollower(std::wstring folder, std::function<LogDate()> today, LogViewFilter filter);

  /// The lines that were written since the last call and pass the filter, as LogView shows them; at the first call the
  /// last ten that there are. A file that does not exist has none.
  std::vector<std::string> Next();

 private:
  void ReadRest(std::vector<std::string>& lines);

  std::wstring folder_;
  std::function<LogDate()> today_;
  LogView view_;
  std::wstring file_;
  uint64_t fileIndex_ = 0;  // tells the file from another one that takes its name
  int64_t position_ = 0;    // of the first byte that was not read yet
};
