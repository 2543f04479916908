#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "WaylineDll/Api.h"
#include "WaylineDll/Program.h"

/// The installed programs that are offered for autostart, each once, by name as the user reads lists: what the start
/// menu leads to, and what is registered on the machine. Their ids are different, and none is an AutoStartRecordType.
WAYLINE_API std::vector<Program> LoadInstalledProgramList();

/// The folder of a program's file, with a final backslash only for the root of a drive; empty when `program` names no
/// folder. `program` stays as it is. Sizes are in characters, terminators included; a text that does not fit is cut.
WAYLINE_API void GetProgInstallDirStr(wchar_t* program, uint32_t programSize, wchar_t* directory,
                                      uint32_t directorySize);

/// A string of the registry as it is stored; empty when it cannot be read. `valuePath` names root, key and value, as in
/// "HKEY_LOCAL_MACHINE\Software\Example\Path"; without a value behind the last backslash, the key's default value.
WAYLINE_API std::wstring GetRegistryString(std::wstring_view valuePath);

/// Replaces the path variable `variable`, "%windir%" for instance, by `value` wherever it stands in `text`, in whatever
/// case of ASCII letters. What is brought in is not looked at again. An empty value replaces it only when
/// `evenWhenEmpty`.
WAYLINE_API void SubstituteCommandLineStringS(std::wstring& text, std::wstring_view variable, std::wstring_view value,
                                              bool evenWhenEmpty);
