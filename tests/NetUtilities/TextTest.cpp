#include "NetUtilities/Text.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

TEST(StringToBool, AcceptsItsFourWordsInAnyCase) {
  for (const wchar_t* word : {L"true", L"yes", L"y", L"t", L"YES", L"True", L"Y", L"T"})
    EXPECT_TRUE(StringToBool(word));
}

TEST(StringToBool, TakesEverythingElseAsFalse) {
  for (const wchar_t* word : {L"", L"1", L"on", L"true ", L"yess", L"no", L"false"}) EXPECT_FALSE(StringToBool(word));
}

TEST(ContainsNoCase, FindsANeedleInAnyCase) {
  EXPECT_TRUE(ContainsNoCase(L"C:\\Program Files\\IExplore.EXE", L"iexplore.exe"));
  EXPECT_FALSE(ContainsNoCase(L"firefox", L"iexplore.exe"));
}

TEST(ContainsNoCase, NeverFindsAnEmptyNeedleNorALongerOne) {
  EXPECT_FALSE(ContainsNoCase(L"text", L""));
  EXPECT_FALSE(ContainsNoCase(L"", L""));
  EXPECT_FALSE(ContainsNoCase(L"", L"x"));
  EXPECT_FALSE(ContainsNoCase(L"ab", L"abc"));
}

TEST(ContainsNoCaseAscii, FindsAnEmptyNeedleInNonEmptyText) {
  EXPECT_TRUE(ContainsNoCaseAscii(L"text", L""));
  EXPECT_FALSE(ContainsNoCaseAscii(L"", L""));
}

TEST(ContainsNoCaseAscii, FoldsAsciiLettersOnly) {
  EXPECT_TRUE(ContainsNoCaseAscii(L"%WinDir%\\x", L"%windir%"));
  EXPECT_FALSE(ContainsNoCaseAscii(L"\u00c4", L"\u00e4"));
}

TEST(SplitNonEmpty, SkipsEmptyPieces) {
  EXPECT_THAT(SplitNonEmpty(L"50, 100,\t200;;5", L" ,;\t"), ElementsAre(L"50", L"100", L"200", L"5"));
  EXPECT_THAT(SplitNonEmpty(L" ,; ", L" ,;\t"), IsEmpty());
  EXPECT_THAT(SplitNonEmpty(L"", L","), IsEmpty());
}

TEST(Utf8, RoundTripsEveryLengthOfSequence) {
  const std::wstring text = L"a\u00e9\u20ac" + FromUtf8("\xf0\x9f\x92\xa1");
  EXPECT_EQ(ToUtf8(text), "a\xc3\xa9\xe2\x82\xac\xf0\x9f\x92\xa1");
  EXPECT_EQ(FromUtf8(ToUtf8(text)), text);
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
