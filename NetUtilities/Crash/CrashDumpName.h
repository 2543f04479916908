#pragma once

#include <span>
#include <string_view>

/// A moment of the local time, to the second.
struct CrashTime {
  unsigned year;
  unsigned month;   // 1 to 12
  unsigned day;     // 1 to 31
  unsigned hour;    // 0 to 23
  unsigned minute;  // 0 to 59
  unsigned second;  // 0 to 59
};

/// The name of a program without folder and extension: "Wayline" of "C:\Client\Wayline.exe". A part of `path`.
std::wstring_view ProgramBaseName(std::wstring_view path);

/// Writes the path of a dump file and a null character into `buffer`. `folder` ends in a separator. Takes no memory
/// from the heap. False when the buffer is too small, whose content then means nothing.
bool WriteCrashDumpName(std::span<wchar_t> buffer, std::wstring_view folder, std::wstring_view program,
                        std::wstring_view version, const CrashTime& time);
