#include "NetUtilities/Text/ErrnoText.h"

#include <string_view>
#include <unordered_map>

#include "NetUtilities/Text/Format.h"

std::wstring ErrnoText(int code) {
  // Who searches the logs knows these texts as they are, odd spacing included.
  static const std::unordered_map<int, std::wstring_view> texts = {
      {1, L"Operation not permitted."},
      {2, L"File or path not found."},
      {3, L"No such process."},
      {4, L"Interrupted function."},
      {5, L"I/O error."},
      {6, L"No such device or address."},
      {7, L"Argument list too long."},
      {8,
       L"Exec format error.An attempt was made to execute a file that isn't executable or that has an invalid executable-file format."},
      {9, L"Bad file number."},
      {10, L"No spawned processes."},
      {11, L"No more processes or not enough memory or maximum nesting level reached."},
      {12, L"Not enough memory is available for the attempted operator."},
      {13, L"The given path is a directory, or the file is read-only."},
      {14, L"Bad address."},
      {16, L"Device busy."},
      {17, L"_O_CREAT and _O_EXCL flags were specified, but filename already exists."},
      {18, L"Cross - device link."},
      {19, L"No such device."},
      {20, L"Not a directory."},
      {21, L"Is a directory."},
      {22, L"Invalid oflag, shflag, or pmode argument, or pfh or filename was a null pointer."},
      {23, L"Too many files open in system."},
      {24, L"No more file descriptors available."},
      {25, L"Inappropriate I / O control operation."},
      {27, L"File too large."},
      {28, L"No space left on device."},
      {29, L"Invalid seek."},
      {30, L"Read only file system."},
      {31, L"Too many links."},
      {32, L"Broken pipe."},
      {33, L"Math argument. The argument to a math function isn't in the domain of the function."},
      {34, L"Result too large."},
      {36, L"Resource deadlock would occur."},
      {38, L"Filename too long."},
      {39, L"No locks available."},
      {40, L"Function not supported."},
      {41, L"Directory not empty."},
      {42, L"Illegal sequence of bytes."},
      {80, L"A string copy or concatenation resulted in a truncated string"},
  };
  const auto text = texts.find(code);
  return text != texts.end() ? std::wstring(text->second) : Format(L"{}", code);
}
