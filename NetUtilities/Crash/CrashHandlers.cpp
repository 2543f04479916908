#include "NetUtilities/Crash/CrashHandlers.h"

#include <utility>

#include "NetUtilities/Crash/CrashDump.h"
#include "NetUtilities/Log.h"
#include "NetUtilities/Text/Format.h"

namespace {

// The compiler's runtime catches a C++ exception that nobody else does and ends the process quietly, so that no filter
// sees it. This makes it a crash, while the stack is still that of the throw.
void CrashOnTerminate() { RaiseException(kModuleException, EXCEPTION_NONCONTINUABLE, 0, nullptr); }

}  // namespace

void InvalidParameterHandler(const wchar_t* expression, const wchar_t* function, const wchar_t* file, unsigned line,
                             uintptr_t /*reserved*/) {
  if (function != nullptr && file != nullptr && line != 0) {
    Log(LogLevel::Fatal, Format(L"Invalid parameter detected in function {}. File: {} Line: {}", function, file, line));
  }
  if (expression != nullptr) Log(LogLevel::Fatal, Format(L"Expression: {}", expression));
  constexpr DWORD kLoggerMilliseconds = 250;  // for the lines to be written
  Sleep(kLoggerMilliseconds);
  RaiseException(kModuleException, 0, 0, nullptr);
}

void CrashHandlers::Install() {
  previousFilter_ = SetUnhandledExceptionFilter(CrashDumpFilter);
  previousHandler_ = _set_invalid_parameter_handler(InvalidParameterHandler);
  previousTerminate_ = std::set_terminate(CrashOnTerminate);
}

void CrashHandlers::Uninstall() {
  if (previousHandler_ != nullptr) _set_invalid_parameter_handler(std::exchange(previousHandler_, nullptr));
  if (previousTerminate_ != nullptr) std::set_terminate(std::exchange(previousTerminate_, nullptr));
}
