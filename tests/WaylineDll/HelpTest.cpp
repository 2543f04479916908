#include <windows.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "tests/support/MessageBoxAnswer.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TestRegistryKey.h"
#include "tests/support/WaitUntil.h"
#include "WaylineDll/Messages.h"

namespace {

using std::filesystem::path;

constexpr uint32_t kCommand = 15;

path FileOf(const wchar_t* module) {
  wchar_t file[MAX_PATH];
  return std::wstring(file, GetModuleFileNameW(GetModuleHandleW(module), file, MAX_PATH));
}

path HelpPage(const wchar_t* name) { return FileOf(L"WaylineDll.dll").parent_path() / L"help" / name; }

// Web pages are opened with a program of the test's choice.
class HelpTest : public testing::Test {
 protected:
  HelpTest() {
    extension.SetString(L"", L"PaviseTestPage");
    SetBrowser(FileOf(nullptr).replace_filename(L"TestBrowser.exe"));
  }

  void SetBrowser(const path& program) {
    open.SetString(L"", L'"' + program.wstring() + L"\" \"" + opened.wstring() + L"\" \"%1\"");
  }

  // The page that the browser was asked to open.
  path OpenedPage() const {
    EXPECT_TRUE(WaitUntil([this] { return exists(opened); })) << "No page was opened.";
    std::ifstream file(opened, std::ios::binary);
    return std::string{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  }

  TemporaryFolder folder;
  path opened = folder.Path() / L"opened.txt";
  TestRegistryKey extension{HKEY_CLASSES_ROOT, LR"(.html)"};
  TestRegistryKey open{HKEY_CLASSES_ROOT, LR"(PaviseTestPage\shell\open\command)"};
};

TEST_F(HelpTest, OpensThePageOfATopic) {
  DisplayHelp(1036, nullptr, kCommand);
  EXPECT_EQ(OpenedPage(), HelpPage(L"1036.html"));
}

TEST_F(HelpTest, OpensTheTableOfContentsForATopicWithoutAPage) {
  DisplayHelp(4711, nullptr, kCommand);
  EXPECT_EQ(OpenedPage(), HelpPage(L"index.html"));
}

TEST_F(HelpTest, SaysWhereThePageIsWhenItCannotBeOpened) {
  SetBrowser(folder.Path() / L"missing.exe");
  const HWND parent = CreateWindowExW(0, L"STATIC", L"Parent", WS_POPUP | WS_VISIBLE, 0, 0, 200, 100, nullptr, nullptr,
                                      nullptr, nullptr);
  const auto box = AnswerMessageBox(MessageBoxAnswer::Button(IDOK), [&] { DisplayHelp(1036, parent, kCommand); });
  DestroyWindow(parent);
  EXPECT_EQ(box.text,
            L"The help page could not be opened. You find it in the file\n" + HelpPage(L"1036.html").wstring());
  EXPECT_EQ(box.owner, parent);
}

}  // namespace
