#include "NetUtilities/Logger/LogLine.h"

#include <array>

namespace {

// Composed by hand, digit by digit: every message has a prefix, and a general formatter costs its caller several times
// as much.
class Cursor {
 public:
  explicit Cursor(wchar_t* at) : at_(at) {}

  void Put(wchar_t character) { *at_++ = character; }

  void PutDecimal(unsigned number, int digits) {
    for (int digit = digits; digit-- > 0; number /= 10) at_[digit] = static_cast<wchar_t>(L'0' + number % 10);
    at_ += digits;
  }

  void PutHexadecimal(uint32_t number) {
    constexpr int kFewestDigits = 5;
    int digits = kFewestDigits;
    while (digits < 8 && (number >> (4 * digits)) != 0) ++digits;
    for (int digit = digits; digit-- > 0; number >>= 4) at_[digit] = L"0123456789abcdef"[number & 0xF];
    at_ += digits;
  }

  wchar_t* At() const { return at_; }

 private:
  wchar_t* at_;
};

}  // namespace

size_t WriteLogLinePrefix(std::span<wchar_t, kLongestLogLinePrefix> prefix, const LogTime& time, uint32_t processId,
                          uint32_t threadId) {
  Cursor cursor(prefix.data());
  cursor.PutDecimal(time.month, 2);
  cursor.Put(L'/');
  cursor.PutDecimal(time.day, 2);
  cursor.Put(L' ');
  cursor.PutDecimal(time.hour, 2);
  cursor.Put(L':');
  cursor.PutDecimal(time.minute, 2);
  cursor.Put(L':');
  cursor.PutDecimal(time.second, 2);
  cursor.Put(L'.');
  cursor.PutDecimal(time.millisecond, 3);
  cursor.Put(L' ');
  cursor.PutHexadecimal(processId);
  cursor.Put(L'-');
  cursor.PutHexadecimal(threadId);
  cursor.Put(L':');
  cursor.Put(L' ');
  return static_cast<size_t>(cursor.At() - prefix.data());
}

std::wstring LogLinePrefix(const LogTime& time, uint32_t processId, uint32_t threadId) {
  std::array<wchar_t, kLongestLogLinePrefix> prefix;
  return {prefix.data(), WriteLogLinePrefix(prefix, time, processId, threadId)};
}
