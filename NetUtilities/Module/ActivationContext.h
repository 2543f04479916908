#pragma once

#include <windows.h>

/// While it lives, windows that this thread creates get the common controls that this module's manifest asks for,
/// whatever the host program uses. Without the manifest nothing changes.
class ActivationContext {
 public:
  ActivationContext();
  ~ActivationContext();
  ActivationContext(const ActivationContext&) = delete;
  ActivationContext& operator=(const ActivationContext&) = delete;

 private:
  HANDLE context_;
  ULONG_PTR cookie_ = 0;
  bool active_ = false;
};
