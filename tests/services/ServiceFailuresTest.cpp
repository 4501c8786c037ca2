#include <memory>

#include "host/document/Document.h"
#include "services/Received.h"
#include "services/TuvBIWActivityIntelligenceServices.h"
#include "services/TuvBIWServices.h"
#include "tests/support/HostFailures.h"
#include "tests/support/PlantTest.h"

namespace {

using namespace tests;
using Services = TuvBIWServices;
using List = ZefListValZefBaseUnknown_var;
using NewList = Received<List>;

// A small line at work: two operations with welds, some of them labelled.
struct Line {
  Line() {
    for (auto* const weld : {&a, &b, &a}) plant.Assign(op10, *weld);
    plant.Assign(op10, part);
    plant.Assign(op20, seam);
    plant.Assign(plant.Root(), seam);
    plant.Part("P2", &part);
    plant.Locator("LP");
    plant.Clamp("CP");
    List labelled = ListOf(a, c, d);
    Services::VisualizationKoraWeldList(&labelled, 2, 0, 0, 0, 0, 0);
  }

  Desk desk{Plant(Plant::Kind::Both)};
  Plant& plant = desk.plant;
  ZefDocument* document = plant.Document().Get();
  embedded::Activity& op10 = plant.Operation("OP10", Plant::Task::Welding, &plant.Station("ST10"));
  embedded::Activity& op20 = plant.Operation("OP20", Plant::Task::Both);
  embedded::Product& part = plant.Part("P1");
  embedded::SpotWeld& a = plant.Weld("A", {1, 2, 3}, {&part});
  embedded::SpotWeld& b = plant.Weld("B");
  embedded::SpotWeld& c = plant.Weld("C");
  embedded::SpotWeld& d = plant.Weld("D");
  embedded::CurveFastener& seam = plant.Seam("S", {{0, 0, 0}, {0, 0, 9}});
  List welds = ListOf(a, b, nullptr, part, c, seam, d);
  List duplicates = ListOf(a, b);
};

// Gives back the references of what a service lists.
class Listed {
 public:
  explicit Listed(void (*service)(_SEQUENCE_ZefBaseUnknown_ptr&)) { service(sequence_); }
  ~Listed() {
    for (int i = 0; i < sequence_.length(); ++i) (void)Adopt(sequence_[i]);
  }

 private:
  _SEQUENCE_ZefBaseUnknown_ptr sequence_;
};

struct Scenario {
  const char* what;
  void (*run)(Line&);
};

const Scenario kScenarios[] = {
    {"current document", [](Line&) { Services::GetCurrentDocument(); }},
    {"process root", [](Line&) { Services::GetRootProcessContainer(nullptr); }},
    {"product root", [](Line& line) { Services::GetRootContainer(line.document); }},
    {"root", [](Line&) { Services::GetRootActivity(ZefISPPActivity_var().Put(), nullptr); }},
    {"activities", [](Line&) { Services::GetListOfAllActivities(NewList().Out(), nullptr); }},
    {"products", [](Line&) { Services::GetAllProducts(NewList().Out()); }},
    {"document", [](Line& line) { Services::GetDocumentFromFeature(line.a.Identity()); }},
    {"features", [](Line& line) { Services::GetFeatContainerFromFeature(line.a.Identity()); }},
    {"fasteners", [](Line&) { Listed fasteners(Services::GetListOfAllFasteners); }},
    {"locators", [](Line&) { Listed locators(Services::GetListOfAllLocators); }},
    {"clamps", [](Line&) { Listed clamps(Services::GetListOfAllClamps); }},
    {"points", [](Line&) { Services::GetListOfAllPointFasteners(nullptr); }},
    {"assigned welds of the root",
     [](Line& line) { Services::GetListOfAssignedWeld(&line.plant.Root(), NewList().Out()); }},
    {"assigned welds",
     [](Line& line) { Services::GetListOfKoraAssignedWeld(&line.op10, NewList().Out()); }},
    {"walk",
     [](Line& line) { Services::GetWeldFromActivity(&line.plant.Root(), NewList().Out(), 1, -1); }},
    {"check",
     [](Line& line) {
       Services::CheckWeldAssignement(line.c.Identity(), &line.op10, &line.welds, 0);
     }},
    {"name", [](Line& line) { Services::GetWeldID(line.a.Identity()); }},
    {"activities of a weld",
     [](Line& line) {
       NewList activities;
       int count = 0;
       Services::GetActivityFromAssignedWeld(line.a.Identity(), activities.Out(), count);
       EXPECT_EQ(count, activities ? activities->Size() : 0);
     }},
    {"validity",
     [](Line& line) { Services::IsValidWeldForActivity(line.a.Identity(), &line.op10); }},
    {"assigned?", [](Line& line) { Services::IsWeldAssigned(line.a.Identity(), &line.welds); }},
    {"assign one", [](Line& line) { Services::AssignKoraWeld(&line.op20, line.a.Identity()); }},
    {"assign",
     [](Line& line) { Services::AssignListOfWelds(&line.welds, &line.op10, nullptr, 0); }},
    {"assign duplicates",
     [](Line& line) { Services::AssignListOfWelds(&line.duplicates, &line.op10, nullptr, 0); }},
    {"unassign", [](Line& line) { Services::UnassignListOfWelds(&line.welds, &line.op10); }},
    {"reallocate",
     [](Line& line) { Services::ReallocateWeld(&line.op10, &line.op20, &line.welds); }},
    {"outputs and first assignments",
     [](Line& line) {
       ZefISPPActivity_var activity = line.op10.Identity();
       List products = ListOf(line.part);
       Services::CreateProductOutput(activity, products);
       Services::AssignProductsAsFirstAssign(activity, products);
     }},
    {"cycle times",
     [](Line& line) {
       TuvBIWActivityIntelligenceServices::UpdateAllCycleTimeActivities();
       TuvBIWActivityIntelligenceServices::UpdateCycleTimeForWelding(&line.op10);
     }},
};

// A line that a failure went through can be worked on as any other.
void ExpectUsable(Line& line) {
  // The failing operation may have been the one that resumes the callbacks.
  line.op10.SetCallbacksBlocked(0);
  int changes = 0;
  line.op10.OnItemChange([&](embedded::Activity&) { ++changes; });
  EXPECT_EQ(Services::UnassignListOfWelds(&line.welds, &line.op10), E_FAIL);
  EXPECT_EQ(Services::AssignListOfWelds(&line.welds, &line.op10, nullptr, 0), S_OK);
  EXPECT_GE(changes, 1);
  EXPECT_EQ(line.a.DisplayStatus(), embedded::kAssignedStatus);
  NewList welds, activities;
  EXPECT_EQ(Services::GetWeldFromActivity(&line.op10, welds.Out(), 1, 0), S_OK);
  EXPECT_EQ(Names(*welds), (Strings{"A", "B", "C", "S", "D"}));
  EXPECT_EQ(Services::GetListOfAllActivities(activities.Out(), nullptr), S_OK);
  EXPECT_EQ(Names(*activities), (Strings{"ST10", "OP10", "OP20"}));
  EXPECT_EQ(TuvBIWActivityIntelligenceServices::UpdateCycleTimeForWelding(&line.op10), S_OK);
  EXPECT_GT(line.op10.CycleTime(), 0);
}

// After each failure the line is taken down: an object that a service kept a reference on would
// stay alive, one that it released too often would be gone before.
TEST(ServiceFailuresTest, EveryServiceOutlivesEveryFailureOfItsHost) {
  const long alive = CountLiveObjects();
  long total = 0;
  for (const auto& [what, run] : kScenarios) {
    SCOPED_TRACE(what);
    auto line = std::make_unique<Line>();
    const auto scenario = [&, run = run] { run(*line); };
    const auto check = [&] {
      ExpectUsable(*line);
      line.reset();
      EXPECT_EQ(CountLiveObjects(), alive);
      line = std::make_unique<Line>();
    };
    total += ForEachHostFailure(scenario, check);
    if (HasFailure()) return;
  }
  RecordProperty("host failures met", static_cast<int>(total));
  EXPECT_GE(total, 1500);
}

}  // namespace
