#include "tests/support/FaultyFileSystem.h"

#include <algorithm>
#include <csignal>
#include <cstdlib>

namespace {

// As a process ends that is killed: nothing is flushed, released or told.
[[noreturn]] void EndProcess() {
#ifdef SIGKILL
  std::raise(SIGKILL);
#endif
  std::_Exit(EXIT_FAILURE);
}

}  // namespace

// The real file lies behind it, in memory that SQLite provides.
struct FaultyFileSystem::File {
  sqlite3_file base;
  FaultyFileSystem* owner;

  static sqlite3_file* Real(sqlite3_file* file) {
    return reinterpret_cast<sqlite3_file*>(reinterpret_cast<File*>(file) + 1);
  }
  static FaultyFileSystem& Owner(sqlite3_file* file) { return *reinterpret_cast<File*>(file)->owner; }

  static const sqlite3_io_methods kMethods;
};

const sqlite3_io_methods FaultyFileSystem::File::kMethods = {
    .iVersion = 1,
    .xClose = [](sqlite3_file* file) { return Real(file)->pMethods->xClose(Real(file)); },
    .xRead = [](sqlite3_file* file, void* bytes, int count,
                sqlite3_int64 offset) { return Real(file)->pMethods->xRead(Real(file), bytes, count, offset); },
    .xWrite = [](sqlite3_file* file, const void* bytes, int count,
                 sqlite3_int64 offset) { return Owner(file).Write(Real(file), bytes, count, offset); },
    .xTruncate =
        [](sqlite3_file* file, sqlite3_int64 size) {
          return Owner(file).Perform([&] { return Real(file)->pMethods->xTruncate(Real(file), size); });
        },
    .xSync =
        [](sqlite3_file* file, int) {
          // What is written outlives the process; for that it need not reach the disk.
          return Owner(file).Perform([] { return SQLITE_OK; });
        },
    .xFileSize = [](sqlite3_file* file,
                    sqlite3_int64* size) { return Real(file)->pMethods->xFileSize(Real(file), size); },
    .xLock = [](sqlite3_file* file, int level) { return Real(file)->pMethods->xLock(Real(file), level); },
    .xUnlock = [](sqlite3_file* file, int level) { return Real(file)->pMethods->xUnlock(Real(file), level); },
    .xCheckReservedLock =
        [](sqlite3_file* file, int* isReserved) {
          return Real(file)->pMethods->xCheckReservedLock(Real(file), isReserved);
        },
    .xFileControl = [](sqlite3_file* file, int operation,
                       void* argument) { return Real(file)->pMethods->xFileControl(Real(file), operation, argument); },
    .xSectorSize = [](sqlite3_file* file) { return Real(file)->pMethods->xSectorSize(Real(file)); },
    .xDeviceCharacteristics =
        [](sqlite3_file* file) { return Real(file)->pMethods->xDeviceCharacteristics(Real(file)); },
    .xShmMap = nullptr,
    .xShmLock = nullptr,
    .xShmBarrier = nullptr,
    .xShmUnmap = nullptr,
    .xFetch = nullptr,
    .xUnfetch = nullptr,
};

FaultyFileSystem::FaultyFileSystem() : real_(sqlite3_vfs_find(nullptr)) {
  if (real_ == nullptr) std::abort();
  vfs_ = *real_;
  vfs_.pNext = nullptr;
  vfs_.zName = "faulty";
  vfs_.szOsFile = static_cast<int>(sizeof(File)) + real_->szOsFile;
  vfs_.pAppData = this;
  vfs_.xOpen = Open;
  vfs_.xDelete = Delete;
  sqlite3_vfs_register(&vfs_, 1);
}

FaultyFileSystem::~FaultyFileSystem() {
  sqlite3_vfs_unregister(&vfs_);
  sqlite3_vfs_register(real_, 1);
}

std::vector<std::pair<int, FaultyFileSystem::Moment>> FaultyFileSystem::MomentsFrom(int first) const {
  std::vector<std::pair<int, Moment>> moments;
  for (int operation = first; operation <= operations_; ++operation) {
    moments.emplace_back(operation, Moment::Before);
    if (writes_.contains(operation)) moments.emplace_back(operation, Moment::Halfway);
  }
  moments.emplace_back(operations_, Moment::After);
  return moments;
}

void FaultyFileSystem::DieAt(int operation, Moment moment) {
  fatalOperation_ = operation;
  fatalMoment_ = moment;
}

FaultyFileSystem& FaultyFileSystem::Of(sqlite3_vfs* vfs) { return *static_cast<FaultyFileSystem*>(vfs->pAppData); }

template <typename Operation>
int FaultyFileSystem::Perform(Operation operation) {
  ++operations_;
  if (IsTime(Moment::Before) || IsTime(Moment::Halfway)) EndProcess();
  const int code = operation();
  if (IsTime(Moment::After)) EndProcess();
  return code;
}

int FaultyFileSystem::Open(sqlite3_vfs* vfs, const char* name, sqlite3_file* file, int flags, int* grantedFlags) {
  FaultyFileSystem& self = Of(vfs);
  *reinterpret_cast<File*>(file) = {{nullptr}, &self};
  return self.Perform([&] {
    sqlite3_file* const real = File::Real(file);
    const int code = self.real_->xOpen(self.real_, name, real, flags, grantedFlags);
    // SQLite closes what has methods, also after a failure.
    if (real->pMethods != nullptr) file->pMethods = &File::kMethods;
    return code;
  });
}

int FaultyFileSystem::Delete(sqlite3_vfs* vfs, const char* name, int syncFolder) {
  FaultyFileSystem& self = Of(vfs);
  return self.Perform([&] { return self.real_->xDelete(self.real_, name, syncFolder); });
}

int FaultyFileSystem::Write(sqlite3_file* real, const void* bytes, int count, int64_t offset) {
  writes_.insert(++operations_);
  if (IsTime(Moment::Before)) EndProcess();
  if (IsTime(Moment::Halfway)) {
    WriteWithinRoom(real, bytes, count / 2, offset);
    EndProcess();
  }
  const int code = WriteWithinRoom(real, bytes, count, offset);
  if (IsTime(Moment::After)) EndProcess();
  return code;
}

int FaultyFileSystem::WriteWithinRoom(sqlite3_file* real, const void* bytes, int count, int64_t offset) {
  sqlite3_int64 size = 0;
  if (const int code = real->pMethods->xFileSize(real, &size); code != SQLITE_OK) return code;
  const int64_t growth = std::max<int64_t>(offset + count - size, 0);
  if (growth > room_) return SQLITE_FULL;
  if (room_ != kUnlimited) room_ -= growth;
  return real->pMethods->xWrite(real, bytes, count, offset);
}
