#pragma once

/// Lets a test replace members of a service's function table, which is put back in the end.
template <typename Table>
class Substituted {
 public:
  explicit Substituted(Table& table) : table_(table), original_(table) {}
  ~Substituted() { table_ = original_; }
  Substituted(const Substituted&) = delete;
  Substituted& operator=(const Substituted&) = delete;

  /// The table in use.
  Table* operator->() const { return &table_; }

 private:
  Table& table_;
  const Table original_;
};
