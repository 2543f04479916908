// The sheet leaves nothing behind, however often it is opened.

#include <windows.h>

#include <gtest/gtest.h>

#include "LoginProperties/ProfilePage/ProfileControls.h"
#include "tests/support/ResourceCounters.h"
#include "tests/support/WaitUntil.h"
#include "tests/ui/SheetDriver.h"
#include "tests/ui/TestContext.h"

namespace {

void OpenAndClose() {
  LoginPropertiesContext context = MakeContext();
  SheetDriver sheet(context);
  for (const wchar_t* tab : {L"Preferences", L"Autostart", L"Proxy", L"Timeouts", L"Wi-Fi Switching"}) {
    sheet.SelectTab(tab);
  }
  sheet.Click(IDC_OVERRIDE_CHECK);
  sheet.PressCancel();
  sheet.Result();
}

}  // namespace

TEST(ResourceCounters, SeeALeak) {
  const size_t handles = CountKernelHandles();
  const HANDLE event = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  EXPECT_EQ(CountKernelHandles(), handles + 1);
  CloseHandle(event);
  EXPECT_EQ(CountKernelHandles(), handles);

  const size_t objects = CountGdiObjects();
  const HBRUSH brush = CreateSolidBrush(RGB(1, 2, 3));
  EXPECT_EQ(CountGdiObjects(), objects + 1);
  DeleteObject(brush);
  EXPECT_EQ(CountGdiObjects(), objects);

  const auto createWindow = [] {
    return CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
  };
  // The first window of a thread brings one for its input method along.
  const HWND first = createWindow();
  const size_t windows = CountWindows();
  const HWND parent = createWindow();
  CreateWindowExW(0, L"STATIC", L"", WS_CHILD, 0, 0, 1, 1, parent, nullptr, nullptr, nullptr);
  EXPECT_EQ(CountWindows(), windows + 2);
  DestroyWindow(parent);
  EXPECT_EQ(CountWindows(), windows);
  DestroyWindow(first);
}

TEST(Sheet, LeavesNoHandleBehindWhenOpened200Times) {
  // The first times fill the caches of the platform and of the module.
  for (int time = 0; time < 30; ++time) OpenAndClose();
  const size_t handles = CountKernelHandles();
  const size_t windows = CountWindows();
  const size_t objects = CountGdiObjects();
  for (int time = 0; time < 200; ++time) OpenAndClose();
  // The smallest leak would be 200. The platform's caches, for COM's connections and device contexts, grow by a few now
  // and then.
  constexpr size_t kPlatformsOwn = 20;
  EXPECT_TRUE(WaitUntil([=] { return CountKernelHandles() <= handles + kPlatformsOwn; }))
      << CountKernelHandles() << " handles, were " << handles;
  EXPECT_EQ(CountWindows(), windows);
  EXPECT_LE(CountGdiObjects(), objects + kPlatformsOwn);
}
