#include "TraceLogManager/LevelReport.h"

#include <gmock/gmock.h>

using testing::HasSubstr;
using testing::StartsWith;

TEST(LevelReport, NamesTheGlobalLevelTheFileAndTheLevelOfEverySource) {
  SourceLevels levels{};
  levels[28] = 5;
  const std::string report = LevelReport(4, levels, L"C:\\Logs\\Z\x00fcrich.log");
  EXPECT_THAT(report, StartsWith("Global level: 4 Detail\n"
                                 "Log file:     C:\\Logs\\Z\xc3\xbcrich.log\n"
                                 "\n"
                                 "Source  Name           Level\n"
                                 "     0  Source 0       global\n"
                                 "     1  General        global\n"));
  EXPECT_THAT(report, HasSubstr("\n    28  Database       5 Trace\n"));
  EXPECT_THAT(report, testing::EndsWith("\n    36  Source 36      global\n"));
}
