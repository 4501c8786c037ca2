#include <functional>
#include <gtest/gtest.h>

#include "embedded/Error.h"
#include "embedded/model/Document.h"
#include "host/document/Document.h"

namespace {

using namespace embedded;
using Kind = Document::Kind;
using Role = ActivityData::Role;
using Task = ActivityData::Task;

class ProcessTest : public testing::Test {
 protected:
  Activity& Add(const char* key, Activity* parent = nullptr, Role role = Role::Operation,
                Task task = Task::None) {
    return document->AddActivity(parent ? *parent : *document->Root(),
                                 {.key = key, .role = role, .task = task});
  }
  SpotWeld& Weld(const char* key) {
    SpotWeldData data;
    data.key = key;
    return document->AddSpotWeld(data);
  }

  Owned<Document> document = MakeOwned<Document>(Kind::Process);
};

std::vector<std::string> Keys(const ZefListValZefBaseUnknown_var& list) {
  std::vector<std::string> keys;
  for (int i = 1; i <= list.Size(); ++i) keys.push_back(ObjectAs<Aliased>(list[i].Get())->Key());
  return keys;
}

using Strings = std::vector<std::string>;

TEST_F(ProcessTest, TheRootContainerListsTheRootFirstThenEveryActivityThenTheRootsLinks) {
  Activity& station = Add("S1", nullptr, Role::Station);
  Add("OP1", &station);
  Add("S2");
  ZefBaseUnknown_var ignored;
  document->Root()->AddItem(Weld("W1").Identity(), ignored);
  station.AddItem(Weld("W2").Identity(), ignored);
  ZefIContainer_var container;
  document->Root()->GetFeatContainer(container);
  _SEQUENCE_ZefBaseUnknown_ptr members;
  container->ListMembersHere("ZefISPPActivity", members);
  ZefListValZefBaseUnknown_var activities;
  for (int i = 0; i < members.length(); ++i) activities.Append(Adopt(members[i]));
  EXPECT_EQ(Keys(activities), (Strings{"Process", "S1", "OP1", "S2"}));

  _SEQUENCE_ZefBaseUnknown_ptr links;
  container->ListMembersHere("ZefISPPActivitySpecification", links);
  ASSERT_EQ(links.length(), 1);
  ZefBaseUnknown_var item;
  ZefISPPActivitySpecification_var(Adopt(links[0]))->GetSpecifiedItem(item);
  EXPECT_EQ(ObjectAs<Aliased>(item.Get())->Key(), "W1");
}

TEST_F(ProcessTest, LinksAreKeptAsOftenAsTheyAreMadeAndRemovedBySelector) {
  Activity& op = Add("OP1");
  SpotWeld& weld = Weld("W1");
  const ZefBaseUnknown_var item = weld.Identity();
  ZefBaseUnknown_var ignored;
  op.AddItem(item, ignored);
  op.AddItem(item, ignored);
  ZefBaseUnknown_var link;
  op.AddItemLink(link.Put(), item, nullptr, "", 1, 2);
  const auto count = [&](int selector) {
    return std::unique_ptr<ZefListValZefBaseUnknown_var>(op.GetItems("Item", selector))->Size();
  };
  EXPECT_EQ(count(0), 3);
  EXPECT_EQ(count(2), 1);
  EXPECT_EQ(op.RemoveItem(item, 2), S_OK);
  EXPECT_EQ(op.RemoveItem(item, 2), E_FAIL);
  EXPECT_EQ(count(0), 2);
  ZefListValZefBaseUnknown_var pointing;
  Adopt(weld.GetPointingHolder())->ListPointingObjects(pointing);
  EXPECT_EQ(pointing.Size(), 2);
  EXPECT_EQ(op.RemoveItem(item, -1), S_OK);
  EXPECT_EQ(count(0), 0);
  EXPECT_EQ(weld.GetPointingHolder(), nullptr);
  EXPECT_EQ(op.GetItems("Resource", 0), nullptr);
}

TEST_F(ProcessTest, RemovingManyLinksInAnyOrderKeepsTheOrderOfTheRest) {
  Activity& op = Add("OP1");
  Strings left;
  ZefBaseUnknown_var ignored;
  for (int i = 0; i < 200; ++i) op.AddItem(Weld(std::to_string(i).c_str()).Identity(), ignored);
  for (int i = 0; i < 200; ++i) {
    if ((i * 7919) % 10 < 7) {
      op.RemoveItem(document->FindFeature(std::to_string(i)), -1);
    } else {
      left.push_back(std::to_string(i));
    }
  }
  const std::unique_ptr<ZefListValZefBaseUnknown_var> items(op.GetItems("Item", 0));
  EXPECT_EQ(Keys(*items), left);
}

TEST_F(ProcessTest, NeighboursComeOnceInTheOrderOfTheirFlowsAndByKind) {
  Activity& a = Add("A");
  Activity& b = Add("B");
  Activity& logical =
      document->AddActivity(*document->Root(), {.key = "L", .kind = ActivityData::Kind::Logical});
  document->AddFlow(a, logical);
  document->AddFlow(a, b);
  document->AddFlow(a, b);
  EXPECT_EQ(Keys(a.GetNextActivities("Activity")), (Strings{"L", "B"}));
  EXPECT_EQ(Keys(a.GetNextActivities("PhysicalActivity")), Strings{"B"});
  EXPECT_EQ(Keys(a.GetNextActivities("LogicalActivity")), Strings{"L"});
  EXPECT_EQ(Keys(b.GetPreviousActivities("Activity")), Strings{"A"});
  document->RemoveFlow(*document->Flows()[1]);
  EXPECT_EQ(Keys(a.GetNextActivities("PhysicalActivity")), Strings{"B"});
}

TEST_F(ProcessTest, AStationGathersTheInputsOfItsOperationsButNotOfStationsInsideNorDeeper) {
  Activity& station = Add("S", nullptr, Role::Station);
  Activity& op = Add("OP", &station);
  Activity& inner = Add("INNER", &station, Role::Station);
  Activity& deeper = Add("DEEP", &op);
  Product& part = document->AddProduct(document->RootProduct(), {.key = "P1"});
  Product& other = document->AddProduct(document->RootProduct(), {.key = "P2"});
  SpotWeld& weld = Weld("W1");
  for (Activity* const activity : {&station, &op}) activity->Link(part.Identity(), 2);
  op.Link(weld.Identity(), 2);
  op.Link(other.Identity(), 1);
  inner.Link(other.Identity(), 2);
  deeper.Link(other.Identity(), 2);
  ZefListValZefBaseUnknown_var inputs;
  station.GetInputItems(inputs);
  EXPECT_EQ(Keys(inputs), Strings{"P1"});
  ZefListValZefBaseUnknown_var first;
  station.GetFirstAssignedInputs(first);
  EXPECT_EQ(Keys(first), (Strings{"P1", "W1"}));
}

TEST_F(ProcessTest, CallbacksWaitWhileBlockedAndRunOnceAfterwards) {
  Activity& op = Add("OP1");
  int runs = 0;
  op.OnItemChange([&](Activity&) { ++runs; });
  ZefBaseUnknown_var ignored;
  op.AddItem(Weld("W1").Identity(), ignored);
  EXPECT_EQ(runs, 1);
  op.SetCallbacksBlocked(1);
  op.SetCallbacksBlocked(1);
  op.AddItem(Weld("W2").Identity(), ignored);
  op.AddItem(Weld("W3").Identity(), ignored);
  op.SetCallbacksBlocked(0);
  EXPECT_EQ(runs, 1);
  op.ProcessPendingUpdates();
  op.ProcessPendingUpdates();
  EXPECT_EQ(runs, 2);
}

TEST_F(ProcessTest, CycleTimesFollowTheAssignedFasteners) {
  Activity& welding = Add("OP1", nullptr, Role::Operation, Task::Welding);
  Activity& sealing = Add("OP2", nullptr, Role::Operation, Task::CurveFastening);
  CurveFastenerData seam;
  seam.key = "SEAM";
  seam.points = {{0, 0, 0}, {30, 40, 0}, {30, 40, 100}};
  ZefBaseUnknown_var ignored;
  welding.AddItem(Weld("W1").Identity(), ignored);
  welding.AddItem(Weld("W2").Identity(), ignored);
  sealing.AddItem(document->AddCurveFastener(seam).Identity(), ignored);
  TuvIBIWActivityWelding_var(welding.Identity())->UpdateCycleTime();
  TuvIBIWActivityCurveFastening_var(sealing.Identity())->UpdateCycleTime();
  EXPECT_DOUBLE_EQ(welding.CycleTime(), 12.0 + 2 * 3.0);
  EXPECT_DOUBLE_EQ(sealing.CycleTime(), 150.0 / 15.0);
  EXPECT_EQ(welding.IsValidFastener(document->FindFeature("SEAM")), 0);
  EXPECT_EQ(sealing.IsValidFastener(document->FindFeature("SEAM")), 1);
  EXPECT_EQ(sealing.IsValidFastener(document->FindFeature("W1")), 0);
  EXPECT_FALSE(TuvIBIWActivityWelding_var(sealing.Identity()));
}

TEST_F(ProcessTest, WhatWouldBreakTheModelIsRefused) {
  Activity& op = Add("OP1");
  EXPECT_THROW(Add("OP1"), InputError);
  EXPECT_THROW(document->RemoveActivity(*document->Root()), InputError);
  const Owned<Document> other = MakeOwned<Document>(Kind::Process);
  EXPECT_THROW(document->AddFlow(op, *other->Root()), InputError);
  Product& part = document->AddProduct(document->RootProduct(), {.key = "P"});
  Product& below = document->AddProduct(part, {.key = "Q"});
  EXPECT_THROW(document->AddProduct(below, {.key = "I"}, &part), InputError);
  EXPECT_EQ(document->Activities().size(), 2u);
  EXPECT_EQ(document->Products().size(), 3u);
  EXPECT_TRUE(document->Flows().empty());
}

TEST_F(ProcessTest, AssembliesRefuseThemselvesAndWhatContainsThem) {
  MfgAssembly& a = document->AddAssembly();
  MfgAssembly& b = document->AddAssembly();
  MfgAssembly& c = document->AddAssembly();
  EXPECT_EQ(a.AddChild(nullptr), E_FAIL);
  EXPECT_EQ(a.AddChild(a.Identity()), E_FAIL);
  EXPECT_EQ(a.AddChild(b.Identity()), S_OK);
  EXPECT_EQ(a.AddChild(b.Identity()), S_OK);
  EXPECT_EQ(b.AddChild(c.Identity()), S_OK);
  EXPECT_EQ(c.AddChild(a.Identity()), E_FAIL);
  EXPECT_EQ(a.GetChildrenCount(), 1);
  EXPECT_EQ(a.SetName("X$Y"), E_FAIL);
  const std::unique_ptr<ZefListValZefBaseUnknown_var> all(a.GetAllChildren("ZefIProduct"));
  EXPECT_EQ(Keys(*all), (Strings{"MA-2", "MA-3"}));
}

TEST_F(ProcessTest, InstancesShowTheChildrenOfTheirReference) {
  Product& door = document->AddProduct(document->RootProduct(), {.key = "DOOR"});
  document->AddProduct(door, {.key = "PANEL"});
  Product& left = document->AddProduct(document->RootProduct(), {.key = "LEFT"}, &door);
  EXPECT_EQ(left.GetChildrenCount(), 1);
  ZefIProduct_var reference;
  left.GetReferenceProduct(reference);
  EXPECT_EQ(reference, ZefIProduct_var(door.Identity()));
  EXPECT_THROW(document->AddProduct(left, {.key = "X"}), InputError);
  const std::unique_ptr<ZefListValZefBaseUnknown_var> all(
      document->RootProduct().GetAllChildren("ZefIProduct"));
  EXPECT_EQ(Keys(*all), (Strings{"DOOR", "PANEL", "LEFT", "PANEL"}));
}

TEST_F(ProcessTest, ARemovedActivityKeepsItsDispatcherWhileTheProcessLives) {
  Activity& station = Add("S1", nullptr, Role::Station);
  Add("OP1", &station);
  const Owned<Activity> kept(&station);
  document->RemoveActivity(station);
  EXPECT_EQ(document->Activities().size(), 1u);
  EXPECT_EQ(document->FindActivity("OP1"), nullptr);
  EXPECT_EQ(kept->GetDispatcher(), document->Dispatcher());
  document = {};
  EXPECT_EQ(kept->GetDispatcher(), nullptr);
  ZefISPPAbstractActivity_var parent;
  EXPECT_EQ(kept->GetParentActivity(parent), S_OK);
  EXPECT_FALSE(parent);
}

TEST_F(ProcessTest, OperationsFailWithoutMemoryAndLeaveTheActivityAsItWas) {
  Activity& op = Add("OP");
  const ZefBaseUnknown_var part = Weld("SW-1").Identity();
  ZefBaseUnknown_var made;
  ZefISPPProductIO_var output;
  ZefIContainer_var container;
  const std::function<HRESULT()> operations[] = {
      [&] { return op.AddItem(part, made); },
      [&] { return op.AddItemLink(made.Put(), ZefISPPItem_var(part), nullptr, "", 1, 2); },
      [&] { return op.AddProductOutput(output.Put(), nullptr); },
      [&] { return op.GetFeatContainer(container); }};
  for (const auto& operation : operations) {
    FailAllocation(1);
    EXPECT_EQ(operation(), E_FAIL);
    FailAllocation(0);
    EXPECT_TRUE(!made && !output && !container);
  }
  EXPECT_EQ(op.Links().Size(), 0);
  EXPECT_TRUE(op.Outputs().empty());
  for (const auto& operation : operations) EXPECT_EQ(operation(), S_OK);
}

}  // namespace
