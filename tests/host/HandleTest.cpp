#include <gtest/gtest.h>

#include "host/product/Product.h"
#include "tests/host/Step.h"
#include "tests/support/ReferenceAudit.h"

namespace {

using tests::MakeStep;
using tests::Step;

class HandleTest : public tests::ReferenceAudit {};

TEST_F(HandleTest, CountsEachHandleOnTheOneObject) {
  ZefBaseUnknown_var step = MakeStep();
  {
    const ZefISPPItem_var item = step;
    const ZefISPPActivity_var activity = item;
    const ZefISPPActivity_var copy = activity;
    EXPECT_EQ(step->ReferenceCount(), 4u);
    EXPECT_TRUE(activity == item && item == step && step != nullptr);
    EXPECT_NE(step, MakeStep());
    EXPECT_EQ(ZefISPPItem_var(), ZefBaseUnknown_var(nullptr));
    EXPECT_EQ(item, static_cast<ZefBaseUnknown*>(activity.Get())) << "compared as objects";
  }
  EXPECT_EQ(step->ReferenceCount(), 1u);
  const ZefIProduct_var product = step;
  EXPECT_TRUE(!product && product == nullptr);
  EXPECT_EQ(step->ReferenceCount(), 1u);
}

TEST_F(HandleTest, AssignmentSurvivesItselfAndTheEndOfWhatItHeld) {
  auto* const last = new Step;
  auto* const first = new Step(last);
  EXPECT_EQ(last->Release(), 1u);
  ZefISPPActivity_var activity = first->Identity();
  EXPECT_EQ(first->Release(), 1u);
  auto& same = activity;
  activity = same;
  ASSERT_EQ(activity->ReferenceCount(), 1u);
  // The first step ends here, and with it its reference on the last one.
  activity = dynamic_cast<Step*>(activity.Get())->Next();
  EXPECT_EQ(activity, last->Identity());
  EXPECT_EQ(activity->ReferenceCount(), 1u);
  ZefISPPActivity_var moved = std::move(activity);
  EXPECT_EQ(moved->ReferenceCount(), 1u);
}

TEST_F(HandleTest, TakesOverAndGivesAwayByName) {
  ZefBaseUnknown_var step = MakeStep();
  ZefISPPItem_var item = AdoptAs<ZefISPPItem>(step.Detach());
  EXPECT_FALSE(step);
  EXPECT_EQ(item->ReferenceCount(), 1u);
  EXPECT_FALSE(AdoptAs<ZefIProduct>(ZefBaseUnknown_var(item).Detach()));
  EXPECT_EQ(item->ReferenceCount(), 1u) << "given back when the interface is missing";
  EXPECT_FALSE(AdoptAs<ZefISPPItem>(static_cast<ZefBaseUnknown*>(nullptr)));
  ZefISPPItem*& slot = item.Put();
  EXPECT_EQ(slot, nullptr) << "what it held was given back first";
  slot = ZefISPPItem_var(MakeStep()).Detach();
  EXPECT_EQ(item->ReferenceCount(), 1u);
}

TEST_F(HandleTest, ANullHandleThrowsWhenItIsUsed) {
  const ZefISPPActivity_var none;
  EXPECT_THROW(none->GetLabel(), ZefNullHandleException);
  EXPECT_THROW((*none).GetLabel(), ZefNullHandleException);
}

// Such as windows: they have no identifier, so the language's own cast decides.
TEST_F(HandleTest, AClassThatIsNoInterfaceIsFoundByItsType) {
  const auto notification = Make<ZefNotification>();
  EXPECT_TRUE(Handle<ZefNotification>(ZefBaseUnknown_var(notification)));
  EXPECT_FALSE(Handle<ZefNotification>(MakeStep()));
  EXPECT_EQ(notification->ReferenceCount(), 1u);
}

}  // namespace
