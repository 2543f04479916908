#include "NetUtilities/Text/ErrorText.h"

#include <windows.h>

#include <array>

#include "NetUtilities/Text/Format.h"
#include "NetUtilities/Text/MessageText.h"
#include "NetUtilities/Text/Utf8.h"

std::wstring SystemErrorText(uint32_t code) {
  constexpr DWORD kEnglishUnitedStates = 1033;
  std::array<wchar_t, 512> buffer{};
  const DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM, nullptr, code, kEnglishUnitedStates, buffer.data(),
                                      static_cast<DWORD>(buffer.size()), nullptr);
  if (length == 0 || buffer[0] == L'\0') return {};
  return CleanMessageText(buffer.data());
}

std::wstring ErrorSuffix(int32_t code) {
  const auto bits = static_cast<uint32_t>(code);
  const std::wstring text = SystemErrorText(bits);
  std::wstring suffix = Format(L" Error {} ({:#x})", code, bits);
  if (!text.empty()) suffix += L" - " + text;
  return suffix;
}

std::wstring ErrorSuffix(const std::error_code& error) {
  if (error.category() == std::system_category()) return ErrorSuffix(error.value());
  return Format(L" Error {} - {}", error.value(), FromUtf8(error.message()));
}
