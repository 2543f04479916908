#include "NetUtilities/Text/SplitNonEmpty.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

TEST(SplitNonEmpty, SkipsEmptyPieces) {
  EXPECT_THAT(SplitNonEmpty(L"50, 100,\t200;;5", L" ,;\t"), ElementsAre(L"50", L"100", L"200", L"5"));
  EXPECT_THAT(SplitNonEmpty(L" ,; ", L" ,;\t"), IsEmpty());
  EXPECT_THAT(SplitNonEmpty(L"", L","), IsEmpty());
}
