#include "NetUtilities/Text/ElapsedText.h"

#include "NetUtilities/Text/Format.h"

std::wstring ElapsedText(std::chrono::nanoseconds elapsed) {
  using std::chrono::duration_cast;
  constexpr auto kMostOfAUnit = 1000;
  if (elapsed.count() <= kMostOfAUnit) return Format(L"{}ns", elapsed.count());
  const auto microseconds = duration_cast<std::chrono::microseconds>(elapsed).count();
  if (microseconds <= kMostOfAUnit) return Format(L"{}us", microseconds);
  const auto milliseconds = duration_cast<std::chrono::milliseconds>(elapsed).count();
  if (milliseconds <= kMostOfAUnit) return Format(L"{}ms", milliseconds);
  return Format(L"{:01.3f}s", static_cast<double>(milliseconds) / 1000.0);
}
