// What the module has besides its pages, and that it has nothing else.

#include "tests/LoginProperties/Resources/ModuleResources.h"

#include <windows.h>

#include <gmock/gmock.h>

#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "LoginProperties/Resources/StateImages.h"
#include "tests/LoginProperties/Resources/ExpectedResources.h"

namespace {

using testing::ContainerEq;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::HasSubstr;

const ExpectedResources kOfTheSheet({.strings = {{1037, L"%1 - Login Properties"}}});

// A block of the string table holds 16 strings, each behind its length; a length of 0 stands for no string. Its own
// number counts from 1.
std::map<unsigned, std::wstring> ModuleStrings() {
  constexpr unsigned kStringsPerBlock = 16;
  std::map<unsigned, std::wstring> strings;
  for (const WORD block : ResourceIds(RT_STRING)) {
    auto unit = reinterpret_cast<const wchar_t*>(Resource(RT_STRING, block).data());
    const unsigned firstId = (block - 1u) * kStringsPerBlock;
    for (unsigned i = 0; i < kStringsPerBlock; ++i) {
      const std::size_t length = *unit++;
      if (length != 0) strings.emplace(firstId + i, std::wstring(unit, length));
      unit += length;
    }
  }
  return strings;
}

template <typename Expected>
std::set<WORD> IdsOf(const std::vector<Expected>& resources) {
  std::set<WORD> ids;
  for (const Expected& resource : resources) ids.insert(resource.id);
  return ids;
}

TEST(StringTable, HoldsExactlyTheTextsOfTheModule) {
  ASSERT_TRUE(Module());
  EXPECT_THAT(ModuleStrings(), ElementsAreArray(ExpectedResources::Strings()));
}

TEST(ModuleResources, HaveNoOtherDialogsAndPictures) {
  EXPECT_THAT(ResourceIds(RT_DIALOG), ContainerEq(IdsOf(ExpectedResources::Dialogs())));
  EXPECT_THAT(ResourceIds(RT_GROUP_ICON), ContainerEq(IdsOf(ExpectedResources::Icons())));
  EXPECT_THAT(ResourceIds(RT_BITMAP), ElementsAre(IDB_STATE_IMAGES));
}

TEST(VersionResource, NamesProductAndFile) {
  const auto resource = Resource(RT_VERSION, VS_VERSION_INFO);
  ASSERT_FALSE(resource.empty());
  // A query may write into the block that it reads.
  std::vector<std::byte> version(resource.begin(), resource.end());
  const auto text = [&](const std::wstring& name) -> std::wstring {
    void* value = nullptr;
    UINT length = 0;
    if (!VerQueryValueW(version.data(), (L"\\StringFileInfo\\040904B0\\" + name).c_str(), &value, &length)) return L"";
    return static_cast<const wchar_t*>(value);
  };
  EXPECT_EQ(text(L"CompanyName"), L"Ostrel");
  EXPECT_EQ(text(L"ProductName"), L"Wayline");
  EXPECT_EQ(text(L"FileDescription"), L"Network access login properties");
  EXPECT_EQ(text(L"InternalName"), L"Pavise");
  EXPECT_EQ(text(L"OriginalFilename"), L"Pavise.dll");
  EXPECT_EQ(text(L"ProductVersion"), text(L"FileVersion"));

  void* value = nullptr;
  UINT length = 0;
  ASSERT_TRUE(VerQueryValueW(version.data(), L"\\", &value, &length));
  const auto& numbers = *static_cast<const VS_FIXEDFILEINFO*>(value);
  EXPECT_EQ(numbers.dwFileType, static_cast<DWORD>(VFT_DLL));
  EXPECT_EQ(text(L"FileVersion"), std::to_wstring(HIWORD(numbers.dwFileVersionMS)) + L'.' +
                                      std::to_wstring(LOWORD(numbers.dwFileVersionMS)) + L'.' +
                                      std::to_wstring(HIWORD(numbers.dwFileVersionLS)) + L'.' +
                                      std::to_wstring(LOWORD(numbers.dwFileVersionLS)));
}

TEST(Manifest, AsksForCommonControlsSixUnderALibrarysNumber) {
  const auto manifest = Resource(RT_MANIFEST, 2);
  const std::string text(reinterpret_cast<const char*>(manifest.data()), manifest.size());
  EXPECT_THAT(text, HasSubstr("name=\"Microsoft.Windows.Common-Controls\" version=\"6.0.0.0\""));
}

}  // namespace
