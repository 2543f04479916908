#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <limits>
#include <set>
#include <utility>
#include <vector>

/// While it lives, the files that SQLite opens are on a file system that can fill up, and that can end the process in
/// the middle of what SQLite does to them: opening, writing, truncating, syncing and deleting files are numbered from
/// 1. One at a time, on one thread; connections of before go on as they were, and those made meanwhile are closed
/// before it goes. It has no shared memory, and so no write-ahead log.
class FaultyFileSystem {
 public:
  enum class Moment {
    Before,   // nothing of the operation has happened
    Halfway,  // half of the bytes are written; as `Before` for what writes none
    After,
  };

  FaultyFileSystem();
  ~FaultyFileSystem();
  FaultyFileSystem(const FaultyFileSystem&) = delete;
  FaultyFileSystem& operator=(const FaultyFileSystem&) = delete;

  /// How many operations there have been.
  int Operations() const { return operations_; }

  /// The moments at which the operations from `first` on leave the files in states of their own: before each of them,
  /// and halfway through what is written.
  std::vector<std::pair<int, Moment>> MomentsFrom(int first) const;

  /// Ends the process without a word at the operation of this number, 1 being the first of this object.
  void DieAt(int operation, Moment moment);

  /// From now on files can grow by this many bytes in all. What does not fit fails with SQLITE_FULL.
  void FullAfter(int64_t bytes) { room_ = bytes; }

  /// Files can grow again.
  void MakeRoom() { FullAfter(kUnlimited); }

 private:
  struct File;

  static constexpr int64_t kUnlimited = std::numeric_limits<int64_t>::max();

  static FaultyFileSystem& Of(sqlite3_vfs* vfs);
  static int Open(sqlite3_vfs* vfs, const char* name, sqlite3_file* file, int flags, int* grantedFlags);
  static int Delete(sqlite3_vfs* vfs, const char* name, int syncFolder);

  // An operation that either happens or does not.
  template <typename Operation>
  int Perform(Operation operation);
  bool IsTime(Moment moment) const { return operations_ == fatalOperation_ && moment == fatalMoment_; }
  int Write(sqlite3_file* real, const void* bytes, int count, int64_t offset);
  int WriteWithinRoom(sqlite3_file* real, const void* bytes, int count, int64_t offset);

  sqlite3_vfs* real_;
  sqlite3_vfs vfs_;
  int operations_ = 0;
  std::set<int> writes_;  // those of the operations that write
  int fatalOperation_ = 0;
  Moment fatalMoment_ = Moment::Before;
  int64_t room_ = kUnlimited;
};
