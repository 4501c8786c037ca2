#include "tests/manufassly/Line.h"

namespace {

using tests::ListOf;
using tests::Names;
using tests::Strings;
using Task = tests::Plant::Task;

class LinkRemovalTest : public tests::LineFixture {
 protected:
  void Operation(const std::string& key, const std::string& station) {
    line.plant.Operation(key, Task::None, &line.At(station));
  }
  void QuietFlow(const std::string& from, const std::string& to) {
    line.plant.Document()->AddFlow(line.At(from), line.At(to), true);
  }
  void Withdraw(const std::string& assembly, const std::string& after,
                ZefISPPActivity_var& target) {
    ZefISPPActivity_var activity = line.At(after).Identity();
    TuvIMfgAssembly_var withdrawn = line.Item(assembly);
    line.Update().RemoveMAFromConcernedAct(activity, target, withdrawn, nullptr);
  }
};

TEST_F(LinkRemovalTest, ARemovedFlowWithdrawsTheAssemblyFromTheNextStationAndAllNestedInIt) {
  line.Output("A");
  line.Link("A", "B");
  for (const char* const key : {"B1", "B2"}) {
    Operation(key, "B");
    line.Drop("MA-A", key);
  }
  line.Unlink("A", "B");
  for (const char* const key : {"B", "B1", "B2"}) {
    EXPECT_EQ(line.FirstAssigned(key), Strings{}) << key;
  }
  EXPECT_EQ(
      line.Warnings(),
      Strings{"Products unassigned: The products are no longer first assigned to: \nB1\nB2\n"});
}

TEST_F(LinkRemovalTest, ARemovedFlowSendsTheAssemblyToTheOneActivityThatIsLeft) {
  line.Output("A");
  line.Link("A", "B");
  QuietFlow("A", "C");
  line.Unlink("A", "B");
  EXPECT_EQ(line.FirstAssigned("B"), Strings{});
  EXPECT_EQ(line.FirstAssigned("C"), Strings{"MA-A"});
  line.Unlink("A", "C");
  EXPECT_EQ(line.FirstAssigned("C"), Strings{}) << "none is left";
  EXPECT_EQ(line.Warnings(), Strings{});
}

TEST_F(LinkRemovalTest, WithSeveralActivitiesLeftTheUserIsToldAndNoneIsChosen) {
  for (const char* const key : {"D", "E"}) line.plant.Station(key);
  line.Output("A");
  line.Link("A", "B");
  for (const char* const key : {"C", "D"}) QuietFlow("A", key);
  line.Unlink("A", "B");
  EXPECT_EQ(line.FirstAssigned("B"), Strings{});
  EXPECT_EQ(line.Warnings().size(), 1u);
  QuietFlow("B", "E");
  line.Unlink("B", "E");
  EXPECT_EQ(line.Warnings(), Strings{}) << "without outputs nobody is asked";
}

TEST_F(LinkRemovalTest, ARemovedFlowBetweenOperationsTakesTheirItemsOutOfTheAssembly) {
  for (const char* const key : {"A1", "A2"}) Operation(key, "A");
  line.Output("A");
  line.Drop("P1", "A1");
  line.Drop("P2", "A");
  line.Link("A1", "A2");
  line.Unlink("A1", "A2");
  EXPECT_EQ(line.Children("A"), Strings{"P2"});
}

TEST_F(LinkRemovalTest, ARemovedOperationTakesItsItemsOutOfTheAssemblyOfItsStation) {
  Operation("A1", "A");
  line.Output("A");
  line.Drop("P1", "A1");
  line.Drop("P2", "A");
  line.plant.Document()->RemoveActivity(line.At("A1"));
  EXPECT_EQ(line.Children("A"), Strings{"P2"});
}

TEST_F(LinkRemovalTest, ARemovedStationTakesItsAssemblyAlong) {
  line.Output("A");
  line.Link("A", "B");
  line.Link("B", "C");
  line.Output("B");
  line.plant.Document()->RemoveActivity(line.At("B"));
  EXPECT_EQ(line.FirstAssigned("C"), Strings{});
  EXPECT_EQ(line.OutOfStep(), Strings{});
}

TEST_F(LinkRemovalTest, ARemovedOutputIsEmptiedAndItsAssemblyWithdrawn) {
  line.Output("A");
  line.Drop("P1", "A");
  line.Link("A", "B");
  auto& assembly = *line.AssemblyOf("A");
  line.RemoveOutput("A");
  EXPECT_EQ(Names(assembly.OwnChildren()), Strings{});
  EXPECT_EQ(line.FirstAssigned("B"), Strings{});
}

TEST_F(LinkRemovalTest, ADraggedPartLeavesEveryAssemblyOfTheStation) {
  Operation("A1", "A");
  auto& first = line.Output("A");
  auto& second = line.Output("A", "second");
  line.Drop("P1", "A1");
  for (auto* const assembly : {&first, &second}) assembly->ForceChild(line.Item("P1"));
  const int redraws = first.Redraws();
  line.Drag("P1", "A1");
  EXPECT_EQ(Names(first.OwnChildren()), Strings{});
  EXPECT_EQ(Names(second.OwnChildren()), Strings{});
  EXPECT_EQ(first.Redraws(), redraws + 1);
  auto& weld = line.plant.Weld("SW-1");
  first.ForceChild(weld.Identity());
  line.plant.Assign(line.At("A1"), weld);
  line.At("A1").RemoveItem(weld.Identity(), -1);
  EXPECT_EQ(Names(first.OwnChildren()), Strings{"SW-1"}) << "a weld is neither part nor assembly";
}

TEST_F(LinkRemovalTest, OnlyFirstAssignedProductsAreUnlinkedAndLeaveTheList) {
  line.Drop("P1", "A");
  line.Drop("P1", "A");
  ZefBaseUnknown_var ignored;
  line.At("A").AddItem(line.Item("P2"), ignored);
  auto products = ListOf(line.plant.Part("P3"), *line.plant.Document()->FindProduct("P2"));
  ZefISPPActivity_var activity = line.At("A").Identity();
  line.Update().RemoveProductsAsFirstAssign(activity, products);
  EXPECT_EQ(Names(products), (Strings{"P3", "P2"}));
  products.Append(line.Item("P1"));
  line.Update().RemoveProductsAsFirstAssign(activity, products);
  EXPECT_EQ(Names(products), (Strings{"P3", "P2"}));
  EXPECT_EQ(line.FirstAssigned("A"), Strings{});
  EXPECT_EQ(line.At("A").Links().Size(), 1) << "the plain link stays";
}

TEST_F(LinkRemovalTest, TheCandidateAfterARemovedOneIsNotExamined) {
  auto& first = line.Output("A");
  auto& second = line.Output("A", "second");
  auto& document = *line.plant.Document();
  auto candidates = ListOf(document.AddAssembly("outer"), document.AddAssembly("next"),
                           document.AddAssembly("last"), line.plant.Part("P1"));
  for (const char* const key : {"outer", "next", "last"}) {
    document.FindAssembly(key)->SetName(key);
    document.FindAssembly(key)->ForceChild(first.Identity());
  }
  document.FindAssembly("last")->ForceChild(second.Identity());
  ZefISPPActivity_var activity = line.At("A").Identity();
  line.Update().RemoveInvalidFirstAssign(activity, candidates);
  EXPECT_EQ(Names(candidates), (Strings{"next", "P1"}));
  EXPECT_EQ(line.Warnings().size(), 3u) << "once for each output that a candidate contains";
}

TEST_F(LinkRemovalTest, AnAssemblyIsWithdrawnFromTheTargetAloneWhenNobodyElseBelowHasIt) {
  line.Output("A");
  for (const char* const key : {"B", "C"}) line.Drop("MA-A", key);
  ZefISPPActivity_var target;
  Withdraw("MA-A", "A", target);
  EXPECT_FALSE(target) << "nothing follows A";
  QuietFlow("A", "B");
  Withdraw("MA-A", "A", target);
  EXPECT_TRUE(target == line.At("B").Identity());
  EXPECT_EQ(line.FirstAssigned("B"), Strings{});
  EXPECT_EQ(line.FirstAssigned("C"), Strings{"MA-A"}) << "C is not below B";
  EXPECT_EQ(line.Warnings(), Strings{});
}

}  // namespace
