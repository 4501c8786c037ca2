#include <filesystem>
#include <optional>

#include "embedded/model/ObjectClass.h"
#include "embedded/processdb/ProcessDatabase.h"
#include "host/document/Document.h"
#include "host/process/Process.h"
#include "services/TuvBIWServices.h"
#include "tests/support/PlantTest.h"

namespace {

using namespace tests;
using embedded::Activity;
using Services = TuvBIWServices;
using NewList = std::unique_ptr<ZefListValZefBaseUnknown_var>;
using Task = Plant::Task;

// An activity of another host: it answers any number, and may stand below itself.
class ForeignActivity
    : public ComponentObject<ZefISPPActivity, ZefISPPChildManagement, TuvIBIWActivity> {
 public:
  ZefMetaClass* GetMetaObject() const override {
    return embedded::ObjectClass<ForeignActivity>("ForeignActivity");
  }
  HRESULT GetParentActivity(ZefISPPAbstractActivity_var&) override { return E_FAIL; }
  ZefUnicodeString GetLabel() override { return "foreign"; }
  ZefListValZefBaseUnknown_var* GetChildren(const ZefUnicodeString&) override {
    return new ZefListValZefBaseUnknown_var(children);
  }
  int IsValidFastener(const TuvIBIWFastener_var&) override { return answer; }

  ZefListValZefBaseUnknown_var children;
  int answer = 0;
};

class WeldQueriesTest : public PlantTest {
 protected:
  // The result of a collector and what it made of a null list: nothing, or the names.
  template <class Collector>
  std::pair<HRESULT, std::optional<Strings>> Collect(const Collector& collect) {
    ZefListValZefBaseUnknown_var* list = nullptr;
    const HRESULT result = collect(list);
    const NewList owner(list);
    return {result, list ? std::optional(Names(*list)) : std::nullopt};
  }
  auto Assigned(ZefISPPActivity* activity) {
    return Collect([&](auto& list) { return Services::GetListOfAssignedWeld(activity, list); });
  }
  auto FromActivity(ZefISPPActivity* activity, int depth) {
    return Collect(
        [&](auto& list) { return Services::GetWeldFromActivity(activity, list, 1, depth); });
  }
};

using Found = std::pair<HRESULT, std::optional<Strings>>;
const Found kNoList{E_FAIL, std::nullopt};

Strings AssignedLines(bool someList) {
  return someList ? Lines({"GetListOfAssignedWeld>", "GetListOfKoraAssignedWeld",
                           "=There are some welds assigned", "<GetListOfAssignedWeld"})
                  : Lines({"GetListOfAssignedWeld>", "GetListOfKoraAssignedWeld",
                           "<GetListOfAssignedWeld"});
}

TEST_F(WeldQueriesTest, AssignedWeldsAreTheFastenersThatTheActivitysLinksName) {
  auto& station = plant.Station("ST10");
  auto& op = plant.Operation("OP10");
  auto& empty = plant.Operation("OP20");
  auto& parts = plant.Operation("OP30");
  auto& weld = plant.Weld("SW-1");
  auto& seam = plant.Seam("SEAM-1");
  auto& part = plant.Part("P1");
  plant.Assign(op, weld);
  plant.Assign(op, part);
  plant.Assign(op, seam);
  plant.Assign(op, weld);
  plant.Assign(parts, part);
  plant.Assign(plant.Root(), seam);

  const struct {
    Activity& activity;
    Found found;
  } cases[] = {
      {op, {S_OK, Strings{"SW-1", "SEAM-1", "SW-1"}}},
      {empty, kNoList},
      {parts, {S_OK, Strings{}}},
      {station, kNoList},
      // The root's container lists the activities, too.
      {plant.Root(), {S_OK, Strings{"SEAM-1"}}},
  };
  for (const auto& [activity, found] : cases) {
    SCOPED_TRACE(activity.Key());
    EXPECT_EQ(Assigned(&activity), found);
    EXPECT_EQ(trace.Take(), AssignedLines(found.second.has_value()));
  }
}

TEST_F(WeldQueriesTest, AListOfAssignedWeldsMakesTheAnswerASuccess) {
  auto& op = plant.Operation("OP10");
  auto list = ListOf(op);
  auto* held = &list;
  EXPECT_EQ(Services::GetListOfAssignedWeld(nullptr, held), S_OK);
  EXPECT_EQ(Assigned(nullptr), kNoList);
  EXPECT_EQ(trace.Take(), Lines({"GetListOfAssignedWeld>", "=There are some welds assigned",
                                 "<GetListOfAssignedWeld", "GetListOfAssignedWeld"}));
  EXPECT_EQ(Services::GetListOfKoraAssignedWeld(&op, held), E_FAIL);
  EXPECT_EQ(Services::GetListOfKoraAssignedWeld(nullptr, held), E_FAIL);
  plant.Assign(op, plant.Weld("SW-1"));
  EXPECT_EQ(Services::GetListOfKoraAssignedWeld(&op, held), S_OK);
  EXPECT_EQ(Names(list), (Strings{"OP10", "SW-1"}));
  op.AnswerInterface(IID_ZefISpecObject, false);
  EXPECT_EQ(Services::GetListOfKoraAssignedWeld(&op, held), E_FAIL);
  const std::string kora = "GetListOfKoraAssignedWeld";
  EXPECT_EQ(trace.Lines(), Lines({kora, kora, kora, kora}));
}

TEST_F(WeldQueriesTest, WeldsOfAnActivityAreItsFastenersAmongItsItems) {
  auto& op = plant.Operation("OP10");
  auto& weld = plant.Weld("SW-1");
  auto& hidden = plant.Weld("SW-2");
  EXPECT_EQ(FromActivity(nullptr, 0), kNoList);
  EXPECT_EQ(FromActivity(nullptr, -1), kNoList);
  EXPECT_EQ(FromActivity(&op, 0), kNoList);
  plant.Assign(op, plant.Part("P1"));
  EXPECT_EQ(FromActivity(&op, 0), kNoList);
  for (auto* const each : {&weld, &hidden, &weld}) plant.Assign(op, *each);
  hidden.AnswerInterface(IID_ZefISPPItem, false);
  EXPECT_EQ(FromActivity(&op, 0), (Found{S_OK, Strings{"SW-1", "SW-1"}}));
  EXPECT_EQ(FromActivity(&op, 5), (Found{S_OK, Strings{"SW-1", "SW-1"}}));
  weld.AnswerInterface(IID_TuvIBIWFastener, false);
  EXPECT_EQ(FromActivity(&op, 0), kNoList);
  op.AnswerInterface(IID_ZefISPPItemMgt, false);
  EXPECT_EQ(FromActivity(&op, 0), kNoList);
  for (const std::string& line : trace.Lines()) EXPECT_NE(line, "OP10");
}

TEST_F(WeldQueriesTest, TheWalkDownAppendsDepthFirstAndTracesEachLabelTwice) {
  auto& station = plant.Station("ST10");
  auto& op10 = plant.Operation("OP10");
  auto& task = plant.Operation("TASK", Task::Welding, &op10);
  auto& op20 = plant.Operation("OP20");
  auto& gone = plant.Operation("GONE");
  plant.Assign(task, plant.Weld("SW-1"));
  plant.Assign(op10, plant.Weld("SW-2"));
  plant.Assign(op20, plant.Weld("SW-3"));
  plant.Assign(gone, plant.Weld("SW-4"));
  gone.AnswerInterface(IID_ZefISPPActivity, false);
  op20.AnswerInterface(IID_ZefISPPChildManagement, false);
  // The station has no items of its own, which its result says.
  EXPECT_EQ(FromActivity(&station, -1), (Found{E_FAIL, Strings{"SW-2", "SW-1", "SW-3"}}));
  const std::string walk = "GetWeldFromActivity";
  EXPECT_EQ(trace.Take(), Lines({walk + ">", "=ST10", walk + ">", "=OP10", walk + ">", "=TASK",
                                 "<" + walk, "=TASK", "<" + walk, "=OP10", walk + ">", "=OP20",
                                 "<" + walk, "=OP20", "<" + walk}));
  EXPECT_EQ(FromActivity(&op10, -1), (Found{S_OK, Strings{"SW-2", "SW-1"}}));
  EXPECT_EQ(FromActivity(&op10, 0), (Found{S_OK, Strings{"SW-2"}}));
}

TEST_F(WeldQueriesTest, AnActivityBelowItselfIsNotEnteredAgain) {
  const auto activity = Make<ForeignActivity>();
  auto& op = plant.Operation("OP10");
  activity->children = ListOf(op, nullptr, *activity, op);
  EXPECT_EQ(FromActivity(activity, -1), kNoList);
  EXPECT_EQ(trace.Lines(),
            Lines({"GetWeldFromActivity>", "=foreign", "GetWeldFromActivity>", "=OP10",
                   "<GetWeldFromActivity", "=OP10", "GetWeldFromActivity>", "=OP10",
                   "<GetWeldFromActivity", "=OP10", "<GetWeldFromActivity"}));
  activity->children.RemoveAll();
}

TEST_F(WeldQueriesTest, AVeryDeepTreeIsWalkedToItsEnd) {
  Activity* deepest = &plant.Root();
  for (int i = 0; i < 30000; ++i) {
    deepest = &plant.Operation("OP" + std::to_string(i), Task::None, deepest);
  }
  plant.Assign(*deepest, plant.Weld("SW-1"));
  EXPECT_EQ(FromActivity(&plant.Root(), -1), (Found{E_FAIL, Strings{"SW-1"}}));
}

TEST_F(WeldQueriesTest, AWeldMayBeAssignedUnlessItIsOnTheActivityOrPending) {
  auto& op = plant.Operation("OP10");
  auto& on = plant.Weld("ON");
  auto& free = plant.Weld("FREE");
  plant.Assign(op, on);
  auto none = ListOf();
  auto pending = ListOf(free);
  auto withNull = ListOf(nullptr);
  const struct {
    const char* what;
    ZefBaseUnknown* weld;
    ZefISPPActivity* activity;
    ZefListValZefBaseUnknown_var* pending;
    HRESULT result;
    bool asksActivity;
  } cases[] = {
      {"free", free.Identity(), &op, nullptr, S_OK, true},
      {"on the activity", on.Identity(), &op, &none, E_FAIL, true},
      {"pending", free.Identity(), &op, &pending, E_FAIL, true},
      {"another is pending", free.Identity(), &op, &withNull, S_OK, true},
      {"no activity", on.Identity(), nullptr, nullptr, S_OK, false},
      {"no activity, pending", free.Identity(), nullptr, &pending, E_FAIL, false},
      {"no weld", nullptr, &op, nullptr, S_OK, false},
      {"no weld, not pending", nullptr, &op, &pending, S_OK, false},
      {"no weld, pending", nullptr, &op, &withNull, E_FAIL, false},
  };
  for (const auto& [what, weld, activity, list, result, asksActivity] : cases) {
    SCOPED_TRACE(what);
    EXPECT_EQ(Services::CheckWeldAssignement(weld, activity, list, 0), result);
    EXPECT_EQ(trace.Take(), asksActivity ? Lines({"CheckWeldAssignment>", "GetWeldFromActivity",
                                                  "<CheckWeldAssignment"})
                                         : Lines({"CheckWeldAssignment"}));
  }
}

TEST_F(WeldQueriesTest, TheActivitiesOfAWeldAreCountedPerLink) {
  auto& weld = plant.Weld("SW-1");
  auto& free = plant.Weld("SW-2");
  auto& op10 = plant.Operation("OP10");
  auto& op20 = plant.Operation("OP20");
  for (auto* const op : {&op20, &op10, &op20}) plant.Assign(*op, weld);
  int count = -1;
  const auto activitiesOf = [&](ZefBaseUnknown* asked) {
    return Collect(
        [&](auto& list) { return Services::GetActivityFromAssignedWeld(asked, list, count); });
  };
  EXPECT_EQ(activitiesOf(weld.Identity()), (Found{S_OK, Strings{"OP20", "OP10", "OP20"}}));
  EXPECT_EQ(count, 3);
  EXPECT_EQ(activitiesOf(free.Identity()), (Found{S_OK, std::nullopt}));
  EXPECT_EQ(count, 0);
  count = -1;
  EXPECT_EQ(activitiesOf(nullptr), kNoList);
  EXPECT_EQ(count, 0);
  op20.AnswerInterface(IID_ZefISPPActivity, false);
  AnswerInterface(weld.Links()[1]->Identity(), IID_ZefISpecObject, false);
  EXPECT_EQ(activitiesOf(weld.Identity()), (Found{S_OK, std::nullopt}));
  EXPECT_EQ(count, 0);
  count = -1;
  weld.AnswerInterface(IID_ZefILinkableObject, false);
  EXPECT_EQ(activitiesOf(weld.Identity()), kNoList);
  EXPECT_EQ(count, 0);
  EXPECT_EQ(trace.Lines(), Strings());
}

TEST_F(WeldQueriesTest, OnlyABiwActivityRefusesAFastenerAndOnlyAFastenerIsRefused) {
  auto& weld = plant.Weld("SW-1");
  auto& seam = plant.Seam("SEAM-1");
  auto& part = plant.Part("P1");
  auto& welding = plant.Operation("WELD");
  auto& fastening = plant.Operation("SEAM", Task::CurveFastening);
  auto& other = plant.Operation("OTHER", Task::None);
  const struct {
    ZefBaseUnknown* weld;
    ZefISPPActivity* activity;
    int valid;
  } cases[] = {
      {weld.Identity(), &welding, 1},   {seam.Identity(), &welding, 0},
      {weld.Identity(), &fastening, 0}, {seam.Identity(), &fastening, 1},
      {seam.Identity(), &other, 1},     {part.Identity(), &welding, 1},
      {weld.Identity(), nullptr, 1},    {nullptr, &welding, 1},
  };
  for (const auto& [fastener, activity, valid] : cases) {
    EXPECT_EQ(Services::IsValidWeldForActivity(fastener, activity), valid);
  }
  const auto foreign = Make<ForeignActivity>();
  for (const auto& [answer, byte] : {std::pair{0x100, 0}, {0x102, 2}, {-1, 0xFF}}) {
    foreign->answer = answer;
    EXPECT_EQ(Services::IsValidWeldForActivity(weld.Identity(), foreign), byte);
  }
}

TEST_F(WeldQueriesTest, OnlySpotWeldsAreAssignedInTheDatabaseOrInTheList) {
  auto& weld = plant.Weld("SW-1");
  auto& known = plant.Weld("SW-2");
  auto& seam = plant.Seam("SEAM-1");
  const auto file = std::filesystem::path(testing::TempDir()) / "weld-queries.pdb";
  std::filesystem::remove(file);
  auto database = embedded::ProcessDatabase::Create(file);
  database->AddProcess("A1", "", true);
  database->Assign("SW-2", "A1");
  plant.Document()->AttachDatabase(std::move(database));
  auto list = ListOf(seam, weld);
  EXPECT_EQ(Services::IsWeldAssigned(nullptr, &list), 0);
  EXPECT_EQ(Services::IsWeldAssigned(seam.Identity(), &list), 0);
  EXPECT_EQ(Services::IsWeldAssigned(weld.Identity(), &list), 1);
  EXPECT_EQ(Services::IsWeldAssigned(weld.Identity(), nullptr), 0);
  EXPECT_EQ(Services::IsWeldAssigned(known.Identity(), nullptr), 1);
  list.RemoveAll();
  EXPECT_EQ(Services::IsWeldAssigned(weld.Identity(), &list), 0);
  EXPECT_EQ(Services::IsWeldAssigned(known.Identity(), &list), 1);
  plant.Document()->AttachDatabase(nullptr);
  std::filesystem::remove(file);
  EXPECT_EQ(trace.Lines(), Strings());
}

TEST_F(WeldQueriesTest, AWeldIsNamedByItsAliasAndTheListOfAllWeldsIsNotOffered) {
  auto& weld = plant.Weld("Schweißpunkt 1");
  EXPECT_EQ(Services::GetWeldID(weld.Identity()), "Schweißpunkt 1");
  EXPECT_EQ(Services::GetWeldID(nullptr), "");
  weld.AnswerInterface(IID_ZefIAlias, false);
  EXPECT_EQ(Services::GetWeldID(weld.Identity()), "");
  EXPECT_EQ(Collect([](auto& list) { return Services::GetListOfAllWeld(list); }), kNoList);
  EXPECT_EQ(trace.Lines(), Strings());
}

}  // namespace
