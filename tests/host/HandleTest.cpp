#include "host/product/Product.h"
#include "tests/host/Step.h"

namespace {

using tests::MakeStep;
using tests::Step;

class HandleTest : public tests::ReferenceAudit {};

TEST_F(HandleTest, CountsEachHandleOnTheOneObject) {
  const ZefBaseUnknown_var step = MakeStep();
  {
    const ZefISPPItem_var item = step;
    const ZefISPPActivity_var activity = item, copy = activity;
    EXPECT_EQ(step->ReferenceCount(), 4u);
    EXPECT_TRUE(activity == item && item == step && step != nullptr && step != MakeStep());
    EXPECT_EQ(item, static_cast<ZefBaseUnknown*>(activity.Get())) << "compared as objects";
  }
  const ZefIProduct_var product = step;
  EXPECT_TRUE(!product && product == nullptr && product == ZefISPPItem_var());
  EXPECT_EQ(step->ReferenceCount(), 1u);
}

TEST_F(HandleTest, AssignmentSurvivesItselfAndTheEndOfWhatItHeld) {
  auto* const first = new Step;
  ZefISPPActivity_var activity = AdoptAs<ZefISPPActivity>(first->Identity());
  first->next = MakeStep();
  auto& same = activity;
  activity = same;
  ASSERT_EQ(activity->ReferenceCount(), 1u);
  // The first step ends here, and with it its reference on the next one.
  activity = first->next.Get();
  EXPECT_EQ(activity->ReferenceCount(), 1u);
  const ZefISPPActivity_var moved = std::move(activity);
  EXPECT_EQ(moved->ReferenceCount(), 1u);
}

TEST_F(HandleTest, TakesOverAndGivesAwayByName) {
  ZefISPPItem_var item = AdoptAs<ZefISPPItem>(MakeStep().Detach());
  EXPECT_EQ(item->ReferenceCount(), 1u);
  EXPECT_FALSE(AdoptAs<ZefIProduct>(ZefISPPItem_var(item).Detach()));
  EXPECT_EQ(item->ReferenceCount(), 1u) << "given back when the interface is missing";
  ZefISPPItem*& slot = item.Put();
  EXPECT_EQ(slot, nullptr) << "what it held was given back first";
  slot = ZefISPPItem_var(MakeStep()).Detach();
  EXPECT_EQ(item->ReferenceCount(), 1u);
  EXPECT_FALSE(AdoptAs<ZefISPPItem>(static_cast<ZefBaseUnknown*>(nullptr)));
}

TEST_F(HandleTest, ANullHandleThrowsWhenItIsUsed) {
  EXPECT_THROW(ZefISPPActivity_var()->GetLabel(), ZefNullHandleException);
  EXPECT_THROW((*ZefISPPActivity_var()).GetLabel(), ZefNullHandleException);
}

// Such as windows: they have no identifier, so the language's own cast decides.
TEST_F(HandleTest, AClassThatIsNoInterfaceIsFoundByItsType) {
  const auto notification = Make<ZefNotification>();
  EXPECT_TRUE(Handle<ZefNotification>(ZefBaseUnknown_var(notification)));
  EXPECT_FALSE(Handle<ZefNotification>(MakeStep()));
  EXPECT_EQ(notification->ReferenceCount(), 1u);
}

}  // namespace
