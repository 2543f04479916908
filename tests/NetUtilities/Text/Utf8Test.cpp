#include "NetUtilities/Text/Utf8.h"

#include <gtest/gtest.h>

#include <string>

TEST(Utf8, RoundTripsEveryLengthOfSequence) {
  const std::wstring text = L"a\u00e9\u20ac" + FromUtf8("\xf0\x9f\x92\xa1");
  EXPECT_EQ(ToUtf8(text), "a\xc3\xa9\xe2\x82\xac\xf0\x9f\x92\xa1");
  EXPECT_EQ(FromUtf8(ToUtf8(text)), text);
}

TEST(Utf8, TakesAPairOfSurrogatesForOneCharacter) {
  const std::wstring pair = {static_cast<wchar_t>(0xD83D), static_cast<wchar_t>(0xDCA1)};
  EXPECT_EQ(ToUtf8(pair), "\xf0\x9f\x92\xa1");
}

TEST(Utf8, ReplacesASurrogateWithoutPartner) {
  const std::wstring lone = {L'a', static_cast<wchar_t>(0xD83D), L'b', static_cast<wchar_t>(0xDCA1)};
  EXPECT_EQ(ToUtf8(lone), "a_b_");
}

TEST(Utf8, ReplacesBytesThatAreNoUtf8) {
  EXPECT_EQ(FromUtf8("a\xff\xc3"), L"a\ufffd\ufffd");
  EXPECT_EQ(FromUtf8("\xc0\x80"), L"\ufffd\ufffd");            // overlong
  EXPECT_EQ(FromUtf8("\xed\xa0\x80"), L"\ufffd\ufffd\ufffd");  // surrogate
  EXPECT_EQ(FromUtf8("\xe2\x41\x41"), L"\ufffdAA");
}
