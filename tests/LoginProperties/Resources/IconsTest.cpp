#include <windows.h>

#include <gmock/gmock.h>

#include <span>
#include <string>
#include <vector>

#include "tests/LoginProperties/Resources/ExpectedResources.h"
#include "tests/LoginProperties/Resources/ModuleResources.h"

namespace {

using testing::ElementsAre;

// What a group of icons begins with, and its entry for each size.
#pragma pack(push, 2)
struct IconGroupHeader {
  WORD reserved;
  WORD type;
  WORD count;
};
struct IconGroupEntry {
  BYTE width;
  BYTE height;
  BYTE colours;
  BYTE reserved;
  WORD planes;
  WORD bits;
  DWORD bytes;
  WORD id;
};
#pragma pack(pop)

class ModuleIcon : public testing::TestWithParam<ExpectedIcon> {};

INSTANTIATE_TEST_SUITE_P(Module, ModuleIcon, testing::ValuesIn(ExpectedResources::Icons()),
                         [](const auto& icon) { return icon.param.name; });

TEST_P(ModuleIcon, HasAPictureWithTransparencyInEachSize) {
  const auto group = Resource(RT_GROUP_ICON, GetParam().id);
  ASSERT_GE(group.size(), sizeof(IconGroupHeader));
  const auto& header = *reinterpret_cast<const IconGroupHeader*>(group.data());
  ASSERT_GE(group.size(), sizeof header + header.count * sizeof(IconGroupEntry));
  const std::span entries(reinterpret_cast<const IconGroupEntry*>(&header + 1), header.count);
  std::vector<int> sizes;
  for (const auto& entry : entries) {
    sizes.push_back(entry.width);
    EXPECT_EQ(entry.height, entry.width);
    EXPECT_EQ(entry.bits, 32) << sizes.back();
  }
  EXPECT_THAT(sizes, ElementsAre(16, 24, 32, 48));
}

TEST_P(ModuleIcon, IsLoadedInTheSizeThatIsAskedFor) {
  for (const int size : {16, 24, 32, 48}) {
    const Owner<HICON, DestroyIcon> icon(
        static_cast<HICON>(LoadImageW(Module(), MAKEINTRESOURCEW(GetParam().id), IMAGE_ICON, size, size, 0)));
    ASSERT_TRUE(icon) << size;
    ICONINFO info;
    ASSERT_TRUE(GetIconInfo(icon.get(), &info));
    const BitmapPtr mask(info.hbmMask);
    const BitmapPtr colours(info.hbmColor);
    BITMAP picture;
    ASSERT_NE(GetObjectW(colours.get(), sizeof picture, &picture), 0);
    EXPECT_EQ(picture.bmWidth, size);
    EXPECT_EQ(picture.bmHeight, size);
  }
}

}  // namespace
