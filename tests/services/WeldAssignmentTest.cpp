#include "host/document/Document.h"
#include "host/fastening/Fastening.h"
#include "host/process/Process.h"
#include "host/visu/Visu.h"
#include "services/TuvBIWServices.h"
#include "tests/support/PlantTest.h"

namespace {

using namespace tests;
using embedded::Activity;
using embedded::kAssignedStatus;
using embedded::kUnassignedStatus;
using Services = TuvBIWServices;
using Task = Plant::Task;

const std::string kLook = "GetWeldFromActivity";
const std::string kAssign = "AssignKoraWeld";
const std::string kEnd = "<AssignListOfWelds";
// The display refresh of a weld without label.
const Strings kRefresh = {"CheckForTuvBIWCustomRep>", "=   No children",
                          "<CheckForTuvBIWCustomRep"};

class WeldAssignmentTest : public PlantTest {
 protected:
  WeldAssignmentTest() {
    op.OnItemChange([this](Activity& changed) {
      EXPECT_FALSE(changed.AreCallbacksBlocked());
      ++itemChanges;
    });
  }

  HRESULT Assign(ZefListValZefBaseUnknown_var welds, ZefISPPActivity* activity) {
    return Services::AssignListOfWelds(&welds, activity, nullptr, 0);
  }
  void ShowLabels(ZefListValZefBaseUnknown_var welds) {
    EXPECT_EQ(Services::VisualizationKoraWeldList(&welds, 2, 0, 0, 0, 0, 0), S_OK);
    trace.Take();
  }
  static Strings On(const Activity& activity) {
    ZefListValZefBaseUnknown_var items;
    activity.Links().ForEach([&](const embedded::ItemLink& link) { items.Append(link.Item()); });
    return Names(items);
  }
  static Strings ChildrenOf(embedded::SpotWeld& weld) {
    Strings classes;
    const auto* const children = weld.MainRep()->GetChildren();
    for (int i = 0; children && i < children->Size(); ++i) {
      classes.push_back((*children)[i]->IsA());
    }
    return classes;
  }

  Activity& op = plant.Operation("OP10");
  embedded::SpotWeld& a = plant.Weld("A");
  embedded::SpotWeld& b = plant.Weld("B");
  int itemChanges = 0;
};

TEST_F(WeldAssignmentTest, OneWeldIsAssignedWithoutLookingForDuplicates) {
  EXPECT_EQ(Services::AssignKoraWeld(&op, a.Identity()), S_OK);
  EXPECT_EQ(Services::AssignKoraWeld(&op, a.Identity()), S_OK);
  EXPECT_EQ(Services::AssignKoraWeld(&op, plant.Part("P1").Identity()), E_FAIL);
  EXPECT_EQ(Services::AssignKoraWeld(&op, nullptr), E_FAIL);
  EXPECT_EQ(Services::AssignKoraWeld(nullptr, a.Identity()), E_FAIL);
  op.AnswerInterface(IID_ZefISPPItemMgt, false);
  EXPECT_EQ(Services::AssignKoraWeld(&op, b.Identity()), E_FAIL);
  EXPECT_EQ(On(op), (Strings{"A", "A"}));
  EXPECT_EQ(a.DisplayStatus(), kUnassignedStatus);
  EXPECT_EQ(trace.Lines(), Lines({kAssign, kAssign, kAssign, kAssign, kAssign, kAssign}));
}

TEST_F(WeldAssignmentTest, NewWeldsAreAssignedAndDuplicatesWarnedOfOnce) {
  plant.Assign(op, a);
  auto& c = plant.Weld("C");
  auto& seam = plant.Seam("S");
  EXPECT_EQ(Assign(ListOf(a, nullptr, b, plant.Part("P1"), a, seam, c), &op), S_OK);
  EXPECT_EQ(On(op), (Strings{"A", "B", "S", "C"}));
  EXPECT_EQ(b.DisplayStatus(), kAssignedStatus);
  EXPECT_EQ(seam.DisplayStatus(), kAssignedStatus);
  EXPECT_EQ(a.DisplayStatus(), kUnassignedStatus) << "a duplicate is left as it is";
  EXPECT_EQ(op.NodeRedraws(), 1);
  EXPECT_EQ(op.Redraws(), 0);
  EXPECT_EQ(itemChanges, 1) << "one update for the whole batch";
  EXPECT_EQ(trace.Lines(), Lines(Joined({{kLook},
                                         {kAssign},
                                         kRefresh,
                                         {kAssign},
                                         kRefresh,
                                         {kAssign},
                                         kRefresh,
                                         {"GetCurrentDocument"},
                                         {kEnd}})));
  ASSERT_EQ(dialogs.Shown().size(), 1u);
  const DialogRequest& warning = dialogs.Shown().front();
  EXPECT_EQ(warning.title, "WARNING");
  EXPECT_EQ(warning.name, "WARNING");
  EXPECT_EQ(warning.style, 0x8100200u);
  EXPECT_EQ(warning.message,
            "Duplicated weld assignements to \nthe SAME activity are illegal and\nignored.");
  EXPECT_EQ(warning.parent, application.Windows().GetMainWindow());
}

TEST_F(WeldAssignmentTest, TheResultAndTheWarningGoByTheWeldsOfTheActivityBeforeTheCall) {
  plant.Assign(op, a);
  auto& other = plant.Operation("OP20");
  const struct {
    const char* what;
    ZefListValZefBaseUnknown_var welds;
    Activity& activity;
    HRESULT result;
    std::size_t warnings;
    Strings on;
  } cases[] = {
      {"all duplicates", ListOf(a, a), op, E_FAIL, 1, {"A"}},
      {"twice in the list", ListOf(b, b), op, S_OK, 0, {"A", "B", "B"}},
      {"no welds", ListOf(nullptr, op), op, E_FAIL, 0, {"A", "B", "B"}},
      {"empty", ListOf(), op, E_FAIL, 0, {"A", "B", "B"}},
      {"on another activity", ListOf(a), other, S_OK, 0, {"A"}},
  };
  for (const auto& [what, welds, activity, result, warnings, on] : cases) {
    SCOPED_TRACE(what);
    const int redraws = activity.NodeRedraws();
    EXPECT_EQ(Assign(welds, &activity), result);
    EXPECT_EQ(dialogs.Shown().size(), warnings);
    EXPECT_EQ(On(activity), on);
    EXPECT_EQ(activity.NodeRedraws() - redraws, result == S_OK ? 1 : 0);
    dialogs.Forget();
  }
  trace.Take();
  EXPECT_EQ(Services::AssignListOfWelds(nullptr, &op, nullptr, 0), E_FAIL);
  EXPECT_EQ(Assign(ListOf(b), nullptr), E_FAIL);
  EXPECT_EQ(trace.Take(), Lines({kEnd, kEnd}));
  // Neither without memory for the dialog nor without windows is anything shown.
  FailAllocation(1);
  EXPECT_EQ(Assign(ListOf(a), &op), E_FAIL);
  FailAllocation(0);
  application.SetWindowless(true);
  EXPECT_EQ(Assign(ListOf(a), &op), E_FAIL);
  EXPECT_EQ(dialogs.Shown().size(), 0u);
}

TEST_F(WeldAssignmentTest, AWeldThatIsNotRepresentedIsAssignedAndNotRefreshed) {
  ShowLabels(ListOf(a));
  a.SetRepresented(false);
  EXPECT_EQ(Assign(ListOf(a), &op), S_OK);
  EXPECT_EQ(On(op), Strings{"A"});
  EXPECT_EQ(a.DisplayStatus(), kUnassignedStatus);
  EXPECT_EQ(trace.Lines(), Lines({kLook, kAssign, "GetCurrentDocument", kEnd}));
}

TEST_F(WeldAssignmentTest, ALabelIsTakenAwayBeforeTheStatusChangesAndMadeAnewAfterIt) {
  const Strings check = {"CheckForTuvBIWCustomRep>", "=TuvBIWCustomRep",
                         "<CheckForTuvBIWCustomRep"};
  const Strings toggle = {"VisualizationKoraWeldList>", "GetRootActivity>",
                          "GetCurrentDocument",         "<GetRootActivity",
                          "GetListOfAssignedWeld>",     "GetListOfKoraAssignedWeld",
                          "<GetListOfAssignedWeld",     "DeleteTuvBIWCustomRep>"};
  const Strings end = {"GetCurrentDocument", "<VisualizationKoraWeldList"};
  const Strings gone = {"=TuvBIWCustomRep <-- OUT"};
  const Strings deleted = {"<DeleteTuvBIWCustomRep"};
  const Strings made = {"=TuvBIWCustomRep --> IN", "=TuvBIWCustomRep::Build --> IN",
                        "=TuvBIWCustomRep::Build --> OUT", "=TuvBIWCustomRep <-- OUT"};
  auto welds = ListOf(a);
  ShowLabels(ListOf(a, a));
  ASSERT_EQ(ChildrenOf(a).size(), 2u);
  EXPECT_EQ(Assign(welds, &op), S_OK);
  EXPECT_EQ(ChildrenOf(a), Strings{"TuvBIWCustomRep"}) << "both gave way to one";
  EXPECT_EQ(trace.Take(), Lines(Joined({{kLook, kAssign},
                                        check,
                                        toggle,
                                        gone,
                                        gone,
                                        deleted,
                                        end,
                                        toggle,
                                        deleted,
                                        made,
                                        end,
                                        {"GetCurrentDocument", kEnd}})));
  EXPECT_EQ(Services::UnassignListOfWelds(&welds, &op), E_FAIL);
  EXPECT_EQ(ChildrenOf(a), Strings{"TuvBIWCustomRep"});
  EXPECT_EQ(trace.Take(),
            Lines(Joined(
                {check, toggle, gone, deleted, end, toggle, deleted, made, end, {"<Unassign"}})));
}

TEST_F(WeldAssignmentTest, CallbacksAreUnblockedAlsoWhenAnExceptionPasses) {
  ShowLabels(ListOf(a));
  ZefBaseUnknown* const container = plant.Document()->RootContainerObject();
  AnswerInterface(container, IID_ZefISPPProcessContainer, false);
  auto welds = ListOf(a, b);
  EXPECT_THROW(Assign(welds, &op), ZefNullHandleException);
  EXPECT_FALSE(op.AreCallbacksBlocked());
  EXPECT_EQ(On(op), Strings{"A"}) << "what was done before stays";
  EXPECT_EQ(itemChanges, 0);
  EXPECT_NE(trace.Take().back(), "TuvBIWServices::AssignListOfWelds <-- OUT");
  EXPECT_THROW(Services::UnassignListOfWelds(&welds, &op), ZefNullHandleException);
  EXPECT_FALSE(op.AreCallbacksBlocked());
  EXPECT_EQ(On(op), Strings());
  EXPECT_NE(trace.Take().back(), "TuvBIWServices::Unassign <-- OUT");
}

TEST_F(WeldAssignmentTest, TheContainerIsRedrawnOnlyForAProductDocumentThatIsAProcessToo) {
  Plant both(Plant::Kind::Both);
  auto& task = both.Operation("OP10");
  application.Edit(both.Document());
  const auto* const root =
      embedded::ObjectAs<embedded::RootContainer>(both.Document()->RootContainerObject());
  EXPECT_EQ(Assign(ListOf(both.Weld("SW-1")), &task), S_OK);
  EXPECT_EQ(root->Redraws(), 1);
  EXPECT_EQ(task.NodeRedraws(), 1);
  EXPECT_EQ(trace.Take(),
            Lines(Joined({{kLook, kAssign}, kRefresh, {"GetCurrentDocument"}, {"=Redraw", kEnd}})));
  AnswerInterface(both.Document()->RootContainerObject(), IID_ZefIRedrawEvent, false);
  task.AnswerInterface(IID_ZefIRedrawEvent, false);
  EXPECT_EQ(Assign(ListOf(both.Weld("SW-2")), &task), S_OK);
  EXPECT_EQ(root->Redraws() + task.NodeRedraws(), 2);
  AnswerInterface(both.Document()->RootContainerObject(), IID_ZefIContainer, false);
  EXPECT_THROW(Assign(ListOf(both.Weld("SW-3")), &task), ZefNullHandleException);
  EXPECT_EQ(On(task), (Strings{"SW-1", "SW-2", "SW-3"}));
}

TEST_F(WeldAssignmentTest, UnassigningRemovesEveryLinkAndAlwaysAnswersFailure) {
  auto& part = plant.Part("P1");
  auto& stray = plant.Weld("STRAY");
  EXPECT_EQ(Assign(ListOf(a, a, b), &op), S_OK);
  plant.Assign(op, part);
  op.Link(a.Identity(), embedded::ItemLink::FirstAssigned);
  stray.SetDisplayStatus(kAssignedStatus, 1);
  const int before = op.NodeRedraws();
  itemChanges = 0;
  trace.Take();
  auto welds = ListOf(a, nullptr, part, stray);
  EXPECT_EQ(Services::UnassignListOfWelds(&welds, &op), E_FAIL);
  EXPECT_EQ(On(op), (Strings{"B", "P1"}));
  EXPECT_EQ(a.DisplayStatus(), kUnassignedStatus);
  EXPECT_EQ(b.DisplayStatus(), kAssignedStatus);
  EXPECT_EQ(stray.DisplayStatus(), kUnassignedStatus) << "nobody asks whether it was assigned";
  EXPECT_EQ(op.NodeRedraws(), before);
  EXPECT_EQ(itemChanges, 1);
  EXPECT_EQ(trace.Take(), Lines(Joined({kRefresh, kRefresh, {"<Unassign"}})));
  op.AnswerInterface(IID_ZefISPPItemMgt, false);
  auto assigned = ListOf(b);
  EXPECT_EQ(Services::UnassignListOfWelds(&assigned, &op), E_FAIL);
  EXPECT_FALSE(op.AreCallbacksBlocked());
  EXPECT_EQ(b.DisplayStatus(), kAssignedStatus);
  EXPECT_EQ(Services::UnassignListOfWelds(nullptr, &op), E_FAIL);
  EXPECT_EQ(Services::UnassignListOfWelds(&assigned, nullptr), E_FAIL);
  EXPECT_EQ(trace.Take(), Lines({"<Unassign", "<Unassign", "<Unassign"}));
  EXPECT_EQ(Services::Unassign(&op, b.Identity()), E_FAIL);
  EXPECT_EQ(On(op), (Strings{"B", "P1"}));
  EXPECT_EQ(trace.Lines(), Strings());
}

TEST_F(WeldAssignmentTest, ReallocatingMovesWhatTheTargetAccepts) {
  auto& target = plant.Operation("OP20");
  auto& seam = plant.Seam("S");
  auto& part = plant.Part("P1");
  for (auto* const weld : {&a, &b, &a}) plant.Assign(op, *weld);
  plant.Assign(op, seam);
  plant.Assign(op, part);
  plant.Assign(target, b);
  b.SetRepresented(false);
  ShowLabels(ListOf(a));
  op.Link(a.Identity(), embedded::ItemLink::FirstAssigned);
  // Somebody suspended the target's callbacks before: what is pending is processed all the same.
  Strings updated;
  for (auto* const activity : {&op, &target}) {
    activity->OnItemChange([&](Activity& changed) { updated.push_back(changed.Key()); });
  }
  target.SetCallbacksBlocked(1);
  auto welds = ListOf(a, nullptr, seam, b, part);
  EXPECT_EQ(Services::ReallocateWeld(&op, &target, &welds), E_FAIL);
  EXPECT_EQ(On(op), Strings{"S"}) << "the target refuses seams";
  EXPECT_EQ(On(target), (Strings{"B", "A", "B", "P1"}));
  EXPECT_EQ(a.DisplayStatus(), kAssignedStatus);
  EXPECT_EQ(b.DisplayStatus(), kUnassignedStatus) << "it is not represented";
  EXPECT_EQ(op.Redraws() + target.Redraws(), 2);
  EXPECT_EQ(op.NodeRedraws() + target.NodeRedraws(), 0);
  EXPECT_EQ(updated, (Strings{"OP10", "OP20"}));
  EXPECT_EQ(trace.Lines(), Lines({"ReallocateWeld"})) << "labels are left alone";
}

TEST_F(WeldAssignmentTest, ReallocatingNeedsItemsOnBothSides) {
  auto& target = plant.Operation("OP20");
  plant.Assign(op, a);
  auto welds = ListOf(a);
  const auto reallocate = [&](Activity* from, Activity* to, auto* list) {
    EXPECT_EQ(Services::ReallocateWeld(from, to, list), E_FAIL);
    EXPECT_EQ(trace.Take(), Lines({"ReallocateWeld"}));
    EXPECT_FALSE(op.AreCallbacksBlocked());
    return std::pair{op.Redraws(), target.Redraws()};
  };
  using Redraws = std::pair<int, int>;
  target.AnswerInterface(IID_ZefISPPItemMgt, false);
  EXPECT_EQ(reallocate(&op, &target, &welds), (Redraws{1, 0}));
  target.AnswerInterface(IID_ZefISPPItemMgt, true);
  op.AnswerInterface(IID_ZefISPPItemMgt, false);
  EXPECT_EQ(reallocate(&op, &target, &welds), (Redraws{1, 0}));
  op.AnswerInterface(IID_ZefISPPItemMgt, true);
  EXPECT_EQ(reallocate(nullptr, &target, &welds), (Redraws{1, 0}));
  EXPECT_EQ(reallocate(&op, nullptr, &welds), (Redraws{1, 0}));
  EXPECT_EQ(reallocate(&op, &target, static_cast<ZefListValZefBaseUnknown_var*>(nullptr)),
            (Redraws{1, 0}));
  EXPECT_EQ(On(op), Strings{"A"});
  // To itself: the links become one new one, at the end.
  plant.Assign(op, b);
  plant.Assign(op, a);
  EXPECT_EQ(reallocate(&op, &op, &welds), (Redraws{3, 0}));
  EXPECT_EQ(On(op), (Strings{"B", "A"}));
}

}  // namespace
