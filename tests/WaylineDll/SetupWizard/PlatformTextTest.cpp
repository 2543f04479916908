#include "WaylineDll/SetupWizard/PlatformText.h"

#include <gtest/gtest.h>

TEST(PlatformText, KnowsAddressesOfVersion4) {
  EXPECT_TRUE(IsIpAddress(IpVersion::V4, L"192.0.2.53"));
  EXPECT_TRUE(IsIpAddress(IpVersion::V4, L"0.0.0.0"));
  for (const wchar_t* text : {L"", L"192.0.2", L"192.0.2.256", L"192.0.2.53.1", L"192.0.2.53 ", L" 192.0.2.53",
                              L"192.0.2.53:53", L"dns.example.com", L"2001:db8::53"}) {
    EXPECT_FALSE(IsIpAddress(IpVersion::V4, text)) << testing::PrintToString(std::wstring(text));
  }
}

TEST(PlatformText, KnowsAddressesOfVersion6) {
  EXPECT_TRUE(IsIpAddress(IpVersion::V6, L"2001:db8::53"));
  EXPECT_TRUE(IsIpAddress(IpVersion::V6, L"::1"));
  EXPECT_TRUE(IsIpAddress(IpVersion::V6, L"2001:DB8:0:0:0:0:0:53"));
  for (const wchar_t* text : {L"", L"2001:db8", L"2001::db8::53", L"[2001:db8::53]", L"2001:db8::53g", L"192.0.2.53"}) {
    EXPECT_FALSE(IsIpAddress(IpVersion::V6, text)) << testing::PrintToString(std::wstring(text));
  }
}

TEST(PlatformText, KnowsLettersAndDigitsOfEveryScript) {
  for (const wchar_t character : {L'a', L'Z', L'7', L'\u00fc', L'\u4f8b', L'\u03b1'}) {
    EXPECT_TRUE(IsAlphanumeric(character)) << static_cast<unsigned>(character);
  }
  for (const wchar_t character : {L'-', L'.', L' ', L'\u00a0', L'\u2026'}) {
    EXPECT_FALSE(IsAlphanumeric(character)) << static_cast<unsigned>(character);
  }
}

TEST(PlatformText, NamesAreTheSameInAnyCase) {
  EXPECT_TRUE(AreSameNames(L"Z\u00fcrich Office", L"Z\u00dcRICH office"));
  EXPECT_TRUE(AreSameNames(L"", L""));
  EXPECT_FALSE(AreSameNames(L"Work", L"Work 2"));
  EXPECT_FALSE(AreSameNames(L"Zurich", L"Z\u00fcrich"));
}
