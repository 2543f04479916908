#include "WaylineDll/Programs/ProgramRules.h"

#include <gmock/gmock.h>

#include <cwctype>
#include <set>
#include <string>

#include "NetUtilities/Text/Utf8.h"
#include "WaylineDll/AutoStartItem.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<Program> Offer(std::vector<Program> found) { return ProgramsToOffer(std::move(found), ToUtf8); }

std::vector<std::wstring> NamesOf(const std::vector<Program>& programs) {
  std::vector<std::wstring> names;
  for (const Program& program : programs) names.push_back(program.name);
  return names;
}

}  // namespace

TEST(ProgramRules, TakeBlanksAndQuotesOffAText) {
  EXPECT_EQ(WithoutQuotes(LR"( "C:\Program Files\a.exe" )"), LR"(C:\Program Files\a.exe)");
  EXPECT_EQ(WithoutQuotes(L"  C:\\a.exe\t\r\n"), L"C:\\a.exe");
  EXPECT_EQ(WithoutQuotes(L"\""), L"\"");
  EXPECT_EQ(WithoutQuotes(L" "), L"");
}

TEST(ProgramRules, TakeAProgramFromItsIcon) {
  EXPECT_EQ(ProgramOfIcon(LR"(C:\Folder\a.exe)"), LR"(C:\Folder\a.exe)");
  EXPECT_EQ(ProgramOfIcon(LR"(C:\Folder\A.EXE,0)"), LR"(C:\Folder\A.EXE)");
  EXPECT_EQ(ProgramOfIcon(LR"("C:\Program Files\a.exe",-101)"), LR"(C:\Program Files\a.exe)");
  EXPECT_EQ(ProgramOfIcon(LR"("C:\Program Files\a.exe,0")"), LR"(C:\Program Files\a.exe)");
  EXPECT_EQ(ProgramOfIcon(LR"(C:\Last, First\a.exe)"), LR"(C:\Last, First\a.exe)");
}

TEST(ProgramRules, TakeNoProgramFromTheIconOfSomethingElse) {
  for (const wchar_t* icon : {L"", L",0", LR"(C:\a.ico)", LR"(C:\a.dll,3)", L".exe.ico", LR"(C:\folder.exe\icon)"}) {
    EXPECT_EQ(ProgramOfIcon(icon), L"");
  }
}

TEST(ProgramRules, TakeWhatIsNotRunForADocument) {
  for (const wchar_t* path : {LR"(C:\a.exe)", L"a.EXE", L"a.com", L"b.bat", L"c.b.cmd"}) {
    EXPECT_EQ(KindOfFile(path), Program::Kind::Application);
  }
  for (const wchar_t* path :
       {LR"(C:\a.txt)", LR"(C:\folder)", LR"(C:\a.exe\folder)", LR"(C:\eventvwr.msc)", L"exe", L""}) {
    EXPECT_EQ(KindOfFile(path), Program::Kind::Document);
  }
}

TEST(ProgramRules, KnowTheAddressOfAWebPage) {
  EXPECT_TRUE(IsWebAddress(L"https://example.com"));
  EXPECT_TRUE(IsWebAddress(L"HTTP://x"));
  for (const wchar_t* text : {L"", L"http://", L"file:///C:/a", L"steam://run/1", L"example.com"}) {
    EXPECT_FALSE(IsWebAddress(text));
  }
}

TEST(ProgramRules, TellTheFolderOfAFile) {
  EXPECT_EQ(FolderOfFile(LR"(C:\Program Files\Some\a.exe)"), LR"(C:\Program Files\Some)");
  EXPECT_EQ(FolderOfFile(LR"(C:\a.exe)"), LR"(C:\)");
  EXPECT_EQ(FolderOfFile(LR"(\\server\share\a.exe)"), LR"(\\server\share)");
  EXPECT_EQ(FolderOfFile(L"C:/a/b.exe"), L"C:/a");
  EXPECT_EQ(FolderOfFile(L"notepad.exe"), L"");
  EXPECT_EQ(FolderOfFile(L""), L"");
}

TEST(ProgramRules, OfferEachProgramOnceUnderTheNameThatWasFoundFirst) {
  const auto programs = Offer({{.name = L"Editor", .path = LR"(C:\Edit\edit.exe)"},
                               {.name = L"edit", .path = LR"(c:\EDIT\Edit.EXE)"},
                               {.name = L"Another", .path = LR"(C:\another.exe)"},
                               {.name = L"Editor", .path = LR"(C:\Edit\edit.exe)"}});
  EXPECT_THAT(NamesOf(programs), ElementsAre(L"Another", L"Editor"));
}

TEST(ProgramRules, OfferAProgramAgainWithOtherParameters) {
  const auto programs = Offer({{.name = L"Console", .path = L"C:\\mmc.exe"},
                               {.name = L"Disks", .path = L"C:\\mmc.exe", .parameters = L"disks"}});
  EXPECT_THAT(NamesOf(programs), ElementsAre(L"Console", L"Disks"));
}

TEST(ProgramRules, OfferEachWebPageOnce) {
  const auto web = [](const wchar_t* name, const wchar_t* address) {
    return Program{.name = name, .parameters = address, .kind = Program::Kind::Web};
  };
  EXPECT_THAT(NamesOf(Offer({web(L"b", L"https://b"), web(L"a", L"https://a"), web(L"c", L"https://b")})),
              ElementsAre(L"a", L"b"));
}

TEST(ProgramRules, OfferProgramsInTheOrderOfTheirKeys) {
  const std::vector<Program> found = {{.name = L"b", .path = L"1"},
                                      {.name = L"A", .path = L"2"},
                                      {.name = L"c", .path = L"3"},
                                      {.name = L"B", .path = L"4"}};
  const auto ignoringCase = [](const std::wstring& name) {
    std::wstring lower = name;
    for (wchar_t& character : lower) character = static_cast<wchar_t>(std::towlower(static_cast<wint_t>(character)));
    return ToUtf8(lower);
  };
  EXPECT_THAT(NamesOf(ProgramsToOffer(found, ignoringCase)), ElementsAre(L"A", L"b", L"B", L"c"))
      << "what has the same key stays as it was found";
}

TEST(ProgramRules, GiveProgramsIdsThatNoRecordTypeHas) {
  std::vector<Program> found;
  for (int number = 0; number < 1000; ++number) found.push_back({.name = L"x", .path = std::to_wstring(number)});
  std::set<uint32_t> ids = {static_cast<uint32_t>(AutoStartRecordType::PhaseHeader),
                            static_cast<uint32_t>(AutoStartRecordType::Program), 0};
  for (const Program& program : Offer(found)) EXPECT_TRUE(ids.insert(program.id).second);
  EXPECT_EQ(ids.size(), 1003u);
  EXPECT_THAT(Offer({}), IsEmpty());
}
