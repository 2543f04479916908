#include "NetUtilities/Text/ErrorText.h"

#include <windows.h>

#include <gmock/gmock.h>

namespace {

using testing::AnyOf;

constexpr uint32_t kCodeWithoutText = 0x2000abcd;

TEST(SystemErrorText, IsTheSystemsEnglishTextWithoutLineEnds) {
  // The first is what Windows says, the second what Wine says.
  EXPECT_THAT(SystemErrorText(ERROR_ACCESS_DENIED), AnyOf(L"Access is denied.", L"Access denied."));
  EXPECT_THAT(SystemErrorText(ERROR_FILE_NOT_FOUND),
              AnyOf(L"The system cannot find the file specified.", L"File not found."));
}

TEST(SystemErrorText, HasATextForSuccess) {
  EXPECT_THAT(SystemErrorText(ERROR_SUCCESS), AnyOf(L"The operation completed successfully.", L"Success."));
}

TEST(SystemErrorText, KnowsHresults) {
  EXPECT_EQ(SystemErrorText(static_cast<uint32_t>(E_ACCESSDENIED)), SystemErrorText(ERROR_ACCESS_DENIED));
  EXPECT_THAT(SystemErrorText(static_cast<uint32_t>(E_FAIL)), AnyOf(L"Unspecified error", L"Call failed."));
}

TEST(SystemErrorText, IsEmptyForACodeWithoutText) { EXPECT_EQ(SystemErrorText(kCodeWithoutText), L""); }

TEST(SystemErrorText, IsEmptyForATextWithAnInsertAsThereIsNothingToInsert) {
  EXPECT_EQ(SystemErrorText(ERROR_BAD_EXE_FORMAT), L"");
  EXPECT_EQ(ErrorSuffix(ERROR_BAD_EXE_FORMAT), L" Error 193 (0xc1)");
}

TEST(ErrorSuffix, GivesTheNumberTwiceAndTheText) {
  EXPECT_EQ(ErrorSuffix(ERROR_ACCESS_DENIED), L" Error 5 (0x5) - " + SystemErrorText(ERROR_ACCESS_DENIED));
}

TEST(ErrorSuffix, GivesTheTextOfSuccessToo) {
  EXPECT_EQ(ErrorSuffix(ERROR_SUCCESS), L" Error 0 (0x0) - " + SystemErrorText(ERROR_SUCCESS));
}

TEST(ErrorSuffix, IsOnlyTheNumbersWhereThereIsNoText) {
  EXPECT_EQ(ErrorSuffix(kCodeWithoutText), L" Error 536914893 (0x2000abcd)");
}

TEST(ErrorSuffix, PrintsAnHresultAsANegativeNumber) {
  const std::wstring numbers = L" Error -2147221164 (0x80040154)";
  const std::wstring text = SystemErrorText(static_cast<uint32_t>(REGDB_E_CLASSNOTREG));
  EXPECT_EQ(ErrorSuffix(REGDB_E_CLASSNOTREG), text.empty() ? numbers : numbers + L" - " + text);
}

TEST(ErrorSuffix, KnowsWhoseNumberItIs) {
  EXPECT_EQ(ErrorSuffix(std::error_code(ERROR_ACCESS_DENIED, std::system_category())),
            ErrorSuffix(ERROR_ACCESS_DENIED));
  EXPECT_EQ(ErrorSuffix(std::make_error_code(std::errc::io_error)), L" Error 5 - Input/output error");
}

}  // namespace
