#include "tests/ui/Screenshot.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "NetUtilities/Module/Handle.h"
#include "NetUtilities/Text/Utf8.h"
#include "tests/support/WaitUntil.h"

namespace {

std::string CurrentTestName() {
  const testing::TestInfo* const test = testing::UnitTest::GetInstance()->current_test_info();
  return test != nullptr ? std::string(test->test_suite_name()) + "." + test->name() : "no-test";
}

}  // namespace

void TakeScreenshot() {
  const char* const folder = std::getenv("PAVISE_SCREENSHOT_DIR");
  const char* const command = std::getenv("PAVISE_SCREENSHOT_COMMAND");
  if (folder == nullptr || command == nullptr) return;
  static int count = 0;
  const std::wstring file =
      FromUtf8(std::string(folder) + "/" + CurrentTestName() + "-" + std::to_string(++count) + ".png");

  // A Unix program: Wine starts it, but gives no handle to wait for.
  const std::wstring program = L"\\\\?\\unix" + FromUtf8(command);
  std::wstring arguments = L"\"screenshot\" \"" + file + L"\"";
  STARTUPINFOW startup{};
  startup.cb = sizeof(startup);
  PROCESS_INFORMATION process{};
  if (!CreateProcessW(program.c_str(), arguments.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                      &process)) {
    return;
  }
  const Handle thread(process.hThread);
  const Handle started(process.hProcess);
  WaitUntil([&file] {
    std::error_code ignored;
    return std::filesystem::exists(L"Z:" + file, ignored);
  });
}
