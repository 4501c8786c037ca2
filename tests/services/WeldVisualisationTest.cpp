#include <gtest/gtest.h>

#include "host/values/Each.h"
#include "host/visu/Visu.h"
#include "services/TuvBIWServices.h"
#include "tests/support/EditedPlant.h"
#include "tests/support/HostFailures.h"
#include "tests/support/ReferenceAudit.h"
#include "tests/support/TraceRecorder.h"
#include "visu/TuvBIWCustomRep.h"

namespace {

using Services = TuvBIWServices;
using Strings = std::vector<std::string>;
using tests::ListOf;

template <class... Parts>
Strings Joined(const Parts&... parts) {
  Strings lines;
  (lines.insert(lines.end(), parts.begin(), parts.end()), ...);
  return lines;
}

// The entry and the exit line of a service, with lines between them.
template <class... Parts>
Strings Lines(const std::string& service, const Parts&... between) {
  return Joined(Strings{"TuvBIWServices::" + service + " --> IN"}, between...,
                Strings{"TuvBIWServices::" + service + " <-- OUT"});
}

const Strings kNewLabel = {"TuvBIWCustomRep --> IN", "TuvBIWCustomRep::Build --> IN",
                           "TuvBIWCustomRep::Build --> OUT", "TuvBIWCustomRep <-- OUT"};
const Strings kLabelGone = {"TuvBIWCustomRep <-- OUT"};

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

struct Stage : tests::EditedPlant {
  HRESULT Visualise(ZefListValZefBaseUnknown_var* welds, int mode) {
    return Services::VisualizationKoraWeldList(welds, mode, 1, 9, 9, 9, 9);
  }
  embedded::Editor& Editor() { return *application.CurrentEditor(); }

  embedded::SpotWeld& weld = Weld("SW-1", {10, 20, 30});
  embedded::SpotWeld& other = Weld("SW-2", {1, 2, 3});
  embedded::CurveFastener& seam = Seam("SEAM", {{7, 8, 9}});
};

class WeldVisualisationTest : public tests::ReferenceAudit {
 protected:
  tests::TraceRecorder trace;
};

TEST_F(WeldVisualisationTest, TemporaryLabelsStandAtSpotWeldsAndElseAtTheOriginUntilTakenBack) {
  Stage stage;
  ZefISO* const shown = stage.Editor().GetISO();
  auto welds = ListOf(stage.weld, nullptr, stage.seam, stage.weld, stage.Root());
  const tests::ReferenceSnapshot before{stage.weld.Identity(), stage.seam.Identity()};
  list<ZefModelForRep3D> models;
  EXPECT_EQ(Services::ActivateListWeldVisualization(&welds, models), S_OK);
  EXPECT_EQ(trace.Take(), Lines("ActivateListWeldVisualization"));
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
  auto further = ListOf(stage.other);
  EXPECT_EQ(Services::ActivateListWeldVisualization(&further, models), S_OK);
  EXPECT_EQ(models.Capacity(), 8);
  EXPECT_EQ(models.FreePlaces(), 3);
  trace.Take();
  EXPECT_EQ(Services::DeactivateListWeldVisualization(models), S_OK);
  EXPECT_EQ(trace.Take(), Lines("DeactivateListWeldVisualization"));
  EXPECT_EQ(shown->Elements().Size(), 0);
  EXPECT_EQ(models.Size() + models.Capacity() + models.FreePlaces(), 0);
  EXPECT_EQ(before.Differences(), "");
}

TEST_F(WeldVisualisationTest, WithoutWeldsOrAnInteractiveSetThereAreNoTemporaryLabels) {
  Stage stage;
  list<ZefModelForRep3D> models;
  ZefListValZefBaseUnknown_var none, nulls = ListOf(nullptr), welds = ListOf(stage.weld);
  for (auto* const list : {static_cast<ZefListValZefBaseUnknown_var*>(nullptr), &none, &nulls}) {
    EXPECT_EQ(Services::ActivateListWeldVisualization(list, models), E_FAIL);
    EXPECT_EQ(trace.Take(), Lines("ActivateListWeldVisualization"));
  }
  Services::ActivateListWeldVisualization(&welds, models);
  const Handle<ZefISO> shown = stage.Editor().GetISO();
  const auto expectNothingDone = [&] {
    trace.Take();
    EXPECT_EQ(Services::ActivateListWeldVisualization(&welds, models), E_FAIL);
    EXPECT_EQ(Services::DeactivateListWeldVisualization(models), E_FAIL);
    EXPECT_EQ(trace.Take(), Joined(Lines("ActivateListWeldVisualization"),
                                   Lines("DeactivateListWeldVisualization")));
    EXPECT_EQ(models.Size(), 1);
    EXPECT_EQ(shown->Elements().Size(), 1);
  };
  const Handle<embedded::Editor> editor = &stage.Editor();
  editor->SetISO(0, nullptr);
  expectNothingDone();
  editor->SetISO(0, shown);
  stage.application.SetCurrentEditor(nullptr);
  expectNothingDone();
  stage.application.SetCurrentEditor(editor);
  EXPECT_EQ(Services::DeactivateListWeldVisualization(models), S_OK);
  EXPECT_EQ(Services::DeactivateListWeldVisualization(models), S_OK) << "an empty list";
}

TEST_F(WeldVisualisationTest, TakingLabelsBackStopsAtANullModel) {
  Stage stage;
  list<ZefModelForRep3D> models, given;
  auto welds = ListOf(stage.weld, stage.other);
  Services::ActivateListWeldVisualization(&welds, models);
  const auto kept = Adopt(models[1]);
  given.Append(models[0]);
  given.Append(nullptr);
  given.Append(kept.Get());
  EXPECT_EQ(Services::DeactivateListWeldVisualization(given), S_OK);
  EXPECT_EQ(given.Size(), 0);
  EXPECT_EQ(stage.Editor().GetISO()->Elements().Size(), 1);
  EXPECT_EQ(kept->ReferenceCount(), 2u);
}

TEST_F(WeldVisualisationTest, HighlightingLeavesOneObjectHighlightedAndFailsAllTheSame) {
  Stage stage;
  const tests::ReferenceSnapshot before{stage.weld.Identity()};
  ZefHSO* const highlighted = stage.Editor().GetHSO();
  highlighted->AddElement(stage.other.Identity());
  EXPECT_EQ(Services::SetHighlight(nullptr), E_FAIL);
  EXPECT_EQ(highlighted->Elements().Size(), 1);
  EXPECT_EQ(Services::SetHighlight(stage.weld.Identity()), E_FAIL);
  EXPECT_EQ(trace.Take(), Joined(Lines("SetHighlight"), Lines("SetHighlight")));
  ASSERT_EQ(highlighted->Elements().Size(), 1);
  Handle<ZefPathElement> path = highlighted->Elements()[1];
  EXPECT_EQ(path->GetObject(), stage.weld.Identity());
  EXPECT_EQ(path->ReferenceCount(), 2u);
  path = nullptr;
  highlighted->Empty();
  EXPECT_EQ(before.Differences(), "");
  const Handle<embedded::Editor> editor = &stage.Editor();
  editor->SetHSO(nullptr);
  EXPECT_EQ(Services::SetHighlight(stage.weld.Identity()), E_FAIL);
  stage.application.SetCurrentEditor(nullptr);
  EXPECT_EQ(Services::SetHighlight(stage.weld.Identity()), E_FAIL);
}

TEST_F(WeldVisualisationTest, WhatIsNotOfferedFails) {
  Stage stage;
  auto welds = ListOf(stage.weld);
  EXPECT_EQ(Services::SetAssignedWeldColor(stage.weld.Identity(), 1, 2, 3, 4), E_FAIL);
  EXPECT_EQ(Services::VisualizationLumoWeldList(&welds, 0), E_FAIL);
  EXPECT_EQ(trace.Take(),
            Joined(Lines("SetAssignedWeldColor"), Lines("VisualizationLumoWeldList")));
}

TEST_F(WeldVisualisationTest, TogglingPutsALabelUnderEachWeldWithABagAndTakesAllOfThemAway) {
  Stage stage;
  stage.other.Display().ReplaceMain(nullptr);
  auto& custom = stage.Weld("SW-3");
  const auto drawing = Make<Zef3DCustomRep>();
  custom.Display().ReplaceMain(drawing);
  auto welds = ListOf(stage.weld, nullptr, stage.other, custom, stage.seam, stage.Root());
  const tests::ReferenceSnapshot before{stage.weld.Identity(), stage.seam.Identity()};
  for (const int mode : {0, 1}) {
    EXPECT_EQ(stage.Visualise(&welds, mode), S_OK);
    for (auto* const bag : {BagOf(stage.weld), BagOf(stage.seam)}) {
      ASSERT_EQ(Children(bag), Strings{"TuvBIWCustomRep"});
      EXPECT_EQ((*bag->GetChildren())[0]->ReferenceCount(), 1u);
    }
    const auto* const label =
        dynamic_cast<const TuvBIWCustomRep*>((*BagOf(stage.weld)->GetChildren())[0]);
    EXPECT_EQ(label->GetWeld(), stage.weld.Identity());
    EXPECT_EQ(label->GetID(), "SW-1");
    EXPECT_EQ(label->GetAttributeSet(), ZefGraphicAttributeSet()) << "the colour is not used";
    EXPECT_EQ(stage.Visualise(&welds, mode), E_FAIL);
    EXPECT_EQ(Children(BagOf(stage.weld)), Strings());
    EXPECT_EQ(Children(BagOf(stage.seam)), Strings());
  }
  EXPECT_EQ(stage.Visualise(&welds, 2), S_OK);
  EXPECT_EQ(stage.Visualise(&welds, -1), S_OK);
  EXPECT_EQ(Children(BagOf(stage.weld)).size(), 2u) << "any other mode adds";
  EXPECT_EQ(stage.Visualise(&welds, 1), E_FAIL);
  EXPECT_EQ(Children(BagOf(stage.weld)), Strings());
  EXPECT_EQ(stage.application.MainViewer().Draws(), 7);
  EXPECT_EQ(before.Differences(), "");
}

TEST_F(WeldVisualisationTest, EachWeldIsTracedBoundedAndRedrawnInOrder) {
  Stage stage;
  auto welds = ListOf(stage.weld, stage.other);
  stage.Assign(stage.Root(), stage.weld);
  const Strings document = Lines("GetCurrentDocument");
  const Strings asked = Joined(Lines("GetRootActivity", document),
                               Lines("GetListOfAssignedWeld", Lines("GetListOfKoraAssignedWeld"),
                                     Strings{"There are some welds assigned"}));
  const Strings unlabelled = Lines("DeleteTuvBIWCustomRep");
  EXPECT_EQ(stage.Visualise(&welds, 0), S_OK);
  EXPECT_EQ(trace.Take(), Lines("VisualizationKoraWeldList", asked, unlabelled, kNewLabel,
                                unlabelled, kNewLabel, document));
  EXPECT_EQ(BagOf(stage.weld)->BoundingComputations(), 1) << "after the label was added";
  const auto* const container =
      embedded::ObjectAs<embedded::Redrawable>(stage.Document()->RootContainerObject());
  EXPECT_EQ(container->Redraws(), 1);
  const Strings removed = Lines("DeleteTuvBIWCustomRep", kLabelGone);
  EXPECT_EQ(stage.Visualise(&welds, 0), E_FAIL);
  EXPECT_EQ(trace.Take(), Lines("VisualizationKoraWeldList", asked, removed, removed, document));
  EXPECT_EQ(BagOf(stage.weld)->BoundingComputations(), 2) << "after it was removed";
  ZefListValZefBaseUnknown_var none;
  EXPECT_EQ(stage.Visualise(&none, 0), E_FAIL);
  EXPECT_EQ(trace.Take(), Lines("VisualizationKoraWeldList", document));
  EXPECT_EQ(stage.application.MainViewer().Draws(), 3) << "also for no weld";
  EXPECT_EQ(container->Redraws(), 3);
}

TEST_F(WeldVisualisationTest, NothingIsShownWithoutListViewerOrRoot) {
  Stage stage;
  auto welds = ListOf(stage.weld);
  EXPECT_EQ(stage.Visualise(nullptr, 0), E_FAIL);
  stage.application.SetWindowless(true);
  EXPECT_EQ(stage.Visualise(&welds, 0), E_FAIL);
  EXPECT_EQ(trace.Take(),
            Joined(Lines("VisualizationKoraWeldList"), Lines("VisualizationKoraWeldList")));
  stage.application.SetWindowless(false);
  AnswerInterface(stage.Document()->RootContainerObject(), IID_ZefISPPProcessContainer, false);
  EXPECT_THROW(stage.Visualise(&welds, 0), ZefNullHandleException);
  EXPECT_EQ(trace.Take(), (Strings{"TuvBIWServices::VisualizationKoraWeldList --> IN",
                                   "TuvBIWServices::GetRootActivity --> IN",
                                   "TuvBIWServices::GetCurrentDocument --> IN",
                                   "TuvBIWServices::GetCurrentDocument <-- OUT"}));
  EXPECT_EQ(BagOf(stage.weld)->GetChildren(), nullptr);
  EXPECT_EQ(stage.application.MainViewer().Draws(), 0);
}

TEST_F(WeldVisualisationTest, OnlyCustomRepresentationsOfWeldsAreDeletedAndOnlyWhenAskedTo) {
  Stage stage;
  const auto bag = Make<Zef3DBagRep>(), elsewhere = Make<Zef3DBagRep>();
  EXPECT_EQ(Services::DeleteTuvBIWCustomRep(nullptr, 1), E_FAIL);
  EXPECT_EQ(Services::DeleteTuvBIWCustomRep(bag, 1), E_FAIL) << "there never was a child";
  EXPECT_EQ(bag->BoundingComputations(), 0);
  for (int i = 0; i < 3; ++i) {
    Handle<Zef3DRep> child = Make<TuvBIWCustomRep>(stage.weld.Identity());
    if (i == 1) child = Make<Zef3DCustomRep>();
    bag->AddChild(child);
    elsewhere->AddChild(child);
  }
  trace.Take();
  EXPECT_EQ(Services::DeleteTuvBIWCustomRep(bag, 0), E_FAIL);
  EXPECT_EQ(Children(bag).size(), 3u);
  EXPECT_EQ(bag->BoundingComputations(), 1);
  EXPECT_EQ(Services::DeleteTuvBIWCustomRep(bag, 1), S_OK);
  EXPECT_EQ(trace.Take(), Joined(Lines("DeleteTuvBIWCustomRep"),
                                 Lines("DeleteTuvBIWCustomRep", kLabelGone, kLabelGone)));
  EXPECT_EQ(Children(bag), Strings{"Zef3DCustomRep"});
  EXPECT_EQ(Children(elsewhere), Strings{"Zef3DCustomRep"});
  EXPECT_EQ(Services::DeleteTuvBIWCustomRep(bag, 1), E_FAIL) << "there is none left";
  EXPECT_EQ(bag->BoundingComputations(), 3);
}

TEST_F(WeldVisualisationTest, LookingForALabelTracesTheChildrenUpToIt) {
  Stage stage;
  const auto bag = Make<Zef3DBagRep>(), child = Make<Zef3DBagRep>();
  const auto label = Make<TuvBIWCustomRep>(stage.weld.Identity());
  const auto expect = [&](Zef3DBagRep* rep, HRESULT result, const Strings& between) {
    trace.Take();
    EXPECT_EQ(Services::CheckForTuvBIWCustomRep(rep), result);
    EXPECT_EQ(trace.Take(), Lines("CheckForTuvBIWCustomRep", between));
  };
  expect(nullptr, E_FAIL, {});
  expect(bag, E_FAIL, {"   No children"});
  bag->AddChild(child);
  expect(bag, E_FAIL, {"Zef3DBagRep"});
  bag->AddChild(label);
  bag->AddChild(child);
  expect(bag, S_OK, {"Zef3DBagRep", "TuvBIWCustomRep"});
  bag->RemoveAllChildren();
  expect(bag, E_FAIL, {});
}

TEST_F(WeldVisualisationTest, WeldsAreListedByWhetherTheyCarryALabel) {
  Stage stage;
  auto& bare = stage.Weld("SW-3");
  bare.Display().ReplaceMain(nullptr);
  auto labelled = ListOf(stage.weld, stage.seam);
  stage.Visualise(&labelled, 0);
  auto welds = ListOf(stage.seam, stage.other, nullptr, stage.weld, bare, stage.other);
  const auto listed = [&](int mode) {
    ZefListValZefBaseUnknown_var* found = nullptr;
    Services::CheckVisualizationOfKoraWelds(&welds, found, mode);
    const std::unique_ptr<ZefListValZefBaseUnknown_var> owned(found);
    return found ? tests::Names(*found) : Strings{"no list"};
  };
  trace.Take();
  EXPECT_EQ(listed(0), Strings{"SW-1"});
  const Strings unlabelled = Lines("CheckForTuvBIWCustomRep", Strings{"   No children"});
  EXPECT_EQ(trace.Take(),
            Lines("CheckVisualizationOfKoraWelds", unlabelled,
                  Lines("CheckForTuvBIWCustomRep", Strings{"TuvBIWCustomRep"}), unlabelled));
  EXPECT_EQ(listed(1), (Strings{"SW-2", "SW-2"}));
  EXPECT_EQ(listed(2), Strings{"no list"});
  ZefListValZefBaseUnknown_var* same = &welds;
  Services::CheckVisualizationOfKoraWelds(&welds, same, 0);
  EXPECT_EQ(tests::Names(welds), (Strings{"SEAM", "SW-2", "null", "SW-1", "SW-3", "SW-2", "SW-1"}));
  trace.Take();
  Services::CheckVisualizationOfKoraWelds(nullptr, same, 0);
  EXPECT_EQ(trace.Take(), Lines("CheckVisualizationOfKoraWelds"));
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
    EXPECT_EQ(trace.Take(), Lines("HideShowWeldPointsInList"));
    for (std::size_t i = 0; i < objects.size(); ++i) {
      SCOPED_TRACE(testing::Message() << "look " << cases[i].look << ", " << show);
      EXPECT_EQ(objects[i]->dispatched, show == 1 ? cases[i].shown : cases[i].hidden);
      EXPECT_EQ(objects[i]->Identity()->ReferenceCount(), 2u);
    }
  }
  Services::HideShowWeldPointsInList(nullptr, 1);
  EXPECT_EQ(trace.Take(), Lines("HideShowWeldPointsInList"));
}

// Every service, on five welds and a seam; what it leaves behind goes with Undo.
struct Session : Stage {
  Session() {
    for (const char* const key : {"SW-3", "SW-4", "SW-5"}) Weld(key);
    Assign(Root(), weld);
    welds = Fasteners();
    Run();
    Undo();
    for (const auto& feature : Document()->Features()) before.Add(feature.Get());
    alive = CountLiveObjects();
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
    ASSERT_EQ(tests::Names(*found), (Strings{"SW-1", "SW-2", "SW-3", "SW-4", "SW-5"}));
    Services::HideShowWeldPointsInList(&welds, 0);
    ASSERT_EQ(weld.Display().ShowAttribute(), 1);
    Undo();
  }

  ZefListValZefBaseUnknown_var welds;
  ZefListValZefBaseUnknown_var* found = nullptr;
  list<ZefModelForRep3D> models;
  tests::ReferenceSnapshot before{Document()->Identity()};
  long alive;
};

TEST_F(WeldVisualisationTest, NoFailureOfTheHostLosesAReferenceOrTheViewAfterwards) {
  Session session;
  const long met =
      tests::ForEachHostFailure([&] { session.Run(); }, [&] { session.ExpectUsable(); });
  RecordProperty("host_failures", static_cast<int>(met));
  EXPECT_GT(met, 300);
}

TEST_F(WeldVisualisationTest, NoExhaustedMemoryLosesAReferenceOrTheViewAfterwards) {
  Session session;
  auto welds = ListOf(session.weld);
  FailAllocation(1);
  EXPECT_EQ(session.Visualise(&welds, 0), E_FAIL);
  welds.RemoveAll();
  for (int nth = 1; nth <= 60; ++nth) {
    SCOPED_TRACE(nth);
    FailAllocation(nth);
    session.Run();
    FailAllocation(0);
    session.ExpectUsable();
  }
}

}  // namespace
