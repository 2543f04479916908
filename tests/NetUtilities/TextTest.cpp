#include "NetUtilities/Text.h"

#include <gmock/gmock.h>

#include <clocale>
#include <cwctype>
#include <string>
#include <utility>

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

TEST(ContainsNoCase, FoldsWhatTheWideCharacterRuleFoldsWhereTheAsciiOneDoesNot) {
  const std::string previous = std::setlocale(LC_CTYPE, nullptr);
  // One of these is known to every system.
  ASSERT_TRUE(std::setlocale(LC_CTYPE, "C.UTF-8") || std::setlocale(LC_CTYPE, "English_United States.1252"));
  for (const auto& [capital, small] : {std::pair(L'\u00c4', L'\u00e4'), std::pair(L'\u00d8', L'\u00f8')}) {
    ASSERT_EQ(std::towlower(static_cast<wint_t>(capital)), static_cast<wint_t>(small));
    EXPECT_TRUE(ContainsNoCase(std::wstring(L"x") + capital, std::wstring(1, small)));
    EXPECT_TRUE(ContainsNoCase(std::wstring(L"x") + small, std::wstring(1, capital)));
    EXPECT_FALSE(ContainsNoCaseAscii(std::wstring(L"x") + capital, std::wstring(1, small)));
    EXPECT_FALSE(ContainsNoCaseAscii(std::wstring(L"x") + small, std::wstring(1, capital)));
  }
  EXPECT_FALSE(ContainsNoCase(L"\u00c4", L"a"));
  std::setlocale(LC_CTYPE, previous.c_str());
}

TEST(ContainsNoCaseAscii, FindsAnEmptyNeedleInNonEmptyText) {
  EXPECT_TRUE(ContainsNoCaseAscii(L"text", L""));
  EXPECT_FALSE(ContainsNoCaseAscii(L"", L""));
}

TEST(ContainsNoCaseAscii, FoldsAsciiLettersOnly) {
  EXPECT_TRUE(ContainsNoCaseAscii(L"%WinDir%\\x", L"%windir%"));
  EXPECT_FALSE(ContainsNoCaseAscii(L"\u00c4", L"\u00e4"));
}

TEST(ContainsNoCaseAscii, NeverFindsALongerNeedle) {
  EXPECT_FALSE(ContainsNoCaseAscii(L"ab", L"abc"));
  EXPECT_FALSE(ContainsNoCaseAscii(L"", L"x"));
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

namespace {

using namespace std::string_view_literals;

const std::wstring kLightBulb = FromUtf8("\xf0\x9f\x92\xa1");  // outside the first 65,536 characters

}  // namespace

TEST(DecodeText, TakesBytesWithoutAMarkAsUtf8) {
  EXPECT_EQ(DecodeText("caf\xc3\xa9"), L"caf\u00e9");
  EXPECT_EQ(DecodeText("caf\xe9"), L"caf\ufffd");
  EXPECT_EQ(DecodeText("a\0b"sv), L"a\0b"sv);
  EXPECT_EQ(DecodeText(""), L"");
}

TEST(DecodeText, LeavesOutTheMarkOfUtf8) {
  EXPECT_EQ(DecodeText("\xef\xbb\xbf"
                       "caf\xc3\xa9"),
            L"caf\u00e9");
  EXPECT_EQ(DecodeText("\xef\xbb\xbf"), L"");
  EXPECT_EQ(DecodeText("\xef\xbb"), L"\ufffd\ufffd") << "This is no mark.";
}

TEST(DecodeText, KnowsBothOrdersOfUtf16) {
  EXPECT_EQ(DecodeText("\xff\xfe\x61\0\xac\x20\x3d\xd8\xa1\xdc"sv), L"a\u20ac" + kLightBulb);
  EXPECT_EQ(DecodeText("\xfe\xff\0\x61\x20\xac\xd8\x3d\xdc\xa1"sv), L"a\u20ac" + kLightBulb);
  EXPECT_EQ(DecodeText("\xff\xfe"), L"");
  EXPECT_EQ(DecodeText("\xfe\xff"), L"");
}

TEST(DecodeText, ReplacesHalfAUnitAtTheEnd) {
  EXPECT_EQ(DecodeText("\xff\xfe\x61\0\x62"sv), L"a\ufffd");
  EXPECT_EQ(DecodeText("\xfe\xff\0\x61\0"sv), L"a\ufffd");
  EXPECT_EQ(DecodeText("\xff\xfe\x3d\xd8\xa1"sv), L"\ufffd\ufffd");
}

TEST(DecodeText, ReplacesASurrogateWithoutPartner) {
  EXPECT_EQ(DecodeText("\xff\xfe\x3d\xd8"sv), L"\ufffd") << "high at the end";
  EXPECT_EQ(DecodeText("\xff\xfe\x3d\xd8\x61\0"sv), L"\ufffda") << "high before something else";
  EXPECT_EQ(DecodeText("\xff\xfe\xa1\xdc\x61\0"sv), L"\ufffda") << "low without high";
  EXPECT_EQ(DecodeText("\xff\xfe\x3d\xd8\x3d\xd8\xa1\xdc"sv), L"\ufffd" + kLightBulb) << "high before a pair";
}
