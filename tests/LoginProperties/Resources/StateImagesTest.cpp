#include "LoginProperties/Resources/StateImages.h"

#include <windows.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <set>
#include <span>
#include <vector>

#include "tests/LoginProperties/Resources/ModuleResources.h"

namespace {

using testing::ElementsAre;

class StateImages : public testing::Test {
 protected:
  void SetUp() override {
    bitmap_.reset(static_cast<HBITMAP>(
        LoadImageW(Module(), MAKEINTRESOURCEW(IDB_STATE_IMAGES), IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION)));
    ASSERT_TRUE(bitmap_);
    BITMAP strip;
    ASSERT_EQ(GetObjectW(bitmap_.get(), sizeof strip, &strip), static_cast<int>(sizeof strip));
    ASSERT_EQ(strip.bmWidth, static_cast<LONG>(kWidth));
    ASSERT_EQ(strip.bmHeight, static_cast<LONG>(kHeight));
    ASSERT_EQ(strip.bmBitsPixel, 24);
    rowBytes_ = static_cast<std::size_t>(strip.bmWidthBytes);
    bytes_ = {static_cast<const BYTE*>(strip.bmBits), kHeight * rowBytes_};
  }

  std::span<const BYTE> Pixels(std::size_t x, std::size_t y, std::size_t count) const {
    return bytes_.subspan(y * rowBytes_ + x * 3, count * 3);
  }

  bool IsTransparent(std::size_t x, std::size_t y) const {
    return std::ranges::all_of(Pixels(x, y, 1), [](BYTE part) { return part == 255; });
  }

  std::vector<BYTE> Cell(std::size_t cell) const {
    std::vector<BYTE> pixels;
    for (std::size_t y = 0; y < kHeight; ++y) {
      const auto row = Pixels(cell * kCellWidth, y, kCellWidth);
      pixels.insert(pixels.end(), row.begin(), row.end());
    }
    return pixels;
  }

  static constexpr std::size_t kWidth = 242;
  static constexpr std::size_t kHeight = 16;
  static constexpr std::size_t kCellWidth = 16;

 private:
  BitmapPtr bitmap_;
  std::size_t rowBytes_ = 0;
  std::span<const BYTE> bytes_;
};

TEST_F(StateImages, FillTheCellsOfStatesAndHeadings) {
  std::set<std::size_t> filled;
  for (std::size_t x = 0; x < kWidth; ++x) {
    for (std::size_t y = 0; y < kHeight; ++y) {
      if (!IsTransparent(x, y)) filled.insert(x / kCellWidth);
    }
  }
  EXPECT_THAT(filled, ElementsAre(1, 2, 3, 4, 5, 7, 8, 9, 12, 13));
}

TEST_F(StateImages, TellOnFromOff) {
  EXPECT_NE(Cell(kCheckOffImage), Cell(kCheckOnImage));
  EXPECT_NE(Cell(kRadioOffImage), Cell(kRadioOnImage));
}

// A box or circle is light inside on every background, so that its mark is seen.
TEST_F(StateImages, HideWhatIsBehindABoxOrCircle) {
  for (const int cell : {kCheckOffImage, kCheckOnImage, kRadioOffImage, kRadioOnImage}) {
    const std::size_t left = static_cast<std::size_t>(cell) * kCellWidth;
    for (std::size_t y = 0; y < kHeight; ++y) {
      int edges = 0;
      for (std::size_t x = left + 1; x < left + kCellWidth; ++x) {
        if (IsTransparent(x, y) != IsTransparent(x - 1, y)) ++edges;
      }
      EXPECT_LE(edges, 2) << "cell " << cell << ", row " << y;
    }
  }
}

}  // namespace
