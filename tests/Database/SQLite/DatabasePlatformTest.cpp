#include "Database/SQLite/DatabasePlatform.h"

#include <windows.h>

#include <gtest/gtest.h>

#include "NetUtilities/Files/PathData.h"
#include "tests/support/OwnProcess.h"
#include "tests/support/ThisProgram.h"

namespace {

InstanceMutex CreateTestMutex() { return databasePlatform.createInstanceMutex(L"PaviseDatabasePlatformTest"); }

TEST(InstanceMutex, IsFirstOnlyWhileNobodyHoldsIt) {
  {
    const InstanceMutex held = CreateTestMutex();
    EXPECT_NE(held.handle, nullptr);
    EXPECT_TRUE(held.first);
    const InstanceMutex second = CreateTestMutex();
    EXPECT_NE(second.handle, nullptr);
    EXPECT_FALSE(second.first);
  }
  EXPECT_TRUE(CreateTestMutex().first);
}

TEST(InstanceMutex, IsHeldUntilTheLastReferenceIsGone) {
  InstanceMutex held = CreateTestMutex();
  InstanceMutex copy = held;
  held = {};
  EXPECT_FALSE(CreateTestMutex().first);
  copy = {};
  EXPECT_TRUE(CreateTestMutex().first);
}

TEST(InstanceMutex, IsNotFirstWhileAnotherProcessHoldsIt) {
  // Also the first creation in the other process, because this one holds the mutex meanwhile.
  const InstanceMutex held = CreateTestMutex();
  ASSERT_NE(held.handle, nullptr);
  InOwnProcess([&held] { EXPECT_FALSE(held.first); });
}

TEST(InstanceMutex, IsNeitherHeldNorFirstUnderANameThatCannotBe) {
  const InstanceMutex mutex = databasePlatform.createInstanceMutex(LR"(Nowhere\PaviseDatabasePlatformTest)");
  EXPECT_EQ(mutex.handle, nullptr);
  EXPECT_FALSE(mutex.first);
}

TEST(DatabasePlatform, TellsOfThisProcess) {
  EXPECT_EQ(databasePlatform.processId(), GetCurrentProcessId());
  EXPECT_EQ(databasePlatform.executablePath(), ThisProgram().wstring());
}

TEST(DatabasePlatform, TakesTheUserDataDirectoryOfThePaths) {
  const std::wstring directory = databasePlatform.userDataDirectory();
  EXPECT_FALSE(directory.empty());
  EXPECT_EQ(directory, PathData().GetUserDataDirectory());
}

}  // namespace
