#pragma once

#include <windows.h>

/// While it lives, what the program prints is taken as UTF-8, on the console too.
class Utf8Console {
 public:
  Utf8Console() : previous_(GetConsoleOutputCP()) { SetConsoleOutputCP(CP_UTF8); }
  ~Utf8Console() { SetConsoleOutputCP(previous_); }
  Utf8Console(const Utf8Console&) = delete;
  Utf8Console& operator=(const Utf8Console&) = delete;

 private:
  UINT previous_;
};
