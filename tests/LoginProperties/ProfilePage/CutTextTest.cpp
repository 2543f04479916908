#include "LoginProperties/ProfilePage/CutText.h"

#include <gtest/gtest.h>

namespace {

// A character that takes two units of UTF-16, as Windows holds it.
constexpr wchar_t kPair[] = L"\xd83d\xde00";

TEST(CutText, LeavesAShorterTextAlone) {
  EXPECT_EQ(CutText(L"", 0), L"");
  EXPECT_EQ(CutText(L"", 3), L"");
  EXPECT_EQ(CutText(L"abc", 3), L"abc");
  EXPECT_EQ(CutText(L"abc", 4), L"abc");
}

TEST(CutText, KeepsTheBeginningOfALongerOne) {
  EXPECT_EQ(CutText(L"abcd", 3), L"abc");
  EXPECT_EQ(CutText(L"abcd", 0), L"");
  EXPECT_EQ(CutText(L"\x4f60\x597d\x4e16", 2), L"\x4f60\x597d");
}

TEST(CutText, LeavesNoHalfCharacterAtTheEnd) {
  const std::wstring pair = kPair;
  EXPECT_EQ(CutText(L"ab" + pair, 3), L"ab");
  EXPECT_EQ(CutText(L"ab" + pair, 4), L"ab" + pair);
  EXPECT_EQ(CutText(L"a" + pair + L"b", 3), L"a" + pair);
  EXPECT_EQ(CutText(pair + pair, 3), pair);
  EXPECT_EQ(CutText(pair, 1), L"");
}

TEST(CutText, TakesHalvesThatStandAloneForCharacters) {
  EXPECT_EQ(CutText(L"ab\xd83d", 3), L"ab\xd83d");
  EXPECT_EQ(CutText(L"ab\xd83d\x63", 3), L"ab\xd83d");
  EXPECT_EQ(CutText(L"ab\xde00\xde00", 3), L"ab\xde00");
}

}  // namespace
