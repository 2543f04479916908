#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "WaylineDll/Api.h"

/// One installed program that can be started automatically.
struct Program {
  enum class Kind : uint32_t {
    Application = 1,
    Document = 2,
    Web = 3,  // `parameters` is the address
  };

  std::wstring name;
  uint32_t id = 0;
  std::wstring path;  // empty when the program is not started by a path
  std::wstring parameters;
  Kind kind = Kind::Application;
};

/// The installed programs that are offered for autostart.
WAYLINE_API std::vector<Program> LoadInstalledProgramList();

/// The folder that a program is installed in. Sizes are in characters, terminators included; a text that does not fit
/// is cut.
WAYLINE_API void GetProgInstallDirStr(wchar_t* program, uint32_t programSize, wchar_t* directory,
                                      uint32_t directorySize);

/// A string of the client's registry settings; empty when it cannot be read. `valuePath` names key and value.
WAYLINE_API std::wstring GetRegistryString(std::wstring_view valuePath);

/// Replaces the path variable `variable` in `text` by `value`. `evenWhenEmpty` replaces it also by empty text.
WAYLINE_API void SubstituteCommandLineStringS(std::wstring& text, std::wstring_view variable, std::wstring_view value,
                                              bool evenWhenEmpty);
