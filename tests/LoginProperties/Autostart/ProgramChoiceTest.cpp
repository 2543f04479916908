#include "LoginProperties/Autostart/ProgramChoice.h"

#include <gmock/gmock.h>

using testing::Optional;

namespace {

const ProgramOperations kOperations{[](const std::wstring& program) { return L"folder of " + program; },
                                    [] { return std::wstring(L"C:\\browser.exe"); }};

const ProgramOperations kNoBrowser{[](const std::wstring& program) { return L"folder of " + program; },
                                   [] { return std::wstring(); }};

Program Installed(uint32_t id, Program::Kind kind, const std::wstring& path) {
  return {.name = L"Name", .id = id, .path = path, .parameters = L"parameters", .kind = kind};
}

}  // namespace

TEST(ProgramChoice, AProgramIsFoundByItsNumber) {
  const std::vector<Program> programs = {Installed(1001, Program::Kind::Application, L"a.exe"),
                                         Installed(1002, Program::Kind::Web, L"")};
  EXPECT_EQ(FindProgram(programs, 1001), programs.data());
  EXPECT_EQ(FindProgram(programs, 1002), programs.data() + 1);
  EXPECT_EQ(FindProgram(programs, 1003), nullptr);
  EXPECT_EQ(FindProgram({}, 1001), nullptr);
}

TEST(ProgramChoice, TheEntrysOwnNameIsNoProgram) {
  AutoStartItem entry;
  const std::vector<Program> programs = {Installed(1001, Program::Kind::Application, L"a.exe")};
  EXPECT_EQ(ValueOfOwnName(entry.fields), 2u);
  EXPECT_EQ(FindProgram(programs, ValueOfOwnName(entry.fields)), nullptr);
  entry.fields.recordType = AutoStartRecordType::PhaseHeader;
  EXPECT_EQ(ValueOfOwnName(entry.fields), 1u);
}

TEST(ProgramChoice, AProgramWithAPathEntersItWithItsFolder) {
  for (const Program::Kind kind : {Program::Kind::Application, Program::Kind::Document}) {
    EXPECT_THAT(TextsOf(Installed(1001, kind, L"C:\\a.exe"), kOperations),
                Optional(ProgramTexts{L"C:\\a.exe", L"parameters", L"folder of C:\\a.exe"}));
  }
}

TEST(ProgramChoice, AWebPageEntersTheDefaultBrowserAndNoFolder) {
  for (const wchar_t* path : {L"", L"C:\\page.url"}) {
    EXPECT_THAT(TextsOf(Installed(1001, Program::Kind::Web, path), kOperations),
                Optional(ProgramTexts{L"C:\\browser.exe", L"parameters", L""}));
  }
}

TEST(ProgramChoice, AWebPageWithoutADefaultBrowserEntersNoProgram) {
  EXPECT_THAT(TextsOf(Installed(1001, Program::Kind::Web, L""), kNoBrowser),
              Optional(ProgramTexts{L"", L"parameters", L""}));
}

TEST(ProgramChoice, WhatHasNoPathAndIsNoWebPageEntersNothing) {
  EXPECT_EQ(TextsOf(Installed(1001, Program::Kind::Application, L""), kOperations), std::nullopt);
}

TEST(ProgramChoice, TheNameOfTheDefaultBrowserIsKnownInAnyCase) {
  EXPECT_TRUE(IsDefaultBrowserName(L"Default Web Browser", L"Default Web Browser"));
  EXPECT_TRUE(IsDefaultBrowserName(L"DEFAULT web BROWSER", L"Default Web Browser"));
  EXPECT_FALSE(IsDefaultBrowserName(L"Default Web Browser 2", L"Default Web Browser"));
  EXPECT_FALSE(IsDefaultBrowserName(L"Default Web", L"Default Web Browser"));
  EXPECT_FALSE(IsDefaultBrowserName(L"", L"Default Web Browser"));
  EXPECT_FALSE(IsDefaultBrowserName(L"", L"")) << "where the name is not known";
}
