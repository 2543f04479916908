#include "NetUtilities/ErrorText.h"

#include <windows.h>

#include <gmock/gmock.h>

namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

constexpr uint32_t kCodeWithoutText = 0x2000abcd;

TEST(SystemErrorText, IsTheSystemsTextWithoutLineEnds) {
  const std::wstring text = SystemErrorText(ERROR_ACCESS_DENIED);
  EXPECT_THAT(text, HasSubstr(L"ccess"));
  EXPECT_THAT(text, Not(EndsWith(L"\n")));
  EXPECT_THAT(text, Not(HasSubstr(L"\r")));
}

TEST(SystemErrorText, IsEmptyForACodeWithoutText) { EXPECT_EQ(SystemErrorText(kCodeWithoutText), L""); }

TEST(ErrorSuffix, GivesTheNumberTwiceAndTheText) {
  EXPECT_EQ(ErrorSuffix(ERROR_ACCESS_DENIED), L" Error 5 (0x5) - " + SystemErrorText(ERROR_ACCESS_DENIED));
}

TEST(ErrorSuffix, IsOnlyTheNumbersWhereThereIsNoText) {
  EXPECT_EQ(ErrorSuffix(kCodeWithoutText), L" Error 536914893 (0x2000abcd)");
}

TEST(ErrorSuffix, PrintsAnHresultAsANegativeNumber) {
  const std::wstring numbers = L" Error -2147221164 (0x80040154)";
  const std::wstring text = SystemErrorText(static_cast<uint32_t>(REGDB_E_CLASSNOTREG));
  EXPECT_EQ(ErrorSuffix(REGDB_E_CLASSNOTREG), text.empty() ? numbers : numbers + L" - " + text);
}

}  // namespace
