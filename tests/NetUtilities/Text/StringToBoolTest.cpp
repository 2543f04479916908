#include "NetUtilities/Text/StringToBool.h"

#include <gtest/gtest.h>

TEST(StringToBool, AcceptsItsFourWordsInAnyCase) {
  for (const wchar_t* word : {L"true", L"yes", L"y", L"t", L"YES", L"True", L"Y", L"T"})
    EXPECT_TRUE(StringToBool(word));
}

TEST(StringToBool, TakesEverythingElseAsFalse) {
  for (const wchar_t* word : {L"", L"1", L"on", L"true ", L"yess", L"no", L"false"}) EXPECT_FALSE(StringToBool(word));
}
