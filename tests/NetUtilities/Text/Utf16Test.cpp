#include "NetUtilities/Text/Utf16.h"

#include <gtest/gtest.h>

#include "NetUtilities/Text/Utf8.h"

TEST(Utf16, CarriesCharactersBeyondTheFirstPlaneInTwoUnits) {
  const std::wstring text = L"a\u00e9\u20ac" + FromUtf8("\xf0\x9f\x92\xa1") + L"z";
  EXPECT_EQ(ToUtf16(text), u"a\u00e9\u20ac\xD83D\xDCA1z");
  EXPECT_EQ(FromUtf16(u"a\u00e9\u20ac\xD83D\xDCA1z"), text);
}

TEST(Utf16, KeepsASurrogateWithoutPartner) {
  const std::u16string lone = {u'a', 0xD83D, u'b', 0xDCA1, 0xD83D};
  EXPECT_EQ(ToUtf16(FromUtf16(lone)), lone);
}

TEST(Utf16, ReadsUpToTheZeroUnitOfAPointer) {
  const std::u16string units = u"text";
  EXPECT_EQ(FromUtf16(static_cast<const void*>(units.c_str())), L"text");
  EXPECT_EQ(FromUtf16(static_cast<const void*>(nullptr)), L"");
}

TEST(Utf16, ReplacesWhatIsBeyondUnicode) {
  const std::wstring text = {L'a', static_cast<wchar_t>(0x110000), L'b'};
  if (sizeof(wchar_t) == sizeof(char16_t)) GTEST_SKIP() << "no character of this system is beyond";
  EXPECT_EQ(ToUtf16(text), u"a\ufffdb");
}
