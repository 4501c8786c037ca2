#include <gtest/gtest.h>

#include "host/dialog/ZefInventorySpaceWnd.h"
#include "tests/scene/ApplicationAudit.h"

namespace {

using namespace embedded;

class SceneTest : public tests::ApplicationAudit {
 protected:
  void Hide(SpotWeld& weld) {
    ZefVisPropertiesValues values;
    values.SetShowAttr(1);
    const auto path = Make<ZefPathElement>(weld.Identity());
    weld.Dispatch(*Make<ZefModifyVisProperties>(weld.Identity(), path, 0, 7, values));
  }
  void Highlight(ZefBaseUnknown* object) {
    application->CurrentEditor()->GetHSO()->AddElement(Make<ZefPathElement>(object).Get());
  }
};

TEST_F(SceneTest, ReadsAsOneLineForEachThingWithNamePlaceAndColour) {
  Document& document = *plant->Document();
  Product& door = document.AddProduct(
      document.RootProduct(), {.key = "DOOR", .colour = {10, 20, 30}, .position = {1, -2.5, 1e6}});
  document.AddProduct(door, {.key = "HINGE \"L\"\n"});
  document.AddProduct(document.RootProduct(), {.key = "DOOR-2"}, &door);
  SpotWeld& weld = plant->Weld("SW-1", {100, 0.12345, -0.0001});
  SpotWeld& hidden = plant->Weld("SW-2");
  plant->Seam("S-1", {{4, 5, 6}, {7, 8, 9}});
  plant->Seam("S-2");
  plant->Locator("L-1", {1, 1, 1});
  plant->Clamp("C-1", {2, 2, 2});
  weld.SetDisplayStatus(kAssignedStatus, 1);
  dynamic_cast<Zef3DBagRep*>(weld.MainRep())->AddChild(Label("SW-1", {-100, 0, 0}).Get());
  Hide(hidden);
  Highlight(hidden.Identity());
  Highlight(plant->Root().Identity());
  application->CurrentEditor()->GetPSO()->AddElement(door.Identity());
  const auto label = Label("SW-2");
  label->SetColor(251);
  const auto model = Make<ZefModelForRep3D>();
  model->SetRep(label.Get());
  application->CurrentEditor()->GetISO()->AddElement(model.Get());
  EXPECT_EQ(Scene(),
            "product \"DOOR\" at 1 -2.5 1000000 mm, colour 10 20 30, preselected\n"
            "  product \"HINGE \\\"L\\\"\\x0a\" at 0 0 0 mm\n"
            "product \"DOOR-2\" at 0 0 0 mm\n"
            "spot weld \"SW-1\" at 100 0.123 0 mm, colour 0 158 115\n"
            "  label \"SW-1\" at -100 0 0 mm, colour 10 20 30\n"
            "spot weld \"SW-2\" at 0 0 0 mm, colour 213 94 0, hidden, highlighted\n"
            "seam \"S-1\" at 4 5 6 mm, colour 213 94 0\n"
            "seam \"S-2\", colour 213 94 0\n"
            "locating point \"L-1\" at 1 1 1 mm\n"
            "clamping point \"C-1\" at 2 2 2 mm\n"
            "temporary label \"SW-2\" at 0 0 0 mm, colour 240 228 66\n"
            "highlighted: \"SW-2\", \"Process\"\n"
            "preselected: \"DOOR\"\n");
}

TEST_F(SceneTest, OnlyADispatchedChangeOfTheShowAttributeChangesIt) {
  SpotWeld& weld = plant->Weld("SW-1");
  ZefVisPropertiesValues values;
  EXPECT_EQ(weld.GetPropertiesAtt(values, 6, 0, 0, 0), E_FAIL);
  EXPECT_EQ(weld.GetPropertiesAtt(values, 7, 0, 0, 0), S_OK);
  values.SetShowAttr(1);
  EXPECT_EQ(weld.Dispatch(*Make<ZefNotification>()), E_FAIL);
  EXPECT_EQ(weld.Dispatch(*Make<ZefModifyVisProperties>(weld.Identity(), nullptr, 0, 6, values)),
            E_FAIL);
  EXPECT_EQ(weld.Display().ShowAttribute(), 0);
  Hide(weld);
  EXPECT_EQ(weld.Display().ShowAttribute(), 1);
}

TEST_F(SceneTest, ASecondWindowShowsItemsByASecondRepresentation) {
  SpotWeld& weld = plant->Weld("SW-1", {1, 2, 3});
  const auto window = Make<ZefInventorySpaceWnd>(application->CurrentEditor());
  auto& viewer = dynamic_cast<Viewer&>(*window->GetViewer());
  const auto label = Label("main only");
  dynamic_cast<Zef3DBagRep*>(weld.MainRep())->AddChild(label.Get());
  const tests::ReferenceSnapshot before{weld.Identity(), weld.MainRep()};

  ZefListValIID interfaces;
  interfaces.Append(IID_ZefI3DGeoVisu);
  ZefVisManager* const manager = window->GetVisManager();
  for (int twice = 0; twice < 2; ++twice) {
    const auto path = Make<ZefPathElement>(weld.Identity());
    manager->AttachTo(path, viewer.GetMain3DViewpoint(), interfaces, &viewer, 0, 0, 0, 0, 0);
  }
  Zef3DRep* const second = weld.FurtherRep();
  EXPECT_NE(second, weld.MainRep());
  dynamic_cast<Zef3DBagRep*>(second)->AddChild(Label("second", {5, 0, 0}).Get());
  EXPECT_EQ(TextOf(SceneOf(viewer)),
            "spot weld \"SW-1\" at 1 2 3 mm, colour 213 94 0\n"
            "  label \"second\" at 5 0 0 mm, colour 10 20 30\n");

  manager->DetachFrom(Make<ZefPathElement>(weld.Identity()).Get(), viewer.GetMain3DViewpoint(),
                      interfaces, 0);
  EXPECT_EQ(TextOf(SceneOf(viewer)), "");
  EXPECT_EQ(second->ReferenceCount(), 1u);
  EXPECT_EQ(before.Differences(), "");
}

TEST_F(SceneTest, ABagsPlaceMovesWhatItHolds) {
  const auto outer = Make<Zef3DBagRep>();
  const auto inner = Make<Zef3DBagRep>();
  outer->AddChild(inner);
  inner->AddChild(Label("text", {1, 0, 0}).Get());
  const ZefMath3x3Matrix aboutZ({0, 1, 0}, {-1, 0, 0}, {0, 0, 1});
  outer->SetMatrix(Zef4x4Matrix(ZefMathAxis({100, 0, 0}, aboutZ)));
  inner->SetMatrix(Zef4x4Matrix(ZefMathAxis({10, 0, 0}, {})));
  inner->SetColor(1, 2, 3, 255);
  Viewer& viewer = application->MainViewer();
  ZefVisManager::GetVisManager()->AttachTo(outer, viewer.GetMain3DViewpoint(), &viewer, 0, 0, 0);
  EXPECT_EQ(Scene(),
            "group at 100 0 0 mm\n"
            "  group at 100 10 0 mm, colour 1 2 3\n"
            "    label \"text\" at 100 11 0 mm, colour 10 20 30\n");
}

TEST_F(SceneTest, TemporaryObjectsAreShownInTheViewersOfTheirSet) {
  ZefISO* const set = application->CurrentEditor()->GetISO(2);
  set->AddElement(plant->Weld("SW-1").Identity());
  {
    const auto viewer = Make<Viewer>();
    EXPECT_EQ(TextOf(SceneOf(*viewer)), "");
    for (int twice = 0; twice < 2; ++twice) set->AddViewer(viewer);
    EXPECT_EQ(TextOf(SceneOf(*viewer)), "spot weld \"SW-1\" at 0 0 0 mm, colour 213 94 0\n");
    EXPECT_EQ(set->Viewers().size(), 2u);
  }
  EXPECT_EQ(set->Viewers().size(), 1u);
}

TEST_F(SceneTest, AViewpointHoldsWhatIsAttachedUntilItIsDetached) {
  const auto viewer = Make<Viewer>();
  Zef3DViewpoint* const viewpoint = viewer->GetMain3DViewpoint();
  const auto rep = Make<Zef3DRep>();
  const auto highlighted = Make<ZefHSO>();
  const auto preselected = Make<ZefPSO>();
  const tests::ReferenceSnapshot before{rep.Get(), highlighted.Get(), preselected.Get()};
  ZefVisManager* const manager = ZefVisManager::GetVisManager();
  for (const bool atOnce : {true, false}) {
    for (int twice = 0; twice < 2; ++twice) {
      manager->AttachTo(rep, viewpoint, viewer, 0, 0, 0);
      manager->AttachHSOTo(highlighted, viewpoint);
      manager->AttachPSOTo(preselected, viewpoint);
    }
    EXPECT_EQ(before.Differences(),
              "object 0 (Zef3DRep): 1 -> 2\nobject 1 (ZefHSO): 1 -> 2\n"
              "object 2 (ZefPSO): 1 -> 2\n");
    if (atOnce) manager->DetachFrom(viewpoint, 1);
    manager->DetachHSOFrom(viewpoint);
    manager->DetachPSOFrom(viewpoint);
    viewer->RemoveRep(rep);
    EXPECT_EQ(before.Differences(), "");
  }
}

TEST_F(SceneTest, ReframingFitsTheViewToTheSet) {
  Document& document = *plant->Document();
  Product& assembly = document.AddProduct(document.RootProduct(), {.key = "A"});
  document.AddProduct(assembly,
                      {.key = "B", .position = {100, 0, 0, 0, 0, 90}, .boxMax = {10, 20, 30}});
  MfgAssembly& welded = document.AddAssembly("MA");
  welded.ForceChild(assembly.Identity());
  welded.ForceChild(welded.Identity());
  const std::pair<ZefBaseUnknown*, const char*> cases[] = {
      {plant->Root().Identity(), ""},
      {plant->Weld("SW-1", {1, 2, 3}).Identity(), "framed: 1 2 3 to 1 2 3 mm\n"},
      {plant->Root().Identity(), "framed: 1 2 3 to 1 2 3 mm\n"},
      {plant->Seam("S-1", {{9, 0, 0}, {-9, 5, 1}}).Identity(), "framed: -9 0 0 to 9 5 3 mm\n"},
      {welded.Identity(), "framed: -9 0 0 to 100 10 30 mm\n"},
  };
  const auto set = Make<ZefHSO>();
  for (const auto& [object, framed] : cases) {
    set->AddElement(Make<ZefPathElement>(object).Get());
    ZefReframeOn(*set, &application->MainViewer());
    const std::string scene = Scene();
    EXPECT_EQ(scene.substr(std::min(scene.find("framed"), scene.size())), framed);
  }
}

TEST_F(SceneTest, AChainOfProductsOfAnyLengthIsWritten) {
  Product* last = &plant->Document()->RootProduct();
  constexpr int kLength = 5000;
  for (int i = 0; i < kLength; ++i) last = &plant->Part(std::to_string(i), last);
  const SceneTree tree = SceneOf(application->MainViewer());
  ASSERT_EQ(tree.nodes.size(), static_cast<std::size_t>(kLength));
  EXPECT_EQ(tree.nodes.back().depth, kLength - 1);
  EXPECT_LT(TextOf(tree).size(), 200u * kLength);
}

}  // namespace
