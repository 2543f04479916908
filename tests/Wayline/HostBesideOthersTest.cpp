// Two programs on one settings database: while Wayline.exe shows its sheet, another one stores what it likes.

#include <windows.h>

#include <gmock/gmock.h>

#include "LoginProperties/ProfilePage/ProfileControls.h"
#include "LoginProperties/Timeouts/TimeoutControls.h"
#include "NetUtilities/Text/Utf8.h"
#include "tests/support/FileBytes.h"
#include "tests/ui/OtherConnection.h"
#include "tests/Wayline/HostProgram.h"

using testing::HasSubstr;

namespace {

constexpr wchar_t kOffice[] = L"Z\u00fcrich Office";  // 2004 of the sample data

class HostBesideOthers : public testing::Test, protected HostProgram {
 protected:
  // The user presses OK, and the program ends well.
  void Confirm() {
    sheet->PressOk();
    EXPECT_EQ(Wait(), 0u);
  }

  void Other(const std::string& statements) const { RunSql(database, statements); }
  std::string Stored(const std::string& statement) const { return StoredValue(database, statement); }
};

}  // namespace

TEST_F(HostBesideOthers, WhatOthersStoreInTheEditedProfileStays) {
  Start(L"--mode 2 --profile 2002");
  Other("UPDATE Profiles SET HelpURL = 'https://new.example.com', UserId = 'b.sample' WHERE ProfileId = 2002");
  sheet->Pick(IDC_TIMEOUT_DURATION, L"30 minutes");
  Confirm();
  EXPECT_EQ(Stored("SELECT DurationTime || ' ' || HelpURL || ' ' || UserId FROM Profiles WHERE ProfileId = 2002"),
            "1800 https://new.example.com b.sample");
}

TEST_F(HostBesideOthers, AProfileThatWasOnlyLookedAtGoesOnToFollowItsDefaults) {
  Start(L"--mode 3 --profile 2001");
  Other("UPDATE Profiles SET DurationTime = 600 WHERE ProfileId = 1");
  const std::string before = FileBytes(database);
  Confirm();
  EXPECT_EQ(Printed(), "{\"result\":1,\"saved\":true,\"changes\":[],\"lost\":[]}\n");
  EXPECT_TRUE(FileBytes(database) == before);
}

TEST_F(HostBesideOthers, AnOverrideKeepsTheValuesThatTheUserSawWhenTheDefaultsChange) {
  Start(L"--mode 2 --profile 2001");
  sheet->Click(IDC_OVERRIDE_CHECK);
  Confirm();
  sheet.reset();
  Other("UPDATE Profiles SET DurationTime = 600 WHERE ProfileId = 1");
  Start(L"--mode 2 --profile 2001");
  EXPECT_TRUE(sheet->IsChecked(IDC_OVERRIDE_CHECK));
  EXPECT_EQ(sheet->Selected(IDC_TIMEOUT_DURATION), L" 4 hours");
  sheet->PressCancel();
  EXPECT_EQ(Wait(), 0u);
}

TEST_F(HostBesideOthers, AProfileThatIsGoneIsNamedAndTheOthersAreSaved) {
  const std::wstring lost = L"The login profile \"" + std::wstring(kOffice) +
                            L"\" was removed by another program meanwhile. What was changed in it could not be saved.";
  Start(L"--mode 2 --profile 2001");
  sheet->Click(IDC_OVERRIDE_CHECK);
  sheet->Pick(IDC_TIMEOUT_DURATION, L" 1 hour");
  sheet->Pick(IDC_PROFILE_COMBO, kOffice);
  sheet->Pick(IDC_TIMEOUT_DURATION, L" 1 hour");
  Other("DELETE FROM Profiles WHERE ProfileId = 2004");
  sheet->PressOk();
  ExpectMessage(IDOK, lost, {IDOK});
  EXPECT_EQ(Wait(), 0u);
  std::string inJson = ToUtf8(lost);
  for (size_t quote = 0; (quote = inJson.find('"', quote)) != std::string::npos; quote += 2) inJson.insert(quote, "\\");
  EXPECT_EQ(Printed(),
            "{\"result\":1,\"saved\":true,\"changes\":[{\"record\":\"profile\",\"id\":2001,\"state\":2}],\"lost\":[\"" +
                inJson + "\"]}\n");
  EXPECT_EQ(Stored("SELECT DurationTime FROM Profiles WHERE ProfileId = 2001"), "3600");
}

TEST_F(HostBesideOthers, TwoSheetsOnOneDatabaseBothSaveTheirChanges) {
  HostProgram second;
  Start(L"--mode 2 --profile 2002");
  second.database = database;
  second.Start(L"--profile 2002 --mode 2");
  sheet->Pick(IDC_TIMEOUT_DURATION, L"30 minutes");
  second.sheet->Pick(IDC_TIMEOUT_WARNING, L"30 seconds");
  second.sheet->Pick(IDC_PROFILE_COMBO, kOffice);
  second.sheet->Pick(IDC_TIMEOUT_DURATION, L" 1 hour");
  Confirm();
  second.sheet->PressOk();
  EXPECT_EQ(second.Wait(), 0u);
  EXPECT_EQ(Stored("SELECT DurationTime || ' ' || WarnTime FROM Profiles WHERE ProfileId = 2002"), "1800 30");
  EXPECT_EQ(Stored("SELECT DurationTime FROM Profiles WHERE ProfileId = 2004"), "3600");
}

TEST_F(HostBesideOthers, ProfilesAreListedWhileASheetIsOpenAndAnotherProgramWrites) {
  Start(L"--mode 2 --profile 2001");
  HostProgram list;
  list.database = database;
  {
    const ConnectionHandle writer =
        LockDatabase(database, "BEGIN IMMEDIATE; UPDATE Profiles SET Name = 'Unfinished' WHERE ProfileId = 2002");
    list.Launch(L"--list");
    EXPECT_EQ(list.Wait(), 0u);
  }
  EXPECT_THAT(list.Printed(), HasSubstr(" 2004  " + ToUtf8(kOffice)));
  EXPECT_THAT(list.Printed(), HasSubstr(" 2002  Work 2"));
  sheet->PressCancel();
  EXPECT_EQ(Wait(), 0u);
}
