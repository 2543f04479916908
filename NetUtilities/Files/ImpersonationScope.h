#pragma once

#include <windows.h>

/// While it lives, the calling thread acts as the user of a token, if that could be brought about. Ends also when an
/// exception passes. Failures are logged.
class ImpersonationScope {
 public:
  /// `token` is one for impersonation and stays the caller's.
  explicit ImpersonationScope(HANDLE token);
  ~ImpersonationScope() { End(); }
  ImpersonationScope(const ImpersonationScope&) = delete;
  ImpersonationScope& operator=(const ImpersonationScope&) = delete;

  /// Whether the thread acts as that user.
  bool IsActive() const { return active_; }

  /// Ends it early; false when the thread could not go back to its own user. A second call does nothing.
  bool End();

 private:
  bool active_;
};

/// Logs the calling thread's last error, from the source `Impersonation`.
void LogImpersonationFailure(const wchar_t* what);
