#include "WaylineDll/Programs/RegistryPath.h"

#include <gtest/gtest.h>

namespace {

void ExpectParts(const std::wstring& path, const std::wstring& root, const std::wstring& key,
                 const std::wstring& value) {
  const RegistryPath parts = SplitRegistryPath(path);
  EXPECT_EQ(parts.root, root);
  EXPECT_EQ(parts.key, key);
  EXPECT_EQ(parts.value, value);
}

}  // namespace

TEST(RegistryPath, HasRootKeyAndValue) {
  ExpectParts(LR"(HKEY_LOCAL_MACHINE\Software\Example\Orders\Path)", L"HKEY_LOCAL_MACHINE",
              LR"(Software\Example\Orders)", L"Path");
  ExpectParts(LR"(HKCU\Key\A value)", L"HKCU", L"Key", L"A value");
}

TEST(RegistryPath, NamesTheDefaultValueWithNothingBehindTheLastBackslash) {
  ExpectParts(LR"(HKCU\Software\Example\)", L"HKCU", LR"(Software\Example)", L"");
}

TEST(RegistryPath, MayLackParts) {
  ExpectParts(L"", L"", L"", L"");
  ExpectParts(L"HKCU", L"HKCU", L"", L"");
  ExpectParts(LR"(HKCU\Path)", L"HKCU", L"", L"Path");
  ExpectParts(LR"(\)", L"", L"", L"");
  ExpectParts(LR"(\\)", L"", L"", L"");
}
