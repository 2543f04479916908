#pragma once

#include <cstdint>
#include <iterator>
#include <random>

/// Chooses at random, the same again for the same seed.
class Chance {
 public:
  void Begin(uint64_t seed) { random_.seed(seed); }

  int Below(int count) { return std::uniform_int_distribution(0, count - 1)(random_); }
  bool OneIn(int count) { return Below(count) == 0; }

  /// One of some values, of which there must be one.
  template <typename Values>
  const auto& OneOf(const Values& values) {
    return *std::next(values.begin(), Below(static_cast<int>(values.size())));
  }

 private:
  std::mt19937_64 random_;
};
