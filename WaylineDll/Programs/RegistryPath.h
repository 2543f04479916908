#pragma once

#include <string>
#include <string_view>

/// The parts of a text that names a value of the registry.
struct RegistryPath {
  std::wstring root;
  std::wstring key;
  std::wstring value;  // empty for the default value
};

/// Takes "ROOT\key\value" apart at its first and its last backslash. All is root when there is none, and the key is
/// empty when there is only one.
RegistryPath SplitRegistryPath(std::wstring_view path);
