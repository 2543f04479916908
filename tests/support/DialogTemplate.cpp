#include "tests/support/DialogTemplate.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <cwctype>

namespace {

constexpr std::uint16_t kExtendedVersion = 1;
constexpr std::uint16_t kExtendedSignature = 0xffff;
constexpr std::uint16_t kNumberFollows = 0xffff;
constexpr std::uint32_t kSetFont = 0x40;
constexpr std::uint16_t kFirstPredefinedClass = 0x80;
constexpr std::array kPredefinedClasses = {L"button", L"edit", L"static", L"listbox", L"scrollbar", L"combobox"};

// Takes values off the front of the bytes. Once they have run out, every value is 0 and Failed() holds.
class Reader {
 public:
  explicit Reader(std::span<const std::byte> bytes) : bytes_(bytes) {}

  bool Failed() const { return failed_; }

  template <typename T>
  T Take() {
    T value{};
    if (Has(sizeof(T))) std::memcpy(&value, bytes_.data() + position_, sizeof(T));
    Skip(sizeof(T));
    return value;
  }

  std::wstring TakeText() {
    std::wstring text;
    while (const auto unit = Take<std::uint16_t>()) text += static_cast<wchar_t>(unit);
    return text;
  }

  // A text, or a number in its place, which becomes "#" and the number.
  std::wstring TakeTextOrNumber() {
    if (Peek() != kNumberFollows) return TakeText();
    Skip(sizeof(kNumberFollows));
    return L'#' + std::to_wstring(Take<std::uint16_t>());
  }

  std::wstring TakeWindowClass() {
    if (Peek() != kNumberFollows) {
      auto name = TakeText();
      std::ranges::transform(name, name.begin(), [](wchar_t c) { return static_cast<wchar_t>(std::towlower(c)); });
      return name;
    }
    Skip(sizeof(kNumberFollows));
    const unsigned index = Take<std::uint16_t>() - kFirstPredefinedClass;
    return index < kPredefinedClasses.size() ? kPredefinedClasses[index] : L"";
  }

  void Skip(std::size_t count) {
    failed_ = failed_ || !Has(count);
    position_ += count;
  }

  void AlignToDword() { position_ = (position_ + 3) / 4 * 4; }

 private:
  bool Has(std::size_t count) const { return position_ + count <= bytes_.size(); }

  std::uint16_t Peek() const {
    std::uint16_t value = 0;
    if (Has(sizeof(value))) std::memcpy(&value, bytes_.data() + position_, sizeof(value));
    return value;
  }

  std::span<const std::byte> bytes_;
  std::size_t position_ = 0;
  bool failed_ = false;
};

DialogControl TakeControl(Reader& reader) {
  DialogControl control;
  reader.AlignToDword();
  reader.Skip(2 * sizeof(std::uint32_t));  // help id, extended style
  control.style = reader.Take<std::uint32_t>();
  control.x = reader.Take<std::int16_t>();
  control.y = reader.Take<std::int16_t>();
  control.width = reader.Take<std::int16_t>();
  control.height = reader.Take<std::int16_t>();
  control.id = reader.Take<std::uint32_t>();
  control.windowClass = reader.TakeWindowClass();
  control.text = reader.TakeTextOrNumber();
  reader.Skip(reader.Take<std::uint16_t>());  // creation data
  return control;
}

}  // namespace

std::optional<DialogTemplate> ParseDialogTemplate(std::span<const std::byte> bytes) {
  Reader reader(bytes);
  const auto version = reader.Take<std::uint16_t>();
  const auto signature = reader.Take<std::uint16_t>();
  if (version != kExtendedVersion || signature != kExtendedSignature) return std::nullopt;

  DialogTemplate dialog;
  reader.Skip(2 * sizeof(std::uint32_t));  // help id, extended style
  dialog.style = reader.Take<std::uint32_t>();
  if (!(dialog.style & kSetFont)) return std::nullopt;
  const auto count = reader.Take<std::uint16_t>();
  reader.Skip(2 * sizeof(std::int16_t));  // place
  dialog.width = reader.Take<std::int16_t>();
  dialog.height = reader.Take<std::int16_t>();
  reader.TakeTextOrNumber();  // menu
  reader.TakeTextOrNumber();  // window class
  dialog.title = reader.TakeText();
  dialog.fontSize = reader.Take<std::uint16_t>();
  reader.Skip(sizeof(std::uint16_t) + 2);  // weight, italic, character set
  dialog.fontName = reader.TakeText();
  for (unsigned i = 0; i < count && !reader.Failed(); ++i) dialog.controls.push_back(TakeControl(reader));
  if (reader.Failed()) return std::nullopt;
  return dialog;
}
