#include "WaylineDll/SetupWizard/WizardPages.h"

#include <gmock/gmock.h>

#include <optional>

namespace {

using enum WizardPage;
using testing::ElementsAre;
using testing::IsEmpty;

}  // namespace

TEST(WizardPages, AreFixedForAProfileThatThereIs) {
  EXPECT_THAT(PagesOf(WizardId::UserIdAndService), ElementsAre(UserId, Service));
  EXPECT_THAT(PagesOf(WizardId::Servers), ElementsAre(Servers, Domains));
}

TEST(WizardPages, OfANewProfileDependOnWhatThereIsToChoose) {
  EXPECT_THAT(PagesOf(WizardId::NewProfile),
              ElementsAre(Name, Defaults, UserId, Service, ServerChoice, Servers, Domains, Copy, Summary));
  EXPECT_THAT(PagesOf(WizardId::NewProfile, {.hasDefaults = false}),
              ElementsAre(Name, UserId, Service, ServerChoice, Servers, Domains, Copy, Summary));
  EXPECT_THAT(PagesOf(WizardId::NewProfile, {.setsServers = false}),
              ElementsAre(Name, Defaults, UserId, Service, ServerChoice, Copy, Summary));
}

TEST(WizardPages, OfAnUnknownWizardAreNone) { EXPECT_THAT(PagesOf(WizardId{6}), IsEmpty()); }

TEST(WizardPages, FollowEachOtherInBothDirections) {
  const std::vector<WizardPage> pages = PagesOf(WizardId::NewProfile, {.setsServers = false});
  EXPECT_EQ(PageAfter(pages, ServerChoice), Copy);
  EXPECT_EQ(PageBefore(pages, Copy), ServerChoice);
  EXPECT_EQ(PageAfter(pages, Summary), std::nullopt);
  EXPECT_EQ(PageBefore(pages, Name), std::nullopt);
  EXPECT_EQ(PageAfter(pages, Servers), std::nullopt);
  EXPECT_EQ(PageBefore(pages, Servers), std::nullopt);
}
