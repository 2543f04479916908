#include "TraceLogManager/LogFollower.h"

#include <windows.h>

#include <iterator>
#include <string_view>
#include <utility>

#include "NetUtilities/Module/Handle.h"

namespace {

constexpr size_t kFirstLines = 10;

Handle OpenForReading(const std::wstring& file) {
  constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  return OwnUnlessInvalid(
      CreateFileW(file.c_str(), GENERIC_READ, kShareAll, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
}

constexpr uint64_t Join(DWORD high, DWORD low) { return uint64_t{high} << 32 | low; }

}  // namespace

LogFollower::LogFollower(std::wstring folder, std::function<LogDate()> today, LogViewFilter filter)
    : folder_(std::move(folder)), today_(std::move(today)), view_(std::move(filter)) {}

std::vector<std::string> LogFollower::Next() {
  const bool isFirst = file_.empty();
  std::vector<std::string> lines;
  const std::wstring todaysFile = folder_ + L'\\' + LogFileName(today_());
  if (file_ != todaysFile) {
    // The old day's file first, to its end.
    if (!isFirst) ReadRest(lines);
    file_ = todaysFile;
    position_ = 0;
    view_.BeginFile();
  }
  ReadRest(lines);
  if (isFirst && lines.size() > kFirstLines) {
    lines.erase(lines.begin(), std::prev(lines.end(), kFirstLines));
  }
  return lines;
}

void LogFollower::ReadRest(std::vector<std::string>& lines) {
  const Handle file = OpenForReading(file_);
  BY_HANDLE_FILE_INFORMATION information{};
  if (!file || GetFileInformationByHandle(file.get(), &information) == FALSE) return;
  const uint64_t index = Join(information.nFileIndexHigh, information.nFileIndexLow);
  const auto size = static_cast<int64_t>(Join(information.nFileSizeHigh, information.nFileSizeLow));
  if (index != fileIndex_ || size < position_) {
    // Somebody has taken the file away, and this is a new one.
    position_ = 0;
    view_.BeginFile();
  }
  fileIndex_ = index;

  LARGE_INTEGER start{};
  start.QuadPart = position_;
  if (SetFilePointerEx(file.get(), start, nullptr, FILE_BEGIN) == FALSE) return;
  std::string buffer(size_t{1} << 16, '\0');
  DWORD read = 0;
  while (ReadFile(file.get(), buffer.data(), static_cast<DWORD>(buffer.size()), &read, nullptr) != FALSE && read > 0) {
    position_ += read;
    std::vector<std::string> added = view_.Add(std::string_view(buffer.data(), read));
    lines.insert(lines.end(), std::move_iterator(added.begin()), std::move_iterator(added.end()));
  }
}
