#include "NetUtilities/Crash/CrashDumpName.h"

#include <array>

#include "NetUtilities/Text/Format.h"

std::wstring_view ProgramBaseName(std::wstring_view path) {
  const std::wstring_view name = path.substr(path.find_last_of(L"\\/") + 1);
  return name.substr(0, name.rfind(L'.'));
}

bool WriteCrashDumpName(std::span<wchar_t> buffer, std::wstring_view folder, std::wstring_view program,
                        std::wstring_view version, const CrashTime& time) {
  std::array<wchar_t, 64> timeText{};
  const size_t timeLength = FormatInto(timeText, L"{:04}_{:02}_{:02}_{:02}_{:02}_{:02}", time.year, time.month,
                                       time.day, time.hour, time.minute, time.second);
  const size_t length =
      FormatInto(buffer, L"{}{}_{}_{}.dmp", folder, program, version, std::wstring_view(timeText.data(), timeLength));
  if (length >= buffer.size()) return false;
  buffer[length] = L'\0';
  return true;
}
