#include <filesystem>
#include <memory>

#include "embedded/processdb/ProcessDatabase.h"
#include "embedded/scene/SceneText.h"
#include "host/document/Document.h"
#include "host/process/Process.h"
#include "host/processdb/ProcessDb.h"
#include "host/values/Each.h"
#include "host/visu/Visu.h"
#include "manufassly/TuvIUpdateManufAssly.h"
#include "services/Members.h"
#include "services/Received.h"
#include "services/TuvBIWActivityIntelligenceServices.h"
#include "services/TuvBIWServices.h"
#include "tests/contract/World.h"
#include "tests/support/ScratchFolder.h"
#include "visu/TuvBIWPreviewWindow.h"

namespace tests {

namespace {

using Services = TuvBIWServices;
using List = ZefListValZefBaseUnknown_var;
using NewList = Received<List>;

// Collects what comes out of a group's services.
class Story {
 public:
  Story& operator<<(const std::string& text) { return text_ += text + "\n", *this; }
  Story& operator<<(const char* text) { return *this << std::string(text); }
  Story& operator<<(long number) { return *this << std::to_string(number); }
  Story& operator<<(const List& list) {
    for (const std::string& name : Names(list)) text_ += name + " ";
    return *this << "";
  }
  Story& operator<<(const NewList& list) { return list ? *this << *list : *this << "no list"; }
  // One of the services that need a document's root container raises without it.
  template <class Call>
  Story& Try(const Call& call) {
    try {
      call();
    } catch (const ZefNullHandleException&) {
      *this << "null handle";
    }
    return *this;
  }
  std::string Text() const { return text_; }

 private:
  std::string text_;
};

std::string Assignment(World& world) {
  Story story;
  List welds = ListOf(world.weld, world.loose, world.seam);
  for (auto* const activity : {&world.op10, &world.plant.Root()}) {
    NewList assigned, below;
    story << Services::GetListOfAssignedWeld(activity, assigned.Out()) << assigned;
    story << Services::GetWeldFromActivity(activity, below.Out(), 1, -1) << below;
  }
  NewList activities;
  int count = 0;
  Services::GetActivityFromAssignedWeld(world.weld.Identity(), activities.Out(), count);
  story << activities << count;
  for (const auto& weld : Each<ZefBaseUnknown>(welds)) {
    story << Services::GetWeldID(weld).Bytes() << Services::IsWeldAssigned(weld, &welds)
          << Services::IsValidWeldForActivity(weld, &world.op20)
          << Services::CheckWeldAssignement(weld, &world.op10, nullptr, 0);
  }
  world.application.SetPartLoadConstraint(true);
  List valid = welds;
  Services::ValidateListOfFastenersForAssignmentToActivity(valid, world.op10.Identity());
  story << valid;
  story.Try([&] { story << Services::AssignListOfWelds(&welds, &world.op10, nullptr, 0); });
  story << TuvBIWActivityIntelligenceServices::UpdateCycleTimeForWelding(&world.op10);
  story << world.Seen();
  Services::ReallocateWeld(&world.op10, &world.op20, &welds);
  story.Try([] { TuvBIWActivityIntelligenceServices::UpdateAllCycleTimeActivities(); });
  story << world.Seen();
  story.Try([&] { Services::UnassignListOfWelds(&welds, &world.op20); });
  return (story << world.Seen()).Text();
}

template <class Service>
void TellMembers(Story& story, const Service& service) {
  Members members;
  service(members.Out());
  List found;
  for (int i = 0; i < members.Size(); ++i) found.Append(members.Take(i));
  story << found;
}

void TellDocument(Story& story, World& world) {
  ZefISPPActivity_var root;
  story.Try([&] { story << Services::GetRootActivity(root.Put(), nullptr); });
  NewList activities, products;
  story.Try([&] { Services::GetListOfAllActivities(activities.Out(), nullptr); }) << activities;
  Services::GetAllProducts(products.Out());
  story << products;
  story.Try([&] { story << (Services::GetRootContainer(nullptr) ? "container" : "none"); });
  story << (Services::GetFeatContainerFromFeature(world.weld.Identity()) ? "features" : "none");
  TellMembers(story, Services::GetListOfAllFasteners);
  TellMembers(story, Services::GetListOfAllLocators);
  TellMembers(story, Services::GetListOfAllClamps);
  story << Services::GetListOfAllPointFasteners(nullptr);
}

// What a service adds to a list that is there already.
template <class Service>
List Collected(const Service& service) {
  List list;
  List* pointer = &list;
  service(pointer);
  return list;
}

void TellFlow(Story& story, World& world) {
  ZefUnicodeString path;
  Services::GetActivityHierarchy(&world.op10, path);
  List predecessors, below;
  Services::GetAllPredecessors(world.st20.Identity(), predecessors);
  Services::GetDescendants(world.plant.Root().Identity(), below);
  story << path.Bytes() << predecessors << below << Collected([&](List*& list) {
    Services::GetPreviousActivities(world.op20.Identity(), list);
  }) << Collected([&](List*& list) {
    Services::GetPredecessorActivity(world.st20.Identity(), list);
  });
}

void TellParts(Story& story, World& world) {
  for (auto* const activity : {&world.op10, &world.op20}) {
    List loaded =
        Collected([&](List*& list) { Services::GetLoadedParts(activity->Identity(), list); });
    ZefUnicodeString number = "FRAME";
    story << loaded << Services::IsPartInList(number, &loaded)
          << Services::ArePartsLoaded(world.weld.Identity(), &loaded);
  }
  NewList outputs;
  Services::GetProductOutputsFromActivity(world.st10.Identity(), outputs.Out());
  story << outputs << Collected([&](List*& list) {
    story.Try([&] { Services::GetSiblingParts(world.frame.Identity(), list); });
  }) << Collected([&](List*& list) {
    Services::GetAllChildParts(world.assembly.Identity(), list);
    Services::GetChildParts(world.plant.Document()->RootProduct().Identity(), list);
  });
}

std::string Navigation(World& world) {
  Story story;
  TellDocument(story, world);
  TellFlow(story, world);
  TellParts(story, world);
  return story.Text();
}

void Drop(embedded::Activity& activity, ZefBaseUnknown* item) {
  ZefBaseUnknown_var link;
  activity.AddItemLink(link.Put(), ZefISPPItem_var(item), nullptr, "", 1, 2);
}

std::string Assemblies(World& world) {
  Story story;
  embedded::Document& document = *world.plant.Document();
  const TuvIUpdateManufAssly_var update = world.st10.Identity();
  if (!update) return "no update";
  story << update->AddUpdateCallback() << update->AddWeldColorUpdateCallback();
  ZefISPPActivity_var second = world.st20.Identity();
  List made, parts = ListOf(world.door);
  Services::CreateProductOutput(second, made);
  Drop(world.op10, world.frame.Identity());
  story << made << world.Seen();
  Services::AssignProductsAsFirstAssign(second, parts);
  world.op10.RemoveItem(world.frame.Identity(), 2);
  story << world.Seen();
  auto& around = document.AddFlow(world.op10, world.op20);
  auto& branch = document.AddFlow(world.st10, world.st30);
  story << world.Seen();
  for (auto* const flow : {&world.flow, &around, &branch}) {
    document.RemoveFlow(*flow);
    story << world.Seen();
  }
  // What would be warned of without the variable.
  world.application.SetEnvironment("GORM_VIST_OUT", "set");
  ZefISPPActivity_var third = world.st30.Identity();
  for (int i = 0; i < 2; ++i) Services::CreateProductOutput(third, made);
  Drop(world.st30, world.door.Identity());
  story << world.Seen();
  document.RemoveOutput(world.st10, *world.st10.Outputs()[0]);
  world.weld.SetDisplayStatus(4, 1);
  document.RemoveActivity(world.op10);
  document.RemoveActivity(world.st20);
  story << world.Seen();
  return (story << update->RemoveUpdateCallback()).Text();
}

void TellPreview(Story& story, World& world, unsigned char ownScene) {
  const auto window = Make<TuvBIWPreviewWindow>(world.application.CurrentEditor(), ownScene);
  List items = ListOf(world.frame, world.weld, world.assembly);
  window->Visualize(items, IID_ZefI3DGeoVisu);
  window->VisuWithReframeOnItems(items);
  story << window->GetVisualizedItems();
  const auto* const viewer = dynamic_cast<embedded::Viewer*>(window->GetViewer());
  if (!viewer) return;
  story << viewer->MainViewpoint()->Objects().Size() << (viewer->Framed() ? "framed" : "far");
  for (const auto& [order, rep] : viewer->MainViewpoint()->Representations().InOrder()) {
    const auto* const children = rep->GetChildren();
    for (int i = 0; children && i < children->Size(); ++i) {
      const auto& bag = static_cast<Zef3DBagRep&>(*(*children)[i]);
      story << bag.GetColor()[0] << static_cast<long>(bag.GetMatrix().At(0, 3));
    }
  }
  window->RemoveItems(items, IID_ZefI3DGeoVisu);
  story << window->GetVisualizedItems();
}

std::string Visualisation(World& world) {
  Story story;
  embedded::Editor& editor = *world.application.CurrentEditor();
  List welds = ListOf(world.weld, world.seam);
  list<ZefModelForRep3D> models;
  story << Services::ActivateListWeldVisualization(&welds, models) << models.Size();
  story << TextOf(SceneOf(world.application.MainViewer()));
  Services::DeactivateListWeldVisualization(models);
  Services::SetHighlight(world.weld.Identity());
  story << editor.GetHSO()->Elements().Size();
  story.Try([&] { story << Services::VisualizationKoraWeldList(&welds, 2, 0, 0, 0, 0, 0); });
  NewList labelled;
  Services::CheckVisualizationOfKoraWelds(&welds, labelled.Out(), 0);
  Services::HideShowWeldPointsInList(&welds, 0);
  story << labelled << TextOf(SceneOf(world.application.MainViewer()));
  const auto& container = *world.plant.Document();
  story << embedded::ObjectAs<embedded::Redrawable>(container.RootContainerObject())->Redraws();
  TellPreview(story, world, 0);
  TellPreview(story, world, 1);
  return (story << world.Seen()).Text();
}

// The file of a filled database, made once: what runs on it changes nothing.
const std::filesystem::path& DatabaseFile() {
  static const ScratchFolder folder;
  static const std::filesystem::path file = [] {
    const auto made = embedded::ProcessDatabase::Create(folder.Path() / "processes.sqlite");
    embedded::ProcessDatabase::Transaction filling(*made);
    for (const char* const process : {"LINE", "CELL", "CELL.2"})
      made->AddProcess(process, "", true);
    made->AddParent("CELL", "LINE");
    made->RelateVersions("CELL", "CELL.2");
    made->LinkActivity("ST10", "CELL");
    made->Assign("SW-1", "CELL");
    made->AddVersionList("SW-1", {"LINE", "CELL.2"});
    filling.Commit();
    return made->File();
  }();
  return file;
}

std::string ProcessDatabase(World& world) {
  Story story;
  world.plant.Document()->AttachDatabase(embedded::ProcessDatabase::Open(DatabaseFile()));
  for (auto* const weld : {&world.weld, &world.loose}) {
    ZefUnicodeString text;
    story << Services::IsWeldAssigned(weld->Identity(), nullptr)
          << Services::IsWeldAssignedInPask(weld->Identity())
          << Services::AddPaskAssignmentToText(weld->Identity(), text) << text.Bytes()
          << Services::GetNumberOfPaskAssignments(weld->Identity());
    TuvIBIWFastener_var fastener = weld->Identity();
    story << Services::IsValidProcessVersion(world.op10.Identity(), fastener);
  }
  const ZefIIPDAdapter_var adapter = world.plant.Document()->Identity();
  Handle<IUnknown> cell;
  if (adapter) adapter->GetObjectFromID("CELL", cell.Put());
  ZefListValZefUnicodeString identifiers;
  Services::GetListPaskObjectIDsTillRoot(cell, adapter, identifiers);
  return (story << identifiers.Size()).Text();
}

}  // namespace

const std::vector<ServiceGroup> kServiceGroups = {{"assignment", Assignment},
                                                  {"navigation", Navigation},
                                                  {"assemblies", Assemblies},
                                                  {"visualisation", Visualisation},
                                                  {"process database", ProcessDatabase}};

}  // namespace tests
