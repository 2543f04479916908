#include "NetUtilities/Module/ComPointer.h"

#include <gtest/gtest.h>
#include <objbase.h>

namespace {

TEST(ComPointer, GivesUpItsOneReference) {
  IStream* stream = nullptr;
  ASSERT_EQ(CreateStreamOnHGlobal(nullptr, TRUE, &stream), S_OK);
  ComPointer<IStream> owner(stream);
  EXPECT_EQ(stream->AddRef(), 2u);
  owner.reset();
  EXPECT_EQ(stream->Release(), 0u);
}

TEST(AutomationText, HoldsATextThatMayHaveAnyCharacter) {
  const AutomationText text(SysAllocStringLen(L"a\0b", 3));
  EXPECT_EQ(SysStringLen(text.get()), 3u);
}

}  // namespace
