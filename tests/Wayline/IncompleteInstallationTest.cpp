// Wayline.exe where one of its files is missing, as a click starts it: nobody sees what it prints.
#include <windows.h>

#include <gmock/gmock.h>

#include <filesystem>

#include "NetUtilities/Text/Utf8.h"
#include "tests/support/MessageBoxAnswer.h"
#include "tests/support/ProgramRun.h"
#include "tests/support/RegisteredService.h"
#include "tests/support/TemporaryFolder.h"

namespace {

constexpr wchar_t kService[] = L"TraceLogManager.exe";

// While it lives, the logging service is not registered. Afterwards it is, as the program itself sees to.
class UnregisteredService {
 public:
  UnregisteredService() { RunProgram(kService, {L"--unregister"}); }
  ~UnregisteredService() { RunProgram(kService, {L"--register"}); }
  UnregisteredService(const UnregisteredService&) = delete;
  UnregisteredService& operator=(const UnregisteredService&) = delete;
};

class IncompleteInstallation : public testing::Test {
 protected:
  void InstallWithout(const std::wstring& missing) {
    const std::filesystem::path built = FindProgram(L"Wayline.exe");
    for (const auto& file : std::filesystem::directory_iterator(built.parent_path())) {
      const std::filesystem::path name = file.path().filename();
      if ((name.extension() == L".exe" || name.extension() == L".dll") && name != missing) {
        std::filesystem::copy_file(file.path(), folder_.Path() / name);
      }
    }
  }

  // Starts the program, which tells the sentence in a box and fails.
  void FailsWithABox(const std::wstring& sentence) const {
    RunningProgram program(folder_.File(L"Wayline.exe"), {L"--database", folder_.File(L"Wayline.db")});
    const ShownMessageBox box = AnswerMessageBoxOf(program.ThreadId(), MessageBoxAnswer::Button(IDOK));
    EXPECT_EQ(box.title, L"Wayline");
    EXPECT_THAT(box.text, testing::StartsWith(sentence));
    EXPECT_THAT(box.buttons, testing::ElementsAre(IDOK));
    const ProgramOutcome outcome = program.WaitForEnd();
    EXPECT_EQ(outcome.exitCode, 1u);
    EXPECT_EQ(outcome.output, "");
    EXPECT_EQ(outcome.error, ToUtf8(box.text) + '\n');
  }

  TemporaryFolder folder_;
};

}  // namespace

TEST_F(IncompleteInstallation, WithoutTheModuleIsToldInABox) {
  const RegisteredService service;
  InstallWithout(L"Pavise.dll");
  FailsWithABox(L"The module \"" + folder_.File(L"Pavise.dll") + L"\" cannot be loaded.");
}

TEST_F(IncompleteInstallation, WithoutTheLoggingServiceIsToldInABox) {
  const UnregisteredService unregistered;
  InstallWithout(kService);
  FailsWithABox(L"The logging service cannot be registered: \"" + folder_.File(kService) + L"\" is missing or failed.");
  EXPECT_FALSE(std::filesystem::exists(folder_.File(L"Wayline.db")));
}

TEST_F(IncompleteInstallation, ShowsNoBoxToWhoAsksForTheListOfProfiles) {
  const UnregisteredService unregistered;
  InstallWithout(kService);
  const ProgramOutcome outcome =
      RunProgram(folder_.File(L"Wayline.exe"), {L"--list", L"--database", folder_.File(L"Wayline.db")});
  EXPECT_EQ(outcome.exitCode, 1u);
  EXPECT_THAT(outcome.error, testing::StartsWith("The logging service cannot be registered: "));
}
