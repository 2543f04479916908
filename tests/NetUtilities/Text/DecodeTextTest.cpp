#include "NetUtilities/Text/DecodeText.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "NetUtilities/Text/Utf8.h"

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
