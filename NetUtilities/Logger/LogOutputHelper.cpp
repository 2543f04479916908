#include "NetUtilities/Logger/LogOutputHelper.h"

#include <windows.h>

#include "NetUtilities/Format.h"
#include "NetUtilities/TraceFlags.h"

namespace {

void WriteToDebugger(std::wstring_view message) {
  if (IsDebugOutputEnabled()) OutputDebugStringW(Format(L"TARN: {}\n", message).c_str());
}

}  // namespace

std::function<void(std::wstring_view)> LogOutputHelper::GetLogOutput(LogOutput output) {
  switch (output) {
    case LogOutput::Debugger:
      return WriteToDebugger;
  }
  return {};
}
