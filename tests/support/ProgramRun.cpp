#include "tests/support/ProgramRun.h"

#include <array>
#include <stdexcept>

namespace {

constexpr DWORD kLimitMilliseconds = 30'000;

}  // namespace

std::wstring FindProgram(const std::wstring& name) {
  std::array<wchar_t, MAX_PATH> path{};
  const DWORD length = SearchPathW(nullptr, name.c_str(), nullptr, MAX_PATH, path.data(), nullptr);
  if (length == 0) throw std::runtime_error("A program is not in the search path.");
  return std::wstring(path.data(), length);
}

RunningProgram::Stream::Stream() {
  SECURITY_ATTRIBUTES inherited{sizeof(inherited), nullptr, TRUE};
  HANDLE read = nullptr;
  HANDLE write = nullptr;
  if (CreatePipe(&read, &write, &inherited, 0) == FALSE) throw std::runtime_error("A pipe cannot be created.");
  read_.reset(read);
  write_.reset(write);
  SetHandleInformation(read, HANDLE_FLAG_INHERIT, 0);
}

RunningProgram::Stream::~Stream() { Stop(); }

void RunningProgram::Stream::Start() {
  write_.reset();
  reader_ = std::jthread([this](const std::stop_token& stop) { Read(stop); });
}

// Looks before it reads, so that it can be stopped at any time.
void RunningProgram::Stream::Read(const std::stop_token& stop) {
  std::array<char, 4096> buffer{};
  DWORD available = 0;
  while (!stop.stop_requested() && PeekNamedPipe(read_.get(), nullptr, 0, nullptr, &available, nullptr) != FALSE) {
    DWORD size = 0;
    if (available == 0) {
      Sleep(2);
    } else if (ReadFile(read_.get(), buffer.data(), static_cast<DWORD>(buffer.size()), &size, nullptr) != FALSE) {
      const std::scoped_lock lock(mutex_);
      text_.append(buffer.data(), size);
    }
  }
}

void RunningProgram::Stream::Stop() {
  reader_.request_stop();
  Finish();
  read_.reset();
}

void RunningProgram::Stream::Finish() {
  if (reader_.joinable()) reader_.join();
}

std::string RunningProgram::Stream::Text() const {
  const std::scoped_lock lock(mutex_);
  std::string lines = text_;
  std::erase(lines, '\r');
  return lines;
}

RunningProgram::RunningProgram(const std::wstring& name, const std::vector<std::wstring>& arguments) {
  const std::wstring program = FindProgram(name);
  std::wstring command = L'"' + program + L'"';
  for (const std::wstring& argument : arguments) command += L" \"" + argument + L'"';

  STARTUPINFOW startup{};
  startup.cb = sizeof(startup);
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdOutput = output_.ProgramsEnd();
  startup.hStdError = error_.ProgramsEnd();
  PROCESS_INFORMATION information{};
  if (CreateProcessW(program.c_str(), command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup,
                     &information) == FALSE) {
    throw std::runtime_error("A program cannot be started.");
  }
  process_.reset(information.hProcess);
  threadId_ = information.dwThreadId;
  const Handle thread(information.hThread);
  output_.Start();
  error_.Start();
}

RunningProgram::~RunningProgram() {
  TerminateProcess(process_.get(), 1);
  WaitForSingleObject(process_.get(), kLimitMilliseconds);
}

ProgramOutcome RunningProgram::WaitForEnd() {
  if (WaitForSingleObject(process_.get(), kLimitMilliseconds) != WAIT_OBJECT_0) {
    TerminateProcess(process_.get(), WAIT_TIMEOUT);
    WaitForSingleObject(process_.get(), INFINITE);
  }
  output_.Finish();
  error_.Finish();
  ProgramOutcome outcome;
  GetExitCodeProcess(process_.get(), &outcome.exitCode);
  outcome.output = output_.Text();
  outcome.error = error_.Text();
  return outcome;
}

ProgramOutcome RunProgram(const std::wstring& name, const std::vector<std::wstring>& arguments) {
  return RunningProgram(name, arguments).WaitForEnd();
}
