#include "tests/ui/SaveContext.h"

#include <gtest/gtest.h>

#include <optional>

#include "WaylineDll/Host.h"

std::vector<RecordChange> SaveContext(const LoginPropertiesContext& context) {
  std::vector<RecordChange> changes;
  EXPECT_EQ(SaveSettings({context.profiles, context.preferences, context.autoStartItems, context.manualConfigs,
                          context.autoConfigs},
                         changes),
            std::nullopt);
  return changes;
}
