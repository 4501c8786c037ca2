#include <random>
#include <set>

#include "tests/manufassly/Line.h"

namespace {

using tests::ListOf;
using tests::Names;
using tests::Strings;
using Task = tests::Plant::Task;

// Each activity on the way adds the part named after it.
void WalkEveryPath(const embedded::Activity& activity, std::set<const embedded::Activity*> path,
                   Strings& oItems) {
  if (!path.insert(&activity).second) return;
  std::set<const embedded::Activity*> met;
  for (const embedded::Activity* const previous : activity.Previous()) {
    if (!met.insert(previous).second) continue;
    for (const char c : previous->Key()) oItems.push_back(std::string("P") + c);
    WalkEveryPath(*previous, path, oItems);
  }
}

class RelationsTest : public tests::LineFixture {
 protected:
  embedded::MfgAssembly& Assembly(const std::string& name) {
    return line.plant.Document()->AddAssembly(name);
  }
  Strings Below(embedded::MfgAssembly& assembly, ZefListValZefBaseUnknown_var list = {}) {
    TuvIMfgAssembly_var top = assembly.Identity();
    line.Update().GetAllChildParts(top, list);
    return Names(list);
  }
  int IsBelow(embedded::MfgAssembly& parent, embedded::MfgAssembly& candidate) {
    TuvIMfgAssembly_var above = parent.Identity();
    TuvIMfgAssembly_var below = candidate.Identity();
    return line.Update().IsMAaChild(above, below);
  }
  Strings Upstream(const std::string& key) {
    ZefISPPActivity_var activity = line.At(key).Identity();
    ZefListValZefBaseUnknown_var items;
    line.Update().CollectFirstAssignPartsFromPreviousActs(activity, items);
    return Names(items);
  }
};

TEST_F(RelationsTest, AssembliesBelowAreListedDepthFirstAndEachIsWalkedOnce) {
  auto& top = Assembly("top");
  auto& left = Assembly("left");
  auto& right = Assembly("right");
  auto& deep = Assembly("deep");
  left.ForceChild(deep.Identity());
  left.ForceChild(line.Item("P1"));
  right.ForceChild(left.Identity());
  for (auto* const child : {&left, &right}) top.ForceChild(child->Identity());
  EXPECT_EQ(Below(top), (Strings{"left", "deep", "right", "left"}));
  EXPECT_EQ(Below(top, ListOf(left)), (Strings{"left", "left", "right", "left"}));
  EXPECT_EQ(Below(top, ListOf(top)), Strings{"top"});
  EXPECT_EQ(IsBelow(top, deep), 1);
  EXPECT_EQ(IsBelow(deep, top), 0);
  EXPECT_EQ(IsBelow(top, top), 0);
}

TEST_F(RelationsTest, AnAssemblyThatListsItselfIsNotWalkedAndARingEnds) {
  auto& self = Assembly("self");
  self.ForceChild(Assembly("child").Identity());
  self.ForceChild(self.Identity());
  EXPECT_EQ(Below(self), Strings{});
  EXPECT_EQ(IsBelow(self, self), 0);
  auto& a = Assembly("a");
  auto& b = Assembly("b");
  a.ForceChild(b.Identity());
  b.ForceChild(a.Identity());
  EXPECT_EQ(Below(a), (Strings{"b", "a", "b"}));
  EXPECT_EQ(IsBelow(a, a), 1);
}

TEST_F(RelationsTest, NullsAreBelowNothing) {
  TuvIMfgAssembly_var none;
  TuvIMfgAssembly_var assembly = Assembly("a").Identity();
  EXPECT_EQ(line.Update().IsMAaChild(none, assembly), 0);
  EXPECT_EQ(line.Update().IsMAaChild(assembly, none), 0);
  ZefListValZefBaseUnknown_var list;
  line.Update().GetAllChildParts(none, list);
  line.Update().GetRelatedActivities(none, list);
  ZefISPPActivity_var nobody;
  line.Update().GetFirstAssignedItems(nobody, list);
  line.Update().CollectFirstAssignPartsFromPreviousActs(nobody, list);
  line.Update().GetParents(nobody, list);
  EXPECT_EQ(list.Size(), 0);
}

TEST_F(RelationsTest, ItemsFromUpstreamComeOncePerPathAndRingsEnd) {
  for (const char* const key : {"D", "E"}) line.plant.Station(key);
  for (const char* const key : {"A", "B", "C"}) {
    line.At(key).Link(line.Item(std::string("P") + key), 2);
  }
  for (const auto& [from, to] : {std::pair{"A", "B"}, {"A", "C"}, {"B", "D"}, {"C", "D"}}) {
    line.plant.Document()->AddFlow(line.At(from), line.At(to), true);
  }
  EXPECT_EQ(Upstream("D"), (Strings{"PB", "PA", "PC", "PA"}));
  EXPECT_EQ(Upstream("A"), Strings{});
  line.plant.Document()->AddFlow(line.At("D"), line.At("A"), true);
  EXPECT_EQ(Upstream("A"), (Strings{"PB", "PA", "PC", "PA"}));
}

TEST_F(RelationsTest, PathsThatShareActivitiesAddWhatEachOfThemWouldAlone) {
  const Strings keys{"A", "B", "C", "D", "E", "F"};
  for (const char* const key : {"D", "E", "F"}) line.plant.Station(key);
  for (const std::string& key : keys) {
    line.At(key).Link(line.Item("P" + key), 2);
  }
  std::mt19937 random{7};
  for (int flow = 0; flow < 14; ++flow) {
    line.plant.Document()->AddFlow(line.At(keys[random() % 6]), line.At(keys[random() % 6]), true);
    for (const std::string& key : keys) {
      Strings expected;
      WalkEveryPath(line.At(key), {}, expected);
      EXPECT_EQ(Upstream(key), expected) << key << " after flow " << flow;
    }
  }
}

TEST_F(RelationsTest, RelatedAreTheActivitiesThatHaveTheAssemblyFirstAssigned) {
  auto& assembly = Assembly("a");
  for (const int selector : {2, 2, 1}) line.At("A").Link(assembly.Identity(), selector);
  line.At("B").Link(assembly.Identity(), 1);
  line.At("C").Link(assembly.Identity(), 2);
  ZefListValZefBaseUnknown_var activities;
  TuvIMfgAssembly_var handle = assembly.Identity();
  line.Update().GetRelatedActivities(handle, activities);
  EXPECT_EQ(Names(activities), (Strings{"A", "C"}));
  line.At("A").AnswerInterface(IID_ZefISPPItemMgt, false);
  activities.RemoveAll();
  line.Update().GetRelatedActivities(handle, activities);
  EXPECT_EQ(Names(activities), Strings{"C"});
}

TEST_F(RelationsTest, FilteringKeepsTheRootAndWhatIsNestedInIt) {
  auto& operation = line.plant.Operation("A1", Task::None, &line.At("A"));
  auto& step = line.plant.Operation("A11", Task::None, &operation);
  ZefISPPActivity_var root = line.At("A").Identity();
  const auto filtered = [&](int position) {
    auto list =
        ListOf(line.At("B"), nullptr, step, line.At("A"), *line.plant.Document(), operation);
    line.Update().FilterActsBasedOnParent(root, list, position);
    return Names(list);
  };
  EXPECT_EQ(filtered(1), (Strings{"A11", "A", "A1"}));
  EXPECT_EQ(filtered(5), (Strings{"B", "null", "A11", "A", "A1"}));
  EXPECT_EQ(filtered(7).size(), 6u);
  ZefListValZefBaseUnknown_var parents;
  ZefISPPActivity_var below = step.Identity();
  line.Update().GetParents(below, parents);
  EXPECT_EQ(Names(parents), (Strings{"A1", "A", "Process"}));
}

}  // namespace
