#include "NetUtilities/Text/ElapsedText.h"

#include <gtest/gtest.h>

using namespace std::chrono_literals;

TEST(ElapsedText, IsInNanosecondsUpToAThousand) {
  EXPECT_EQ(ElapsedText(0ns), L"0ns");
  EXPECT_EQ(ElapsedText(850ns), L"850ns");
  EXPECT_EQ(ElapsedText(1000ns), L"1000ns");
}

TEST(ElapsedText, IsInWholeMicrosecondsUpToAThousand) {
  EXPECT_EQ(ElapsedText(1001ns), L"1us");
  EXPECT_EQ(ElapsedText(1999ns), L"1us");
  EXPECT_EQ(ElapsedText(420us), L"420us");
  EXPECT_EQ(ElapsedText(1000us), L"1000us");
  EXPECT_EQ(ElapsedText(1000us + 999ns), L"1000us");
}

TEST(ElapsedText, IsInWholeMillisecondsUpToAThousand) {
  EXPECT_EQ(ElapsedText(1001us), L"1ms");
  EXPECT_EQ(ElapsedText(1999us), L"1ms");
  EXPECT_EQ(ElapsedText(250ms), L"250ms");
  EXPECT_EQ(ElapsedText(1000ms), L"1000ms");
  EXPECT_EQ(ElapsedText(1000ms + 999us), L"1000ms");
}

TEST(ElapsedText, IsInSecondsAboveThat) {
  EXPECT_EQ(ElapsedText(1001ms), L"1.001s");
  EXPECT_EQ(ElapsedText(1500ms), L"1.500s");
  EXPECT_EQ(ElapsedText(1500ms + 999us), L"1.500s");
  EXPECT_EQ(ElapsedText(2h), L"7200.000s");
}
