// Two sheets of two programs on one database, on which people make and remove profiles.

#include <windows.h>

#include <gmock/gmock.h>

#include <array>

#include "LoginProperties/General/GeneralControls.h"
#include "LoginProperties/ProfilePage/ProfileControls.h"
#include "tests/support/WaitUntil.h"
#include "tests/ui/OtherConnection.h"
#include "tests/ui/RenameDriver.h"
#include "tests/ui/WizardDriver.h"
#include "tests/Wayline/HostProgram.h"
#include "WaylineDll/SetupWizard/WizardControls.h"

namespace {

constexpr wchar_t kOfficeName[] = L"Z\u00fcrich Office";

class TwoSheets : public testing::Test {
 protected:
  TwoSheets() { second.database = first.database; }

  // Opens both sheets on a profile.
  void Open(const std::wstring& profile = L"2001") {
    for (HostProgram* program : {&first, &second}) {
      program->sheet.reset();
      program->Start(L"--profile " + profile);
    }
  }

  // Makes a profile with the wizard, which copies from another one unless that has no name.
  static void Make(HostProgram& program, const std::wstring& name, const std::wstring& source = {}) {
    program.sheet->Click(IDC_GENERAL_NEW);
    WizardDriver wizard(program.threadId);
    // The page takes the focus with all of its text selected, which may come in the middle of the typing.
    const auto holdsName = [&] {
      wchar_t text[64] = {};
      SendMessageW(wizard.Control(IDC_WIZARD_NAME), WM_GETTEXT, ARRAYSIZE(text), reinterpret_cast<LPARAM>(text));
      return text == name;
    };
    ASSERT_TRUE(WaitUntil([&] {
      wizard.Type(IDC_WIZARD_NAME, name);
      return holdsName();
    }));
    while (wizard.CurrentPage() != WizardPage::Summary) {
      const auto page = wizard.CurrentPage();
      if (page == WizardPage::Copy && !source.empty()) wizard.Pick(IDC_WIZARD_COPY, source);
      wizard.PressNext();
      ASSERT_TRUE(WaitUntil([&] { return wizard.CurrentPage() != page; }));
    }
    wizard.PressFinish();
    ASSERT_TRUE(WaitUntil([&] { return program.sheet->Selected(IDC_PROFILE_COMBO) == name; }));
  }

  static void Remove(HostProgram& program, const std::wstring& name) {
    program.sheet->Pick(IDC_PROFILE_COMBO, name);
    program.sheet->Click(IDC_GENERAL_REMOVE);
    ASSERT_EQ(program.sheet->MessageBoxText(), L"Do you want to remove the definitions for " + name + L"?");
    program.sheet->AnswerMessageBox(IDYES);
    ASSERT_TRUE(WaitUntil([&] { return program.sheet->Selected(IDC_PROFILE_COMBO) != name; }));
  }

  // The user presses OK, is told nothing, and the program ends well.
  static void Confirm(HostProgram& program) {
    program.sheet->PressOk();
    EXPECT_EQ(program.Wait(), 0u) << program.Printed();
    EXPECT_THAT(program.Printed(), testing::HasSubstr("\"lost\":[]"));
  }

  std::string Stored(const std::string& statement) const { return StoredValue(first.database, statement); }

  std::string Names() const {
    return Stored(
        "SELECT group_concat(Name) FROM (SELECT Name FROM Profiles WHERE ProfileId > 2005 AND "
        "ProfileId < 10000 ORDER BY Name)");
  }

  // Every row belongs to a profile that there is, and each profile follows one that there is.
  void ExpectWhole() const {
    EXPECT_EQ(Stored("PRAGMA integrity_check"), "ok");
    for (const char* const table : {"Preferences", "AutoStart", "ConfigSettings"}) {
      EXPECT_EQ(Stored("SELECT count(*) FROM " + std::string(table) +
                       " WHERE ProfileId NOT IN (SELECT ProfileId FROM Profiles)"),
                "0")
          << table;
    }
    EXPECT_EQ(Stored("SELECT count(*) FROM Profiles WHERE LinkProfile > 0 AND LinkProfile NOT IN (SELECT ProfileId "
                     "FROM Profiles)"),
              "0");
  }

  HostProgram first;
  HostProgram second;
};

}  // namespace

TEST_F(TwoSheets, ACopyIsSavedWholeWhereTheOtherRemovesItsSource) {
  Open();
  const std::string preferences = Stored("SELECT count(*) FROM Preferences WHERE ProfileId = 2004");
  const std::string entries = Stored("SELECT count(*) FROM AutoStart WHERE ProfileId = 2004");
  Make(first, L"Copy", kOfficeName);
  Remove(second, kOfficeName);
  Confirm(second);
  Confirm(first);
  EXPECT_EQ(Stored("SELECT count(*) FROM Profiles WHERE ProfileId = 2004"), "0");
  EXPECT_EQ(Names(), "Copy");
  EXPECT_EQ(Stored("SELECT count(*) FROM Preferences WHERE ProfileId = 2006"), preferences);
  EXPECT_EQ(Stored("SELECT count(*) FROM AutoStart WHERE ProfileId = 2006"), entries);
  ExpectWhole();
}

TEST_F(TwoSheets, TwoNewProfilesAreBothSavedWithTheirRows) {
  Open();
  Make(first, L"First", kOfficeName);
  Make(second, L"Second", kOfficeName);
  Confirm(first);
  Confirm(second);
  EXPECT_EQ(Names(), "First,Second");
  EXPECT_EQ(Stored("SELECT group_concat(Count) FROM (SELECT count(*) AS Count FROM Preferences WHERE ProfileId IN "
                   "(2006, 2007) GROUP BY ProfileId)"),
            "27,27");
  EXPECT_EQ(Stored("SELECT group_concat(Count) FROM (SELECT count(*) AS Count FROM AutoStart WHERE ProfileId IN "
                   "(2006, 2007) GROUP BY ProfileId)"),
            "8,8");
  ExpectWhole();
}

TEST_F(TwoSheets, AProfileThatBothRemoveIsGoneWithoutAWord) {
  Open();
  Remove(first, kOfficeName);
  Remove(second, kOfficeName);
  Confirm(first);
  Confirm(second);
  EXPECT_EQ(Stored("SELECT count(*) FROM Profiles WHERE ProfileId = 2004"), "0");
  ExpectWhole();
}

TEST_F(TwoSheets, ARenamedProfileThatTheOtherHasRemovedIsNamedInAWindow) {
  Open(L"2004");
  RenameDriver(*first.sheet).Rename(L"Lost");
  Make(first, L"Kept");
  Remove(second, kOfficeName);
  Confirm(second);
  first.sheet->PressOk();
  first.ExpectMessage(
      IDOK,
      L"The login profile \"Lost\" was removed by another program meanwhile. What was changed in it could not be saved.",
      {IDOK});
  EXPECT_EQ(first.Wait(), 0u);
  EXPECT_EQ(Names(), "Kept");
  ExpectWhole();
}

TEST_F(TwoSheets, ARemovalIsRefusedInAWindowWhereTheOtherHasMadeAProfileFollow) {
  Open(L"2003");
  Remove(first, L"Travel");
  Make(first, L"Kept");
  RunSql(first.database, "UPDATE Profiles SET LinkProfile = 2003 WHERE ProfileId = 10001");
  first.sheet->PressOk();
  first.ExpectMessage(IDOK, L"The login profile \"Travel\" could not be removed: other profiles follow it.", {IDOK});
  EXPECT_EQ(first.Wait(), 0u);
  EXPECT_EQ(Stored("SELECT Hidden IS NULL FROM Profiles WHERE ProfileId = 2003"), "1");
  EXPECT_EQ(Names(), "Kept");
  ExpectWhole();
}

TEST_F(TwoSheets, AProfileThatTheClientHasConnectedWithMeanwhileIsNotRemoved) {
  Open(L"2003");
  Remove(first, L"Travel");
  second.sheet->PressCancel();
  EXPECT_EQ(second.Wait(), 0u);
  RunSql(first.database, "UPDATE ClientState SET Value = '2003' WHERE Name = 'ActiveProfile'");
  second.sheet.reset();
  second.Start(L"--connection connected");
  first.sheet->PressOk();
  first.ExpectMessage(IDOK, L"The login profile \"Travel\" could not be removed: it is connected by now.", {IDOK});
  EXPECT_EQ(first.Wait(), 0u);
  second.sheet->PressCancel();
  EXPECT_EQ(second.Wait(), 0u);
  EXPECT_EQ(Stored("SELECT count(*) FROM Profiles WHERE ProfileId = 2003"), "1");
}

TEST_F(TwoSheets, GoOnMakingAndRemovingInEitherOrder) {
  Open();
  Make(first, L"F0");
  Confirm(first);
  second.sheet->PressCancel();
  EXPECT_EQ(second.Wait(), 0u);
  for (int round = 1; round <= 4; ++round) {
    Open();
    Make(first, L"F" + std::to_wstring(round), kOfficeName);
    Make(second, L"S" + std::to_wstring(round), L"F" + std::to_wstring(round - 1));
    Remove(second, L"F" + std::to_wstring(round - 1));
    for (HostProgram* program : round % 2 == 0 ? std::array{&first, &second} : std::array{&second, &first}) {
      Confirm(*program);
    }
    ExpectWhole();
  }
  EXPECT_EQ(Names(), "F4,S1,S2,S3,S4");
}
