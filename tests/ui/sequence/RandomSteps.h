#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <random>
#include <sstream>
#include <string>

#include "tests/ui/sequence/Chance.h"

/// A test that takes random steps. It prints its seed, which PAVISE_SEED repeats, and the story of a failure.
class RandomSteps : public testing::Test, protected Chance {
 protected:
  RandomSteps() {
    const char* const seed = std::getenv("PAVISE_SEED");
    const uint64_t value = seed != nullptr ? std::stoull(seed) : std::random_device()();
    std::cout << "PAVISE_SEED=" << value << '\n';
    Begin(value);
  }
  ~RandomSteps() override {
    if (HasFailure()) std::cout << "On the last sheet: " << story_.str() << '\n';
  }

  std::ostringstream story_;  // what has been done since it was opened
};
