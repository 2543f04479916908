#include "TraceLogManager/DailyLogFile.h"

#include <sddl.h>
#include <winternl.h>

#include <optional>
#include <utility>

namespace {

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

HRESULT LastError() { return HRESULT_FROM_WIN32(GetLastError()); }

Handle OpenFile(const std::wstring& path, DWORD access, SECURITY_ATTRIBUTES* security, DWORD disposition) {
  return OwnUnlessInvalid(
      CreateFileW(path.c_str(), access, kShareAll, security, disposition, FILE_ATTRIBUTE_NORMAL, nullptr));
}

// Every user's programs log into the same file, whoever of them created it: all may read it and append to it.
class SharedFileSecurity {
 public:
  SharedFileSecurity() {
    // Full access for the system, administrators and the owner; to read (0x120089) and to append (0x4) for users.
    constexpr wchar_t kAccess[] = L"D:P(A;;FA;;;SY)(A;;FA;;;BA)(A;;FA;;;S-1-3-4)(A;;0x12008d;;;AU)";
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    ConvertStringSecurityDescriptorToSecurityDescriptorW(kAccess, SDDL_REVISION_1, &descriptor, nullptr);
    descriptor_.reset(descriptor);
    attributes_.lpSecurityDescriptor = descriptor;
  }

  SECURITY_ATTRIBUTES* Attributes() { return &attributes_; }

 private:
  LocalMemory<void> descriptor_;
  SECURITY_ATTRIBUTES attributes_{sizeof(SECURITY_ATTRIBUTES), nullptr, FALSE};
};

// Keeps other processes from appending at the same time. Windows does that by itself; where a file system, or Wine,
// looks for the end of the file first and writes there afterwards, records would overwrite each other. The byte that is
// locked is far behind all data, so that nobody is kept from reading.
class AppendLock {
 public:
  explicit AppendLock(HANDLE file) : file_(file) {
    place_.OffsetHigh = 0x40000000;
    locked_ = LockFileEx(file_, LOCKFILE_EXCLUSIVE_LOCK, 0, 1, 0, &place_) != FALSE;
  }
  ~AppendLock() {
    if (locked_) UnlockFileEx(file_, 0, 1, 0, &place_);
  }
  AppendLock(const AppendLock&) = delete;
  AppendLock& operator=(const AppendLock&) = delete;

 private:
  HANDLE file_;
  OVERLAPPED place_{};
  bool locked_ = false;
};

// The number of a file on its volume. GetFileInformationByHandle tells it, too, along with that of the volume, for
// which Wine asks another process.
std::optional<LONGLONG> NumberOf(HANDLE file) {
  FILE_INTERNAL_INFORMATION information{};
  IO_STATUS_BLOCK status{};
  if (file == nullptr ||
      !NT_SUCCESS(NtQueryInformationFile(file, &status, &information, sizeof(information), FileInternalInformation))) {
    return std::nullopt;
  }
  return information.IndexNumber.QuadPart;
}

}  // namespace

LogDate LocalDate() {
  SYSTEMTIME time{};
  GetLocalTime(&time);
  return {time.wYear, time.wMonth, time.wDay};
}

DailyLogFile::DailyLogFile(std::function<std::wstring()> folder, std::function<LogDate()> today)
    : folder_(std::move(folder)), today_(std::move(today)) {}

std::wstring DailyLogFile::Path() const {
  const std::wstring folder = folder_();
  return folder.empty() ? folder : folder + L'\\' + LogFileName(today_());
}

HRESULT DailyLogFile::Append(std::string_view record) {
  const std::scoped_lock lock(mutex_);
  const std::wstring path = Path();
  if (path.empty()) return HRESULT_FROM_WIN32(ERROR_PATH_NOT_FOUND);
  if (const HRESULT opened = Open(path); FAILED(opened)) return opened;

  const AppendLock appendLock(file_.get());
  DWORD written = 0;
  if (WriteFile(file_.get(), record.data(), static_cast<DWORD>(record.size()), &written, nullptr) == FALSE) {
    return LastError();
  }
  return written == record.size() ? S_OK : HRESULT_FROM_WIN32(ERROR_DISK_FULL);
}

// Makes `file_` the file that now has this path: another one when the day has changed, or somebody has taken the file
// away.
HRESULT DailyLogFile::Open(const std::wstring& path) {
  const Handle current = OpenFile(path, FILE_READ_ATTRIBUTES, nullptr, OPEN_EXISTING);
  const std::optional<LONGLONG> number = NumberOf(current.get());
  if (number && number == NumberOf(file_.get())) return S_OK;

  // A deleted file is there until its last handle is closed.
  file_.reset();
  SharedFileSecurity security;
  file_ = OpenFile(path, GENERIC_READ | FILE_APPEND_DATA, security.Attributes(), OPEN_ALWAYS);
  return file_ ? S_OK : LastError();
}
