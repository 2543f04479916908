// What support finds in the log of a sheet: what the user did, what he was told, and how it ended.

#include <gmock/gmock.h>

#include <sstream>
#include <string>
#include <vector>

#include "LoginProperties/ProfilePage/ProfileControls.h"
#include "LoginProperties/Timeouts/TimeoutControls.h"
#include "tests/support/ServiceLog.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/ui/SheetDriver.h"
#include "tests/ui/TestContext.h"
#include "TraceLogManager/LogFileFormat.h"
#include "WaylineDll/Host.h"

namespace {

using testing::Contains;
using testing::ElementsAreArray;

// The messages of this process's lines up to a level, without what stands in front of them.
std::vector<std::string> Messages(const ServiceLog& log, unsigned maxLevel) {
  std::vector<std::string> messages;
  std::istringstream text(log.Text());
  for (std::string line; std::getline(text, line);) {
    if (line.ends_with('\r')) line.pop_back();
    const size_t start = line.find(": ");
    if (start == std::string::npos || line.size() < 4 || static_cast<unsigned>(line[3] - '0') > maxLevel) continue;
    messages.push_back(line.substr(start + 2));
  }
  return messages;
}

constexpr unsigned kInfo = 3;
constexpr unsigned kDetail = 4;

}  // namespace

TEST(SessionLog, TellsWhatTheUserDid) {
  // With the network services of the sample data, which the first page looks for.
  const TemporaryFolder folder;
  ASSERT_EQ(OpenSettings(folder.File(L"Wayline.db")), std::nullopt);
  const ServiceLog log;
  LoginPropertiesContext context = MakeContext();
  {
    SheetDriver sheet(context);
    sheet.SelectTab(L"Timeouts");
    sheet.Pick(IDC_PROFILE_COMBO, L"Home");
    sheet.Click(IDC_OVERRIDE_CHECK);
    sheet.PressOk();
    ASSERT_EQ(sheet.Result(), kSheetConfirmed);
  }
  // The first messages of all start the service, which takes longer than a sheet waits for it.
  ASSERT_TRUE(log.Has(": Profile 2004 'Home' is changed"));
  EXPECT_THAT(Messages(log, kInfo),
              ElementsAreArray({"Login properties opened: mode 1, profile 2001 'Work', profiles in all: 6",
                                "Login properties confirmed; changed: profiles 1, preferences 0, autostart items 0, "
                                "proxies 0",
                                "Profile 2004 'Home' is changed"}));
  std::vector<std::string> pages;
  for (const std::string& message : Messages(log, kDetail)) {
    if (message.starts_with("Page ") || message.ends_with(" selected")) pages.push_back(message);
  }
  EXPECT_THAT(pages, ElementsAreArray({"Page 'General' shows profile 2001 'Work'",
                                       "Page 'Timeouts' shows profile 2001 'Work'", "Profile 2004 'Home' selected",
                                       "Page 'Timeouts': profile 2004 'Home' overrides the defaults"}));
  CloseSettings();
}

TEST(SessionLog, TellsWhatTheUserWasTold) {
  const ServiceLog log;
  LoginPropertiesContext context = MakeContext(SheetMode::TimeoutsOnly);
  ProfileColumns& work = context.profiles[kWork]->Columns();
  work.defaultTimeouts = false;
  // A warning that would come before the connection begins.
  work.durationTime = 120;
  work.warnTime = 180;
  {
    SheetDriver sheet(context);
    sheet.PressOk();
    sheet.AnswerMessageBox(IDOK);
    sheet.PressCancel();
    ASSERT_EQ(sheet.Result(), kSheetCancelled);
  }
  EXPECT_TRUE(log.Has("Message: Warning time must be less than idle time, threshold time and duration time."));
  const std::vector<std::string> messages = Messages(log, kDetail);
  EXPECT_THAT(messages, Contains("Page 'Timeouts' cannot be left: a value is not valid"));
  EXPECT_THAT(messages, Contains("Login properties cancelled"));
}
