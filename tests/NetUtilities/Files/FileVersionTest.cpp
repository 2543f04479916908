#include "NetUtilities/Files/FileVersion.h"

#include <windows.h>

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <string_view>
#include <vector>

#include "NetUtilities/Files/FileVersionPlatform.h"
#include "tests/support/FileBytes.h"
#include "tests/support/Substituted.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/ThisProgram.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr wchar_t kUntouched[] = L"untouched";

// A file beside this program.
std::wstring BesideThisProgram(const wchar_t* name) { return ThisProgram().replace_filename(name).wstring(); }

std::wstring German() { return BesideThisProgram(L"VersionGerman.dll"); }
std::wstring TwoLanguages() { return BesideThisProgram(L"VersionTwoLanguages.dll"); }
std::wstring NoTranslation() { return BesideThisProgram(L"VersionNoTranslation.dll"); }
std::wstring WithoutVersion() { return BesideThisProgram(L"TestBrowser.exe"); }

// A copy of the German file whose translation has the language only, although the code page still follows it.
void WriteWithShortTranslation(const std::wstring& file) {
  using namespace std::string_view_literals;
  constexpr auto kKey = "T\0r\0a\0n\0s\0l\0a\0t\0i\0o\0n\0\0\0"sv;
  constexpr size_t kLengthBeforeKey = 4;
  std::string bytes = FileBytes(German());
  const size_t key = bytes.find(kKey);
  ASSERT_NE(key, std::string::npos);
  ASSERT_EQ(bytes[key - kLengthBeforeKey], sizeof(DWORD));
  bytes[key - kLengthBeforeKey] = sizeof(WORD);
  std::ofstream(std::filesystem::path(file), std::ios::binary) << bytes;
}

// What is read, or "untouched" when reading failed.
std::wstring Read(const std::wstring& path, const std::wstring& name) {
  std::wstring text = kUntouched;
  const int result = GetFileVersionString(path, name, text);
  EXPECT_EQ(result != 0, text != kUntouched);
  return text;
}

TEST(FileVersion, ReadsATextInTheFilesOwnLanguage) {
  EXPECT_EQ(Read(German(), L"ProductVersion"), L"3.1 (J\u00e4nner)");
  EXPECT_EQ(Read(German(), L"FileDescription"), L"Gr\u00f6\u00dfenpr\u00fcfung f\u00fcr \u00dcberg\u00e4nge");
}

TEST(FileVersion, TakesTheFirstTranslationOfSeveral) {
  EXPECT_EQ(Read(TwoLanguages(), L"FileDescription"), L"V\u00e9rification");
  EXPECT_EQ(Read(TwoLanguages(), L"Comments"), kUntouched) << "Only the second translation has this text.";
}

TEST(FileVersion, FailsForANameThatTheFileDoesNotHave) { EXPECT_EQ(Read(German(), L"SpecialBuild"), kUntouched); }

TEST(FileVersion, FailsWithoutPathOrName) {
  EXPECT_EQ(Read(L"", L"ProductVersion"), kUntouched);
  EXPECT_EQ(Read(German(), L""), kUntouched);
}

TEST(FileVersion, FailsForAFileThatDoesNotExist) {
  EXPECT_EQ(Read(BesideThisProgram(L"Missing.dll"), L"ProductVersion"), kUntouched);
}

TEST(FileVersion, DoesNotSearchForTheFileWhereLibrariesAre) {
  EXPECT_EQ(Read(L"kernel32.dll", L"ProductVersion"), kUntouched);
}

TEST(FileVersion, FailsForAFileWithoutAVersion) {
  const TemporaryFolder folder;
  const std::wstring notes = folder.File(L"notes.txt");
  std::ofstream(std::filesystem::path(notes)) << "ProductVersion 1";
  EXPECT_EQ(Read(WithoutVersion(), L"ProductVersion"), kUntouched);
  EXPECT_EQ(Read(notes, L"ProductVersion"), kUntouched);
  EXPECT_EQ(Read(folder.Path().wstring(), L"ProductVersion"), kUntouched);
}

TEST(FileVersion, FailsWithoutATranslation) { EXPECT_EQ(Read(NoTranslation(), L"FileDescription"), kUntouched); }

TEST(FileVersion, FailsForATranslationThatIsTooShort) {
  const TemporaryFolder folder;
  const std::wstring file = folder.File(L"short.dll");
  WriteWithShortTranslation(file);
  EXPECT_EQ(Read(file, L"ProductVersion"), kUntouched);
}

TEST(FileVersion, FailsWhenTheVersionCannotBeRead) {
  const Substituted<FileVersionPlatform> platform(fileVersionPlatform);
  platform->getFileVersionInfo = [](const wchar_t* path, DWORD ignored, DWORD size, void* data) -> BOOL {
    GetFileVersionInfoW(path, ignored, size, data);
    return FALSE;
  };
  EXPECT_EQ(Read(German(), L"ProductVersion"), kUntouched);
}

// A made-up machine on which this process may be one of the 32-bit ones.
struct Redirection {
  BOOL isKnown = TRUE;
  BOOL isWow64 = TRUE;
  BOOL canBeDisabled = TRUE;
  int disabled = 0;
  std::vector<void*> reverted;  // the cookies that came back
  int offWhileReading = 0;      // the number of readings without redirection
};
Redirection redirection;
int cookie;

class Wow64Redirection : public testing::Test {
 protected:
  Wow64Redirection() {
    redirection = {};
    platform_->isWow64Process = [](HANDLE process, BOOL* isWow64) {
      EXPECT_EQ(process, GetCurrentProcess());
      *isWow64 = redirection.isWow64;
      return redirection.isKnown;
    };
    platform_->disableRedirection = [](void** previous) {
      ++redirection.disabled;
      *previous = &cookie;
      return redirection.canBeDisabled;
    };
    platform_->revertRedirection = [](void* previous) -> BOOL {
      redirection.reverted.push_back(previous);
      return TRUE;
    };
    platform_->getFileVersionInfo = [](const wchar_t* path, DWORD ignored, DWORD size, void* data) {
      if (redirection.disabled == 1 && redirection.reverted.empty()) ++redirection.offWhileReading;
      return GetFileVersionInfoW(path, ignored, size, data);
    };
  }

  // Reads, and expects that redirection was switched off and on again once.
  static std::wstring ReadAndExpectItBack(const std::wstring& path, const std::wstring& name) {
    redirection = {};
    std::wstring text = Read(path, name);
    EXPECT_EQ(redirection.disabled, 1) << testing::PrintToString(path);
    EXPECT_THAT(redirection.reverted, ElementsAre(&cookie)) << testing::PrintToString(path);
    return text;
  }

  Substituted<FileVersionPlatform> platform_{fileVersionPlatform};
};

TEST_F(Wow64Redirection, IsOffWhileTheFileIsRead) {
  EXPECT_EQ(ReadAndExpectItBack(German(), L"ProductVersion"), L"3.1 (J\u00e4nner)");
  EXPECT_EQ(redirection.offWhileReading, 1);
}

TEST_F(Wow64Redirection, IsBackAfterEveryFailure) {
  const TemporaryFolder folder;
  const std::wstring shortTranslation = folder.File(L"short.dll");
  WriteWithShortTranslation(shortTranslation);
  EXPECT_EQ(ReadAndExpectItBack(BesideThisProgram(L"Missing.dll"), L"ProductVersion"), kUntouched);
  EXPECT_EQ(ReadAndExpectItBack(WithoutVersion(), L"ProductVersion"), kUntouched);
  EXPECT_EQ(ReadAndExpectItBack(NoTranslation(), L"FileDescription"), kUntouched);
  EXPECT_EQ(ReadAndExpectItBack(shortTranslation, L"ProductVersion"), kUntouched);
  EXPECT_EQ(ReadAndExpectItBack(German(), L"SpecialBuild"), kUntouched);
  platform_->getFileVersionInfo = [](const wchar_t*, DWORD, DWORD, void*) -> BOOL { return FALSE; };
  EXPECT_EQ(ReadAndExpectItBack(German(), L"ProductVersion"), kUntouched);
}

TEST_F(Wow64Redirection, IsNotTouchedWithoutPathOrName) {
  Read(L"", L"ProductVersion");
  Read(German(), L"");
  EXPECT_EQ(redirection.disabled, 0);
  EXPECT_THAT(redirection.reverted, IsEmpty());
}

TEST_F(Wow64Redirection, IsNotTouchedIn64Bits) {
  redirection.isWow64 = FALSE;
  EXPECT_NE(Read(German(), L"ProductVersion"), kUntouched);
  EXPECT_EQ(redirection.disabled, 0);
  EXPECT_THAT(redirection.reverted, IsEmpty());
}

TEST_F(Wow64Redirection, IsNotTouchedWhenTheKindOfProcessIsUnknown) {
  redirection.isKnown = FALSE;
  EXPECT_NE(Read(German(), L"ProductVersion"), kUntouched);
  EXPECT_EQ(redirection.disabled, 0);
  EXPECT_THAT(redirection.reverted, IsEmpty());
}

TEST_F(Wow64Redirection, IsNotSwitchedOnWhenItCouldNotBeSwitchedOff) {
  redirection.canBeDisabled = FALSE;
  EXPECT_NE(Read(German(), L"ProductVersion"), kUntouched);
  EXPECT_EQ(redirection.disabled, 1);
  EXPECT_THAT(redirection.reverted, IsEmpty());
}

}  // namespace
