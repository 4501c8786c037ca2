#include <algorithm>

#include "embedded/model/Owned.h"
#include "host/component/ComponentObject.h"
#include "host/process/ZefISPPActivity.h"
#include "host/process/ZefISPPChildManagement.h"
#include "services/TuvBIWServices.h"
#include "tests/services/Sketch.h"

namespace {

using namespace tests;
using Services = TuvBIWServices;
using List = ZefListValZefBaseUnknown_var;

using ActivityFlowTest = PlantTest;

TEST_F(ActivityFlowTest, TheHierarchyReadsFromBelowTheRootDownToTheActivity) {
  auto& station = plant.Station("ST10");
  auto& op = plant.Operation("OP10");
  auto& task = plant.Document()->AddActivity(op, {.key = "TASK", .label = "Schweißen"});
  const auto hierarchy = [&](ZefISPPActivity* activity) {
    ZefUnicodeString text("as it was");
    const HRESULT result = Services::GetActivityHierarchy(activity, text);
    EXPECT_EQ(result, text == "as it was" ? E_FAIL : S_OK);
    return text.Bytes();
  };
  EXPECT_EQ(hierarchy(nullptr), "as it was");
  EXPECT_EQ(hierarchy(&plant.Root()), "as it was");
  EXPECT_EQ(hierarchy(&station), "ST10");
  trace.Take();
  EXPECT_EQ(hierarchy(&task), "ST10->OP10->Schweißen");
  EXPECT_EQ(trace.Take(),
            Lines({"GetActivityHierarchy>", "=LOOP", "=LOOP", "=LOOP", "<GetActivityHierarchy"}));
  // An activity may know its place without an interface for it, and a tree may have no root.
  task.AnswerInterface(IID_ZefISPPAbstractActivity, false);
  plant.Root().AnswerInterface(IID_ZefISPPActivityRoot, false);
  EXPECT_EQ(hierarchy(&task), "Process->ST10->OP10->Schweißen");
  op.AnswerInterface(IID_ZefISPPActivity, false);
  EXPECT_EQ(hierarchy(&task), "Process->ST10->OP10->Schweißen") << "the nearest one may be any";
  station.AnswerInterface(IID_ZefISPPActivity, false);
  EXPECT_EQ(hierarchy(&task), "OP10->Schweißen");
}

// The services as plain recursion over a sketch, with the lines that they write. What is found is
// added as the keys of activities.
class Reference {
 public:
  explicit Reference(const Sketch& sketch) : sketch_(sketch) {}

  // Nothing when the service leaves its list alone.
  const std::vector<int>* Predecessors(int step) {
    Bracket(lines, "GetPredecessors");
    return step >= 0 && sketch_.steps[step].hasFlow ? &sketch_.steps[step].previous : nullptr;
  }

  void AllPredecessors(int step, Strings& found) {
    const Bracket bracket(lines, "GetAllPredecessors");
    if (step < 0) return;
    std::vector<int> open{step};
    while (!open.empty()) {
      const auto* const predecessors = Predecessors(sketch_.AsActivity(open.back()));
      open.pop_back();
      if (!predecessors) continue;
      for (const int previous : *predecessors) {
        if (std::count(found.begin(), found.end(), sketch_.Key(previous)) != 0) continue;
        found.push_back(sketch_.Key(previous));
        open.push_back(previous);
      }
    }
  }

  void Descendants(int step, Strings& found) {
    const Bracket bracket(lines, "GetDescendants");
    if (step < 0 || !sketch_.steps[step].hasChildren) return;
    for (const int child : sketch_.steps[step].children) {
      if (sketch_.AsActivity(child) < 0) continue;
      found.push_back(sketch_.Key(child));
      Descendants(child, found);
    }
  }

  void Previous(int step, Strings& found) {
    const Bracket bracket(lines, "GetPreviousActivities");
    if (step < 0) return;
    Strings predecessors, below;
    AllPredecessors(step, predecessors);
    for (const std::string& key : predecessors) {
      const int predecessor = key == "Process" ? 0 : std::stoi(key.substr(1));
      if (sketch_.AsActivity(predecessor) < 0) continue;
      found.push_back(key);
      Descendants(predecessor, below);
    }
    found.insert(found.end(), below.begin(), below.end());
    const int parent = sketch_.steps[step].parent;
    if (parent < 0) return;
    found.push_back(sketch_.Key(parent));
    Previous(sketch_.AsActivity(parent), found);
  }

  Strings lines;

 private:
  const Sketch& sketch_;
};

// What a list holds before is neither added again by a search nor looked behind.
void ExpectAsReference(const Sketch& sketch, int index, TraceRecorder& trace) {
  const ZefISPPActivity_var activity = sketch.steps[index].activity->Identity();
  const int step = sketch.AsActivity(index);
  const HRESULT result = step < 0 ? E_FAIL : S_OK;
  const List before = ListOf(*sketch.steps[7].activity);
  Reference reference(sketch);

  List all = before, below = before, previous = before, direct = before;
  Strings expectedAll{"A7"}, expectedBelow{"A7"}, expectedPrevious{"A7"};
  List* held = &previous;
  EXPECT_EQ(Services::GetAllPredecessors(activity, all), result);
  reference.AllPredecessors(step, expectedAll);
  EXPECT_EQ(Names(all), expectedAll);
  EXPECT_EQ(Services::GetDescendants(activity, below), result);
  reference.Descendants(step, expectedBelow);
  EXPECT_EQ(Names(below), expectedBelow);
  Services::GetPreviousActivities(activity, held);
  reference.Previous(step, expectedPrevious);
  EXPECT_EQ(Names(previous), expectedPrevious);

  EXPECT_EQ(Services::GetPredecessors(activity, direct), result);
  const auto* const predecessors = reference.Predecessors(step);
  Strings expectedDirect{"A7"};
  if (predecessors) expectedDirect.clear();
  for (const int i : predecessors ? *predecessors : std::vector<int>()) {
    expectedDirect.push_back(sketch.Key(i));
  }
  EXPECT_EQ(Names(direct), expectedDirect);

  List appended, *one = &appended, *none = nullptr;
  const int first = predecessors && !predecessors->empty() ? predecessors->front() : -1;
  const ZefISPPActivity_var answer =
      first < 0 ? nullptr : ZefISPPActivity_var(sketch.steps[first].activity->Identity());
  EXPECT_EQ(Services::GetPredecessorActivity(activity, none), answer);
  EXPECT_EQ(Services::GetPredecessorActivity(activity, one), answer);
  EXPECT_EQ(Names(appended), predecessors ? expectedDirect : Strings());
  for (int i = 0; i < 2; ++i) Bracket(reference.lines, "GetPredecessorActivity");
  Services::GetPreviousActivities(activity, none);
  Bracket(reference.lines, "GetPreviousActivities");
  EXPECT_EQ(none, nullptr);
  EXPECT_EQ(trace.Take(), reference.lines);
}

TEST_F(ActivityFlowTest, EveryServiceFindsWhatPlainRecursionFindsInRandomProcesses) {
  for (unsigned seed = 1; seed <= 40 && !HasFailure(); ++seed) {
    SCOPED_TRACE(seed);
    Plant drawn;
    const Sketch sketch(drawn, seed, seed % 3 == 0);
    const ReferenceSnapshot before = sketch.Snapshot();
    for (int i = 0; i < static_cast<int>(sketch.steps.size()); ++i) {
      ExpectAsReference(sketch, i, trace);
    }
    EXPECT_EQ(before.Differences(), "");
  }
}

// An activity of a host that does not refuse rings in its tree.
class Looped : public ComponentObject<ZefISPPActivity, ZefISPPChildManagement> {
 public:
  ZefMetaClass* GetMetaObject() const override { return ZefBaseUnknown::MetaObject(); }
  HRESULT GetParentActivity(ZefISPPAbstractActivity_var&) override { return E_FAIL; }
  ZefUnicodeString GetLabel() override { return {}; }
  List* GetChildren(const ZefUnicodeString&) override {
    auto* const children = new List;
    for (Looped* const child : below) children->Append(child->Identity());
    return children;
  }
  std::vector<Looped*> below;
};

TEST_F(ActivityFlowTest, ATreeThatLeadsBackToItselfIsWalkedToAnEnd) {
  for (std::size_t length = 1; length <= 20; ++length) {
    std::vector<embedded::Owned<Looped>> ring;
    for (std::size_t i = 0; i < length; ++i) ring.push_back(embedded::MakeOwned<Looped>());
    for (std::size_t i = 0; i < length; ++i) {
      ring[i]->below.push_back(ring[(i + 1) % length].Get());
    }
    // A way off the ring.
    const auto leaf = embedded::MakeOwned<Looped>();
    ring.back()->below.push_back(leaf.Get());
    trace.Take();
    List found;
    EXPECT_EQ(Services::GetDescendants(ring.front()->Identity(), found), S_OK);
    for (const auto& activity : ring) EXPECT_NE(found.Locate(activity->Identity()), 0) << length;
    EXPECT_NE(found.Locate(leaf->Identity()), 0) << length;
    EXPECT_LE(found.Size(), 40 * static_cast<int>(length)) << "it goes on and on";
    const Strings lines = trace.Take();
    const auto written = [&](const std::string& line) {
      return std::count(lines.begin(), lines.end(), line);
    };
    EXPECT_GT(written("TuvBIWServices::GetDescendants -- IN"), static_cast<long>(length));
    EXPECT_EQ(written("TuvBIWServices::GetDescendants -- IN"),
              written("TuvBIWServices::GetDescendants -- OUT"));
  }
}

TEST_F(ActivityFlowTest, DeepChainsAndTreesAreWalkedToTheirEnd) {
  auto& last = LayOutDeep(plant, true);
  List predecessors, descendants;
  EXPECT_EQ(Services::GetAllPredecessors(last.Identity(), predecessors), S_OK);
  EXPECT_EQ(predecessors.Size(), kDepth);
  EXPECT_EQ(predecessors[kDepth], plant.Root().Identity());
  EXPECT_EQ(Services::GetDescendants(plant.Root().Identity(), descendants), S_OK);
  EXPECT_EQ(descendants.Size(), kDepth);
  EXPECT_EQ(descendants[kDepth], last.Identity());
}

}  // namespace
