#include <algorithm>
#include <memory>
#include <set>

#include "services/TuvBIWServices.h"
#include "tests/services/Sketch.h"

namespace {

using namespace tests;
using embedded::MfgAssembly;
using Services = TuvBIWServices;
using List = ZefListValZefBaseUnknown_var;

// Calls a collector with a list that holds something already, and with none.
template <class Collect>
Strings Collected(const Collect& collect, const List& before = {}) {
  List list = before;
  List* held = &list;
  List* none = nullptr;
  collect(held);
  collect(none);
  EXPECT_EQ(none, nullptr);
  EXPECT_EQ(held, &list);
  return Names(list);
}

Strings ChildPartsLines(int calls) {
  Strings lines;
  for (int i = 0; i < calls; ++i) Bracket(lines, "GetChildParts");
  return lines;
}

const Strings kAssignedLines(2, "TuvBIWServices::GetAssignedParts -- OUT");

using PartQueriesTest = PlantTest;

TEST_F(PartQueriesTest, AssignedPartsAreProductsAmongTheItemsWithAllBelowThem) {
  auto& op = plant.Operation("OP10");
  auto& door = plant.Part("DOOR");
  auto& panel = plant.Part("PANEL", &door);
  auto& hinge = plant.Part("HINGE");
  plant.Part("BOLT", &hinge);
  auto& hidden = plant.Part("HIDDEN");
  hidden.AnswerInterface(IID_ZefIProduct, false);
  auto& weld = plant.Weld("SW-1");
  plant.Assign(op, weld);
  for (auto* const part : {&hidden, &panel, &door, &hinge, &door}) plant.Assign(op, *part);
  const auto assigned = [&](List*& list) { Services::GetAssignedParts(op.Identity(), list); };
  // The hinge is listed already: it is passed over with what is below it.
  EXPECT_EQ(Collected(assigned, ListOf(nullptr, hinge)),
            (Strings{"null", "HINGE", "PANEL", "DOOR"}));
  EXPECT_EQ(trace.Take(),
            Joined({{kAssignedLines[0]}, ChildPartsLines(1), {kAssignedLines[0]}, kAssignedLines}));
  op.AnswerInterface(IID_ZefISPPItemMgt, false);
  EXPECT_EQ(Collected(assigned), Strings());
  EXPECT_EQ(trace.Take(), Joined({kAssignedLines, kAssignedLines}));
  List list;
  List* held = &list;
  Services::GetAssignedParts(nullptr, held);
  EXPECT_EQ(trace.Take(), Strings{kAssignedLines[0]});
}

TEST_F(PartQueriesTest, ChildPartsAreDirectAllOfThemAreDeepAndBothAreTracedAlike) {
  auto& body = plant.Part("BODY");
  auto& door = plant.Part("DOOR", &body);
  auto& panel = plant.Part("PANEL", &door);
  auto& hidden = plant.Part("HIDDEN", &body);
  plant.Part("BELOW", &hidden);
  hidden.AnswerInterface(IID_ZefIProduct, false);
  plant.Document()->AddProduct(body, {.key = "DOOR.2"}, &door);
  const auto direct = [&](List*& list) { Services::GetChildParts(body.Identity(), list); };
  const auto all = [&](List*& list) { Services::GetAllChildParts(body.Identity(), list); };
  EXPECT_EQ(Collected(direct, ListOf(door)), (Strings{"DOOR", "DOOR", "DOOR.2"}));
  EXPECT_EQ(trace.Take(), ChildPartsLines(2));
  EXPECT_EQ(Collected(all, ListOf(panel)), (Strings{"PANEL", "DOOR", "DOOR.2"}));
  Strings lines;
  {
    const Bracket outer(lines, "GetChildParts");
    Bracket(lines, "GetChildParts");
    Bracket(lines, "GetChildParts");
  }
  EXPECT_EQ(trace.Take(), Joined({lines, ChildPartsLines(1)}));
  const auto nothing = [&](List*& list) {
    Services::GetChildParts(nullptr, list);
    Services::GetAllChildParts(nullptr, list);
    Services::GetChildParts(panel.Identity(), list);
    Services::GetAllChildParts(panel.Identity(), list);
  };
  EXPECT_EQ(Collected(nothing), Strings());
  EXPECT_EQ(trace.Take(), ChildPartsLines(8));
}

TEST_F(PartQueriesTest, AssembliesBelowThemselvesAreListedOnce) {
  MfgAssembly& a = plant.Document()->AddAssembly("A");
  MfgAssembly& b = plant.Document()->AddAssembly("B");
  a.ForceChild(b.Identity());
  b.ForceChild(a.Identity());
  const auto all = [&](List*& list) { Services::GetAllChildParts(a.Identity(), list); };
  EXPECT_EQ(Collected(all), (Strings{"B", "A"}));
  List list;
  List* held = &list;
  b.SetName("B");
  EXPECT_EQ(GetSiblingPartsFromProduct(a.Identity(), plant.Part("P").Identity(), held), 0);
  EXPECT_EQ(GetSiblingPartsFromProduct(a.Identity(), b.Identity(), held), 1);
  EXPECT_EQ(list.Size(), 0);
}

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
    return Collected([&](List*& list) { Services::GetSiblingParts(of, list); }, ListOf(a));
  };
  EXPECT_EQ(siblings(d.Identity()), (Strings{"A", "C", "SPARE"}));
  EXPECT_EQ(siblings(spare.Identity()), (Strings{"A", "C", "SPARE"}));
  EXPECT_EQ(siblings(c.Identity()), (Strings{"A", "B"})) << "by number, not by identity";
  EXPECT_EQ(siblings(gone.Identity()), Strings{"A"});
  EXPECT_EQ(siblings(document.RootProduct().Identity()), Strings{"A"});
  document.SetProductRoots({&hidden, &a, &b, &document.RootProduct()});
  EXPECT_EQ(siblings(c.Identity()), (Strings{"A", "D", "SPARE"}));
  const std::string name = "TuvBIWServices::GetSiblingParts";
  const Strings call =
      Joined({{name + " -- IN"}, Lines({"GetCurrentDocument"}), {name + " -- OUT"}});
  const Strings twice = Joined({call, call});
  EXPECT_EQ(trace.Take(), Joined({twice, twice, twice, twice, twice, twice}));
  EXPECT_EQ(siblings(nullptr), Strings{"A"});
  EXPECT_EQ(trace.Take(),
            (Strings{name + " -- IN", name + " -- OUT", name + " -- IN", name + " -- OUT"}));
  application.Edit({});
  EXPECT_EQ(siblings(d.Identity()), Strings{"A"});
  EXPECT_EQ(trace.Take(), twice);
}

TEST_F(PartQueriesTest, ProductOutputsMakeTheListWithTheFirstProduct) {
  auto& op = plant.Operation("OP10");
  auto& part = plant.Part("P1");
  const auto outputs = [&] {
    List* made = nullptr;
    Services::GetProductOutputsFromActivity(op.Identity(), made);
    const std::unique_ptr<List> owner(made);
    return made ? Names(*made) : Strings{"no list"};
  };
  const auto add = [&](ZefBaseUnknown* product) {
    ZefISPPProductIO_var output;
    op.AddProductOutput(output.Put(), ZefISPPItem_var(product));
  };
  add(nullptr);
  add(plant.Weld("SW-1").Identity());
  EXPECT_EQ(outputs(), Strings{"no list"}) << "outputs without a product";
  for (auto* const product : {part.Identity(), plant.Part("P2").Identity(), part.Identity()}) {
    add(product);
  }
  EXPECT_EQ(outputs(), (Strings{"P1", "P2", "P1"}));
  AnswerInterface(op.Outputs()[2]->Identity(), IID_ZefISPPProductIO, false);
  EXPECT_EQ(outputs(), (Strings{"P2", "P1"}));
  op.AnswerInterface(IID_ZefISPPFlowMgt, false);
  EXPECT_EQ(outputs(), Strings{"no list"});
  EXPECT_EQ(trace.Lines(), Strings());
}

TEST_F(PartQueriesTest, APartIsInAListByItsExactNumber) {
  auto& part = plant.Document()->AddProduct(plant.Part("P1"), {.key = "P2", .partNumber = "N2"});
  auto list = ListOf(nullptr, plant.Weld("N3"), part);
  List empty;
  const Strings in{"TuvBIWServices::IsPartInList -- in"};
  const Strings both{in[0], "TuvBIWServices::IsPartInList -- out"};
  const struct {
    const char* number;
    List* list;
    int found;
    Strings lines;
  } cases[] = {
      {"N2", &list, 1, in}, {"n2", &list, 0, both},  {"P2", &list, 0, both}, {"N3", &list, 0, both},
      {"", &list, 0, both}, {"N2", &empty, 0, both}, {"N2", nullptr, 0, in},
  };
  for (const auto& [number, asked, found, lines] : cases) {
    ZefUnicodeString name(number);
    EXPECT_EQ(Services::IsPartInList(name, asked), found) << number;
    EXPECT_EQ(trace.Take(), lines);
  }
}

TEST_F(PartQueriesTest, PartsAreLoadedWhenTheListHoldsAllThatTheWeldJoins) {
  auto& p1 = plant.Part("P1");
  auto& p2 = plant.Part("P2");
  ZefBaseUnknown* const weld = plant.Weld("SW-1", {}, {&p1, &p2}).Identity();
  ZefBaseUnknown* const loose = plant.Weld("SW-2").Identity();
  auto list = ListOf(p2, p1), half = ListOf(p1);
  const Strings in{"TuvBIWServices::ArePartsLoaded -- in"};
  const Strings both{in[0], "TuvBIWServices::ArePartsLoaded -- out"};
  const struct {
    ZefBaseUnknown* weld;
    List* list;
    int loaded;
  } cases[] = {{weld, &list, 1},         {weld, &half, 0},    {loose, &half, 1},
               {weld, nullptr, 0},       {nullptr, &list, 0}, {loose, nullptr, 0},
               {p1.Identity(), &list, 0}};
  for (const auto& [asked, parts, loaded] : cases) {
    EXPECT_EQ(Services::ArePartsLoaded(asked, parts), loaded);
    EXPECT_EQ(trace.Take(), loaded ? in : both);
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
      {ab, none, 0, 0, 0}, {none, ab, 0, 0, 0}, {none, none, 0, 0, 0},
      {ab, ba, 1, 1, 1},   {ab, bc, 0, 1, 1},   {bc, ab, 0, 1, 1},
      {ab, cc, 0, 0, 1},   {ab, null, 0, 0, 1}, {null, null, 1, 1, 1},
  };
  for (const auto& [reference, candidates, contained, overlapping, other] : cases) {
    SCOPED_TRACE(testing::PrintToString(Names(candidates)));
    EXPECT_EQ(Services::CompareTwoLists(reference, candidates, 1), contained);
    EXPECT_EQ(Services::CompareTwoLists(reference, candidates, 2), overlapping);
    for (const int mode : {-1, 0, 3}) {
      EXPECT_EQ(Services::CompareTwoLists(reference, candidates, mode), other);
    }
  }
}

// The collectors as plain recursion over a sketch, with the lines that they write.
class Reference {
 public:
  Reference(const Sketch& sketch, Strings held) : found(std::move(held)), sketch_(sketch) {}

  void Loaded(int step) {
    FromPrevious(step);
    Assigned(step);
    FromChildren(step);
  }

  void Assigned(int step) {
    lines.push_back(kAssignedLines[0]);
    if (step < 0) return;
    if (sketch_.At(step).hasItems) {
      for (const int item : sketch_.At(step).items) AppendNew(item);
    }
    lines.push_back(kAssignedLines[0]);
  }

  void AllBelow(int part) {
    const Bracket bracket(lines, "GetChildParts");
    if (!sketch_.PartAt(part).hasChildren) return;
    for (const int child : sketch_.PartsBelow(part)) AppendNew(child);
  }

  void FromChildren(int step) {
    if (step < 0 || !sketch_.At(step).hasChildren) return;
    for (const int child : sketch_.At(step).children) {
      if (sketch_.AsActivity(child) < 0) continue;
      Assigned(child);
      Outputs(child);
      FromChildren(child);
    }
  }

  void FromPrevious(int step) {
    if (step < 0 || !onPath_.insert(step).second) return;
    const Sketch::Step& asked = sketch_.At(step);
    if (!asked.hasFlow || asked.previous.empty()) FromPrevious(sketch_.AsActivity(asked.parent));
    if (asked.hasFlow) {
      for (const int previous : asked.previous) {
        if (sketch_.AsActivity(previous) < 0) continue;
        Assigned(previous);
        Outputs(previous);
        FromChildren(previous);
        FromPrevious(previous);
      }
    }
    onPath_.erase(step);
  }

  int Siblings(int node, int of) {
    if (!sketch_.PartAt(node).hasChildren) return 0;
    for (const int child : sketch_.PartsBelow(node)) {
      if (!sketch_.PartAt(child).isProduct) continue;
      if (sketch_.PartAt(child).number != sketch_.PartAt(of).number) {
        if (Siblings(child, of)) return 1;
        continue;
      }
      for (const int other : sketch_.PartsBelow(node)) {
        if (other != child && sketch_.PartAt(other).isProduct) Append(other);
      }
      return 1;
    }
    return 0;
  }

  Strings found;
  Strings lines;

 private:
  void Append(int part) { found.push_back(sketch_.PartKey(part)); }
  void AppendNew(int part) {
    const Sketch::Part& asked = sketch_.PartAt(part);
    if (!asked.isProduct || std::count(found.begin(), found.end(), sketch_.PartKey(part))) return;
    Append(part);
    if (!sketch_.PartsBelow(part).empty()) AllBelow(part);
  }
  void Outputs(int step) {
    if (!sketch_.At(step).hasFlow) return;
    for (const int output : sketch_.At(step).outputs) {
      if (sketch_.PartAt(output).isProduct) Append(output);
    }
  }

  const Sketch& sketch_;
  std::set<int> onPath_;
};

void ExpectAsReference(const Sketch& sketch, TraceRecorder& trace) {
  const List held = ListOf(*sketch.PartAt(1).product);
  const ReferenceSnapshot before = sketch.Snapshot();
  for (int i = 0; i < sketch.Size(); ++i) {
    SCOPED_TRACE(sketch.Key(i));
    const ZefISPPActivity_var activity = sketch.HandleOf(i);
    const int step = sketch.AsActivity(i);
    Reference loaded(sketch, Names(held)), earlier(sketch, Names(held)), below(sketch, Names(held));
    List list = held;
    List* passed = &list;
    if (step >= 0) loaded.Loaded(step);
    EXPECT_EQ(Services::GetLoadedParts(activity, passed), 0);
    EXPECT_EQ(Names(list), loaded.found);
    EXPECT_EQ(trace.Take(), loaded.lines);
    list = held;
    earlier.FromPrevious(step);
    Services::GetPartsFromPreviousActs(activity, passed);
    EXPECT_EQ(Names(list), earlier.found);
    list = held;
    below.FromChildren(step);
    Services::GetPartsFromChildrenActs(activity, passed);
    EXPECT_EQ(Names(list), below.found);
    EXPECT_EQ(trace.Take(), Joined({earlier.lines, below.lines}));
  }
  EXPECT_EQ(before.Differences(), "");
}

void ExpectSiblingsAsReference(const Sketch& sketch) {
  for (int part = 1; part < sketch.Parts(); ++part) {
    Reference siblings(sketch, {});
    const ZefIProduct_var root = sketch.PartAt(0).product->Identity();
    const ZefIProduct_var product = sketch.PartAt(part).product->Identity();
    List list;
    List *passed = &list, *none = nullptr;
    const int found = root && product ? siblings.Siblings(0, part) : 0;
    EXPECT_EQ(GetSiblingPartsFromProduct(root, product, passed), found);
    EXPECT_EQ(Names(list), siblings.found) << sketch.PartKey(part);
    EXPECT_EQ(GetSiblingPartsFromProduct(root, product, none), found);
  }
}

TEST_F(PartQueriesTest, EveryCollectorFindsWhatPlainRecursionFindsInRandomProcesses) {
  for (unsigned seed = 1; seed <= 40 && !HasFailure(); ++seed) {
    SCOPED_TRACE(seed);
    Plant drawn;
    const Sketch sketch(drawn, seed, seed % 3 == 0);
    ExpectAsReference(sketch, trace);
    ExpectSiblingsAsReference(sketch);
  }
}

TEST_F(PartQueriesTest, NothingIsCollectedWithoutActivityOrList) {
  auto& op = plant.Operation("OP10");
  auto& before = plant.Operation("OP20");
  plant.Flow(before, op);
  plant.Assign(before, plant.Part("P1"));
  for (const ZefISPPActivity_var& activity :
       {ZefISPPActivity_var(op.Identity()), ZefISPPActivity_var()}) {
    List* none = nullptr;
    EXPECT_EQ(Services::GetLoadedParts(activity, none), 0);
    Services::GetPartsFromPreviousActs(activity, none);
    Services::GetPartsFromChildrenActs(activity, none);
    EXPECT_EQ(none, nullptr);
  }
  EXPECT_EQ(trace.Lines(), Strings());
}

TEST_F(PartQueriesTest, DeepFlowsAreWalkedBackToTheirBeginning) {
  auto& last = LayOutDeep(plant, false);
  plant.Assign(plant.Root(), plant.Part("P1"));
  List list;
  List* held = &list;
  Services::GetPartsFromPreviousActs(last.Identity(), held);
  EXPECT_EQ(Names(list), Strings{"P1"});
}

TEST_F(PartQueriesTest, DeepTreesOfActivitiesAndProductsAreWalkedToTheBottom) {
  auto& last = LayOutDeep(plant, true);
  embedded::Product* deepest = &plant.Part("P");
  plant.Assign(last, *deepest);
  for (int i = 1; i < kDepth; ++i) deepest = &plant.Part("P" + std::to_string(i), deepest);
  List list;
  List* held = &list;
  Services::GetPartsFromChildrenActs(plant.Root().Identity(), held);
  EXPECT_EQ(list.Size(), kDepth);
  EXPECT_EQ(list[kDepth], deepest->Identity());
  const ZefBaseUnknown_var root = plant.Document()->RootProduct().Identity();
  EXPECT_EQ(GetSiblingPartsFromProduct(root, deepest->Identity(), held), 1);
}

}  // namespace
