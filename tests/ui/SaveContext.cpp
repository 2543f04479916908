#include "tests/ui/SaveContext.h"

#include <gmock/gmock.h>

#include <optional>

#include "WaylineDll/Host.h"

std::vector<RecordChange> SaveContext(const LoginPropertiesContext& context) {
  SaveReport report;
  EXPECT_EQ(SaveSettings({context.profiles, context.preferences, context.autoStartItems, context.manualConfigs,
                          context.autoConfigs},
                         report),
            std::nullopt);
  EXPECT_THAT(report.lost, testing::IsEmpty());
  return report.changes;
}
