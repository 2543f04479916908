#include "WaylineDll/SetupWizard/FieldRules.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace {

const std::wstring kLongestLabel(63, L'a');

// A domain name of 253 characters.
const std::wstring kLongestDomainName =
    kLongestLabel + L'.' + kLongestLabel + L'.' + kLongestLabel + L'.' + std::wstring(61, L'b');

}  // namespace

TEST(FieldRules, BlanksAndLineEndsAroundATextAreNotPartOfIt) {
  EXPECT_EQ(Trimmed(L"\r\n\t 192.0.2.53\u00a0\r\n"), L"192.0.2.53");
  EXPECT_EQ(Trimmed(L"two words"), L"two words");
  EXPECT_EQ(Trimmed(L" \r\n\u3000"), L"");
  EXPECT_EQ(Trimmed(L""), L"");
}

TEST(FieldRules, APastedTextBecomesOneLine) {
  EXPECT_EQ(PastedText(L"\r\n\r\nexample.com\r\n"), L"example.com");
  EXPECT_EQ(PastedText(L"example.com\r\nexample.org\n"), L"example.com example.org");
  EXPECT_EQ(PastedText(L"\r\n"), L"");
}

TEST(FieldRules, AnAccountIsAnythingUpTo256CharactersWithoutControlCharacters) {
  EXPECT_TRUE(IsAccount(L""));
  EXPECT_TRUE(IsAccount(L"Example Company (Z\u00fcrich)"));
  EXPECT_TRUE(IsAccount(std::wstring(256, L'a')));
  EXPECT_FALSE(IsAccount(std::wstring(257, L'a')));
  EXPECT_FALSE(IsAccount(L"Example\tCompany"));
  EXPECT_FALSE(IsAccount(L"Example\u0085Company"));
}

TEST(FieldRules, AUserIdHasNoBlanks) {
  EXPECT_TRUE(IsUserId(L""));
  EXPECT_TRUE(IsUserId(L"a.sample@example.com"));
  EXPECT_TRUE(IsUserId(std::wstring(256, L'a')));
  EXPECT_FALSE(IsUserId(std::wstring(257, L'a')));
  EXPECT_FALSE(IsUserId(L"a sample"));
  EXPECT_FALSE(IsUserId(L"a\u00a0sample"));
  EXPECT_FALSE(IsUserId(L"a\x7fsample"));
}

TEST(FieldRules, ADomainNameIsMadeOfLabels) {
  for (const wchar_t* name : {L"example.com", L"localhost", L"_ldap._tcp.example.com", L"a-b.4", L"1.2",
                              L"b\u00fccher.example", L"\u4f8b\u3048.\u30c6\u30b9\u30c8"}) {
    EXPECT_TRUE(IsDomainName(name)) << testing::PrintToString(std::wstring(name));
  }
  for (const wchar_t* name : {L"", L".", L".com", L"example.", L"a..b", L"-a.com", L"a-.com", L"a b.com", L"a/b",
                              L"a,b", L"*.example.com", L"example.com:80", L"a\u2026b"}) {
    EXPECT_FALSE(IsDomainName(name)) << testing::PrintToString(std::wstring(name));
  }
}

TEST(FieldRules, ADomainNameAndItsLabelsHaveAGreatestLength) {
  EXPECT_TRUE(IsDomainName(kLongestLabel + L".com"));
  EXPECT_FALSE(IsDomainName(kLongestLabel + L"a.com"));
  ASSERT_EQ(kLongestDomainName.size(), 253U);
  EXPECT_TRUE(IsDomainName(kLongestDomainName));
  EXPECT_FALSE(IsDomainName(kLongestDomainName + L"b"));
}

TEST(FieldRules, ASuffixListIsStoredWithCommas) {
  for (const wchar_t* text : {L"a.com,b.org,c", L"a.com; b.org;c", L"a.com b.org\tc", L" a.com ,, b.org ; c,"}) {
    EXPECT_EQ(SuffixList(text), L"a.com,b.org,c") << testing::PrintToString(std::wstring(text));
  }
  EXPECT_EQ(SuffixList(L"example.com"), L"example.com");
}

TEST(FieldRules, ASuffixListConsistsOfDomainNames) {
  for (const wchar_t* text : {L"", L" ", L",;", L"a.com,-b", L"a.com,b/c"}) {
    EXPECT_EQ(SuffixList(text), std::nullopt) << testing::PrintToString(std::wstring(text));
  }
}
