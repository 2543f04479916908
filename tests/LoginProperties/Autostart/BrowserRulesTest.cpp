#include "LoginProperties/Autostart/BrowserRules.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;

const RegAppItem kEdge = {.name = L"Microsoft Edge",
                          .command = L"LaunchWinApp.exe",
                          .executable = L"MicrosoftEdge.exe",
                          .urlTemplate = L"microsoft-edge:%s"};
const RegAppItem kFirst = {.name = L"First", .command = LR"(C:\Program Files\First\first.exe)"};
const RegAppItem kSecond = {.name = L"Second", .command = LR"(C:\Second\second.exe)"};

}  // namespace

TEST(BrowserRules, AddEdgeBehindTheOthers) {
  std::vector<RegAppItem> browsers = {kFirst};
  AddEdge(browsers);
  EXPECT_THAT(browsers, ElementsAre(kFirst, kEdge));
}

TEST(BrowserRules, LeaveAnEdgeThatIsRegisteredAsItIs) {
  const RegAppItem registered = {.name = L"Microsoft Edge", .command = LR"(C:\Edge\msedge.exe)"};
  std::vector<RegAppItem> browsers = {registered, kFirst};
  AddEdge(browsers);
  EXPECT_THAT(browsers, ElementsAre(registered, kFirst));
}

TEST(BrowserRules, FindTheFirstBrowserWithACommandInWhateverCase) {
  RegAppItem sameProgram = kFirst;
  sameProgram.name = L"Same program";
  const std::vector<RegAppItem> browsers = {kSecond, kFirst, sameProgram};
  EXPECT_EQ(FindBrowser(browsers, LR"(c:\PROGRAM files\first\FIRST.EXE)"), kFirst);
  EXPECT_EQ(FindBrowser(browsers, L"FIRST.exe"), kFirst) << "a part will do";
}

TEST(BrowserRules, FindNothingForACommandThatNoBrowserHas) {
  EXPECT_EQ(FindBrowser({kFirst, kSecond}, LR"(C:\Third\third.exe)"), RegAppItem());
  EXPECT_EQ(FindBrowser({kFirst, kSecond}, LR"(C:\Second\second.exe --more)"), RegAppItem());
  EXPECT_EQ(FindBrowser({}, L"first.exe"), RegAppItem());
}

TEST(BrowserRules, FindNothingForAnEmptyCommand) {
  EXPECT_EQ(FindBrowser({RegAppItem{.name = L"No command"}, kFirst}, L""), RegAppItem());
}

TEST(BrowserRules, TakeInternetExplorerForACommandInWhateverCase) {
  EXPECT_TRUE(IsCommand(L"IEXPLORE.EXE"));
  EXPECT_TRUE(IsCommand(LR"(Applications\iexplore.exe)"));
  EXPECT_FALSE(IsCommand(L"IE.HTTP"));
  EXPECT_FALSE(IsCommand(L""));
}
