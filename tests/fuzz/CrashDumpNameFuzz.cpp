// The name of a crash dump, which is written into a place of a fixed size.

#include <algorithm>
#include <array>
#include <span>
#include <string>

#include "NetUtilities/Crash/CrashDumpName.h"
#include "tests/fuzz/FuzzInput.h"
#include "tests/fuzz/Require.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  FuzzInput input(data, size);
  std::array<wchar_t, 64> buffer{};
  const std::span<wchar_t> part = std::span(buffer).first(input.Byte() % (buffer.size() + 1));
  const CrashTime time = {
      input.Number<uint16_t>(), input.Byte(), input.Byte(), input.Byte(), input.Byte(), input.Byte()};
  const std::wstring folder = input.WideLine();
  const std::wstring version = input.WideLine();
  const std::wstring path = input.WideRest();

  std::wstring program = path;
  program.erase(0, program.find_last_of(L"\\/") + 1);
  if (const size_t point = program.rfind(L'.'); point != std::wstring::npos) program.erase(point);
  Require(ProgramBaseName(path) == program);

  const auto twoDigits = [](unsigned number) {
    const std::wstring text = std::to_wstring(number);
    return L"_" + (text.size() < 2 ? L"0" + text : text);
  };
  const std::wstring year = std::to_wstring(time.year);
  std::wstring expected =
      folder + program + L"_" + version + L"_" + std::wstring(4 - std::min<size_t>(year.size(), 4), L'0') + year;
  for (const unsigned number : {time.month, time.day, time.hour, time.minute, time.second}) {
    expected += twoDigits(number);
  }
  expected += L".dmp";
  const bool written = WriteCrashDumpName(part, folder, program, version, time);
  Require(written == expected.size() < part.size());
  if (written)
    Require(std::wstring_view(part.data(), expected.size() + 1) ==
            std::wstring_view(expected.c_str(), expected.size() + 1));
  return 0;
}
