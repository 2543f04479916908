#include <gmock/gmock.h>

#include "tests/ui/Screenshot.h"

namespace {

class ScreenshotOnFailure : public testing::EmptyTestEventListener {
  void OnTestPartResult(const testing::TestPartResult& result) override {
    if (result.failed()) TakeScreenshot();
  }
};

}  // namespace

int main(int argc, char** argv) {
  testing::InitGoogleMock(&argc, argv);
  testing::UnitTest::GetInstance()->listeners().Append(std::make_unique<ScreenshotOnFailure>().release());
  return RUN_ALL_TESTS();
}
