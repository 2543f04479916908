#include "WaylineDll/Appearance.h"

#include <gmock/gmock.h>

#include <ostream>

void PrintTo(const RECT& rect, std::ostream* stream) {
  *stream << rect.left << ',' << rect.top << ' ' << rect.right << ',' << rect.bottom;
}

bool operator==(const RECT& left, const RECT& right) { return EqualRect(&left, &right) != FALSE; }

namespace {

class TestWindow {
 public:
  explicit TestWindow(const RECT& place)
      : handle_(CreateWindowExW(0, L"STATIC", L"", WS_POPUP, place.left, place.top, place.right - place.left,
                                place.bottom - place.top, nullptr, nullptr, nullptr, nullptr)) {}
  ~TestWindow() { DestroyWindow(handle_); }
  TestWindow(const TestWindow&) = delete;
  TestWindow& operator=(const TestWindow&) = delete;

  HWND Handle() const { return handle_; }
  RECT Place() const {
    RECT place{};
    GetWindowRect(handle_, &place);
    return place;
  }

 private:
  HWND handle_;
};

RECT WorkArea() {
  RECT area{};
  SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0);
  return area;
}

// Where a window of 100 by 80 is put over a reference.
RECT PlaceOver(const RECT& reference) {
  const TestWindow over(reference);
  const TestWindow window({5, 7, 105, 87});
  CenterWindow(window.Handle(), over.Handle());
  return window.Place();
}

TEST(CenterWindow, CentresOverTheReference) { EXPECT_EQ(PlaceOver({200, 150, 600, 450}), (RECT{350, 260, 450, 340})); }

TEST(CenterWindow, CentresOverASmallerReference) {
  EXPECT_EQ(PlaceOver({300, 300, 320, 320}), (RECT{260, 270, 360, 350}));
}

TEST(CenterWindow, CentresOverTheWorkAreaWithoutAReference) {
  const RECT work = WorkArea();
  const TestWindow window({5, 7, 105, 87});
  CenterWindow(window.Handle(), nullptr);
  const LONG left = (work.left + work.right) / 2 - 50;
  const LONG top = (work.top + work.bottom) / 2 - 40;
  EXPECT_EQ(window.Place(), (RECT{left, top, left + 100, top + 80}));
}

TEST(CenterWindow, KeepsTheWindowOnTheScreen) {
  const RECT work = WorkArea();
  EXPECT_EQ(PlaceOver({work.left, work.top, work.left + 20, work.top + 20}),
            (RECT{work.left, work.top, work.left + 100, work.top + 80}));
  EXPECT_EQ(PlaceOver({work.right - 20, work.bottom - 20, work.right, work.bottom}),
            (RECT{work.right - 100, work.bottom - 80, work.right, work.bottom}));
}

TEST(CenterWindow, KeepsTheUpperLeftCornerOfALargeWindowOnTheScreen) {
  const RECT work = WorkArea();
  const TestWindow window({0, 0, work.right + 200, work.bottom + 200});
  CenterWindow(window.Handle(), nullptr);
  EXPECT_EQ(window.Place().left, work.left);
  EXPECT_EQ(window.Place().top, work.top);
}

TEST(ProportionalFont, IsTheFontOfMessages) {
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof(metrics);
  SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, metrics.cbSize, &metrics, 0);
  LOGFONTW font{};
  ASSERT_NE(GetObjectW(GetProportionalFont(), sizeof(font), &font), 0);
  EXPECT_STREQ(font.lfFaceName, metrics.lfMessageFont.lfFaceName);
  EXPECT_EQ(font.lfHeight, metrics.lfMessageFont.lfHeight);
}

TEST(ProportionalFont, IsOneForAll) { EXPECT_EQ(GetProportionalFont(), GetProportionalFont()); }

}  // namespace
