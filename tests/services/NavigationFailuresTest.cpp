#include <functional>
#include <memory>

#include "embedded/processdb/ProcessDatabase.h"
#include "services/TuvBIWServices.h"
#include "tests/support/HostFailures.h"
#include "tests/support/PlantTest.h"
#include "tests/support/ScratchFolder.h"

namespace {

using namespace tests;
using Services = TuvBIWServices;
using List = ZefListValZefBaseUnknown_var;

// Three operations in a row, two of them nested; what they take in, make and join, and a process
// database that knows a version of the weld.
class NavigationFailuresTest : public PlantTest {
 protected:
  void SetUp() override {
    plant.Flow(first, op);
    plant.Flow(op, last);
    plant.Assign(first, door);
    plant.Assign(nested, hinge);
    ZefISPPProductIO_var output;
    op.AddProductOutput(output.Put(), ZefISPPItem_var(panel.Identity()));
    plant.Root().Link(door.Identity(), embedded::ItemLink::Plain);
    application.SetPartLoadConstraint(true);
    auto made = embedded::ProcessDatabase::Create(folder->Path() / "plant.sqlite");
    for (const char* const name : {"LINE", "LINE.2"}) made->AddProcess(name, "", true);
    made->RelateVersions("LINE", "LINE.2");
    made->LinkActivity("FIRST", "LINE");
    made->AddVersionList("SW-1", {"LINE.2"});
    plant.Document()->AttachDatabase(std::move(made));
  }
  void TearDown() override {
    plant.Document()->AttachDatabase(nullptr);
    part = nullptr;
    folder.reset();
    PlantTest::TearDown();
  }
  ZefISPPActivity_var Of(embedded::Activity& activity) { return activity.Identity(); }

  std::unique_ptr<ScratchFolder> folder = std::make_unique<ScratchFolder>();
  embedded::Activity& first = plant.Operation("FIRST");
  embedded::Activity& op = plant.Operation("OP");
  embedded::Activity& nested = plant.Operation("NESTED", Plant::Task::None, &op);
  embedded::Activity& last = plant.Operation("LAST", Plant::Task::None, &nested);
  embedded::Product& door = plant.Part("DOOR");
  embedded::Product& panel = plant.Part("PANEL", &door);
  embedded::Product& hinge = plant.Part("HINGE", &door);
  ZefBaseUnknown* weld = plant.Weld("SW-1", {}, {&panel, &hinge}).Identity();
  ZefIProduct_var part = door.Identity();
};

// What a service makes of a list that holds nothing.
struct Query {
  const char* what;
  std::function<void(List*& ioList)> run;
};

TEST_F(NavigationFailuresTest, EveryQueryOutlivesEveryFailureOfItsHostAndAnswersAsBefore) {
  ZefUnicodeString text, number("PANEL");
  TuvIBIWFastener_var fastener = weld;
  int answer = 0;
  const Query queries[] = {
      {"GetActivityHierarchy", [&](List*&) { Services::GetActivityHierarchy(&last, text); }},
      {"GetPredecessorActivity",
       [&](List*& list) { Services::GetPredecessorActivity(Of(op), list); }},
      {"GetPredecessors", [&](List*& list) { Services::GetPredecessors(Of(op), *list); }},
      {"GetAllPredecessors", [&](List*& list) { Services::GetAllPredecessors(Of(last), *list); }},
      {"GetDescendants", [&](List*& list) { Services::GetDescendants(Of(plant.Root()), *list); }},
      {"GetPreviousActivities",
       [&](List*& list) { Services::GetPreviousActivities(Of(last), list); }},
      {"GetLoadedParts", [&](List*& list) { Services::GetLoadedParts(Of(last), list); }},
      {"GetChildParts", [&](List*& list) { Services::GetChildParts(part, list); }},
      {"GetSiblingParts", [&](List*& list) { Services::GetSiblingParts(part, list); }},
      {"IsPartInList",
       [&](List*& list) {
         list->Append(door.Identity());
         list->Append(panel.Identity());
         answer = Services::IsPartInList(number, list);
       }},
      {"ArePartsLoaded",
       [&](List*& list) {
         list->Append(panel.Identity());
         list->Append(hinge.Identity());
         answer = Services::ArePartsLoaded(weld, list);
       }},
      {"ValidateListOfFastenersForAssignmentToActivity",
       [&](List*& list) {
         list->Append(weld);
         Services::ValidateListOfFastenersForAssignmentToActivity(*list, Of(last));
       }},
      {"IsValidProcessVersion",
       [&](List*&) { answer = Services::IsValidProcessVersion(Of(first), fastener); }},
  };
  ReferenceSnapshot before{plant.Document()->Identity(), weld, part};
  for (auto* const activity : plant.Operations()) before.Add(activity->Identity());
  const long alive = CountLiveObjects();
  long met = 0;
  for (const Query& query : queries) {
    SCOPED_TRACE(query.what);
    const auto ask = [&] {
      List list, *held = &list;
      text = "";
      query.run(held);
      Strings found = Names(list);
      found.push_back(text.Bytes() + std::to_string(answer));
      return found;
    };
    const Strings expected = ask();
    met += ForEachHostFailure([&] { ask(); },
                              [&] {
                                ASSERT_EQ(before.Differences(), "");
                                ASSERT_EQ(CountLiveObjects(), alive);
                                ASSERT_EQ(ask(), expected);
                              });
  }
  RecordProperty("host failures met", static_cast<int>(met));
  EXPECT_GE(met, 500);
}

}  // namespace
