#include "tests/support/OwnProcess.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <deque>
#include <filesystem>
#include <memory>
#include <optional>
#include <string_view>

#include "NetUtilities/Module/Handle.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/ThisProgram.h"

namespace {

// Behind it stands the number of the process.
constexpr wchar_t kMarker[] = L" --own-process=";
constexpr char kNote[] = "PAVISE_TEST_NOTE";
constexpr std::chrono::seconds kLimit(30);

// The number of this process; nothing when it is no process of InOwnProcesses.
std::optional<int> OwnNumber() {
  const std::wstring command = GetCommandLineW();
  const size_t marker = command.rfind(kMarker);
  if (marker == std::wstring::npos) return std::nullopt;
  return std::stoi(command.substr(marker + std::wstring_view(kMarker).size()));
}

std::wstring ArgumentsForCurrentTest(int number) {
  const testing::TestInfo& test = *testing::UnitTest::GetInstance()->current_test_info();
  const std::string name = std::string(test.test_suite_name()) + '.' + test.name();
  return L" --gtest_brief=1 --gtest_filter=" + std::wstring(name.begin(), name.end()) + kMarker +
         std::to_wstring(number);
}

// The current test in a process of its own. Nothing of it is left running.
class TestProcess {
 public:
  TestProcess(const OwnProcess& settings, int number) : end_(settings.end) {
    // GoogleTest keeps this file while tests run. The exit code alone does not tell: under Wine a program whose stack
    // overflows ends with 0.
    SetEnvironmentVariableW(L"TEST_PREMATURE_EXIT_FILE", unfinished_.c_str());
    SetEnvironmentVariableA(kNote, settings.note.c_str());
    // The test is in this program's part of the tests; in the other's it may not be.
    SetEnvironmentVariableA("GTEST_TOTAL_SHARDS", nullptr);
    SetEnvironmentVariableA("GTEST_SHARD_INDEX", nullptr);
    const std::wstring program = settings.program.empty() ? ThisProgram().wstring() : settings.program;
    std::wstring desktop = settings.desktop;
    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    startup.lpDesktop = desktop.empty() ? nullptr : desktop.data();
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = GetStdHandle(STD_INPUT_HANDLE);
    startup.hStdOutput = GetStdHandle(STD_OUTPUT_HANDLE);
    startup.hStdError = GetStdHandle(STD_ERROR_HANDLE);
    std::wstring command = L'"' + program + L'"' + ArgumentsForCurrentTest(number);
    PROCESS_INFORMATION information{};
    if (CreateProcessW(program.c_str(), command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup,
                       &information) == FALSE) {
      ADD_FAILURE() << "A process cannot be started: " << GetLastError();
      return;
    }
    process_.reset(information.hProcess);
    const Handle thread(information.hThread);
  }

  ~TestProcess() { End(1); }
  TestProcess(const TestProcess&) = delete;
  TestProcess& operator=(const TestProcess&) = delete;

  void ExpectEnd(std::chrono::steady_clock::time_point limit) {
    if (!process_) return;
    using std::chrono::milliseconds;
    const auto time = std::chrono::duration_cast<milliseconds>(limit - std::chrono::steady_clock::now());
    const auto wait = static_cast<DWORD>(std::max(time, milliseconds(0)).count());
    if (WaitForSingleObject(process_.get(), wait) != WAIT_OBJECT_0) End(WAIT_TIMEOUT);
    DWORD code = 0;
    GetExitCodeProcess(process_.get(), &code);
    EXPECT_EQ(code, end_) << "See what the other process printed above.";
    const bool endedInBody = std::filesystem::exists(unfinished_);
    EXPECT_EQ(endedInBody, end_ != 0) << "The other process ended before its test did, or did not where it should.";
  }

 private:
  void End(DWORD code) {
    if (!process_) return;
    TerminateProcess(process_.get(), code);
    WaitForSingleObject(process_.get(), INFINITE);
  }

  const DWORD end_;
  const TemporaryFolder folder_;
  const std::wstring unfinished_ = folder_.File(L"unfinished");
  Handle process_;
};

}  // namespace

bool IsOwnProcess() { return OwnNumber().has_value(); }

std::string OwnProcessNote() {
  const char* const note = std::getenv(kNote);
  return note != nullptr ? note : "";
}

void InOwnProcess(const std::function<void()>& body, const OwnProcess& settings) {
  if (OwnNumber()) {
    body();
  } else {
    TestProcess(settings, 0).ExpectEnd(std::chrono::steady_clock::now() + kLimit);
  }
}

void InOwnProcesses(int count, const std::function<void(int)>& body, std::chrono::seconds limit) {
  if (const std::optional<int> number = OwnNumber()) {
    body(*number);
    return;
  }
  const auto end = std::chrono::steady_clock::now() + limit;
  std::deque<TestProcess> processes;
  for (int number = 0; number < count; ++number) processes.emplace_back(OwnProcess{}, number);
  for (TestProcess& process : processes) process.ExpectEnd(end);
}
