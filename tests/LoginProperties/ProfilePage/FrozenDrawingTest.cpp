#include "LoginProperties/ProfilePage/FrozenDrawing.h"

#include <commctrl.h>
#include <gmock/gmock.h>

#include <optional>
#include <vector>

namespace {

using testing::ElementsAre;

// A window that notes what it is told about drawing.
class FrozenDrawingTest : public testing::Test {
 protected:
  FrozenDrawingTest() { SetWindowSubclass(window_, NoteRedraw, 1, reinterpret_cast<DWORD_PTR>(&redraws_)); }
  ~FrozenDrawingTest() override { DestroyWindow(window_); }

  static LRESULT CALLBACK NoteRedraw(HWND window, UINT message, WPARAM wordParameter, LPARAM longParameter,
                                     UINT_PTR /*id*/, DWORD_PTR redraws) {
    if (message == WM_SETREDRAW) reinterpret_cast<std::vector<bool>*>(redraws)->push_back(wordParameter != FALSE);
    return DefSubclassProc(window, message, wordParameter, longParameter);
  }

  std::vector<bool> redraws_;
  HWND window_ =
      CreateWindowExW(0, L"STATIC", L"", WS_POPUP | WS_VISIBLE, 0, 0, 100, 50, nullptr, nullptr, nullptr, nullptr);
};

TEST_F(FrozenDrawingTest, LastsAsLongAsTheObject) {
  std::optional<FrozenDrawing> frozen(window_);
  EXPECT_THAT(redraws_, ElementsAre(false));
  frozen.reset();
  EXPECT_THAT(redraws_, ElementsAre(false, true));
}

TEST_F(FrozenDrawingTest, EndsWithEverythingDrawnAnew) {
  ValidateRect(window_, nullptr);
  { const FrozenDrawing frozen(window_); }
  RECT update{};
  EXPECT_TRUE(GetUpdateRect(window_, &update, FALSE));
  RECT window{};
  GetClientRect(window_, &window);
  EXPECT_TRUE(EqualRect(&update, &window));
}

}  // namespace
