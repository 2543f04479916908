#pragma once

#include <windows.h>

#include <objbase.h>

/// While it lives, the calling thread is a COM apartment of its own. One that belongs to an apartment already stays
/// what it is.
class ComApartment {
 public:
  ComApartment() : result_(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)) {}
  ~ComApartment() {
    if (SUCCEEDED(result_)) CoUninitialize();
  }
  ComApartment(const ComApartment&) = delete;
  ComApartment& operator=(const ComApartment&) = delete;

 private:
  HRESULT result_;
};
