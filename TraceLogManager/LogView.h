#pragma once

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "TraceLogManager/LogFileFormat.h"

/// Which records of a log file are shown.
struct LogViewFilter {
  std::vector<uint32_t> sources;                                 // all when empty
  uint32_t maximumLevel = std::numeric_limits<uint32_t>::max();  // less severe records are left out

  bool Passes(uint32_t source, uint32_t level) const;
};

/// Makes out of a log file what a person reads: the records that pass a filter, with names for source and level.
class LogView {
 public:
  explicit LogView(LogViewFilter filter) : filter_(std::move(filter)) {}

  /// Takes the next bytes of the file and gives the lines that they complete, UTF-8 without line ends.
  std::vector<std::string> Add(std::string_view bytes);

  /// What follows is from another file.
  void BeginFile();

 private:
  LogViewFilter filter_;
  std::string unfinishedLine_;
  bool recordPasses_ = true;  // the record that the next line may continue
};
