#include "WaylineDll/SetupWizard/WizardSummary.h"

#include <gmock/gmock.h>

#include <memory>

#include "WaylineDll/SetupWizard/WizardStrings.h"

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Field;
using testing::Not;

class Summary : public testing::Test {
 protected:
  Summary() {
    profiles[1] = std::make_shared<Profile>(1);
    profiles[1]->SetName(L"Default");
    profiles[2001] = std::make_shared<Profile>(2001);
    profiles[2001]->SetName(L"Work");
    services.emplace_back();
    services.back().serviceId = 400;
    services.back().displayText = L"Standard Access";
    draft.name = L"Home";
  }

  std::vector<SummaryLine> Lines() const { return Summarize(draft, profiles, services); }

  ProfileTable profiles;
  std::vector<ServiceRecord> services;
  WizardDraft draft{Profile(2009), ConfigSetting(), profiles};
};

}  // namespace

TEST_F(Summary, SaysWhatIsMade) {
  draft.SetDefaults(1);
  draft.SetUserId(L"a.sample");
  draft.copySource = 2001;
  EXPECT_THAT(
      Lines(),
      ElementsAre(SummaryLine{IDS_SUMMARY_NAME, L"Home"}, SummaryLine{IDS_SUMMARY_DEFAULTS, L"Default"},
                  SummaryLine{IDS_SUMMARY_ACCOUNT, L"", IDS_SUMMARY_EMPTY},
                  SummaryLine{IDS_SUMMARY_USER_ID, L"a.sample"}, SummaryLine{IDS_SUMMARY_SERVICE, L"Standard Access"},
                  SummaryLine{IDS_SUMMARY_SERVERS, L"", IDS_SUMMARY_AS_IN_DEFAULTS},
                  SummaryLine{IDS_SUMMARY_COPY, L"Work"}));
}

TEST_F(Summary, SaysThatNothingIsCopied) {
  EXPECT_THAT(Lines(), Contains(SummaryLine{IDS_SUMMARY_COPY, L"", IDS_SUMMARY_NO_COPY}));
}

TEST_F(Summary, ListsTheServersThatTheUserSets) {
  draft.setsServers = true;
  draft.SetServer(ServerField::Dns1, {L'm', L"192.0.2.53"});
  draft.SetServer(ServerField::Wins2, {L'x', L""});
  EXPECT_THAT(Lines(), testing::IsSupersetOf({SummaryLine{IDS_SUMMARY_DNS1, L"192.0.2.53"},
                                              SummaryLine{IDS_SUMMARY_DNS2, L"", IDS_SUMMARY_AUTOMATIC},
                                              SummaryLine{IDS_SUMMARY_SUFFIXES, L"", IDS_SUMMARY_NO_SERVER}}));
  EXPECT_THAT(Lines(), Not(Contains(Field(&SummaryLine::text, IDS_SUMMARY_WINS2))));
  EXPECT_THAT(Lines(), Not(Contains(Field(&SummaryLine::text, IDS_SUMMARY_SERVERS))));
}

TEST_F(Summary, LeavesOutAServiceThatIsNotKnown) {
  draft.SetService(999);
  EXPECT_THAT(Lines(), Not(Contains(Field(&SummaryLine::text, IDS_SUMMARY_SERVICE))));
}
