#include <windows.h>

#include <gmock/gmock.h>

#include <chrono>

#include "NetUtilities/Logger/LogPlatform.h"
#include "NetUtilities/Logger/TraceScope.h"
#include "NetUtilities/Registry/RegistryNames.h"
#include "NetUtilities/Text/Format.h"
#include "tests/support/LogCapture.h"
#include "tests/support/OwnProcess.h"
#include "tests/support/TestRegistryKey.h"

namespace {

using testing::ElementsAre;

LogCapture::Message Line(const std::wstring& text) { return {LogSource::General, LogLevel::Trace, text}; }

// The flags are read once in a process.
class TraceScopeLog : public testing::Test {
 protected:
  TraceScopeLog() { user_.SetDword(kTraceFlagsValue, 1 << 3); }

 private:
  TestRegistryKey user_{HKEY_CURRENT_USER, kCurrentInstallKey};
};

TEST_F(TraceScopeLog, LinesGoToTheLogWhereTheFlagsAskForThem) {
  InOwnProcess([] {
    const LogCapture log;
    { const TraceScope scope(3, L"text", TraceScope::WriteToLog, TraceTiming::Untimed, "f"); }
    { const TraceScope scope(4); }
    const std::wstring ids = Format(L" pid {:05x} tid {:05x}", logPlatform.processId(), logPlatform.threadId());
    EXPECT_THAT(log.Messages(), ElementsAre(Line(L"Enter ==> f -- text" + ids), Line(L"Exit  <== f -- text" + ids)));
  });
}

TEST_F(TraceScopeLog, TheBitThatIsAlwaysSetNeedsNoFlag) {
  InOwnProcess([] {
    const LogCapture log;
    { const TraceScope scope(kTraceAlways); }
    EXPECT_EQ(log.Messages().size(), 2u);
  });
}

TEST(TraceScopeClock, IsTheSteadyOne) {
  const auto before = std::chrono::steady_clock::now().time_since_epoch();
  const auto time = logPlatform.steadyTime();
  const auto after = std::chrono::steady_clock::now().time_since_epoch();
  EXPECT_LE(before, time);
  EXPECT_LE(time, after);
}

}  // namespace
