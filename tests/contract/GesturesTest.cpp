#include <functional>
#include <memory>
#include <utility>

#include "host/component/Callbacks.h"
#include "host/process/Process.h"
#include "manufassly/TuvIUpdateManufAssly.h"
#include "services/TuvBIWServices.h"
#include "tests/contract/World.h"

// What the headers in host/ promise of changes of the process, kept by the embedded host.

namespace {

using namespace tests;

// Writes each change down as "kind son", with what `see` sees at that moment.
class Witness {
 public:
  explicit Witness(World& world) : dispatcher_(world.plant.Document()->Dispatcher()) {
    callback_ = AddCallback(nullptr, dispatcher_, dispatcher_->GetSPPViewsChange(),
                            ZefCallbackMethod(&Hear), this);
  }
  ~Witness() { RemoveCallback(nullptr, dispatcher_, callback_); }
  Witness(const Witness&) = delete;
  Witness& operator=(const Witness&) = delete;
  Strings Take() { return std::exchange(lines_, {}); }

  std::function<std::string(ZefSPPActivityNotification&)> see;

 private:
  static void Hear(const char*, void*, ZefNotification* notification, void* data, long) {
    auto& witness = *static_cast<Witness*>(data);
    auto& change = *static_cast<ZefSPPActivityNotification*>(notification);
    ZefBaseUnknown* const son = change.GetSon();
    const auto* const flow = embedded::ObjectAs<embedded::ControlFlow>(son);
    const std::string name = flow ? flow->From().Key() + "-" + flow->To().Key() : NameOf(son);
    witness.lines_.push_back(std::to_string(change.GetNotificationKind()) + " " + name +
                             (witness.see ? witness.see(change) : ""));
  }

  ZefSPPActivityNotificationDispatcher* dispatcher_;
  long callback_ = 0;
  Strings lines_;
};

class GesturesTest : public ReferenceAudit {
 protected:
  void TearDown() override {
    owner_.reset();
    ReferenceAudit::TearDown();
  }

 private:
  std::unique_ptr<World> owner_ = std::make_unique<World>();

 protected:
  World& world = *owner_;
};

TEST_F(GesturesTest, ItemLinksNotifyFirstAssignmentAndRemovalAlone) {
  embedded::Activity& op = world.op20;
  const ZefBaseUnknown_var door = world.door.Identity();
  const auto link = [&](int selector) {
    ZefBaseUnknown_var made;
    return op.AddItemLink(made.Put(), ZefISPPItem_var(door), nullptr, "", 1, selector);
  };
  const auto add = [&] {
    ZefBaseUnknown_var added;
    return op.AddItem(door, added);
  };
  const auto links = [&] { return std::to_string(op.LinksOf(door.Get()).size()); };
  Witness witness(world);
  witness.see = [&](auto&) { return ", links " + links(); };
  const struct {
    const char* what;
    std::function<HRESULT()> gesture;
    HRESULT result;
    Strings told;
  } gestures[] = {
      {"plain", add, S_OK, {}},
      {"plain by link", [&] { return link(1); }, S_OK, {}},
      {"first assigned beside plain ones", [&] { return link(2); }, S_OK, {"17 DOOR, links 3"}},
      {"first assigned again", [&] { return link(2); }, S_OK, {}},
      {"the first-assigned ones removed",
       [&] { return op.RemoveItem(door, 2); },
       S_OK,
       {"18 DOOR, links 2"}},
      {"none left", [&] { return op.RemoveItem(door, 2); }, E_FAIL, {}},
      {"first assigned anew", [&] { return link(2); }, S_OK, {"17 DOOR, links 3"}},
      {"all removed at once", [&] { return op.RemoveItem(door, -1); }, S_OK, {"18 DOOR, links 0"}},
      {"plain once more", add, S_OK, {}},
      {"a plain one removed", [&] { return op.RemoveItem(door, 1); }, S_OK, {"18 DOOR, links 0"}},
      {"no item", [&] { return op.RemoveItem(nullptr, -1); }, E_FAIL, {}},
  };
  for (const auto& [what, gesture, result, told] : gestures) {
    SCOPED_TRACE(what);
    EXPECT_EQ(gesture(), result);
    EXPECT_EQ(witness.Take(), told);
  }
}

TEST_F(GesturesTest, ARemovedSubtreeIsToldFromBelowThenItsFlowsThenItIsTakenApart) {
  embedded::Document& document = *world.plant.Document();
  auto& inner = world.plant.Operation("INNER", Plant::Task::None, &world.op10);
  auto& second = world.plant.Operation("OP15", Plant::Task::None, &world.st10);
  world.plant.Flow(world.op10, second);
  world.plant.Flow(world.op20, world.op10);
  world.plant.Flow(second, world.op20);
  world.plant.Flow(world.st30, world.st10);
  const embedded::Owned<embedded::Activity> station(&world.st10), operation(&world.op10);
  Witness witness(world);
  witness.see = [&](ZefSPPActivityNotification& change) {
    const bool whole = world.op10.Parent() == &world.st10 && !world.st10.Outputs().empty() &&
                       world.op10.Links().Size() == 2;
    const auto* const flow = embedded::ObjectAs<embedded::ControlFlow>(change.GetSon());
    const bool gone = flow && !flow->From().FlowTo(flow->To());
    return std::string(whole ? "" : " taken apart") + (flow && !gone ? " still there" : "");
  };
  document.RemoveActivity(world.st10);
  EXPECT_EQ(witness.Take(),
            (Strings{"29 INNER", "29 OP10", "29 OP15", "29 ST10", "29 OP20-OP10", "29 OP10-OP15",
                     "29 OP15-OP20", "29 ST30-ST10", "29 ST10-ST20"}));
  (void)inner;
  for (const auto& activity : {station, operation}) {
    EXPECT_EQ(activity->Parent(), nullptr);
    EXPECT_EQ(activity->Links().Size(), 0);
    EXPECT_TRUE(activity->Outputs().empty());
  }
}

TEST_F(GesturesTest, TheSourceOfAnItemIsTheFirstOutputElsewhereThatCarriesIt) {
  const auto source = [&](embedded::Activity& activity, ZefBaseUnknown* item) {
    ZefBaseUnknown_var found;
    EXPECT_EQ(activity.GetItemSource(found.Put(), ZefISPPItem_var(item)), S_OK);
    const auto* const output = embedded::ObjectAs<embedded::ProductOutput>(found.Get());
    return output ? output->OwnActivity()->Key() : std::string("none");
  };
  EXPECT_EQ(source(world.st20, world.assembly.Identity()), "ST10") << "the previous one";
  EXPECT_EQ(source(world.plant.Root(), world.assembly.Identity()), "ST10") << "no flow leads here";
  EXPECT_EQ(source(world.st10, world.assembly.Identity()), "none")
      << "its own output does not count";
  ZefISPPProductIO_var further;
  world.st30.AddProductOutput(further.Put(), ZefISPPItem_var(world.assembly.Identity()));
  EXPECT_EQ(source(world.st10, world.assembly.Identity()), "ST30") << "also from downstream";
  EXPECT_EQ(source(world.st20, world.assembly.Identity()), "ST10") << "the one that got it first";
  EXPECT_EQ(source(world.st20, world.frame.Identity()), "none") << "a part";
  EXPECT_EQ(source(world.st20, nullptr), "none");
}

TEST_F(GesturesTest, WhatIsRaisedDuringADeliveryIsHeldAndDeliveredAfterIt) {
  Witness witness(world);
  witness.see = [&](ZefSPPActivityNotification& change) -> std::string {
    if (change.GetNotificationKind() != 30) return " of " + NameOf(change.GetFather());
    // The last reference on the operation goes before its notification is delivered.
    auto& passing = world.plant.Operation("PASSING", Plant::Task::None, &world.st30);
    ZefBaseUnknown_var link;
    passing.AddItemLink(link.Put(), ZefISPPItem_var(world.door.Identity()), nullptr, "", 1, 2);
    world.plant.Document()->RemoveActivity(passing);
    return "";
  };
  world.plant.Document()->AddFlow(world.st20, world.st30);
  EXPECT_EQ(witness.Take(), (Strings{"30 ST20-ST30", "17 DOOR of PASSING", "29 PASSING of ST30"}));
}

TEST_F(GesturesTest, TheFirstOutputIsLinkedTwiceAtTheSuccessorAndLaterOnesNotAgain) {
  const TuvIUpdateManufAssly_var update = world.st20.Identity();
  ASSERT_EQ(update->AddUpdateCallback(), S_OK);
  world.plant.Document()->AddFlow(world.st20, world.st30);
  ZefISPPActivity_var station = world.st20.Identity();
  ZefListValZefBaseUnknown_var made;
  TuvBIWServices::CreateProductOutput(station, made);
  ASSERT_EQ(made.Size(), 1);
  EXPECT_EQ(world.st30.LinksOf(made[1].Get()).size(), 2u);
  ZefISPPProductIO_var(world.st20.Outputs()[0]->Identity())->SetProduct(ZefISPPItem_var(made[1]));
  EXPECT_EQ(world.st30.LinksOf(made[1].Get()).size(), 2u) << "told again, linked no more";
  EXPECT_EQ(world.st30.RemoveItem(made[1], 2), S_OK);
  EXPECT_EQ(world.st30.LinksOf(made[1].Get()).size(), 0u);
}

}  // namespace
