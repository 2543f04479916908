#include <gmock/gmock.h>

#include "NetUtilities/Log.h"
#include "tests/support/RegisteredService.h"
#include "tests/ui/Screenshot.h"

namespace {

class ScreenshotOnFailure : public testing::EmptyTestEventListener {
  void OnTestPartResult(const testing::TestPartResult& result) override {
    if (result.failed()) TakeScreenshot();
  }
};

}  // namespace

int main(int argc, char** argv) {
  // What this program itself logs is nobody's business; the modules that it loads have a log of their own.
  logHandler = [](LogSource, LogLevel, std::wstring_view) {};
  const RegisteredService service;
  testing::InitGoogleMock(&argc, argv);
  testing::UnitTest::GetInstance()->listeners().Append(std::make_unique<ScreenshotOnFailure>().release());
  return RUN_ALL_TESTS();
}
