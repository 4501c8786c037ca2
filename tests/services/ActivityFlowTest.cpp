#include <algorithm>

#include "services/TuvBIWServices.h"
#include "tests/services/Sketch.h"

namespace {

using namespace tests;
using embedded::Activity;
using Services = TuvBIWServices;
using List = ZefListValZefBaseUnknown_var;

class ActivityFlowTest : public PlantTest {
 protected:
  Strings Previous(ZefISPPActivity* activity) {
    List list;
    List* held = &list;
    Services::GetPreviousActivities(activity, held);
    return Names(list);
  }
};

Strings HierarchyLines(int levels) {
  Strings lines = Lines({"GetActivityHierarchy>"});
  lines.insert(lines.end(), static_cast<std::size_t>(levels), "LOOP");
  return Joined({lines, Lines({"<GetActivityHierarchy"})});
}

TEST_F(ActivityFlowTest, TheHierarchyReadsFromBelowTheRootDownToTheActivity) {
  auto& station = plant.Station("ST10");
  auto& op = plant.Operation("OP10");
  auto& task = plant.Document()->AddActivity(op, {.key = "TASK", .label = "Schweißen"});
  auto& gone = plant.Operation("GONE");
  const embedded::Owned<Activity> kept(&gone);
  plant.Document()->RemoveActivity(gone);
  const struct {
    ZefISPPActivity* activity;
    const char* text;
    int levels;
  } cases[] = {
      {nullptr, nullptr, 0}, {&plant.Root(), nullptr, 0},         {&gone, nullptr, 0},
      {&station, "ST10", 1}, {&task, "ST10->OP10->Schweißen", 3},
  };
  for (const auto& [activity, expected, levels] : cases) {
    ZefUnicodeString text("as it was");
    EXPECT_EQ(Services::GetActivityHierarchy(activity, text), expected ? S_OK : E_FAIL);
    EXPECT_EQ(text, expected ? expected : "as it was");
    EXPECT_EQ(trace.Take(), HierarchyLines(levels));
  }
  // An activity may say where it stands without an interface for it; a tree may have no root.
  ZefUnicodeString text;
  task.AnswerInterface(IID_ZefISPPAbstractActivity, false);
  plant.Root().AnswerInterface(IID_ZefISPPActivityRoot, false);
  EXPECT_EQ(Services::GetActivityHierarchy(&task, text), S_OK);
  EXPECT_EQ(text, "Process->ST10->OP10->Schweißen");
  op.AnswerInterface(IID_ZefISPPActivity, false);
  EXPECT_EQ(Services::GetActivityHierarchy(&task, text), S_OK);
  EXPECT_EQ(text, "Process->ST10->OP10->Schweißen") << "the nearest parent need be no activity";
  station.AnswerInterface(IID_ZefISPPActivity, false);
  EXPECT_EQ(Services::GetActivityHierarchy(&task, text), S_OK);
  EXPECT_EQ(text, "OP10->Schweißen");
}

TEST_F(ActivityFlowTest, ThePredecessorIsTheFirstPreviousActivityAndAllAreAppended) {
  auto& op = plant.Operation("OP10");
  auto& first = plant.Operation("OP20");
  auto& second = plant.Operation("OP30");
  for (auto* const from : {&first, &second, &first}) plant.Flow(*from, op);
  List list = ListOf(op, nullptr);
  List* held = &list;
  List* none = nullptr;
  EXPECT_EQ(Services::GetPredecessorActivity(op.Identity(), held), first.Identity());
  EXPECT_EQ(Names(list), (Strings{"OP10", "null", "OP20", "OP30"}));
  EXPECT_EQ(Services::GetPredecessorActivity(op.Identity(), none), first.Identity());
  first.AnswerInterface(IID_ZefISPPActivity, false);
  EXPECT_FALSE(Services::GetPredecessorActivity(op.Identity(), held));
  EXPECT_EQ(list.Size(), 6) << "what is no activity is listed all the same";
  EXPECT_FALSE(Services::GetPredecessorActivity(second.Identity(), held));
  EXPECT_FALSE(Services::GetPredecessorActivity(nullptr, held));
  op.AnswerInterface(IID_ZefISPPFlowMgt, false);
  EXPECT_FALSE(Services::GetPredecessorActivity(op.Identity(), held));
  EXPECT_EQ(list.Size(), 6);
  EXPECT_EQ(none, nullptr);
  Strings lines;
  for (int i = 0; i < 6; ++i) Bracket(lines, "GetPredecessorActivity");
  EXPECT_EQ(trace.Lines(), lines);
}

TEST_F(ActivityFlowTest, ThePredecessorsReplaceTheListUnlessThereIsNoFlow) {
  auto& op = plant.Operation("OP10");
  auto& first = plant.Operation("OP20");
  plant.Flow(first, op);
  List list = ListOf(op, op);
  EXPECT_EQ(Services::GetPredecessors(nullptr, list), E_FAIL);
  EXPECT_EQ(Names(list), (Strings{"OP10", "OP10"}));
  EXPECT_EQ(Services::GetPredecessors(op.Identity(), list), S_OK);
  EXPECT_EQ(Names(list), Strings{"OP20"});
  op.AnswerInterface(IID_ZefISPPFlowMgt, false);
  EXPECT_EQ(Services::GetPredecessors(op.Identity(), list), S_OK);
  EXPECT_EQ(Names(list), Strings{"OP20"});
  EXPECT_EQ(Services::GetPredecessors(first.Identity(), list), S_OK);
  EXPECT_EQ(Names(list), Strings());
  Strings lines;
  for (int i = 0; i < 4; ++i) Bracket(lines, "GetPredecessors");
  EXPECT_EQ(trace.Lines(), lines);
}

// The services as plain recursion over a sketch, with the lines that they write.
class Reference {
 public:
  explicit Reference(const Sketch& sketch) : sketch_(sketch) {}

  std::string Hierarchy(int step) {
    lines = Lines({"GetActivityHierarchy>"});
    std::string text;
    int above = step < 0 ? -1 : sketch_.At(step).parent;
    if (above >= 0) text = sketch_.Key(step);
    for (; above >= 0; above = sketch_.AsActivity(sketch_.At(above).parent)) {
      lines.push_back("LOOP");
      if (above == 0) break;
      text = sketch_.Key(above) + "->" + text;
    }
    lines.push_back("TuvBIWServices::GetActivityHierarchy <-- OUT");
    return text;
  }

  void AllPredecessors(int step, std::vector<int>& found) {
    const Bracket bracket(lines, "GetAllPredecessors");
    if (step < 0) return;
    std::vector<int> open{step};
    while (!open.empty()) {
      const int next = sketch_.AsActivity(open.back());
      open.pop_back();
      Bracket(lines, "GetPredecessors");
      if (next < 0 || !sketch_.At(next).hasFlow) continue;
      for (const int previous : sketch_.At(next).previous) {
        if (std::count(found.begin(), found.end(), previous) != 0) continue;
        found.push_back(previous);
        open.push_back(previous);
      }
    }
  }

  void Descendants(int step, std::vector<int>& found) {
    const Bracket bracket(lines, "GetDescendants");
    if (step < 0 || !sketch_.At(step).hasChildren) return;
    for (const int child : sketch_.At(step).children) {
      if (sketch_.AsActivity(child) < 0) continue;
      found.push_back(child);
      Descendants(child, found);
    }
  }

  void Previous(int step, std::vector<int>& found) {
    const Bracket bracket(lines, "GetPreviousActivities");
    if (step < 0) return;
    std::vector<int> predecessors, below;
    AllPredecessors(step, predecessors);
    for (const int predecessor : predecessors) {
      if (sketch_.AsActivity(predecessor) < 0) continue;
      found.push_back(predecessor);
      Descendants(predecessor, below);
    }
    found.insert(found.end(), below.begin(), below.end());
    const int parent = sketch_.At(step).parent;
    if (parent < 0) return;
    found.push_back(parent);
    Previous(sketch_.AsActivity(parent), found);
  }

  Strings NamesOf(const std::vector<int>& steps) const {
    Strings names;
    for (const int step : steps) names.push_back(sketch_.Key(step));
    return names;
  }

  Strings lines;

 private:
  const Sketch& sketch_;
};

void ExpectAsReference(const Sketch& sketch, TraceRecorder& trace) {
  const ReferenceSnapshot before = sketch.Snapshot();
  for (int i = 0; i < sketch.Size(); ++i) {
    SCOPED_TRACE(sketch.Key(i));
    const ZefISPPActivity_var activity = sketch.HandleOf(i);
    const int step = sketch.AsActivity(i);
    Reference reference(sketch);
    ZefUnicodeString text;
    const std::string expected = reference.Hierarchy(step);
    EXPECT_EQ(Services::GetActivityHierarchy(activity, text), expected.empty() ? E_FAIL : S_OK);
    EXPECT_EQ(text.Bytes(), expected);

    // What the list holds before is neither added nor looked behind.
    std::vector<int> all{7}, below{7}, previous{7};
    List allList = ListOf(*sketch.At(7).activity), belowList = allList, previousList = allList;
    List* previousHeld = &previousList;
    reference.AllPredecessors(step, all);
    EXPECT_EQ(Services::GetAllPredecessors(activity, allList), step < 0 ? E_FAIL : S_OK);
    EXPECT_EQ(Names(allList), reference.NamesOf(all));
    reference.Descendants(step, below);
    EXPECT_EQ(Services::GetDescendants(activity, belowList), step < 0 ? E_FAIL : S_OK);
    EXPECT_EQ(Names(belowList), reference.NamesOf(below));
    reference.Previous(step, previous);
    Services::GetPreviousActivities(activity, previousHeld);
    EXPECT_EQ(Names(previousList), reference.NamesOf(previous));
    EXPECT_EQ(trace.Take(), reference.lines);
  }
  EXPECT_EQ(before.Differences(), "");
}

TEST_F(ActivityFlowTest, EveryServiceFindsWhatPlainRecursionFindsInRandomProcesses) {
  for (unsigned seed = 1; seed <= 40 && !HasFailure(); ++seed) {
    SCOPED_TRACE(seed);
    Plant drawn;
    ExpectAsReference(Sketch(drawn, seed, seed % 3 == 0), trace);
  }
}

TEST_F(ActivityFlowTest, ARingListsTheActivityItselfOnceAndEnds) {
  auto& a = plant.Operation("A");
  auto& b = plant.Operation("B");
  plant.Flow(a, b);
  plant.Flow(b, a);
  List list;
  EXPECT_EQ(Services::GetAllPredecessors(a.Identity(), list), S_OK);
  EXPECT_EQ(Names(list), (Strings{"B", "A"}));
  EXPECT_EQ(Previous(&a), (Strings{"B", "A", "Process"}));
}

TEST_F(ActivityFlowTest, NullNeighboursAreListedOnceAsPredecessorsAndEndTheWalkThere) {
  const auto foreign = Make<ForeignActivity>();
  auto& op = plant.Operation("OP10");
  foreign->previous = ListOf(nullptr, *foreign, plant.Part("P1"), nullptr);
  foreign->children = ListOf(nullptr, *foreign, op, nullptr, *foreign);
  List list;
  EXPECT_EQ(Services::GetAllPredecessors(foreign, list), S_OK);
  EXPECT_EQ(Names(list), (Strings{"null", "?", "P1"}));
  list.RemoveAll();
  trace.Take();
  EXPECT_EQ(Services::GetDescendants(foreign, list), S_OK);
  EXPECT_EQ(Names(list), (Strings{"?", "OP10", "?"})) << "it stands below itself";
  Strings lines;
  {
    const Bracket outer(lines, "GetDescendants");
    Bracket(lines, "GetDescendants");
  }
  EXPECT_EQ(trace.Take(), lines);
  EXPECT_EQ(Previous(foreign), (Strings{"?", "?", "OP10", "?"}));
  List* none = nullptr;
  trace.Take();
  Services::GetPreviousActivities(foreign, none);
  EXPECT_EQ(none, nullptr);
  lines.clear();
  Bracket(lines, "GetPreviousActivities");
  EXPECT_EQ(trace.Lines(), lines);
  foreign->previous.RemoveAll();
  foreign->children.RemoveAll();
}

TEST_F(ActivityFlowTest, DeepChainsAndTreesAreWalkedToTheirEnd) {
  Activity& last = LayOutDeep(plant, true);
  List predecessors, descendants;
  EXPECT_EQ(Services::GetAllPredecessors(last.Identity(), predecessors), S_OK);
  EXPECT_EQ(predecessors.Size(), kDepth);
  EXPECT_EQ(predecessors[kDepth], plant.Root().Identity());
  EXPECT_EQ(Services::GetDescendants(plant.Root().Identity(), descendants), S_OK);
  EXPECT_EQ(descendants.Size(), kDepth);
  EXPECT_EQ(descendants[kDepth], last.Identity());
  ZefUnicodeString text;
  EXPECT_EQ(Services::GetActivityHierarchy(&last, text), S_OK);
  EXPECT_GT(text.GetLengthInChar(), kDepth);
}

}  // namespace
