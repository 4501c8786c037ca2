#include <memory>

#include "host/document/Document.h"
#include "services/Received.h"
#include "services/TuvBIWServices.h"
#include "tests/support/HostFailures.h"
#include "tests/support/PlantTest.h"

namespace {

using namespace tests;
using Services = TuvBIWServices;
using List = ZefListValZefBaseUnknown_var;

// A small line at work: two operations with welds, some of them labelled.
struct Line {
  Line() {
    for (auto* const weld : {&a, &b, &a}) plant.Assign(op10, *weld);
    plant.Assign(op10, part);
    plant.Assign(op20, seam);
    plant.Assign(plant.Root(), seam);
    auto labelled = ListOf(a, c, d);
    Services::VisualizationKoraWeldList(&labelled, 2, 0, 0, 0, 0, 0);
  }

  Desk desk{Plant(Plant::Kind::Both)};
  Plant& plant = desk.plant;
  ZefDocument* document = plant.Document().Get();
  embedded::Activity& station = plant.Station("ST10");
  embedded::Activity& op10 = plant.Operation("OP10");
  embedded::Activity& op20 = plant.Operation("OP20", Plant::Task::Both);
  embedded::Product& part = plant.Part("P1");
  embedded::Product& panel = plant.Part("P2", &part);
  embedded::SpotWeld& a = plant.Weld("A", {1, 2, 3}, {&part});
  embedded::SpotWeld& b = plant.Weld("B");
  embedded::SpotWeld& c = plant.Weld("C");
  embedded::SpotWeld& d = plant.Weld("D");
  embedded::CurveFastener& seam = plant.Seam("S", {{0, 0, 0}, {0, 0, 9}});
  embedded::PointFeature& locator = plant.Locator("LP");
  embedded::PointFeature& clamp = plant.Clamp("CP");
  List welds = ListOf(a, b, nullptr, part, c, seam, d);
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
    {"GetCurrentDocument", [](Line&) { Services::GetCurrentDocument(); }},
    {"GetRootProcessContainer", [](Line&) { Services::GetRootProcessContainer(nullptr); }},
    {"GetRootContainer", [](Line& line) { Services::GetRootContainer(line.document); }},
    {"GetRootActivity",
     [](Line&) {
       ZefISPPActivity_var root;
       Services::GetRootActivity(root.Put(), nullptr);
     }},
    {"GetListOfAllActivities",
     [](Line&) {
       Received<List> activities;
       Services::GetListOfAllActivities(activities.Out(), nullptr);
     }},
    {"GetAllProducts",
     [](Line&) {
       Received<List> products;
       Services::GetAllProducts(products.Out());
     }},
    {"GetDocumentFromFeature",
     [](Line& line) { Services::GetDocumentFromFeature(line.a.Identity()); }},
    {"GetFeatContainerFromDocument",
     [](Line& line) { Services::GetFeatContainerFromDocument(line.document); }},
    {"GetFeatContainerFromFeature",
     [](Line& line) { Services::GetFeatContainerFromFeature(line.a.Identity()); }},
    {"GetListOfAllFasteners", [](Line&) { Listed fasteners(Services::GetListOfAllFasteners); }},
    {"GetListOfAllLocators", [](Line&) { Listed locators(Services::GetListOfAllLocators); }},
    {"GetListOfAllClamps", [](Line&) { Listed clamps(Services::GetListOfAllClamps); }},
    {"GetListOfAllPointFasteners", [](Line&) { Services::GetListOfAllPointFasteners(nullptr); }},
    {"GetListOfAllWeld",
     [](Line&) {
       Received<List> welds;
       Services::GetListOfAllWeld(welds.Out());
     }},
    {"GetListOfAssignedWeld",
     [](Line& line) {
       Received<List> welds;
       Services::GetListOfAssignedWeld(&line.plant.Root(), welds.Out());
     }},
    {"GetListOfKoraAssignedWeld",
     [](Line& line) {
       Received<List> welds;
       Services::GetListOfKoraAssignedWeld(&line.op10, welds.Out());
     }},
    {"GetWeldFromActivity",
     [](Line& line) {
       Received<List> welds;
       Services::GetWeldFromActivity(&line.plant.Root(), welds.Out(), 1, -1);
     }},
    {"CheckWeldAssignement",
     [](Line& line) {
       Services::CheckWeldAssignement(line.c.Identity(), &line.op10, &line.welds, 0);
     }},
    {"GetWeldID", [](Line& line) { Services::GetWeldID(line.a.Identity()); }},
    {"GetActivityFromAssignedWeld",
     [](Line& line) {
       Received<List> activities;
       int count = 0;
       Services::GetActivityFromAssignedWeld(line.a.Identity(), activities.Out(), count);
       EXPECT_EQ(count, activities ? activities->Size() : 0);
     }},
    {"IsValidWeldForActivity",
     [](Line& line) { Services::IsValidWeldForActivity(line.a.Identity(), &line.op10); }},
    {"IsWeldAssigned",
     [](Line& line) { Services::IsWeldAssigned(line.a.Identity(), &line.welds); }},
    {"AssignKoraWeld", [](Line& line) { Services::AssignKoraWeld(&line.op20, line.a.Identity()); }},
    {"AssignListOfWelds",
     [](Line& line) { Services::AssignListOfWelds(&line.welds, &line.op10, nullptr, 0); }},
    {"AssignListOfWelds, with duplicates alone",
     [](Line& line) {
       auto duplicates = ListOf(line.a, line.b);
       Services::AssignListOfWelds(&duplicates, &line.op10, nullptr, 0);
     }},
    {"UnassignListOfWelds",
     [](Line& line) { Services::UnassignListOfWelds(&line.welds, &line.op10); }},
    {"ReallocateWeld",
     [](Line& line) { Services::ReallocateWeld(&line.op10, &line.op20, &line.welds); }},
    {"Unassign", [](Line& line) { Services::Unassign(&line.op10, line.a.Identity()); }},
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
  Received<List> welds, activities;
  EXPECT_EQ(Services::GetWeldFromActivity(&line.op10, welds.Out(), 1, 0), S_OK);
  EXPECT_EQ(Names(*welds), (Strings{"A", "B", "C", "S", "D"}));
  EXPECT_EQ(Services::GetListOfAllActivities(activities.Out(), nullptr), S_OK);
  EXPECT_EQ(Names(*activities), (Strings{"ST10", "OP10", "OP20"}));
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
