#include "LoginProperties/Autostart/StartPhases.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class StartPhasesOf : public testing::Test {
 protected:
  AutoStartItem& Add(uint32_t id, uint16_t phase, const std::wstring& name,
                     AutoStartRecordType type = AutoStartRecordType::PhaseHeader) {
    auto item = std::make_shared<AutoStartItem>();
    item->fields.phase = phase;
    item->fields.name = name;
    item->fields.recordType = type;
    return *(items_[id] = std::move(item));
  }

  AutoStartTable items_;
};

}  // namespace

TEST_F(StartPhasesOf, AListAreThoseOfItsHeaders) {
  Add(1, 300, L"Before");
  Add(2, 300, L"Program", AutoStartRecordType::Program);
  Add(3, 1600, L"After");
  Add(4, 1600, L"Unknown", static_cast<AutoStartRecordType>(3));
  EXPECT_THAT(StartPhases(items_), ElementsAre(StartPhase{L"Before", 300}, StartPhase{L"After", 1600}));
}

TEST_F(StartPhasesOf, AListBeginWithTheFirstWhateverTheNumbersOfTheRecords) {
  Add(1, 1600, L"After");
  Add(2, 700, L"Between");
  Add(3, 300, L"Before");
  Add(4, 700, L"Again");
  EXPECT_THAT(StartPhases(items_), ElementsAre(StartPhase{L"Before", 300}, StartPhase{L"Between", 700},
                                               StartPhase{L"Again", 700}, StartPhase{L"After", 1600}));
}

TEST_F(StartPhasesOf, AListLeaveOutWhatIsRemovedOrMissing) {
  Add(1, 300, L"Before").SetState(ChangeState::Removed);
  items_[2] = nullptr;
  EXPECT_THAT(StartPhases(items_), IsEmpty());
}
