#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

/// A named mutex that exists as long as some process holds its handle. Nobody ever waits on it.
struct InstanceMutex {
  std::shared_ptr<void> handle;  // closed with its last reference; null when the mutex could not be created
  bool first = false;            // this call created it; false when it existed before
};

/// What the database layer needs of the machine. Production values are in DatabasePlatform.cpp; the host and
/// tests put others in their place.
struct DatabasePlatform {
  uint32_t (*processId)();
  std::wstring (*executablePath)();     // full path of the host program
  std::wstring (*userDataDirectory)();  // where the settings database lies unless another folder is named
  InstanceMutex (*createInstanceMutex)(const std::wstring& name);
  bool (*isTraceFlagSet)(unsigned bit);
  std::wstring (*errorSuffix)(int32_t code);          // what log lines append for a system error code
  void (*debuggerOutput)(std::wstring_view message);  // for what must not pass through the Logger

  // Full path of the settings database that is to be used, wherever it lies; empty for the one in the folder above.
  std::wstring (*settingsFile)() = [] { return std::wstring(); };
};

extern DatabasePlatform databasePlatform;

/// The trace flag that turns on the database's own log lines.
inline constexpr unsigned kDatabaseTraceFlag = 4;
