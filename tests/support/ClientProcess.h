#pragma once

#include <windows.h>

#include <string>

#include "NetUtilities/Module/Handle.h"

/// A process of LoggingClient.exe; see there for its arguments. It ends with this object at the latest.
class ClientProcess {
 public:
  explicit ClientProcess(const std::wstring& arguments);
  ~ClientProcess();
  ClientProcess(ClientProcess&&) = default;
  ClientProcess& operator=(ClientProcess&&) = delete;

  /// The exit code of a process that has logged all, and was not ended by something else.
  static constexpr DWORD kDone = 7;

  /// Waits for its end, and gives the exit code: WAIT_TIMEOUT when it had to be ended because it took too long.
  DWORD WaitForEnd(DWORD limitMilliseconds = 30'000);

 private:
  Handle process_;
};
