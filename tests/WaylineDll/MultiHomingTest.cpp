#include "WaylineDll/MultiHoming.h"

#include <gtest/gtest.h>

#include "NetUtilities/Registry/RegistryNames.h"
#include "tests/support/TestRegistryKey.h"

namespace {

class MultiHoming : public testing::Test {
 protected:
  TestRegistryKey client_{HKEY_LOCAL_MACHINE, kClientKey};
  bool on_ = false;
};

}  // namespace

TEST_F(MultiHoming, IsNotAuthorizedWithoutASetting) {
  client_.Remove(kPreventMultiHomingValue);
  on_ = true;
  EXPECT_FALSE(IsMultiHomingControlAuthorized(&on_));
  EXPECT_TRUE(on_) << "left alone";
}

TEST_F(MultiHoming, IsAuthorizedAndAsTheAdministratorHasSetIt) {
  for (const DWORD setting : {0u, 1u, 7u}) {
    client_.SetDword(kPreventMultiHomingValue, setting);
    on_ = setting == 0;
    EXPECT_TRUE(IsMultiHomingControlAuthorized(&on_));
    EXPECT_EQ(on_, setting != 0) << setting;
  }
}

TEST(MultiHomingWithoutTheClientsKey, IsNotAuthorized) {
  const AbsentRegistryKey absent(HKEY_LOCAL_MACHINE, kClientKey);
  bool on = false;
  EXPECT_FALSE(IsMultiHomingControlAuthorized(&on));
}
