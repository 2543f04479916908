#include "NetUtilities/Text/ErrnoText.h"

#include <gtest/gtest.h>

#include <limits>

TEST(ErrnoText, IsExactlyThisForEveryCodeThatHasOne) {
  EXPECT_EQ(ErrnoText(1), L"Operation not permitted.");
  EXPECT_EQ(ErrnoText(2), L"File or path not found.");
  EXPECT_EQ(ErrnoText(3), L"No such process.");
  EXPECT_EQ(ErrnoText(4), L"Interrupted function.");
  EXPECT_EQ(ErrnoText(5), L"I/O error.");
  EXPECT_EQ(ErrnoText(6), L"No such device or address.");
  EXPECT_EQ(ErrnoText(7), L"Argument list too long.");
  EXPECT_EQ(
      ErrnoText(8),
      L"Exec format error.An attempt was made to execute a file that isn't executable or that has an invalid executable-file format.");
  EXPECT_EQ(ErrnoText(9), L"Bad file number.");
  EXPECT_EQ(ErrnoText(10), L"No spawned processes.");
  EXPECT_EQ(ErrnoText(11), L"No more processes or not enough memory or maximum nesting level reached.");
  EXPECT_EQ(ErrnoText(12), L"Not enough memory is available for the attempted operator.");
  EXPECT_EQ(ErrnoText(13), L"The given path is a directory, or the file is read-only.");
  EXPECT_EQ(ErrnoText(14), L"Bad address.");
  EXPECT_EQ(ErrnoText(16), L"Device busy.");
  EXPECT_EQ(ErrnoText(17), L"_O_CREAT and _O_EXCL flags were specified, but filename already exists.");
  EXPECT_EQ(ErrnoText(18), L"Cross - device link.");
  EXPECT_EQ(ErrnoText(19), L"No such device.");
  EXPECT_EQ(ErrnoText(20), L"Not a directory.");
  EXPECT_EQ(ErrnoText(21), L"Is a directory.");
  EXPECT_EQ(ErrnoText(22), L"Invalid oflag, shflag, or pmode argument, or pfh or filename was a null pointer.");
  EXPECT_EQ(ErrnoText(23), L"Too many files open in system.");
  EXPECT_EQ(ErrnoText(24), L"No more file descriptors available.");
  EXPECT_EQ(ErrnoText(25), L"Inappropriate I / O control operation.");
  EXPECT_EQ(ErrnoText(27), L"File too large.");
  EXPECT_EQ(ErrnoText(28), L"No space left on device.");
  EXPECT_EQ(ErrnoText(29), L"Invalid seek.");
  EXPECT_EQ(ErrnoText(30), L"Read only file system.");
  EXPECT_EQ(ErrnoText(31), L"Too many links.");
  EXPECT_EQ(ErrnoText(32), L"Broken pipe.");
  EXPECT_EQ(ErrnoText(33), L"Math argument. The argument to a math function isn't in the domain of the function.");
  EXPECT_EQ(ErrnoText(34), L"Result too large.");
  EXPECT_EQ(ErrnoText(36), L"Resource deadlock would occur.");
  EXPECT_EQ(ErrnoText(38), L"Filename too long.");
  EXPECT_EQ(ErrnoText(39), L"No locks available.");
  EXPECT_EQ(ErrnoText(40), L"Function not supported.");
  EXPECT_EQ(ErrnoText(41), L"Directory not empty.");
  EXPECT_EQ(ErrnoText(42), L"Illegal sequence of bytes.");
  EXPECT_EQ(ErrnoText(80), L"A string copy or concatenation resulted in a truncated string");
}

TEST(ErrnoText, IsTheDecimalNumberForAnyOtherCode) {
  for (const int code : {0, -1, 15, 26, 35, 37, 43, 50, 79, 81, 140, 10000, std::numeric_limits<int>::max(),
                         std::numeric_limits<int>::min()}) {
    EXPECT_EQ(ErrnoText(code), std::to_wstring(code));
  }
}
