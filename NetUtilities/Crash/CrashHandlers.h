#pragma once

#include <windows.h>

#include <cstdint>
#include <cstdlib>
#include <exception>

/// The code of the exception that turns other ends of the process into a crash, and so into a dump.
inline constexpr DWORD kModuleException = 0xE0000001;

/// Called by the C runtime when one of its functions is given an invalid parameter: logs it, and crashes. All texts
/// may be null, and `line` 0, except in the debug runtime. `reserved` is not used.
void InvalidParameterHandler(const wchar_t* expression, const wchar_t* function, const wchar_t* file, unsigned line,
                             uintptr_t reserved);

/// The process-wide handlers that turn a crash into a dump; installed once, for as long as the module is loaded.
class CrashHandlers {
 public:
  CrashHandlers() = default;
  ~CrashHandlers() { Uninstall(); }
  CrashHandlers(const CrashHandlers&) = delete;
  CrashHandlers& operator=(const CrashHandlers&) = delete;

  /// Puts the module's handlers in the place of those there are.
  void Install();

  /// Puts the previous handler for invalid parameters back, if there was one, and the one for std::terminate. The
  /// filter for unhandled exceptions stays: the end of a process is when crashes are likely. A second call does
  /// nothing.
  void Uninstall();

 private:
  LPTOP_LEVEL_EXCEPTION_FILTER previousFilter_ = nullptr;  // kept for who looks at a dump; not put back
  _invalid_parameter_handler previousHandler_ = nullptr;
  std::terminate_handler previousTerminate_ = nullptr;
};
