#include <gtest/gtest.h>
#include <spawn.h>
#include <unistd.h>

#include <cstdlib>
#include <string>
#include <sys/wait.h>

#include "tests/support/FileBytes.h"
#include "tests/support/OwnProcess.h"

namespace {

using namespace std::string_literals;

constexpr char kMarker[] = "--own-process";
constexpr char kNote[] = "PAVISE_TEST_NOTE";
constexpr unsigned kLimitSeconds = 120;

}  // namespace

bool IsOwnProcess() { return FileBytes("/proc/self/cmdline").ends_with(kMarker + "\0"s); }

std::string OwnProcessNote() { return std::getenv(kNote); }

// Of the settings only the note is for this system.
void InOwnProcess(const std::function<void()>& body, const OwnProcess& settings) {
  if (IsOwnProcess()) {
    alarm(kLimitSeconds);
    body();
    return;
  }
  const testing::TestInfo& test = *testing::UnitTest::GetInstance()->current_test_info();
  std::string program = "/proc/self/exe";
  std::string brief = "--gtest_brief=1";
  std::string filter = "--gtest_filter=" + std::string(test.test_suite_name()) + '.' + test.name();
  std::string marker = kMarker;
  char* arguments[] = {program.data(), brief.data(), filter.data(), marker.data(), nullptr};
  setenv(kNote, settings.note.c_str(), 1);
  pid_t process = 0;
  ASSERT_EQ(posix_spawn(&process, program.c_str(), nullptr, nullptr, arguments, environ), 0);
  int status = 0;
  ASSERT_EQ(waitpid(process, &status, 0), process);
  EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << "See what the other process printed above.";
}
