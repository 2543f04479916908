#include "tests/support/ClientProcess.h"

#include <stdexcept>

#include "tests/support/ThisProgram.h"

ClientProcess::ClientProcess(const std::wstring& arguments) {
  const std::wstring program = ThisProgram().replace_filename(L"LoggingClient.exe").wstring();
  std::wstring command = L'"' + program + L"\" " + arguments;
  STARTUPINFOW startup{};
  startup.cb = sizeof(startup);
  PROCESS_INFORMATION information{};
  if (CreateProcessW(program.c_str(), command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                     &information) == FALSE) {
    throw std::runtime_error("The client cannot be started.");
  }
  const Handle thread(information.hThread);
  process_.reset(information.hProcess);
}

ClientProcess::~ClientProcess() {
  if (process_) WaitForEnd(0);
}

DWORD ClientProcess::WaitForEnd(DWORD limitMilliseconds) {
  if (WaitForSingleObject(process_.get(), limitMilliseconds) != WAIT_OBJECT_0) {
    TerminateProcess(process_.get(), WAIT_TIMEOUT);
    WaitForSingleObject(process_.get(), INFINITE);
  }
  DWORD code = 0;
  GetExitCodeProcess(process_.get(), &code);
  return code;
}
