#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <iterator>
#include <random>
#include <sstream>
#include <string>

/// A test that takes random steps. It prints its seed, which PAVISE_SEED repeats, and the story of a failure.
class RandomSteps : public testing::Test {
 protected:
  RandomSteps() {
    const char* const seed = std::getenv("PAVISE_SEED");
    const uint64_t value = seed != nullptr ? std::stoull(seed) : std::random_device()();
    std::cout << "PAVISE_SEED=" << value << '\n';
    random_.seed(value);
  }
  ~RandomSteps() override {
    if (HasFailure()) std::cout << "On the last sheet: " << story_.str() << '\n';
  }

  int Below(int count) { return std::uniform_int_distribution(0, count - 1)(random_); }
  bool OneIn(int count) { return Below(count) == 0; }

  template <typename Values>
  const auto& OneOf(const Values& values) {
    return *std::next(std::begin(values), Below(static_cast<int>(std::size(values))));
  }

  /// What has been done since the last sheet was opened.
  std::ostringstream story_;

 private:
  std::mt19937_64 random_;
};
