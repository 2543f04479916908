#include "NetUtilities/Module/Owner.h"

#include <gmock/gmock.h>

#include <utility>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct Ticket {};
Ticket first;
Ticket second;

std::vector<const void*> taken;

// As many functions that take something back, it has a result, which nobody looks at.
int TakeBack(const void* address) {
  taken.push_back(address);
  return 0;
}

using TicketOwner = Owner<Ticket*, TakeBack>;

class OwnerTest : public testing::Test {
 protected:
  OwnerTest() { taken.clear(); }
};

TEST_F(OwnerTest, GivesBackInTheEnd) {
  {
    const TicketOwner owner(&first);
    EXPECT_EQ(owner.get(), &first);
    EXPECT_THAT(taken, IsEmpty());
  }
  EXPECT_THAT(taken, ElementsAre(&first));
}

TEST_F(OwnerTest, GivesBackWhatIsReplaced) {
  TicketOwner owner(&first);
  owner.reset(&second);
  EXPECT_THAT(taken, ElementsAre(&first));
  owner = nullptr;
  EXPECT_THAT(taken, ElementsAre(&first, &second));
}

TEST_F(OwnerTest, GivesBackNothingWhenItHasNothing) {
  { const TicketOwner owner(nullptr); }
  EXPECT_THAT(taken, IsEmpty());
}

TEST_F(OwnerTest, HandsOnWhatItOwns) {
  TicketOwner giver(&first);
  {
    const TicketOwner taker(std::move(giver));
    EXPECT_EQ(taker.get(), &first);
  }
  EXPECT_THAT(taken, ElementsAre(&first));
}

TEST_F(OwnerTest, OwnsWhatIsConstantAndWhatHasNoType) {
  {
    const Owner<const Ticket*, TakeBack> constant(&first);
    const Owner<void*, TakeBack> typeless(&second);
  }
  EXPECT_THAT(taken, ElementsAre(&second, &first));
}

TEST_F(OwnerTest, TakesNoMoreRoomThanAPointer) { EXPECT_EQ(sizeof(TicketOwner), sizeof(Ticket*)); }

}  // namespace
