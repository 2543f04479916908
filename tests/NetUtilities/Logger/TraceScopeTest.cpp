#include "NetUtilities/Logger/TraceScope.h"

#include <gmock/gmock.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "NetUtilities/Logger/LogPlatform.h"
#include "tests/support/LogCapture.h"
#include "tests/support/Substituted.h"

namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr unsigned kBit = 7;
constexpr char kFunction[] = "void Page::Show()";

// The made-up machine: process 0x1a2, thread 0x3b, and what is set here.
struct Machine {
  bool tracing = true;
  std::chrono::nanoseconds now = 5s;
  std::vector<unsigned> bits;  // that were asked for
  int questions = 0;           // for ids and times
};
Machine machine;

class TraceScopeTest : public testing::Test {
 protected:
  TraceScopeTest() {
    machine = {};
    platform_->isTraceFlagSet = [](unsigned bit) {
      machine.bits.push_back(bit);
      return machine.tracing;
    };
    platform_->processId = [] { return ++machine.questions, uint32_t{0x1a2}; };
    platform_->threadId = [] { return ++machine.questions, uint32_t{0x3b}; };
    platform_->steadyTime = [] { return ++machine.questions, machine.now; };
  }

  std::vector<std::wstring> lines_;
  const TraceScope::Output output_ = [this](std::wstring_view line) { lines_.emplace_back(line); };

 private:
  Substituted<LogPlatform> platform_{logPlatform};
};

void TracedFunction(const TraceScope::Output& output) { const TraceScope scope(kBit, L"", output); }

TEST_F(TraceScopeTest, WritesALineAtEachEndWithTheIdsInFiveDigits) {
  {
    const TraceScope scope(kBit, L"", output_, TraceTiming::Untimed, kFunction);
    EXPECT_THAT(lines_, ElementsAre(L"Enter ==> void Page::Show() pid 001a2 tid 0003b"));
  }
  EXPECT_THAT(lines_, ElementsAre(L"Enter ==> void Page::Show() pid 001a2 tid 0003b",
                                  L"Exit  <== void Page::Show() pid 001a2 tid 0003b"));
}

TEST_F(TraceScopeTest, PutsTheExtraTextBehindTheName) {
  { const TraceScope scope(kBit, L"profile {7}", output_, TraceTiming::Untimed, kFunction); }
  EXPECT_THAT(lines_, ElementsAre(L"Enter ==> void Page::Show() -- profile {7} pid 001a2 tid 0003b",
                                  L"Exit  <== void Page::Show() -- profile {7} pid 001a2 tid 0003b"));
}

TEST_F(TraceScopeTest, LeavesTheCallingConventionOut) {
  { const TraceScope scope(kBit, L"", output_, TraceTiming::Untimed, "int __cdecl Main(void)"); }
  EXPECT_EQ(lines_.front(), L"Enter ==> int Main(void) pid 001a2 tid 0003b");
}

TEST_F(TraceScopeTest, NamesTheFunctionThatItIsIn) {
  TracedFunction(output_);
  ASSERT_EQ(lines_.size(), 2u);
  EXPECT_THAT(lines_[0], testing::HasSubstr(L"TracedFunction("));
}

TEST_F(TraceScopeTest, WritesToTheLogUnlessToldOtherwise) {
  const LogCapture log;
  { const TraceScope scope(kBit, L"text"); }
  ASSERT_EQ(log.Messages().size(), 2u);
  for (const LogCapture::Message& message : log.Messages()) {
    EXPECT_EQ(message.source, LogSource::General);
    EXPECT_EQ(message.level, LogLevel::Trace);
    EXPECT_THAT(message.text, testing::HasSubstr(L" -- text pid 001a2 tid 0003b"));
  }
}

TEST_F(TraceScopeTest, AsksForItsOwnBitOnce) {
  { const TraceScope scope(kBit, L"", output_); }
  { const TraceScope scope(kTraceAlways, L"", output_); }
  EXPECT_THAT(machine.bits, ElementsAre(kBit, kTraceAlways));
}

TEST_F(TraceScopeTest, IsSilentAndAsksNothingMoreWhileItsBitIsNotSet) {
  machine.tracing = false;
  { const TraceScope scope(kBit, L"text", output_, TraceTiming::Timed); }
  EXPECT_THAT(lines_, IsEmpty());
  EXPECT_EQ(machine.questions, 0);
}

TEST_F(TraceScopeTest, WritesBothLinesOrNoneWhenTheFlagChanges) {
  {
    const TraceScope scope(kBit, L"", output_);
    machine.tracing = false;
  }
  EXPECT_EQ(lines_.size(), 2u);
  {
    const TraceScope scope(kBit, L"", output_);
    machine.tracing = true;
  }
  EXPECT_EQ(lines_.size(), 2u);
}

TEST_F(TraceScopeTest, EndsWithTheElapsedTimeWhenTimed) {
  {
    const TraceScope scope(kBit, L"text", output_, TraceTiming::Timed, kFunction);
    machine.now += 1500ms;
  }
  EXPECT_THAT(lines_, ElementsAre(L"Enter ==> void Page::Show() -- text pid 001a2 tid 0003b",
                                  L"Exit  <== void Page::Show() -- text pid 001a2 tid 0003b - Elapsed 1.500s"));
}

TEST_F(TraceScopeTest, EndsWithTheMillisecondsOfLessThanASecond) {
  {
    const TraceScope scope(kBit, L"", output_, TraceTiming::Timed, kFunction);
    machine.now += 250'999us;
  }
  EXPECT_EQ(lines_.back(), L"Exit  <== void Page::Show() pid 001a2 tid 0003b - Elapsed 250ms");
}

TEST_F(TraceScopeTest, DoesNotTimeTheWritingOfItsLines) {
  const auto slowOutput = [this](std::wstring_view line) {
    machine.now += 1h;
    lines_.emplace_back(line);
  };
  {
    const TraceScope scope(kBit, L"", slowOutput, TraceTiming::Timed, kFunction);
    machine.now += 420us;
  }
  EXPECT_EQ(lines_.back(), L"Exit  <== void Page::Show() pid 001a2 tid 0003b - Elapsed 420us");
}

TEST_F(TraceScopeTest, WritesItsLastLineWhenAnExceptionLeavesTheFunction) {
  const auto traced = [this] {
    const TraceScope scope(kBit, L"", output_, TraceTiming::Timed, kFunction);
    machine.now += 850ns;
    throw std::runtime_error("failed");
  };
  EXPECT_THROW(traced(), std::runtime_error);
  EXPECT_EQ(lines_.back(), L"Exit  <== void Page::Show() pid 001a2 tid 0003b - Elapsed 850ns");
}

TEST_F(TraceScopeTest, ScopesNest) {
  {
    const TraceScope outer(kBit, L"outer", output_, TraceTiming::Untimed, "f");
    const TraceScope inner(kBit, L"inner", output_, TraceTiming::Untimed, "g");
  }
  EXPECT_THAT(lines_,
              ElementsAre(L"Enter ==> f -- outer pid 001a2 tid 0003b", L"Enter ==> g -- inner pid 001a2 tid 0003b",
                          L"Exit  <== g -- inner pid 001a2 tid 0003b", L"Exit  <== f -- outer pid 001a2 tid 0003b"));
}

}  // namespace
