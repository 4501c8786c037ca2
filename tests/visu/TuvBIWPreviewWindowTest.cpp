#include <set>

#include "embedded/model/ObjectClass.h"
#include "host/visu/Visu.h"
#include "tests/support/HostFailures.h"
#include "tests/support/PlantTest.h"
#include "visu/TuvBIWPreviewWindow.h"

namespace {

using namespace tests;

constexpr unsigned char kAttach = 0, kOwnScene = 1;

// Writes down what it is asked for, and does it.
class SpyingManager : public embedded::VisManager {
 public:
  void AttachPSOTo(ZefPSO* iSet, Zef3DViewpoint* iViewpoint) override {
    calls.push_back("attach preselected");
    VisManager::AttachPSOTo(iSet, iViewpoint);
  }
  void AttachHSOTo(ZefHSO* iSet, Zef3DViewpoint* iViewpoint) override {
    calls.push_back("attach highlighted");
    VisManager::AttachHSOTo(iSet, iViewpoint);
  }
  void DetachPSOFrom(Zef3DViewpoint* iViewpoint) override {
    calls.push_back("detach preselected");
    VisManager::AttachPSOTo(nullptr, iViewpoint);
  }
  void DetachHSOFrom(Zef3DViewpoint* iViewpoint) override {
    calls.push_back("detach highlighted");
    VisManager::AttachHSOTo(nullptr, iViewpoint);
  }
  void DetachFrom(Zef3DViewpoint* iViewpoint, int iMode) override {
    calls.push_back("detach all " + std::to_string(iMode));
    VisManager::DetachFrom(iViewpoint, iMode);
  }
  void AttachTo(Zef3DRep* iRep, Zef3DViewpoint* iViewpoint, Zef3DViewer* iViewer, int i1, int i2,
                int i3) override {
    calls.push_back(std::string("attach ") + iRep->IsA() + " " + std::to_string(i1 + i2 + i3));
    VisManager::AttachTo(iRep, iViewpoint, iViewer, i1, i2, i3);
  }
  void AttachTo(ZefPathElement* iPath, Zef3DViewpoint* iViewpoint, const ZefListValIID& iInterfaces,
                Zef3DViewer* iViewer, int i1, int i2, int i3, int i4, int i5) override {
    calls.push_back("attach " + Shown(iPath, iInterfaces, i1 + i2 + i3 + i4 + i5));
    VisManager::AttachTo(iPath, iViewpoint, iInterfaces, iViewer, i1, i2, i3, i4, i5);
  }
  void DetachFrom(ZefPathElement* iPath, Zef3DViewpoint* iViewpoint,
                  const ZefListValIID& iInterfaces, int iMode) override {
    calls.push_back("detach " + Shown(iPath, iInterfaces, iMode));
    VisManager::DetachFrom(iPath, iViewpoint, iInterfaces, iMode);
  }
  Strings Take() { return std::exchange(calls, {}); }

  Strings calls;

 private:
  static std::string Shown(ZefPathElement* path, const ZefListValIID& interfaces, int arguments) {
    const bool isGeometry = interfaces.Size() == 1 && interfaces[1] == IID_ZefI3DGeoVisu;
    return ZefIAlias_var(path->GetObject())->GetAlias().ConvertToChar() +
           std::string(isGeometry ? " as geometry " : " otherwise ") + std::to_string(arguments);
  }
};

// Lends the application another visualisation manager.
class SpiedApplication : public HostApplication {
 public:
  explicit SpiedApplication(embedded::Application& iApplication) : application_(iApplication) {
    Install(this);
  }
  ~SpiedApplication() override { Install(&application_); }
  ZefVisManager* VisManager() override { return spy; }
  Zef3DViewer* CreateViewer(ZefFrmWindow* iWindow, ZefFrmEditor* iEditor) override {
    return application_.CreateViewer(iWindow, iEditor);
  }
  void Reframe(ZefHSO& iSet, Zef3DViewer* iViewer) override {
    EXPECT_TRUE(iSet.IsComplete());
    application_.Reframe(iSet, iViewer);
  }

  Handle<SpyingManager> spy = Make<SpyingManager>();

 private:
  embedded::Application& application_;
};

class TuvBIWPreviewWindowTest : public PlantTest {
 protected:
  using Window = Handle<TuvBIWPreviewWindow>;

  Window Open(unsigned char mode) { return Make<TuvBIWPreviewWindow>(&editor, mode); }
  static embedded::Viewer& ViewerOf(const Window& window) {
    return dynamic_cast<embedded::Viewer&>(*window->GetViewer());
  }
  // The scene of a window in its own mode.
  static Zef3DBagRep* RootOf(const Window& window) {
    const auto& attached = ViewerOf(window).MainViewpoint()->Representations().InOrder();
    return attached.empty() ? nullptr : dynamic_cast<Zef3DBagRep*>(attached.begin()->second.Get());
  }
  static int ChildrenOf(Zef3DBagRep* root) {
    return root->GetChildren() ? root->GetChildren()->Size() : 0;
  }
  static Strings Listed(const Window& window) { return Names(window->GetVisualizedItems()); }

  embedded::Editor& editor = *application.CurrentEditor();
  embedded::Product& red = plant.Document()->AddProduct(
      plant.Document()->RootProduct(),
      {.key = "RED", .colour = {255, 0, 9}, .position = {100, 200, 300, 0, 0, 90}});
  embedded::Product& white = plant.Part("WHITE");
  embedded::SpotWeld& weld = plant.Weld("SW-1", {1, 2, 3}, {&red, &white});
};

TEST_F(TuvBIWPreviewWindowTest, AWindowStartsEmptyWithTheSetsOffItsViewer) {
  SpiedApplication spied(application);
  const Strings detached = {"detach preselected", "detach highlighted", "detach all 1"};
  const Window attaching = Open(kAttach);
  EXPECT_EQ(spied.spy->Take(), detached);
  EXPECT_STREQ(attaching->GetBaseName(), "KEL Preview Window");
  EXPECT_EQ(Listed(attaching), Strings());
  const Window own = Open(kOwnScene);
  EXPECT_EQ(spied.spy->Take(), Joined({detached, {"attach Zef3DBagRep 0"}}));
  attaching->UpdateViewer(0);
  EXPECT_EQ(spied.spy->Take(), (Strings{"attach preselected", "attach highlighted"}));
  EXPECT_EQ(ViewerOf(attaching).InteractiveSets().size(), 3u);
  EXPECT_EQ(ViewerOf(attaching).Draws(), 0);
  attaching->UpdateViewer(2);
  EXPECT_EQ(ViewerOf(attaching).InteractiveSets().size(), 3u);
  EXPECT_EQ(ViewerOf(attaching).Draws(), 1);
  attaching->InitializeViewer(1);
  EXPECT_EQ(ViewerOf(attaching).InteractiveSets().size(), 0u);
  EXPECT_EQ(ViewerOf(attaching).MainViewpoint()->Highlighted(), nullptr);
}

TEST_F(TuvBIWPreviewWindowTest, WithoutEditorNothingIsShownOrDuplicated) {
  const auto window = Make<TuvBIWPreviewWindow>(nullptr, kOwnScene);
  EXPECT_STREQ(window->GetBaseName(), "KEL Preview Window");
  EXPECT_EQ(window->GetViewer(), nullptr);
  EXPECT_EQ(window->DuplicateWindow(), nullptr);
  window->Visualize(ListOf(red, white), IID_ZefI3DGeoVisu);
  window->VisuWithReframeOnItems(ListOf(red));
  window->UpdateViewer(1);
  EXPECT_EQ(Listed(window), (Strings{"RED", "WHITE"}));
  window->RemoveItems(ListOf(red), IID_ZefI3DGeoVisu);
  EXPECT_EQ(Listed(window), Strings{"WHITE"});
}

TEST_F(TuvBIWPreviewWindowTest, ItemsAreAttachedAndDetachedOneByOne) {
  SpiedApplication spied(application);
  const Window window = Open(kAttach);
  white.AnswerInterface(IID_ZefIVisu, false);
  spied.spy->Take();
  window->Visualize(ListOf(red, nullptr, plant.Root(), white, weld, red), IID_ZefI3DGeoVisu);
  EXPECT_EQ(Listed(window), (Strings{"RED", "SW-1", "RED"}));
  EXPECT_EQ(spied.spy->Take(), (Strings{"attach RED as geometry 0", "attach SW-1 as geometry 0",
                                        "attach RED as geometry 0"}));
  window->RemoveItems(ListOf(white, red), IID_ZefIVisu);
  EXPECT_EQ(Listed(window), (Strings{"SW-1", "RED"}));
  window->Detach(weld.Identity(), IID_ZefI3DGeoVisu);
  window->Detach(white.Identity(), IID_ZefI3DGeoVisu);
  EXPECT_EQ(Listed(window), (Strings{"SW-1", "RED"}));
  EXPECT_EQ(spied.spy->Take(), (Strings{"detach RED otherwise 0", "detach SW-1 as geometry 1"}));
  window->ClearAllItemsFromList();
  EXPECT_EQ(Listed(window), Strings());
  EXPECT_EQ(spied.spy->Take(), Strings());
  window->Visualize(ListOf(weld), IID_ZefI3DGeoVisu);
  window->Initialize();
  EXPECT_EQ(spied.spy->Take(), (Strings{"attach SW-1 as geometry 0", "detach SW-1 as geometry 0"}));
  EXPECT_EQ(Listed(window), Strings());
}

TEST_F(TuvBIWPreviewWindowTest, AnOwnSceneHoldsTheItemsInTheirColourAndPlace) {
  const Window window = Open(kOwnScene);
  window->Visualize(ListOf(red, white, weld), IID_ZefI3DGeoVisu);
  Zef3DBagRep* const root = RootOf(window);
  ASSERT_EQ(ChildrenOf(root), 3);
  const auto* const redRep = static_cast<Zef3DBagRep*>((*root->GetChildren())[0]);
  const auto* const whiteRep = static_cast<Zef3DBagRep*>((*root->GetChildren())[1]);
  const auto* const weldRep = static_cast<Zef3DBagRep*>((*root->GetChildren())[2]);
  EXPECT_EQ(redRep->GetColor(), (std::array{255, 0, 9, 255}));
  EXPECT_EQ(redRep->GetInheritanceMode(), 0x1004u);
  EXPECT_EQ(whiteRep->GetColor(), (std::array{-1, -1, -1, -1}));
  EXPECT_EQ(whiteRep->GetInheritanceMode(), 0u);
  for (const auto* const rep : {redRep, weldRep}) {
    EXPECT_EQ(rep->GetMatrix().At(0, 3), 100) << "a weld stands where its carrier stands";
    EXPECT_EQ(rep->GetMatrix().At(2, 3), 300);
    EXPECT_NEAR(rep->GetMatrix().At(1, 0), 1, 1e-12);
  }
  EXPECT_EQ(redRep, ZefIVisu_var(red.Identity())->GetRep());
  EXPECT_NE(redRep, ZefI3DGeoVisu_var(red.Identity())->GetRep());
}

TEST_F(TuvBIWPreviewWindowTest, AnItemWithoutRepresentationLeavesTheOthersTheirs) {
  const Window window = Open(kOwnScene);
  red.Display().SetRepresented(false);
  window->Visualize(ListOf(red, white, weld), IID_ZefI3DGeoVisu);
  EXPECT_EQ(Listed(window), (Strings{"RED", "WHITE", "SW-1"}));
  Zef3DBagRep* const root = RootOf(window);
  ASSERT_EQ(ChildrenOf(root), 2);
  const Handle<Zef3DRep> weldRep = (*root->GetChildren())[1];
  window->RemoveItems(ListOf(white, plant.Root(), white), IID_ZefI3DGeoVisu);
  ASSERT_EQ(ChildrenOf(root), 1);
  EXPECT_EQ((*root->GetChildren())[0], weldRep.Get());
  window->RemoveItems(ListOf(red), IID_ZefI3DGeoVisu);
  window->RemoveItems(ListOf(weld), IID_ZefI3DGeoVisu);
  EXPECT_TRUE(weldRep->Parents().empty());
  window->Visualize(ListOf(white), IID_ZefI3DGeoVisu);
  window->ClearAllItemsFromList();
  EXPECT_EQ(ChildrenOf(root), 1) << "the graphics stay";
}

TEST_F(TuvBIWPreviewWindowTest, EachOwnSceneHasARepresentationOfItsOwnOfAnItem) {
  const Handle<Zef3DRep> furtherOfRed = ZefIVisu_var(red.Identity())->GetRep();
  auto* const bag = static_cast<Zef3DBagRep*>(furtherOfRed.Get());
  const auto shape = Make<Zef3DCustomRep>();
  bag->AddChild(shape);
  const Window windows[] = {Open(kOwnScene), Open(kOwnScene)};
  for (const Window& window : windows) window->Visualize(ListOf(red), IID_ZefI3DGeoVisu);
  windows[1]->Visualize(ListOf(red), IID_ZefI3DGeoVisu);
  std::set<Zef3DRep*> shown;
  for (const Window& window : windows) {
    const auto& children = *RootOf(window)->GetChildren();
    for (int i = 0; i < children.Size(); ++i) {
      auto* const rep = static_cast<Zef3DBagRep*>(children[i]);
      shown.insert(rep);
      EXPECT_EQ(rep->GetColor(), (std::array{255, 0, 9, 255}));
      EXPECT_EQ(rep->GetMatrix().At(0, 3), 100);
      ASSERT_EQ(ChildrenOf(rep), 1);
      EXPECT_EQ((*rep->GetChildren())[0], shape.Get());
    }
  }
  EXPECT_EQ(shown.size(), 3u);
  windows[0]->RemoveItems(ListOf(red), IID_ZefI3DGeoVisu);
  EXPECT_EQ(ChildrenOf(RootOf(windows[0])), 0);
  EXPECT_EQ(ChildrenOf(RootOf(windows[1])), 2);
  windows[1]->RemoveItems(ListOf(red), IID_ZefI3DGeoVisu);
  EXPECT_EQ(ChildrenOf(RootOf(windows[1])), 1);
  bag->RemoveAllChildren();
}

// Shows a representation that is no bag, so that it cannot be had twice.
class Picture : public ComponentObject<ZefISPPItem, ZefIVisu> {
 public:
  ZefMetaClass* GetMetaObject() const override {
    return embedded::ObjectClass<Picture>("Picture", nullptr);
  }
  Zef3DRep* GetRep() override { return rep_; }

 private:
  Handle<Zef3DCustomRep> rep_ = Make<Zef3DCustomRep>();
};

TEST_F(TuvBIWPreviewWindowTest, ARepresentationThatScenesShareStaysInTheOthers) {
  const auto picture = embedded::MakeOwned<Picture>();
  const Window first = Open(kOwnScene), second = Open(kOwnScene);
  for (const Window& window : {first, second}) {
    window->Visualize(ListOf(*picture), IID_ZefI3DGeoVisu);
  }
  first->RemoveItems(ListOf(*picture), IID_ZefI3DGeoVisu);
  EXPECT_EQ(ChildrenOf(RootOf(first)), 0);
  EXPECT_EQ(ChildrenOf(RootOf(second)), 1);
  EXPECT_FALSE(static_cast<Zef3DRep*>(picture->GetRep())->WasDestroyed());
}

TEST_F(TuvBIWPreviewWindowTest, WhatAWindowTookAwayStaysWhereItIsShownAnew) {
  const Window first = Open(kOwnScene), second = Open(kOwnScene);
  for (const Window& window : {first, second}) {
    window->Visualize(ListOf(white), IID_ZefI3DGeoVisu);
  }
  first->RemoveItems(ListOf(white), IID_ZefI3DGeoVisu);
  first->Visualize(ListOf(white), IID_ZefI3DGeoVisu);
  second->RemoveItems(ListOf(white), IID_ZefI3DGeoVisu);
  EXPECT_EQ(ChildrenOf(RootOf(first)), 1);
  EXPECT_EQ(ChildrenOf(RootOf(second)), 0);
}

TEST_F(TuvBIWPreviewWindowTest, TheViewIsMovedToTheItemsAndDrawnOnce) {
  SpiedApplication spied(application);
  const Window window = Open(kAttach);
  window->VisuWithReframeOnItems({});
  EXPECT_EQ(ViewerOf(window).Draws(), 0);
  window->VisuWithReframeOnItems(ListOf(plant.Root(), nullptr, weld));
  EXPECT_EQ(ViewerOf(window).Draws(), 1);
  ASSERT_TRUE(ViewerOf(window).Framed());
  EXPECT_EQ(ViewerOf(window).Framed()->Centre().GetX(), 1);
  EXPECT_EQ(ViewerOf(window).InteractiveSets().size(), 3u);
  EXPECT_EQ(Listed(window), Strings());
}

TEST_F(TuvBIWPreviewWindowTest, ADuplicateHasTheNameAndAttachesWhateverTheModeOfTheFirst) {
  const Window window = Open(kOwnScene);
  window->SetBaseName("Other name");
  window->Visualize(ListOf(red), IID_ZefI3DGeoVisu);
  const Window copy = AdoptAs<TuvBIWPreviewWindow>(window->DuplicateWindow());
  EXPECT_STREQ(copy->GetBaseName(), "Other name");
  EXPECT_EQ(copy->ReferenceCount(), 1u);
  EXPECT_EQ(Listed(copy), Strings());
  EXPECT_EQ(RootOf(copy), nullptr);
  copy->Visualize(ListOf(red), IID_ZefI3DGeoVisu);
  EXPECT_EQ(ViewerOf(copy).MainViewpoint()->Objects().Size(), 1);
}

// Keeps what reaches it; lets go of a window when it is told so.
class Father : public ZefFrmWindow {
 public:
  void ReceiveNotification(ZefCommand* iFrom, ZefNotification* iNotification) override {
    received.push_back(iNotification);
    EXPECT_TRUE(iFrom);
    window = nullptr;
  }
  std::vector<ZefNotification*> received;
  Handle<TuvBIWPreviewWindow> window;
};

TEST_F(TuvBIWPreviewWindowTest, ClosingIsToldToBothFathersEvenIfTheFirstLetsTheWindowGo) {
  const auto first = Make<Father>(), second = Make<Father>();
  first->window = Open(kOwnScene);
  TuvBIWPreviewWindow* const window = first->window;
  ZefNotification* const closing = window->GetMDICloseNotification();
  window->Close();
  window->SetFather(first);
  window->SetNotificationFather(second);
  window->Visualize(ListOf(red, weld), IID_ZefI3DGeoVisu);
  const long alive = CountLiveObjects();
  window->Close();
  EXPECT_EQ(first->received, std::vector{closing});
  EXPECT_EQ(second->received, std::vector{closing});
  EXPECT_LT(CountLiveObjects(), alive) << "the window is gone";
  EXPECT_TRUE(ZefIVisu_var(red.Identity())->GetRep()->Parents().empty());
}

TEST_F(TuvBIWPreviewWindowTest, AWindowThatEndsWhileItShowsItemsLeavesNothingBehind) {
  const ReferenceSnapshot before{red.Identity(), white.Identity(), weld.Identity(), &editor};
  for (const unsigned char mode : {kAttach, kOwnScene}) {
    Window window = Open(mode);
    window->UpdateViewer(1);
    window->Visualize(ListOf(red, white, weld, red), IID_ZefI3DGeoVisu);
    window = nullptr;
    EXPECT_EQ(before.Differences(), "");
    for (int rank = 0; rank < 3; ++rank) {
      EXPECT_EQ(editor.GetISO(rank)->Viewers().size(), 1u) << "the main viewer alone is left";
    }
  }
}

TEST_F(TuvBIWPreviewWindowTest, NoFailureOfTheHostLosesAReferenceOrTheNextWindow) {
  auto items = ListOf(red, white, weld);
  const auto use = [&](unsigned char mode) {
    const Window window = Open(mode);
    window->Visualize(items, IID_ZefI3DGeoVisu);
    window->UpdateViewer(1);
    window->VisuWithReframeOnItems(items);
    window->Detach(red.Identity(), IID_ZefI3DGeoVisu);
    window->RemoveItems(ListOf(white), IID_ZefI3DGeoVisu);
    const auto copy = Adopt(window->DuplicateWindow());
    window->RemoveAllItems();
    window->Visualize(items, IID_ZefI3DGeoVisu);
  };
  for (const unsigned char mode : {kAttach, kOwnScene}) use(mode);
  const long alive = CountLiveObjects();
  const ReferenceSnapshot before{red.Identity(), white.Identity(), weld.Identity(), &editor};
  long met = 0;
  for (const unsigned char mode : {kAttach, kOwnScene}) {
    const auto check = [&] {
      {
        const Window window = Open(kOwnScene);
        window->Visualize(items, IID_ZefI3DGeoVisu);
        ASSERT_EQ(ChildrenOf(RootOf(window)), 3);
      }
      ASSERT_EQ(before.Differences(), "");
      ASSERT_EQ(CountLiveObjects(), alive);
    };
    met += ForEachHostFailure([&] { use(mode); }, check);
    for (int nth = 1; nth <= 30; ++nth) {
      SCOPED_TRACE(nth);
      FailAllocation(nth);
      if (Window window = Open(mode)) {
        window->Visualize(items, IID_ZefI3DGeoVisu);
        window->VisuWithReframeOnItems(items);
        window->RemoveItems(items, IID_ZefI3DGeoVisu);
        const auto copy = Adopt(window->DuplicateWindow());
      }
      FailAllocation(0);
      check();
    }
  }
  RecordProperty("host_failures", static_cast<int>(met));
  EXPECT_GT(met, 150);
}

}  // namespace
