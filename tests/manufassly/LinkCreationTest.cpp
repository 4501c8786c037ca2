#include "tests/manufassly/Line.h"

namespace {

using tests::ListOf;
using tests::Names;
using tests::Strings;
using Task = tests::Plant::Task;

class LinkCreationTest : public tests::LineFixture {
 protected:
  void Operation(const std::string& key, const std::string& station) {
    line.plant.Operation(key, Task::None, &line.At(station));
  }
  // What follows a station, as the update sees it; "-" for none.
  std::string Next(const std::string& station, const std::string& current = {}) {
    ZefISPPActivity_var activity = line.At(station).Identity();
    ZefISPPActivity_var from;
    if (!current.empty()) from = line.At(current).Identity();
    ZefISPPActivity_var next;
    line.Update().GetNextActivityToAssign(activity, next, from);
    return next ? next->GetLabel().Bytes() : "-";
  }
};

TEST_F(LinkCreationTest, AFlowHandsTheAssemblyOnAndLeavesThePartsWhereTheyAre) {
  line.Output("A");
  line.Output("B");
  line.Drop("P1", "A");
  line.Link("A", "B");
  EXPECT_EQ(line.Children("A"), Strings{"P1"});
  EXPECT_EQ(line.FirstAssigned("B"), Strings{"MA-A"});
  EXPECT_EQ(line.Children("B"), Strings{"MA-A"});
  EXPECT_EQ(line.Warnings(), Strings{});
  const auto links = line.At("B").LinksOf(line.Item("MA-A").Get());
  ASSERT_EQ(links.size(), 1u);
  EXPECT_TRUE(links[0]->OwnDetails().source == line.At("A").Outputs()[0]->Identity());
  EXPECT_EQ(links[0]->OwnDetails().fixed, 1);
  EXPECT_EQ(links[0]->OwnDetails().name, "");
}

TEST_F(LinkCreationTest, AFlowThatComesBetweenWithdrawsTheAssemblyFromTheActivityAfterTheNext) {
  line.Output("A");
  line.Link("B", "C");
  line.Drop("MA-A", "C");
  line.Link("A", "B");
  EXPECT_EQ(line.FirstAssigned("B"), Strings{"MA-A"});
  EXPECT_EQ(line.FirstAssigned("C"), Strings{}) << "C follows B, the next activity";
}

TEST_F(LinkCreationTest, AFlowBetweenOperationsFillsTheAssemblyOfTheirStation) {
  for (const char* const key : {"A1", "A2", "A3"}) Operation(key, "A");
  line.Drop("P1", "A1");
  line.Drop("P2", "A2");
  line.Link("A1", "A2");
  EXPECT_EQ(line.Children("A"), Strings{"no assembly"});
  auto& assembly = line.Output("A");
  assembly.DropChildren();
  line.Link("A2", "A3");
  EXPECT_EQ(line.Children("A"), (Strings{"P1", "P2"})) << "upstream first, then its own";
  assembly.DropChildren();
  line.Output("A", "second");
  line.Warnings();
  line.Link("A2", "A3");
  EXPECT_EQ(line.Children("A"), Strings{});
  EXPECT_EQ(line.Warnings(),
            Strings{"Product link refused: There is more than one product output on A\nParts were "
                    "filled into none of them. Leave only one product output."});
}

TEST_F(LinkCreationTest, AnOutputGetsTheInputsAndLosesWhatIsNone) {
  Operation("A1", "A");
  line.Drop("P1", "A");
  line.Drop("P2", "A1");
  auto& assembly = line.plant.Document()->AddAssembly("MA-A");
  assembly.ForceChild(line.Item("stranger"));
  assembly.ForceChild(line.Item("P2"));
  line.Output("A");
  EXPECT_EQ(line.Children("A"), (Strings{"P2", "P1"}));
}

TEST_F(LinkCreationTest, WithSeveralOutputsNothingIsFilledAndTheUserIsToldWhileInputsAreLeft) {
  line.Output("A");
  line.Drop("P1", "A");
  line.Output("A", "second");
  EXPECT_EQ(line.Warnings(), Strings{}) << "the only input is in the first assembly";
  line.At("A").Link(line.Item("P2"), 2);
  line.Output("A", "third");
  EXPECT_EQ(line.Children("A"), Strings{"P1"});
  EXPECT_EQ(line.Warnings().size(), 1u);
}

TEST_F(LinkCreationTest, ANewOutputIsLinkedOnceForEachListThatNamesIt) {
  line.Link("A", "B");
  line.Output("A");
  EXPECT_EQ(line.FirstAssigned("B"), (Strings{"MA-A", "MA-A"}));
  line.Drag("MA-A", "B");
  EXPECT_EQ(line.FirstAssigned("B"), Strings{});
}

TEST_F(LinkCreationTest, ADropFillsTheOneAssemblyOfTheStationAndHandsItOn) {
  Operation("A1", "A");
  line.Output("A");
  line.plant.Document()->AddFlow(line.At("A"), line.At("B"), true);
  line.Drop("P1", "A1");
  EXPECT_EQ(line.Children("A"), Strings{"P1"});
  EXPECT_EQ(line.FirstAssigned("B"), Strings{"MA-A"});
  line.Output("A", "second");
  line.Drag("MA-A", "B");
  line.Drop("P2", "A1");
  EXPECT_EQ(line.Children("A"), Strings{"P1"});
  EXPECT_EQ(line.FirstAssigned("B"), (Strings{"second", "second"})) << "not by the drop";
  EXPECT_EQ(line.Warnings().size(), 1u);
}

TEST_F(LinkCreationTest, WhatIsNoFirstAssignedInputIsNoDrop) {
  line.Output("A");
  ZefBaseUnknown_var ignored;
  line.At("A").AddItem(line.Item("P1"), ignored);
  line.Drop("P2", "Process");
  Operation("alone", "Process");
  line.Drop("P3", "alone");
  EXPECT_EQ(line.Children("A"), Strings{});
}

TEST_F(LinkCreationTest, AnAssemblyIsNotPutIntoWhatItContains) {
  line.Output("A");
  line.Output("B");
  line.Drop("MA-A", "B");
  line.Drop("MA-B", "A");
  EXPECT_EQ(line.Children("B"), Strings{"MA-A"});
  EXPECT_EQ(line.Children("A"), Strings{});
  EXPECT_EQ(line.Warnings(),
            Strings{"Product link refused: An assembly cannot become part of itself: MA-A\nIt is "
                    "already contained in MA-B"});
}

TEST_F(LinkCreationTest, TheNextActivityIsTheOneStationThatFollowsAtTheNearestLevel) {
  Operation("A1", "A");
  line.plant.Document()->AddActivity(line.plant.Root(),
                                     {.key = "L",
                                      .kind = embedded::ActivityData::Kind::Logical,
                                      .role = embedded::ActivityData::Role::Station});
  EXPECT_EQ(Next("A"), "-");
  line.Link("A", "L");
  line.Link("L", "B");
  EXPECT_EQ(Next("A"), "-") << "logical activities are not looked through";
  line.Link("A", "B");
  line.Link("A", "B");
  EXPECT_EQ(Next("A"), "B") << "parallel flows lead to one station";
  EXPECT_EQ(Next("A1"), "B") << "through the station it is in";
  EXPECT_EQ(Next("C", "A"), "B") << "through the activity that is given";
  EXPECT_EQ(line.Warnings(), Strings{});
}

TEST_F(LinkCreationTest, ABranchIsWarnedOfUnlessTheOutputsWereTaken) {
  line.Output("A");
  line.plant.Document()->AddFlow(line.At("A"), line.At("B"), true);
  line.plant.Document()->AddFlow(line.At("A"), line.At("C"), true);
  const std::string warning =
      "Product link refused: Several activities could take over the product output of A\nNone was "
      "chosen. Assign the product to one of them, or leave only one of the flows.";
  EXPECT_EQ(Next("A"), "-");
  EXPECT_EQ(line.Warnings(), Strings{warning});
  line.Drop("MA-A", "C");
  line.Warnings();
  EXPECT_EQ(Next("A"), "-");
  EXPECT_EQ(line.Warnings(), Strings{});
}

TEST_F(LinkCreationTest, AssigningLeavesInTheListWhatWasLinked) {
  line.Drop("P1", "A");
  auto products = ListOf(*line.plant.Document()->FindProduct("P1"), line.plant.Weld("SW-1"),
                         line.plant.Part("P2"), nullptr);
  ZefISPPActivity_var activity = line.At("A").Identity();
  line.Update().AssignProductsAsFirstAssign(activity, products);
  EXPECT_EQ(Names(products), (Strings{"SW-1", "P2", "null"}));
  EXPECT_EQ(line.FirstAssigned("A"), (Strings{"P1", "SW-1", "P2"}));
  auto again = ListOf(line.plant.Part("P3"));
  line.At("A").AnswerInterface(IID_ZefISPPFlowMgt, false);
  line.Update().AssignProductsAsFirstAssign(activity, again);
  EXPECT_EQ(Names(again), Strings{"P3"});
  EXPECT_EQ(line.FirstAssigned("A").size(), 3u);
}

}  // namespace
