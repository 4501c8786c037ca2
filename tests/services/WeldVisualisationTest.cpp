#include "host/values/Each.h"
#include "host/visu/Visu.h"
#include "services/TuvBIWServices.h"
#include "tests/support/HostFailures.h"
#include "tests/support/PlantTest.h"
#include "visu/TuvBIWCustomRep.h"

namespace {

using Services = TuvBIWServices;
using namespace tests;

// For Lines: what making a label writes, and what its end writes.
const Strings kNewLabel = {"=TuvBIWCustomRep --> IN", "=TuvBIWCustomRep::Build --> IN",
                           "=TuvBIWCustomRep::Build --> OUT", "=TuvBIWCustomRep <-- OUT"};
const char* const kLabelEnds = "=TuvBIWCustomRep <-- OUT";

template <class Weld>
Zef3DBagRep* BagOf(Weld& weld) {
  return dynamic_cast<Zef3DBagRep*>(weld.Display().Main());
}

// The class names under a bag, in order.
Strings Children(Zef3DBagRep* bag) {
  Strings names;
  const list<Zef3DRep>* const children = bag->GetChildren();
  for (int i = 0; children && i < children->Size(); ++i) names.push_back((*children)[i]->IsA());
  return names;
}

class WeldVisualisationTest : public PlantTest {
 protected:
  static HRESULT Visualise(ZefListValZefBaseUnknown_var* welds, int mode) {
    return Services::VisualizationKoraWeldList(welds, mode, 1, 9, 9, 9, 9);
  }
  embedded::Editor& Editor() { return *application.CurrentEditor(); }

  embedded::SpotWeld& weld = plant.Weld("SW-1", {10, 20, 30});
  embedded::SpotWeld& other = plant.Weld("SW-2", {1, 2, 3});
  embedded::CurveFastener& seam = plant.Seam("SEAM", {{7, 8, 9}});
};

TEST_F(WeldVisualisationTest, TemporaryLabelsStandAtSpotWeldsAndElseAtTheOriginUntilTakenBack) {
  ZefISO* const shown = Editor().GetISO();
  auto welds = ListOf(weld, nullptr, seam, weld, plant.Root());
  const ReferenceSnapshot before{weld.Identity(), seam.Identity()};
  list<ZefModelForRep3D> models;
  EXPECT_EQ(Services::ActivateListWeldVisualization(&welds, models), S_OK);
  EXPECT_EQ(trace.Take(), Lines({"ActivateListWeldVisualization"}));
  const struct {
    const char* text;
    ZefMathPointf at;
  } labels[] = {{"SW-1", {10, 20, 30}}, {"SEAM", {}}, {"SW-1", {10, 20, 30}}, {"Process", {}}};
  ASSERT_EQ(models.Size(), 4);
  EXPECT_EQ(models.Capacity(), 4);
  for (int i = 0; i < 4; ++i) {
    ZefModelForRep3D* const model = models[i];
    EXPECT_EQ(model->ReferenceCount(), 2u) << "one for the list, one for the set";
    EXPECT_EQ(shown->Elements()[i + 1], model);
    const auto* const rep = dynamic_cast<const Zef3DCustomRep*>(model->GetRep());
    EXPECT_STREQ(rep->IsA(), "Zef3DCustomRep");
    EXPECT_EQ(rep->ReferenceCount(), 1u);
    EXPECT_EQ(rep->GetPaletteIndex(), 251);
    ASSERT_EQ(rep->Primitives().size(), 1u);
    const auto& drawn = rep->Primitives()[0];
    EXPECT_EQ(drawn.attributes, (ZefGraphicAttributeSet{0xFD040402u, 0x000000FFu}));
    const auto& text = dynamic_cast<const Zef3DAnnotationTextGP&>(*drawn.primitive);
    EXPECT_EQ(text.GetText(), labels[i].text);
    EXPECT_EQ(text.GetPosition(), labels[i].at);
    EXPECT_EQ(text.GetAnchor(), BASE_LEFT);
  }
  auto further = ListOf(other);
  EXPECT_EQ(Services::ActivateListWeldVisualization(&further, models), S_OK);
  EXPECT_EQ(models.Capacity(), 8);
  EXPECT_EQ(models.FreePlaces(), 3);
  trace.Take();
  EXPECT_EQ(Services::DeactivateListWeldVisualization(models), S_OK);
  EXPECT_EQ(trace.Take(), Lines({"DeactivateListWeldVisualization"}));
  EXPECT_EQ(shown->Elements().Size(), 0);
  EXPECT_EQ(models.Size() + models.Capacity() + models.FreePlaces(), 0);
  EXPECT_EQ(before.Differences(), "");
}

TEST_F(WeldVisualisationTest, WithoutWeldsOrAnInteractiveSetThereAreNoTemporaryLabels) {
  list<ZefModelForRep3D> models;
  ZefListValZefBaseUnknown_var none, nulls = ListOf(nullptr), welds = ListOf(weld);
  for (auto* const list : {static_cast<ZefListValZefBaseUnknown_var*>(nullptr), &none, &nulls}) {
    EXPECT_EQ(Services::ActivateListWeldVisualization(list, models), E_FAIL);
    EXPECT_EQ(trace.Take(), Lines({"ActivateListWeldVisualization"}));
  }
  Services::ActivateListWeldVisualization(&welds, models);
  const Handle<ZefISO> shown = Editor().GetISO();
  const auto expectNothingDone = [&] {
    trace.Take();
    EXPECT_EQ(Services::ActivateListWeldVisualization(&welds, models), E_FAIL);
    EXPECT_EQ(Services::DeactivateListWeldVisualization(models), E_FAIL);
    EXPECT_EQ(trace.Take(),
              Lines({"ActivateListWeldVisualization", "DeactivateListWeldVisualization"}));
    EXPECT_EQ(models.Size(), 1);
    EXPECT_EQ(shown->Elements().Size(), 1);
  };
  const Handle<embedded::Editor> editor = &Editor();
  editor->SetISO(0, nullptr);
  expectNothingDone();
  editor->SetISO(0, shown);
  application.SetCurrentEditor(nullptr);
  expectNothingDone();
  application.SetCurrentEditor(editor);
  EXPECT_EQ(Services::DeactivateListWeldVisualization(models), S_OK);
  EXPECT_EQ(Services::DeactivateListWeldVisualization(models), S_OK) << "an empty list";
}

TEST_F(WeldVisualisationTest, TakingLabelsBackStopsAtANullModel) {
  list<ZefModelForRep3D> models, given;
  auto welds = ListOf(weld, other);
  Services::ActivateListWeldVisualization(&welds, models);
  const auto kept = Adopt(models[1]);
  given.Append(models[0]);
  given.Append(nullptr);
  given.Append(kept.Get());
  EXPECT_EQ(Services::DeactivateListWeldVisualization(given), S_OK);
  EXPECT_EQ(given.Size(), 0);
  EXPECT_EQ(Editor().GetISO()->Elements().Size(), 1);
  EXPECT_EQ(kept->ReferenceCount(), 2u);
}

TEST_F(WeldVisualisationTest, HighlightingLeavesOneObjectHighlightedAndFailsAllTheSame) {
  const ReferenceSnapshot before{weld.Identity()};
  ZefHSO* const highlighted = Editor().GetHSO();
  highlighted->AddElement(other.Identity());
  EXPECT_EQ(Services::SetHighlight(nullptr), E_FAIL);
  EXPECT_EQ(highlighted->Elements().Size(), 1);
  EXPECT_EQ(Services::SetHighlight(weld.Identity()), E_FAIL);
  EXPECT_EQ(trace.Take(), Lines({"SetHighlight", "SetHighlight"}));
  ASSERT_EQ(highlighted->Elements().Size(), 1);
  Handle<ZefPathElement> path = highlighted->Elements()[1];
  EXPECT_EQ(path->GetObject(), weld.Identity());
  EXPECT_EQ(path->ReferenceCount(), 2u);
  path = nullptr;
  highlighted->Empty();
  EXPECT_EQ(before.Differences(), "");
  const Handle<embedded::Editor> editor = &Editor();
  editor->SetHSO(nullptr);
  EXPECT_EQ(Services::SetHighlight(weld.Identity()), E_FAIL);
  application.SetCurrentEditor(nullptr);
  EXPECT_EQ(Services::SetHighlight(weld.Identity()), E_FAIL);
}

TEST_F(WeldVisualisationTest, WhatIsNotOfferedFails) {
  auto welds = ListOf(weld);
  EXPECT_EQ(Services::SetAssignedWeldColor(weld.Identity(), 1, 2, 3, 4), E_FAIL);
  EXPECT_EQ(Services::VisualizationLumoWeldList(&welds, 0), E_FAIL);
  EXPECT_EQ(trace.Take(), Lines({"SetAssignedWeldColor", "VisualizationLumoWeldList"}));
}

TEST_F(WeldVisualisationTest, TogglingPutsALabelUnderEachWeldWithABagAndTakesAllOfThemAway) {
  other.Display().ReplaceMain(nullptr);
  auto& custom = plant.Weld("SW-3");
  const auto drawing = Make<Zef3DCustomRep>();
  custom.Display().ReplaceMain(drawing);
  auto welds = ListOf(weld, nullptr, other, custom, seam, plant.Root());
  const ReferenceSnapshot before{weld.Identity(), seam.Identity()};
  for (const int mode : {0, 1}) {
    EXPECT_EQ(Visualise(&welds, mode), S_OK);
    for (auto* const bag : {BagOf(weld), BagOf(seam)}) {
      ASSERT_EQ(Children(bag), Strings{"TuvBIWCustomRep"});
      EXPECT_EQ((*bag->GetChildren())[0]->ReferenceCount(), 1u);
    }
    const auto* const label =
        dynamic_cast<const TuvBIWCustomRep*>((*BagOf(weld)->GetChildren())[0]);
    EXPECT_EQ(label->GetWeld(), weld.Identity());
    EXPECT_EQ(label->GetID(), "SW-1");
    EXPECT_EQ(label->GetAttributeSet(), ZefGraphicAttributeSet()) << "the colour is not used";
    EXPECT_EQ(Visualise(&welds, mode), E_FAIL);
    EXPECT_EQ(Children(BagOf(weld)), Strings());
    EXPECT_EQ(Children(BagOf(seam)), Strings());
  }
  EXPECT_EQ(Visualise(&welds, 2), S_OK);
  EXPECT_EQ(Visualise(&welds, -1), S_OK);
  EXPECT_EQ(Children(BagOf(weld)).size(), 2u) << "any other mode adds";
  EXPECT_EQ(Visualise(&welds, 1), E_FAIL);
  EXPECT_EQ(Children(BagOf(weld)), Strings());
  EXPECT_EQ(application.MainViewer().Draws(), 7);
  EXPECT_EQ(before.Differences(), "");
}

TEST_F(WeldVisualisationTest, EachWeldIsTracedBoundedAndRedrawnInOrder) {
  auto welds = ListOf(weld, other);
  plant.Assign(plant.Root(), weld);
  const Strings begin = {"VisualizationKoraWeldList>"};
  const Strings end = {"GetCurrentDocument", "<VisualizationKoraWeldList"};
  const Strings asked = {"GetRootActivity>",          "GetCurrentDocument",
                         "<GetRootActivity",          "GetListOfAssignedWeld>",
                         "GetListOfKoraAssignedWeld", "=There are some welds assigned",
                         "<GetListOfAssignedWeld"};
  const Strings added = Joined({{"DeleteTuvBIWCustomRep"}, kNewLabel});
  const Strings removed = {"DeleteTuvBIWCustomRep>", kLabelEnds, "<DeleteTuvBIWCustomRep"};
  EXPECT_EQ(Visualise(&welds, 0), S_OK);
  EXPECT_EQ(trace.Take(), Lines(Joined({begin, asked, added, added, end})));
  EXPECT_EQ(BagOf(weld)->BoundingComputations(), 1) << "after the label was added";
  const auto* const container =
      embedded::ObjectAs<embedded::Redrawable>(plant.Document()->RootContainerObject());
  EXPECT_EQ(container->Redraws(), 1);
  EXPECT_EQ(Visualise(&welds, 0), E_FAIL);
  EXPECT_EQ(trace.Take(), Lines(Joined({begin, asked, removed, removed, end})));
  EXPECT_EQ(BagOf(weld)->BoundingComputations(), 2) << "after it was removed";
  ZefListValZefBaseUnknown_var none;
  EXPECT_EQ(Visualise(&none, 0), E_FAIL);
  EXPECT_EQ(trace.Take(), Lines(Joined({begin, end})));
  EXPECT_EQ(application.MainViewer().Draws(), 3) << "also for no weld";
  EXPECT_EQ(container->Redraws(), 3);
}

TEST_F(WeldVisualisationTest, NothingIsShownWithoutListViewerOrRoot) {
  auto welds = ListOf(weld);
  EXPECT_EQ(Visualise(nullptr, 0), E_FAIL);
  application.SetWindowless(true);
  EXPECT_EQ(Visualise(&welds, 0), E_FAIL);
  EXPECT_EQ(trace.Take(), Lines({"VisualizationKoraWeldList", "VisualizationKoraWeldList"}));
  application.SetWindowless(false);
  AnswerInterface(plant.Document()->RootContainerObject(), IID_ZefISPPProcessContainer, false);
  EXPECT_THROW(Visualise(&welds, 0), ZefNullHandleException);
  EXPECT_EQ(trace.Take(),
            Lines({"VisualizationKoraWeldList>", "GetRootActivity>", "GetCurrentDocument"}));
  EXPECT_EQ(BagOf(weld)->GetChildren(), nullptr);
  EXPECT_EQ(application.MainViewer().Draws(), 0);
}

TEST_F(WeldVisualisationTest, OnlyCustomRepresentationsOfWeldsAreDeletedAndOnlyWhenAskedTo) {
  const auto bag = Make<Zef3DBagRep>(), elsewhere = Make<Zef3DBagRep>();
  EXPECT_EQ(Services::DeleteTuvBIWCustomRep(nullptr, 1), E_FAIL);
  EXPECT_EQ(Services::DeleteTuvBIWCustomRep(bag, 1), E_FAIL) << "there never was a child";
  EXPECT_EQ(bag->BoundingComputations(), 0);
  for (int i = 0; i < 3; ++i) {
    Handle<Zef3DRep> child = Make<TuvBIWCustomRep>(weld.Identity());
    if (i == 1) child = Make<Zef3DCustomRep>();
    bag->AddChild(child);
    elsewhere->AddChild(child);
  }
  trace.Take();
  EXPECT_EQ(Services::DeleteTuvBIWCustomRep(bag, 0), E_FAIL);
  EXPECT_EQ(Children(bag).size(), 3u);
  EXPECT_EQ(bag->BoundingComputations(), 1);
  EXPECT_EQ(Services::DeleteTuvBIWCustomRep(bag, 1), S_OK);
  EXPECT_EQ(trace.Take(), Lines({"DeleteTuvBIWCustomRep", "DeleteTuvBIWCustomRep>", kLabelEnds,
                                 kLabelEnds, "<DeleteTuvBIWCustomRep"}));
  EXPECT_EQ(Children(bag), Strings{"Zef3DCustomRep"});
  EXPECT_EQ(Children(elsewhere), Strings{"Zef3DCustomRep"});
  EXPECT_EQ(Services::DeleteTuvBIWCustomRep(bag, 1), E_FAIL) << "there is none left";
  EXPECT_EQ(bag->BoundingComputations(), 3);
}

TEST_F(WeldVisualisationTest, LookingForALabelTracesTheChildrenUpToIt) {
  const auto bag = Make<Zef3DBagRep>(), child = Make<Zef3DBagRep>();
  const auto label = Make<TuvBIWCustomRep>(weld.Identity());
  const auto expect = [&](Zef3DBagRep* rep, HRESULT result, const Strings& between) {
    trace.Take();
    EXPECT_EQ(Services::CheckForTuvBIWCustomRep(rep), result);
    EXPECT_EQ(trace.Take(),
              Lines(Joined({{"CheckForTuvBIWCustomRep>"}, between, {"<CheckForTuvBIWCustomRep"}})));
  };
  expect(nullptr, E_FAIL, {});
  expect(bag, E_FAIL, {"=   No children"});
  bag->AddChild(child);
  expect(bag, E_FAIL, {"=Zef3DBagRep"});
  bag->AddChild(label);
  bag->AddChild(child);
  expect(bag, S_OK, {"=Zef3DBagRep", "=TuvBIWCustomRep"});
  bag->RemoveAllChildren();
  expect(bag, E_FAIL, {});
}

TEST_F(WeldVisualisationTest, WeldsAreListedByWhetherTheyCarryALabel) {
  auto& bare = plant.Weld("SW-3");
  bare.Display().ReplaceMain(nullptr);
  auto labelled = ListOf(weld, seam);
  Visualise(&labelled, 0);
  auto welds = ListOf(seam, other, nullptr, weld, bare, other);
  const auto listed = [&](int mode) {
    ZefListValZefBaseUnknown_var* found = nullptr;
    Services::CheckVisualizationOfKoraWelds(&welds, found, mode);
    const std::unique_ptr<ZefListValZefBaseUnknown_var> owned(found);
    return found ? Names(*found) : Strings{"no list"};
  };
  trace.Take();
  EXPECT_EQ(listed(0), Strings{"SW-1"});
  const Strings unlabelled = {"CheckForTuvBIWCustomRep>", "=   No children",
                              "<CheckForTuvBIWCustomRep"};
  EXPECT_EQ(
      trace.Take(),
      Lines(Joined({{"CheckVisualizationOfKoraWelds>"},
                    unlabelled,
                    {"CheckForTuvBIWCustomRep>", "=TuvBIWCustomRep", "<CheckForTuvBIWCustomRep"},
                    unlabelled,
                    {"<CheckVisualizationOfKoraWelds"}})));
  EXPECT_EQ(listed(1), (Strings{"SW-2", "SW-2"}));
  EXPECT_EQ(listed(2), Strings{"no list"});
  ZefListValZefBaseUnknown_var* same = &welds;
  Services::CheckVisualizationOfKoraWelds(&welds, same, 0);
  EXPECT_EQ(Names(welds), (Strings{"SEAM", "SW-2", "null", "SW-1", "SW-3", "SW-2", "SW-1"}));
  trace.Take();
  Services::CheckVisualizationOfKoraWelds(nullptr, same, 0);
  EXPECT_EQ(trace.Take(), Lines({"CheckVisualizationOfKoraWelds"}));
  welds.RemoveAll();
  EXPECT_EQ(listed(1), Strings{"no list"});
}

// Keeps the changes that are dispatched to it and applies none.
class Shown : public ComponentObject<ZefIVisProperties, ZefIModelEvents> {
 public:
  Shown(int iLook, HRESULT iReading) : look(iLook), reading(iReading) {}
  ZefMetaClass* GetMetaObject() const override { return ZefBaseUnknown::MetaObject(); }
  HRESULT GetPropertiesAtt(ZefVisPropertiesValues& oValues, int iType, int, int, int) override {
    EXPECT_EQ(iType, 7);
    if (Succeeded(reading)) oValues.SetShowAttr(look);
    return reading;
  }
  HRESULT Dispatch(const ZefNotification& iChange) override {
    const auto& change = dynamic_cast<const ZefModifyVisProperties&>(iChange);
    EXPECT_EQ(change.GetObject(), Identity());
    EXPECT_EQ(change.GetPath()->GetObject(), Identity());
    EXPECT_EQ(change.GetReserved(), 0);
    EXPECT_EQ(change.GetType(), 7);
    dispatched.push_back(change.GetValues().GetShowAttr());
    return E_FAIL;
  }

  int look;
  HRESULT reading;
  std::vector<int> dispatched;
};

TEST_F(WeldVisualisationTest, HidingAndShowingDispatchesAChangeToAllButSpecialLooks) {
  using Sent = std::vector<int>;
  const struct {
    int look;
    HRESULT reading;
    Sent shown, hidden;
  } cases[] = {{0, S_OK, {0}, {1}}, {1, S_OK, {0}, {1}},   {2, S_OK, {}, {}},
               {3, S_OK, {}, {}},   {1, E_FAIL, {0}, {0}}, {4, 1, {0}, {1}}};
  for (const int show : {1, 0, 2, 255}) {
    std::vector<embedded::Owned<Shown>> objects;
    ZefListValZefBaseUnknown_var list = ListOf(nullptr);
    for (const auto& c : cases) {
      objects.push_back(embedded::MakeOwned<Shown>(c.look, c.reading));
      list.Append(objects.back()->Identity());
    }
    Services::HideShowWeldPointsInList(&list, static_cast<unsigned char>(show));
    EXPECT_EQ(trace.Take(), Lines({"HideShowWeldPointsInList"}));
    for (std::size_t i = 0; i < objects.size(); ++i) {
      SCOPED_TRACE(testing::Message() << "look " << cases[i].look << ", " << show);
      EXPECT_EQ(objects[i]->dispatched, show == 1 ? cases[i].shown : cases[i].hidden);
      EXPECT_EQ(objects[i]->Identity()->ReferenceCount(), 2u);
    }
  }
  Services::HideShowWeldPointsInList(nullptr, 1);
  EXPECT_EQ(trace.Take(), Lines({"HideShowWeldPointsInList"}));
}

// Every service, on five welds and a seam; what it leaves behind goes with Undo.
class WeldViewFailureTest : public WeldVisualisationTest {
 protected:
  void SetUp() override {
    for (const char* const key : {"SW-3", "SW-4", "SW-5"}) plant.Weld(key);
    plant.Assign(plant.Root(), weld);
    welds = plant.Fasteners();
    Run();
    Undo();
    for (const auto& feature : plant.Document()->Features()) before.Add(feature.Get());
    alive = CountLiveObjects();
  }
  void TearDown() override {
    welds.RemoveAll();
    WeldVisualisationTest::TearDown();
  }
  void Run() {
    Services::ActivateListWeldVisualization(&welds, models);
    Services::SetHighlight(weld.Identity());
    Visualise(&welds, 2);
    Services::CheckForTuvBIWCustomRep(BagOf(weld));
    Services::CheckVisualizationOfKoraWelds(&welds, found, 0);
    Services::HideShowWeldPointsInList(&welds, 0);
    Visualise(&welds, 0);
    Services::DeleteTuvBIWCustomRep(BagOf(other), 1);
    Services::DeactivateListWeldVisualization(models);
    Services::SetAssignedWeldColor(weld.Identity(), 0, 0, 0, 0);
    Services::VisualizationLumoWeldList(&welds, 0);
  }
  void Undo() {
    delete std::exchange(found, nullptr);
    Services::DeactivateListWeldVisualization(models);
    Editor().EmptySets();
    for (const auto& fastener : Each<ZefBaseUnknown>(welds)) {
      embedded::Look& look = embedded::ObjectAs<embedded::Displayed>(fastener.Get())->Display();
      look.Empty();
      look.SetShowAttribute(0);
    }
  }
  // That everything works and everything is given back.
  void ExpectUsable() {
    Undo();
    ASSERT_EQ(before.Differences(), "");
    ASSERT_EQ(CountLiveObjects(), alive);
    ASSERT_EQ(Services::ActivateListWeldVisualization(&welds, models), S_OK);
    ASSERT_EQ(models.Size(), 6);
    ASSERT_EQ(Visualise(&welds, 0), S_OK);
    Services::CheckVisualizationOfKoraWelds(&welds, found, 0);
    ASSERT_TRUE(found);
    ASSERT_EQ(Names(*found), (Strings{"SW-1", "SW-2", "SW-3", "SW-4", "SW-5"}));
    Services::HideShowWeldPointsInList(&welds, 0);
    ASSERT_EQ(weld.Display().ShowAttribute(), 1);
    Undo();
  }

  ZefListValZefBaseUnknown_var welds;
  ZefListValZefBaseUnknown_var* found = nullptr;
  list<ZefModelForRep3D> models;
  ReferenceSnapshot before{plant.Document()->Identity()};
  long alive = 0;
};

TEST_F(WeldViewFailureTest, NoFailureOfTheHostLosesAReferenceOrTheViewAfterwards) {
  const long met = ForEachHostFailure([&] { Run(); }, [&] { ExpectUsable(); });
  RecordProperty("host_failures", static_cast<int>(met));
  EXPECT_GT(met, 300);
}

TEST_F(WeldViewFailureTest, NoExhaustedMemoryLosesAReferenceOrTheViewAfterwards) {
  {
    auto one = ListOf(weld);
    FailAllocation(1);
    EXPECT_EQ(Visualise(&one, 0), E_FAIL);
  }
  for (int nth = 1; nth <= 60; ++nth) {
    SCOPED_TRACE(nth);
    FailAllocation(nth);
    Run();
    FailAllocation(0);
    ExpectUsable();
  }
}

}  // namespace
