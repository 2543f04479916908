#include "NetUtilities/Files/IniFile.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <atomic>
#include <memory>

#include "NetUtilities/Module/Handle.h"
#include "tests/support/InThreads.h"
#include "tests/support/OwnProcess.h"
#include "tests/support/TestingIni.h"

namespace {

// While it lives, nobody else can open the file of the switches.
class LockedIni {
 public:
  LockedIni() {
    const auto file = std::filesystem::path(Singleton<PathData>::Get()->GetProgramDataPath()) / kTestingIniFile;
    handle_ = OwnUnlessInvalid(CreateFileW(file.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING,
                                           FILE_ATTRIBUTE_NORMAL, nullptr));
    EXPECT_NE(handle_, nullptr);
  }

  // Replaces the start of the text.
  void Write(std::string_view text) const {
    DWORD written = 0;
    EXPECT_TRUE(WriteFile(handle_.get(), text.data(), static_cast<DWORD>(text.size()), &written, nullptr));
  }

 private:
  Handle handle_;
};

TEST(IniFile, FindsAValueInTheProgramDataFolder) {
  const TestingIni file("[Misc]\r\nName = caf\xc3\xa9\r\n[GINA]\r\nName=other\r\n");
  IniFile ini;
  EXPECT_EQ(ini.GetString(L"Misc", L"Name", L"default"), L"caf\u00e9");
  EXPECT_EQ(ini.GetString(L"gina", L"NAME", L"default"), L"other");
}

TEST(IniFile, GivesTheDefaultForWhatIsMissing) {
  TestingIni file("[Misc]\nName=x\n");
  IniFile ini;
  EXPECT_EQ(ini.GetString(L"Misc", L"Missing", L"default"), L"default");
  EXPECT_EQ(ini.GetString(L"Missing", L"Name", L"default"), L"default");
  file.Remove();
  EXPECT_EQ(ini.GetString(L"Misc", L"Name", L"default"), L"default");
}

TEST(IniFile, ReadsTheFileAgainWhenItHasChanged) {
  TestingIni file("[Misc]\nName=first\n");
  IniFile ini;
  EXPECT_EQ(ini.GetString(L"Misc", L"Name", L""), L"first");
  file.Write("[Misc]\nName=second\n");
  EXPECT_EQ(ini.GetString(L"Misc", L"Name", L""), L"second");
}

TEST(IniFile, ReadsAnOldFileOnceAndAgainWhenItHasChanged) {
  TestingIni file("[Misc]\nName=first\n");
  file.MakeOld();
  IniFile ini;
  EXPECT_EQ(ini.GetString(L"Misc", L"Name", L""), L"first");
  {
    const LockedIni locked;
    EXPECT_EQ(ini.GetString(L"Misc", L"Name", L""), L"first") << "It is not read now.";
  }
  file.Write("[Misc]\nName=second\n");
  EXPECT_EQ(ini.GetString(L"Misc", L"Name", L""), L"second");
}

TEST(IniFile, FindsAFileThatWasMissingBefore) {
  TestingIni file("");
  file.Remove();
  IniFile ini;
  EXPECT_EQ(ini.GetString(L"Misc", L"Name", L"default"), L"default");
  file.Write("[Misc]\nName=new\n");
  EXPECT_EQ(ini.GetString(L"Misc", L"Name", L"default"), L"new");
}

TEST(IniFile, KnowsTheByteOrderMarks) {
  using namespace std::string_view_literals;
  IniFile ini;
  for (const std::string_view bytes :
       {"\xEF\xBB\xBF[Misc]\nName=caf\xc3\xa9"sv, "\xFF\xFE[\0M\0i\0s\0c\0]\0\n\0N\0a\0m\0e\0=\0c\0a\0f\0\xE9\0"sv,
        "\xFE\xFF\0[\0M\0i\0s\0c\0]\0\n\0N\0a\0m\0e\0=\0c\0a\0f\0\xE9"sv}) {
    const TestingIni file(bytes);
    EXPECT_EQ(ini.GetString(L"Misc", L"Name", L"default"), L"caf\u00e9");
  }
}

TEST(IniFile, GivesTheDefaultWhileTheFileIsLockedAndTheValueAfterwards) {
  const TestingIni file("[Misc]\nName=value\n");
  IniFile ini;
  {
    const LockedIni locked;
    EXPECT_EQ(ini.GetString(L"Misc", L"Name", L"default"), L"default");
  }
  EXPECT_EQ(ini.GetString(L"Misc", L"Name", L"default"), L"value");
}

TEST(IniFile, GivesTheOldValueWhileAChangedFileIsLockedAndTheNewOneAfterwards) {
  const TestingIni file("[Misc]\nName=old\n");
  IniFile ini;
  EXPECT_EQ(ini.GetString(L"Misc", L"Name", L"default"), L"old");
  {
    const LockedIni locked;
    locked.Write("[Misc]\nName=new\n");
    EXPECT_EQ(ini.GetString(L"Misc", L"Name", L"default"), L"old");
    EXPECT_EQ(ini.GetString(L"Misc", L"Name", L"default"), L"old");
  }
  EXPECT_EQ(ini.GetString(L"Misc", L"Name", L"default"), L"new");
}

TEST(IniFile, IsTestingIniInTheProgramDataFolder) {
  const TestingIni file("");
  EXPECT_TRUE(std::filesystem::exists(std::filesystem::path(Singleton<PathData>::Get()->GetProgramDataPath()) /
                                      L"Testing.ini"));
}

TEST(IniFile, ASwitchIsOnByTheFirstCharacterOfItsValue) {
  const TestingIni file("[Misc]\nYes=Yes\ntrue=true\nOne=1\nT=T\nZero=0\nNo=no\nEmpty=\nOn=on\n");
  IniFile ini;
  for (const wchar_t* on : {L"Yes", L"true", L"One", L"T"}) EXPECT_TRUE(ini.GetBool(L"Misc", on)) << on;
  for (const wchar_t* off : {L"Zero", L"No", L"Empty", L"On", L"Missing"})
    EXPECT_FALSE(ini.GetBool(L"Misc", off)) << off;
  EXPECT_FALSE(ini.GetBool(L"Missing", L"Yes"));
}

TEST(IniFile, TellsEightThreadsTheSame) {
  const TestingIni file("[Misc]\nYes=Yes\nNo=no\n");
  InOwnProcess([] {
    constexpr int kCallsPerThread = 500;
    std::atomic<int> wrong = 0;
    InThreads([&](int) {
      for (int call = 0; call < kCallsPerThread; ++call) {
        const auto ini = Singleton<IniFile>::Get();
        if (!ini->GetBool(L"Misc", L"Yes") || ini->GetBool(L"Misc", L"No")) ++wrong;
      }
    });
    EXPECT_EQ(wrong, 0);
  });
}

}  // namespace
