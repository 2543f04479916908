#include "tests/Wayline/HostProgram.h"

#include <gmock/gmock.h>

#include "NetUtilities/Text/Utf8.h"
#include "tests/support/FileBytes.h"
#include "tests/support/MessageBoxAnswer.h"

void HostProgram::Start(const std::wstring& options) {
  Launch(options);
  sheet.emplace(threadId);
}

void HostProgram::Launch(const std::wstring& options) {
  SECURITY_ATTRIBUTES inherited{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
  const Handle output(CreateFileW(outputFile_.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited,
                                  CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
  STARTUPINFOW startup{};
  startup.cb = sizeof(startup);
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdOutput = output.get();
  startup.hStdError = output.get();
  std::wstring command =
      L"\"Z:" + FromUtf8(PAVISE_BIN_DIR) + L"/Wayline.exe\" --database \"" + database + L"\" " + options;
  PROCESS_INFORMATION information{};
  ASSERT_TRUE(
      CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup, &information));
  process_.reset(information.hProcess);
  const Handle thread(information.hThread);
  threadId = information.dwThreadId;
}

void HostProgram::ExpectMessage(int button, const std::wstring& text, const std::vector<int>& buttons) const {
  const ShownMessageBox box = AnswerMessageBoxOf(threadId, MessageBoxAnswer::Button(button));
  EXPECT_EQ(box.title, L"Wayline");
  EXPECT_EQ(box.text, text);
  EXPECT_EQ(box.buttons, buttons);
}

DWORD HostProgram::Wait() const {
  constexpr DWORD kLimitMilliseconds = 20000;
  EXPECT_EQ(WaitForSingleObject(process_.get(), kLimitMilliseconds), WAIT_OBJECT_0);
  DWORD code = 0;
  GetExitCodeProcess(process_.get(), &code);
  return code;
}

std::string HostProgram::Printed() const {
  std::string text = FileBytes(outputFile_);
  std::erase(text, '\r');
  return text;
}
