#pragma once

#include <windows.h>

#include <functional>
#include <mutex>
#include <string>
#include <string_view>

#include "NetUtilities/Module/Handle.h"
#include "TraceLogManager/LogFileFormat.h"

/// Today's date on the local calendar.
LogDate LocalDate();

/// The log file of the day, to which any thread of any number of processes may append. It is held open between records,
/// and others may read, rename or delete it meanwhile: the next record then begins a new file.
class DailyLogFile {
 public:
  /// `folder` gives the folder of the log files, or empty text while it is not known; `today` gives the date. Both are
  /// asked for every record.
  DailyLogFile(std::function<std::wstring()> folder, std::function<LogDate()> today);

  /// Where the log files are; empty while that is not known.
  std::wstring Folder() const { return folder_(); }

  /// Full path of today's file, which need not exist; empty while the folder is not known.
  std::wstring Path() const;

  /// Appends the bytes of one record, complete with its line ends, in one piece.
  HRESULT Append(std::string_view record);

 private:
  HRESULT Open(const std::wstring& path);

  std::function<std::wstring()> folder_;
  std::function<LogDate()> today_;

  std::mutex mutex_;
  Handle file_;
};
