#include "tests/support/OwnProcess.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string_view>

#include "tests/support/TemporaryFolder.h"
#include "tests/support/ThisProgram.h"

namespace {

constexpr wchar_t kMarker[] = L"--own-process";
constexpr DWORD kLimitMilliseconds = 30'000;

struct Close {
  void operator()(void* handle) const { CloseHandle(handle); }
};
using Handle = std::unique_ptr<void, Close>;

bool IsOwnProcess() { return std::wstring_view(GetCommandLineW()).ends_with(kMarker); }

std::wstring ArgumentsForCurrentTest() {
  const testing::TestInfo& test = *testing::UnitTest::GetInstance()->current_test_info();
  const std::string name = std::string(test.test_suite_name()) + '.' + test.name();
  return L" --gtest_brief=1 --gtest_filter=" + std::wstring(name.begin(), name.end()) + L' ' + kMarker;
}

// The exit code of the program; nothing of it is left running.
DWORD Run(const std::wstring& program, const std::wstring& arguments, std::wstring desktop) {
  STARTUPINFOW startup{};
  startup.cb = sizeof(startup);
  startup.lpDesktop = desktop.empty() ? nullptr : desktop.data();
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdInput = GetStdHandle(STD_INPUT_HANDLE);
  startup.hStdOutput = GetStdHandle(STD_OUTPUT_HANDLE);
  startup.hStdError = GetStdHandle(STD_ERROR_HANDLE);
  std::wstring command = L'"' + program + L'"' + arguments;
  PROCESS_INFORMATION information{};
  if (CreateProcessW(program.c_str(), command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup,
                     &information) == FALSE) {
    return GetLastError();
  }
  const Handle process(information.hProcess);
  const Handle thread(information.hThread);
  if (WaitForSingleObject(process.get(), kLimitMilliseconds) != WAIT_OBJECT_0) {
    TerminateProcess(process.get(), WAIT_TIMEOUT);
    WaitForSingleObject(process.get(), INFINITE);
  }
  DWORD code = 0;
  GetExitCodeProcess(process.get(), &code);
  return code;
}

}  // namespace

void InOwnProcess(const std::function<void()>& body, const OwnProcess& settings) {
  if (IsOwnProcess()) {
    body();
    return;
  }
  // GoogleTest keeps this file while tests run. The exit code alone does not tell: under Wine a program whose stack
  // overflows ends with 0.
  const TemporaryFolder folder;
  const std::wstring unfinished = folder.File(L"unfinished");
  SetEnvironmentVariableW(L"TEST_PREMATURE_EXIT_FILE", unfinished.c_str());
  const std::wstring program = settings.program.empty() ? ThisProgram().wstring() : settings.program;
  EXPECT_EQ(Run(program, ArgumentsForCurrentTest(), settings.desktop), 0u)
      << "See what the other process printed above.";
  EXPECT_FALSE(std::filesystem::exists(unfinished)) << "The other process ended before its test did.";
}
