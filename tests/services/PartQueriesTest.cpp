#include <algorithm>
#include <memory>
#include <set>

#include "services/TuvBIWServices.h"
#include "tests/services/Sketch.h"

namespace {

using namespace tests;
using Services = TuvBIWServices;
using List = ZefListValZefBaseUnknown_var;

using PartQueriesTest = PlantTest;

TEST_F(PartQueriesTest, SiblingsStandBesideTheFirstPartOfThatNumberInTheFirstRootThatHasIt) {
  embedded::Document& document = *plant.Document();
  auto& a = plant.Part("A");
  auto& b = plant.Part("B");
  auto& c = document.AddProduct(b, {.key = "C", .partNumber = "A"});
  auto& d = plant.Part("D", &b);
  auto& spare = document.AddProduct(b, {.key = "SPARE", .partNumber = "D"});
  auto& hidden = plant.Part("HIDDEN", &b);
  hidden.AnswerInterface(IID_ZefIProduct, false);
  auto& gone = plant.Part("GONE", &hidden);
  const auto siblings = [&](ZefBaseUnknown* of) {
    List list = ListOf(a), *held = &list, *none = nullptr;
    Services::GetSiblingParts(of, held);
    Services::GetSiblingParts(of, none);
    EXPECT_EQ(none, nullptr);
    return Names(list);
  };
  const std::string name = "TuvBIWServices::GetSiblingParts";
  const Strings empty{name + " -- IN", name + " -- OUT"};
  const Strings full = Joined({{empty[0]}, Lines({"GetCurrentDocument"}), {empty[1]}});
  EXPECT_EQ(siblings(d.Identity()), (Strings{"A", "C", "SPARE"}));
  EXPECT_EQ(trace.Take(), Joined({full, full}));
  EXPECT_EQ(siblings(nullptr), Strings{"A"});
  EXPECT_EQ(trace.Take(), Joined({empty, empty}));
  EXPECT_EQ(siblings(spare.Identity()), (Strings{"A", "C", "SPARE"}));
  EXPECT_EQ(siblings(c.Identity()), (Strings{"A", "B"})) << "by number, not by identity";
  EXPECT_EQ(siblings(gone.Identity()), Strings{"A"});
  EXPECT_EQ(siblings(document.RootProduct().Identity()), Strings{"A"});
  document.SetProductRoots({&hidden, &a, &b, &document.RootProduct()});
  EXPECT_EQ(siblings(c.Identity()), (Strings{"A", "D", "SPARE"})) << "not the roots themselves";
  application.Edit({});
  EXPECT_EQ(siblings(d.Identity()), Strings{"A"});
}

TEST_F(PartQueriesTest, AssembliesBelowThemselvesAreListedOnceAndSearchedOnce) {
  auto& a = plant.Document()->AddAssembly("A");
  auto& b = plant.Document()->AddAssembly("B");
  a.ForceChild(b.Identity());
  b.ForceChild(a.Identity());
  List list, *held = &list, *none = nullptr;
  Services::GetAllChildParts(a.Identity(), held);
  EXPECT_EQ(Names(list), (Strings{"B", "A"}));
  const ZefBaseUnknown_var part = plant.Part("P").Identity();
  EXPECT_EQ(GetSiblingPartsFromProduct(a.Identity(), part, held), 0);
  b.SetName("P");
  EXPECT_EQ(GetSiblingPartsFromProduct(a.Identity(), part, none), 1);
  EXPECT_EQ(GetSiblingPartsFromProduct(nullptr, part, held), 0);
  EXPECT_EQ(GetSiblingPartsFromProduct(a.Identity(), nullptr, held), 0);
}

TEST_F(PartQueriesTest, APartIsInAListByItsExactNumberAndItsLinesTellHowTheSearchEnded) {
  auto& part = plant.Document()->AddProduct(plant.Part("P1"), {.key = "P2", .partNumber = "N2"});
  List list = ListOf(nullptr, plant.Weld("N3"), part), empty;
  const Strings in{"TuvBIWServices::IsPartInList -- in"};
  const Strings both{in[0], "TuvBIWServices::IsPartInList -- out"};
  const struct {
    const char* number;
    List* list;
    int found;
    Strings lines;
  } cases[] = {
      {"N2", &list, 1, in}, {"n2", &list, 0, both},  {"N3", &list, 0, both},
      {"", &list, 0, both}, {"N2", &empty, 0, both}, {"N2", nullptr, 0, in},
  };
  for (const auto& [number, asked, found, lines] : cases) {
    ZefUnicodeString name(number);
    EXPECT_EQ(Services::IsPartInList(name, asked), found) << number;
    EXPECT_EQ(trace.Take(), lines);
  }
}

TEST_F(PartQueriesTest, TwoListsAreComparedByObjectsInTheModeThatIsAsked) {
  auto& a = plant.Part("A");
  auto& b = plant.Part("B");
  auto& c = plant.Part("C");
  const List none, ab = ListOf(a, b), ba = ListOf(b, a, b), bc = ListOf(b, c), cc = ListOf(c),
                   null = ListOf(nullptr);
  const struct {
    const List &reference, &candidates;
    int contained, overlapping, other;
  } cases[] = {
      {ab, none, 0, 0, 0}, {none, ab, 0, 0, 0}, {ab, ba, 1, 1, 1},     {ab, bc, 0, 1, 1},
      {bc, ab, 0, 1, 1},   {ab, cc, 0, 0, 1},   {null, null, 1, 1, 1},
  };
  for (const auto& [reference, candidates, contained, overlapping, other] : cases) {
    SCOPED_TRACE(testing::PrintToString(Names(candidates)));
    EXPECT_EQ(Services::CompareTwoLists(reference, candidates, 1), contained);
    EXPECT_EQ(Services::CompareTwoLists(reference, candidates, 2), overlapping);
    EXPECT_EQ(Services::CompareTwoLists(reference, candidates, 0), other);
    EXPECT_EQ(Services::CompareTwoLists(reference, candidates, 3), other);
  }
}

const Strings kAssignedLine{"TuvBIWServices::GetAssignedParts -- OUT"};

// The collectors as plain recursion over a sketch, with the lines that they write.
class Reference {
 public:
  Reference(const Sketch& sketch, Strings held) : found(std::move(held)), sketch_(sketch) {}

  void Loaded(int step) {
    FromPrevious(step);
    Assigned(step);
    FromChildren(step);
  }

  void Below(int part, bool direct) {
    const Bracket bracket(lines, "GetChildParts");
    for (const int child : sketch_.Below(part)) {
      if (!sketch_.parts[child].isProduct) continue;
      if (direct) {
        found.push_back(sketch_.PartKey(child));
      } else {
        AppendNew(child);
      }
    }
  }

  void Outputs(int step) {
    for (const int output : sketch_.steps[step].outputs) {
      if (!sketch_.steps[step].hasFlow || !sketch_.parts[output].isProduct) continue;
      found.push_back(sketch_.PartKey(output));
    }
  }

  Strings found;
  Strings lines;

 private:
  void AppendNew(int part) {
    const std::string key = sketch_.PartKey(part);
    if (!sketch_.parts[part].isProduct || std::count(found.begin(), found.end(), key)) return;
    found.push_back(key);
    if (!sketch_.Below(part).empty()) Below(part, false);
  }

  void Assigned(int step) {
    lines.push_back(kAssignedLine[0]);
    for (const int item : sketch_.steps[step].items) {
      if (sketch_.steps[step].hasItems) AppendNew(item);
    }
    lines.push_back(kAssignedLine[0]);
  }

  // What a step brings to others.
  void Whole(int step) {
    Assigned(step);
    Outputs(step);
    FromChildren(step);
  }

  void FromChildren(int step) {
    if (!sketch_.steps[step].hasChildren) return;
    for (const int child : sketch_.steps[step].children) {
      if (sketch_.AsActivity(child) >= 0) Whole(child);
    }
  }

  void FromPrevious(int step) {
    if (step < 0 || !onPath_.insert(step).second) return;
    const Sketch::Step& asked = sketch_.steps[step];
    const std::vector<int> previous = asked.hasFlow ? asked.previous : std::vector<int>();
    if (previous.empty()) FromPrevious(sketch_.AsActivity(asked.parent));
    for (const int before : previous) {
      if (sketch_.AsActivity(before) < 0) continue;
      Whole(before);
      FromPrevious(before);
    }
    onPath_.erase(step);
  }

  const Sketch& sketch_;
  std::set<int> onPath_;
};

void ExpectLoadedAsReference(const Sketch& sketch, int step, TraceRecorder& trace) {
  const ZefISPPActivity_var activity = sketch.steps[step].activity->Identity();
  List list = ListOf(*sketch.parts[1].product), *held = &list, *none = nullptr;
  Reference reference(sketch, {"P1"});
  if (activity) reference.Loaded(step);
  EXPECT_EQ(Services::GetLoadedParts(activity, held), 0);
  EXPECT_EQ(Names(list), reference.found);
  EXPECT_EQ(trace.Take(), reference.lines);
  Services::GetLoadedParts(activity, none);
  Services::GetPartsFromPreviousActs(activity, none);
  Services::GetPartsFromChildrenActs(activity, none);
  EXPECT_EQ(trace.Take(), Strings());
  Services::GetAssignedParts(activity, none);
  EXPECT_EQ(trace.Take(), activity ? Joined({kAssignedLine, kAssignedLine}) : kAssignedLine);
  EXPECT_EQ(none, nullptr);
  Services::GetProductOutputsFromActivity(activity, none);
  const std::unique_ptr<List> made(none);
  Reference outputs(sketch, {});
  if (activity) outputs.Outputs(step);
  EXPECT_EQ(made ? Names(*made) : Strings(), outputs.found);
  EXPECT_EQ(made == nullptr, outputs.found.empty()) << "the first product makes the list";
}

void ExpectChildrenAsReference(const Sketch& sketch, int part, TraceRecorder& trace) {
  const ZefIProduct_var product = sketch.parts[part].product->Identity();
  for (const bool direct : {true, false}) {
    List list = ListOf(*sketch.parts[1].product), *held = &list, *none = nullptr;
    Reference reference(sketch, {"P1"});
    const auto collect = direct ? Services::GetChildParts : Services::GetAllChildParts;
    collect(product, held);
    if (product) {
      reference.Below(part, direct);
    } else {
      Bracket(reference.lines, "GetChildParts");
    }
    EXPECT_EQ(Names(list), reference.found);
    collect(product, none);
    Bracket(reference.lines, "GetChildParts");
    EXPECT_EQ(none, nullptr);
    EXPECT_EQ(trace.Take(), reference.lines);
  }
}

TEST_F(PartQueriesTest, EveryCollectorFindsWhatPlainRecursionFindsInRandomProcesses) {
  for (unsigned seed = 1; seed <= 40 && !HasFailure(); ++seed) {
    SCOPED_TRACE(seed);
    Plant drawn;
    const Sketch sketch(drawn, seed, seed % 3 == 0);
    const ReferenceSnapshot before = sketch.Snapshot();
    for (int i = 0; i < static_cast<int>(sketch.steps.size()); ++i) {
      ExpectLoadedAsReference(sketch, i, trace);
    }
    for (int i = 0; i < static_cast<int>(sketch.parts.size()); ++i) {
      ExpectChildrenAsReference(sketch, i, trace);
    }
    EXPECT_EQ(before.Differences(), "");
  }
}

TEST_F(PartQueriesTest, DeepFlowsAreWalkedBackToTheirBeginning) {
  auto& last = LayOutDeep(plant, false);
  plant.Assign(plant.Root(), plant.Part("P1"));
  List list, *held = &list;
  Services::GetPartsFromPreviousActs(last.Identity(), held);
  EXPECT_EQ(Names(list), Strings{"P1"});
}

TEST_F(PartQueriesTest, DeepTreesOfActivitiesAndProductsAreWalkedToTheBottom) {
  embedded::Product* deepest = &plant.Part("P");
  plant.Assign(LayOutDeep(plant, true), *deepest);
  for (int i = 1; i < kDepth; ++i) deepest = &plant.Part("P" + std::to_string(i), deepest);
  List list, *held = &list;
  Services::GetPartsFromChildrenActs(plant.Root().Identity(), held);
  EXPECT_EQ(list.Size(), kDepth);
  EXPECT_EQ(list[kDepth], deepest->Identity());
  const ZefBaseUnknown_var root = plant.Document()->RootProduct().Identity();
  EXPECT_EQ(GetSiblingPartsFromProduct(root, deepest->Identity(), held), 1);
}

}  // namespace
