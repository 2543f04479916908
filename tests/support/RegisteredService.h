#pragma once

#include <windows.h>

#include <vector>

/// While it lives, the logging service that was built is registered for the machine, so that COM starts it for whoever
/// logs; servers that run in the end may go on for some seconds. Where the service is registered already, as in a
/// process of InOwnProcess, all stays as it is.
class RegisteredService {
 public:
  RegisteredService();
  ~RegisteredService();
  RegisteredService(const RegisteredService&) = delete;
  RegisteredService& operator=(const RegisteredService&) = delete;

  /// The processes in which the service runs now.
  static std::vector<DWORD> Servers();

  /// Waits until they have ended by themselves, which takes some seconds after the last client. False when one goes on.
  static bool WaitForEndOfServers();

  /// Ends them at once, whoever uses them. Where the service is registered a new one runs then. Under Wine no other
  /// process that had to do with the old ones can reach it.
  static void KillServers();

 private:
  bool isOwn_;  // this object has registered the service
};
