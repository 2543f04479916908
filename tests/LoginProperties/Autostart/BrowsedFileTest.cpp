#include "LoginProperties/Autostart/BrowsedFile.h"

#include <gtest/gtest.h>

#include <string>

using namespace std::string_literals;

TEST(BrowsedFile, IsTheProgramOfTheEntry) {
  EXPECT_EQ(BrowsedProgram(L"C:\\Tools\\orders.exe"), L"C:\\Tools\\orders.exe");
  EXPECT_EQ(BrowsedProgram(L"C:\\" + std::wstring(256, L'a')), L"C:\\" + std::wstring(256, L'a'));
}

TEST(BrowsedFile, ThatOnlyStartsEdgeGivesEdge) {
  EXPECT_EQ(BrowsedProgram(L"C:\\Windows\\System32\\launchwinapp.exe"), L"Microsoft Edge");
  EXPECT_EQ(BrowsedProgram(L"C:\\launchwinapp.exe.bak\\a.exe"), L"Microsoft Edge");
  EXPECT_EQ(BrowsedProgram(L"C:\\Windows\\System32\\LaunchWinApp.exe"), L"C:\\Windows\\System32\\LaunchWinApp.exe");
}

TEST(BrowsedFile, GivesTheFolderThatItLiesIn) {
  EXPECT_EQ(BrowsedFolder(L"C:\\Tools\\New\\orders.exe"), L"C:\\Tools\\New");
  EXPECT_EQ(BrowsedFolder(L"\\\\server\\share\\orders.exe"), L"\\\\server\\share");
  EXPECT_EQ(BrowsedFolder(L"orders.exe"), L"");
  EXPECT_EQ(BrowsedFolder(L"\\orders.exe"), L"");
}

TEST(BrowsedFile, InTheRootOfADriveGivesTheRoot) { EXPECT_EQ(BrowsedFolder(L"C:\\orders.exe"), L"C:\\"); }

TEST(BrowsedFile, GivesItsNameWithoutTheExtension) {
  EXPECT_EQ(BrowsedName(L"C:\\Tools\\orders.exe"), L"orders");
  EXPECT_EQ(BrowsedName(L"C:\\Tools\\orders.2026.exe"), L"orders.2026");
  EXPECT_EQ(BrowsedName(L"C:\\Tools\\orders"), L"orders");
  EXPECT_EQ(BrowsedName(L"orders.exe"), L"orders");
  EXPECT_EQ(BrowsedName(L"orders"), L"orders");
  EXPECT_EQ(BrowsedName(L""), L"");
}

TEST(BrowsedFile, KeepsItsNameInAFolderWithAPoint) { EXPECT_EQ(BrowsedName(L"C:\\Tools 2.0\\orders"), L"orders"); }

TEST(BrowsedFile, GivesOfItsNameWhatIsWithinFiftyCharactersOfThePath) {
  const std::wstring folder = L"C:\\" + std::wstring(36, L'f') + L"\\";  // 40 characters
  EXPECT_EQ(BrowsedName(folder + L"ordera.exe"), L"ordera") << "50 characters";
  EXPECT_EQ(BrowsedName(folder + L"orderas.exe"), L"orderas") << "the extension is cut";
  EXPECT_EQ(BrowsedName(folder + L"orderandmore.exe"), L"orderandmo");
  EXPECT_EQ(BrowsedName(L"C:\\" + std::wstring(60, L'f') + L"\\orders.exe"), std::wstring(47, L'f'))
      << "the name is beyond";
}

TEST(BrowsedFile, GivesNoHalfCharacter) {
  const std::wstring path = L"C:\\" + std::wstring(46, L'f') + L"\xD83D\xDE00.exe";
  EXPECT_EQ(BrowsedName(path), std::wstring(46, L'f'));
}

TEST(BrowsedFile, FilterEndsEachPartWithANullCharacter) {
  EXPECT_EQ(FileFilter(L"Executable Files (*.EXE;*.BAT)~*.exe;*.bat~All Files (*.*)~*.*~"),
            L"Executable Files (*.EXE;*.BAT)\0*.exe;*.bat\0All Files (*.*)\0*.*\0"s);
  EXPECT_EQ(FileFilter(L""), L"");
}
