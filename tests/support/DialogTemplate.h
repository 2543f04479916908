#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

/// One control of a dialog template. Places and sizes are in dialog units.
struct DialogControl {
  std::uint32_t id;
  std::wstring windowClass;  // in lower case; a predefined class under its name, such as "button"
  std::wstring text;         // a resource number as "#116"
  std::uint32_t style;
  int x;
  int y;
  int width;
  int height;
};

/// A dialog template as it lies in a module, its controls in their order. Sizes are in dialog units.
struct DialogTemplate {
  std::wstring title;
  std::uint32_t style;
  int width;
  int height;
  int fontSize;  // in points
  std::wstring fontName;
  std::vector<DialogControl> controls;
};

/// Reads an extended template (DIALOGEX) that names a font. Nothing when the bytes are another format or end
/// too early.
std::optional<DialogTemplate> ParseDialogTemplate(std::span<const std::byte> bytes);
