#include "NetUtilities/Module/Mutex.h"

#include <gtest/gtest.h>

#include <cerrno>

TEST(Mutex, ThrowsTheSystemsErrorWhenItCannotBeLocked) {
  EXPECT_NO_THROW(Mutex::ThrowIfFailed(0));
  try {
    Mutex::ThrowIfFailed(EDEADLK);
    FAIL();
  } catch (const std::system_error& error) {
    EXPECT_EQ(error.code(), std::errc::resource_deadlock_would_occur);
  }
}
