#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "NetUtilities/Text/Utf8.h"

/// Takes the bytes of one input apart, from front to back. What is behind the end is zero or empty.
class FuzzInput {
 public:
  FuzzInput(const uint8_t* data, size_t size) : rest_(reinterpret_cast<const char*>(data), size) {}

  bool IsAtEnd() const { return rest_.empty(); }

  uint8_t Byte() {
    const std::string_view byte = Take(1);
    return byte.empty() ? uint8_t{0} : static_cast<uint8_t>(byte.front());
  }

  /// An integer of any width, the lowest byte first.
  template <typename Integer>
  Integer Number() {
    uint64_t number = 0;
    for (size_t index = 0; index < sizeof(Integer); ++index) number |= uint64_t{Byte()} << 8 * index;
    return static_cast<Integer>(number);
  }

  /// The bytes up to the next line feed, which is taken along, or to the end.
  std::string Line() {
    std::string line(Take(rest_.find('\n')));
    Take(1);
    return line;
  }

  /// All that is left.
  std::string Rest() { return std::string(Take(rest_.size())); }

  /// The same as wide texts.
  std::wstring WideLine() { return Wide(Line()); }
  std::wstring WideRest() { return Wide(Rest()); }

  /// UTF-8 as text. Behind a byte 0xFF two bytes give any UTF-16 unit, for the units that UTF-8 cannot say.
  static std::wstring Wide(std::string_view bytes) {
    std::wstring text;
    for (;;) {
      const size_t mark = std::min(bytes.find('\xFF'), bytes.size());
      text += FromUtf8(bytes.substr(0, mark));
      if (bytes.size() < mark + 3) return text;
      text += static_cast<wchar_t>(static_cast<uint8_t>(bytes[mark + 1]) << 8 | static_cast<uint8_t>(bytes[mark + 2]));
      bytes.remove_prefix(mark + 3);
    }
  }

  /// UTF-16 units, whatever they are.
  static std::u16string Units(std::string_view bytes) {
    std::u16string units;
    for (size_t index = 0; index + 1 < bytes.size(); index += 2) {
      units += static_cast<char16_t>(static_cast<uint8_t>(bytes[index]) | static_cast<uint8_t>(bytes[index + 1]) << 8);
    }
    return units;
  }

 private:
  std::string_view Take(size_t count) {
    const std::string_view taken = rest_.substr(0, count);
    rest_.remove_prefix(taken.size());
    return taken;
  }

  std::string_view rest_;
};
