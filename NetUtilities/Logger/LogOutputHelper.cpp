#include "NetUtilities/Logger/LogOutputHelper.h"

#include <windows.h>

#include "NetUtilities/Logger/FileLogger.h"
#include "NetUtilities/Logger/LogPlatform.h"
#include "NetUtilities/Module/OwnModule.h"
#include "NetUtilities/Module/Singleton.h"
#include "NetUtilities/Registry/TraceFlags.h"
#include "NetUtilities/Text/Format.h"

namespace {

void WriteToDebugger(std::wstring_view message) {
  if (IsDebugOutputEnabled()) OutputDebugStringW(Format(L"TARN: {}\n", message).c_str());
}

void WriteToFile(std::wstring_view message) {
  const auto file = Singleton<FileLogger>::Get();
  if (!file) return;
  std::wstring line =
      Format(L"[{}] {}{}", OwnModuleBaseName(),
             LogLinePrefix(logPlatform.localTime(), logPlatform.processId(), logPlatform.threadId()), message);
  if (!line.ends_with(L'\n')) line += L'\n';
  file->Write(std::move(line));
}

}  // namespace

std::function<void(std::wstring_view)> LogOutputHelper::GetLogOutput(LogOutput output) {
  switch (output) {
    case LogOutput::Debugger:
      return WriteToDebugger;
    case LogOutput::File:
      return WriteToFile;
  }
  return {};
}
