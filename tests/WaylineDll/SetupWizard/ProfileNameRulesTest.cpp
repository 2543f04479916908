#include "WaylineDll/SetupWizard/ProfileNameRules.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "NetUtilities/Text/Surrogates.h"

namespace {

constexpr uint32_t kNew = 2009;

class ProfileName : public testing::Test {
 protected:
  ProfileName() {
    Add(1, L"Default");
    Add(2001, L"Z\u00fcrich Office");
    Add(2002, L"Retired").SetHidden(true);
    Add(2003, L"Gone").SetState(ChangeState::Removed);
    profiles[2004] = nullptr;
  }

  Profile& Add(uint32_t id, const wchar_t* name) {
    const auto profile = std::make_shared<Profile>(id);
    profile->SetName(name);
    profiles[id] = profile;
    return *profile;
  }

  NameProblem Check(const std::wstring& name) const { return CheckProfileName(name, kNew, profiles); }

  ProfileTable profiles;
};

}  // namespace

TEST_F(ProfileName, MayBeAnyThatIsNotTaken) {
  EXPECT_EQ(Check(L"Work"), NameProblem::None);
  EXPECT_EQ(Check(L"Zurich Office"), NameProblem::None);
}

TEST_F(ProfileName, MustNotBeEmpty) { EXPECT_EQ(Check(L""), NameProblem::Empty); }

TEST_F(ProfileName, HasAtMost80Characters) {
  EXPECT_EQ(Check(std::wstring(80, L'x')), NameProblem::None);
  EXPECT_EQ(Check(std::wstring(81, L'x')), NameProblem::TooLong);
}

TEST_F(ProfileName, CountsACharacterThatTakesTwoUnitsOnce) {
  std::wstring name;
  for (int index = 0; index < 80; ++index) AppendCharacter(name, 0x1f600);
  EXPECT_EQ(Check(name), NameProblem::None);
  AppendCharacter(name, 0x1f600);
  EXPECT_EQ(Check(name), NameProblem::TooLong);
}

TEST_F(ProfileName, HasNoControlCharacters) { EXPECT_EQ(Check(L"My\tWork"), NameProblem::ControlCharacter); }

TEST_F(ProfileName, MustNotBeTakenInAnyCase) {
  EXPECT_EQ(Check(L"Z\u00fcrich Office"), NameProblem::Taken);
  EXPECT_EQ(Check(L"Z\u00dcRICH OFFICE"), NameProblem::Taken);
  EXPECT_EQ(Check(L"default"), NameProblem::Taken);
}

TEST_F(ProfileName, TellsWhenAHiddenProfileHasIt) { EXPECT_EQ(Check(L"RETIRED"), NameProblem::TakenByHidden); }

TEST_F(ProfileName, TellsOfTheProfileThatTheUserSeesWhereAHiddenOneHasItToo) {
  Add(2005, L"retired");
  EXPECT_EQ(Check(L"Retired"), NameProblem::Taken);
}

TEST_F(ProfileName, IsFreeAgainWhenItsProfileIsRemoved) { EXPECT_EQ(Check(L"Gone"), NameProblem::None); }

TEST_F(ProfileName, MayBeThatOfTheProfileItself) {
  EXPECT_EQ(CheckProfileName(L"Default", 1, profiles), NameProblem::None);
}
