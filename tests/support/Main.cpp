#include <gmock/gmock.h>

#include "NetUtilities/Log.h"

int main(int argc, char** argv) {
  // Tests that want messages catch them: there is no logging service for what else is logged.
  logHandler = [](LogSource, LogLevel, std::wstring_view) {};
  testing::InitGoogleMock(&argc, argv);
  return RUN_ALL_TESTS();
}
