#include "LoginProperties/ProfilePage/OverridePolicy.h"

bool PolicyHolds(unsigned disableOverride, bool shiftDown, bool ctrlDown) {
  return disableOverride != 0 && !(shiftDown && ctrlDown);
}

std::wstring PolicyKeyOf(const std::wstring& pageName) {
  return LR"(SOFTWARE\Ostrel\Wayline\Settings\Dialog\)" + pageName;
}
