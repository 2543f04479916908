#include "NetUtilities/Module/Handle.h"

#include <gtest/gtest.h>

namespace {

constexpr wchar_t kEvent[] = L"PaviseTestHandle";

bool EventExists() { return Handle(OpenEventW(SYNCHRONIZE, FALSE, kEvent)) != nullptr; }

TEST(Handle, IsClosedInTheEnd) {
  {
    const Handle event(CreateEventW(nullptr, TRUE, FALSE, kEvent));
    EXPECT_TRUE(EventExists());
  }
  EXPECT_FALSE(EventExists());
}

TEST(Handle, OfAFileThatCannotBeOpenedIsNull) {
  EXPECT_EQ(OwnUnlessInvalid(INVALID_HANDLE_VALUE), nullptr);
  EXPECT_EQ(OwnUnlessInvalid(CreateFileW(L"Z:\\none\\none", GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr)),
            nullptr);
}

TEST(Handle, OfAFileThatWasOpenedIsOwned) {
  HANDLE raw = nullptr;
  {
    const Handle file = OwnUnlessInvalid(CreateFileW(L"NUL", GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    raw = file.get();
    EXPECT_NE(raw, nullptr);
  }
  DWORD flags = 0;
  EXPECT_EQ(GetHandleInformation(raw, &flags), FALSE) << "It is closed.";
}

// A block that may move is behind a handle, which is known to be gone.
TEST(LocalMemory, IsFreedInTheEnd) {
  HLOCAL raw = LocalAlloc(LMEM_MOVEABLE, 8);
  { const LocalMemory<void> owner(raw); }
  EXPECT_EQ(LocalSize(raw), 0u);
}

TEST(TaskMemory, HoldsATextOfTheSystem) {
  LPOLESTR text = nullptr;
  ASSERT_EQ(StringFromCLSID(CLSID{}, &text), S_OK);
  const TaskMemory<wchar_t> owner(text);
  EXPECT_STREQ(owner.get(), L"{00000000-0000-0000-0000-000000000000}");
}

}  // namespace
