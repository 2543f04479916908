#pragma once

#include <cstddef>

/// Counts what its thread allocates by `new` while it lives. One at a time on a thread. Under Wine it does not see what
/// the runtime allocates itself, which texts of more than a few letters are.
class AllocationTally {
 public:
  AllocationTally();
  ~AllocationTally();
  AllocationTally(const AllocationTally&) = delete;
  AllocationTally& operator=(const AllocationTally&) = delete;

  size_t Allocations() const { return allocations_; }

  /// As they were asked for, also of blocks that have been released since.
  size_t Bytes() const { return bytes_; }

  /// For those who allocate.
  static void Add(size_t bytes);

 private:
  size_t allocations_ = 0;
  size_t bytes_ = 0;
};
