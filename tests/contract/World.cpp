#include "tests/contract/World.h"

#include "host/document/Document.h"
#include "host/process/Process.h"
#include "tests/support/SourceFiles.h"

namespace tests {

using embedded::Activity;

World::World() : Desk(Plant(Plant::Kind::Both)) {
  application.Catalogs().AddFolder(SourceFile("resources/catalogs"));
  application.Catalogs().SetLanguage("de");
  assembly.SetName("MA");
  assembly.AddChild(door.Identity());
  for (auto* const operation : {&op10, &op20}) {
    operation->OnItemChange([this](embedded::Activity&) { ++itemChanges; });
  }
  plant.Locator("LOCATOR");
  plant.Clamp("CLAMP");
  plant.Assign(op10, weld);
  plant.Assign(op10, frame);
  plant.Assign(op20, seam);
  ZefISPPProductIO_var output;
  st10.AddProductOutput(output.Put(), ZefISPPItem_var(assembly.Identity()));
  op20.Link(assembly.Identity(), embedded::ItemLink::FirstAssigned);
}

std::vector<World::Specimen> World::Specimens() const {
  const embedded::Document& document = *plant.Document();
  std::vector<Specimen> all{{"document", plant.Document()->Identity()},
                            {"root container", document.RootContainerObject()},
                            {"compound container", plant.Document()->GetCompoundContainer()},
                            {"feature container", document.FeatureContainerObject()},
                            {"assembly", assembly.Identity()},
                            {"control flow", flow.Identity()}};
  for (const auto& activity : document.Activities()) {
    all.push_back({"activity", activity->Identity()});
    activity->Links().ForEach([&](embedded::ItemLink& link) {
      all.push_back({"item link", link.Identity()});
    });
    for (const auto& output : activity->Outputs()) {
      all.push_back({"product output", output->Identity()});
    }
    ZefIContainer_var container;
    activity->GetFeatContainer(container);
    if (!activity->IsRoot()) all.push_back({"activity's container", container});
  }
  for (const auto& product : document.Products()) all.push_back({"product", product->Identity()});
  for (const ZefBaseUnknown_var& feature : document.Features()) {
    const auto* const point = embedded::ObjectAs<embedded::PointFeature>(feature.Get());
    const char* const kind = !point                  ? "fastener"
                             : point->Data().isClamp ? "clamping point"
                                                     : "locating point";
    all.push_back({kind, feature});
  }
  return all;
}

std::string World::Seen() {
  std::string seen;
  const auto tell = [&](const std::string& what, const Strings& names) {
    seen += what + ":";
    for (const std::string& name : names) seen += " " + name;
    seen += "\n";
  };
  for (const auto& activity : plant.Document()->Activities()) {
    Strings items;
    activity->Links().ForEach([&](const embedded::ItemLink& link) {
      items.push_back(std::to_string(link.GetSelector()) + NameOf(link.Item()));
    });
    tell(activity->Key() + " redrawn " + std::to_string(activity->Redraws()) + "/" +
             std::to_string(activity->NodeRedraws()) + " seconds " +
             std::to_string(activity->CycleTime()) + " blocked " +
             std::to_string(activity->AreCallbacksBlocked()),
         items);
  }
  for (const auto& made : plant.Document()->Assemblies()) {
    tell(made->Key() + " '" + made->OwnName() + "' redrawn " + std::to_string(made->Redraws()),
         Names(made->OwnChildren()));
  }
  tell("items changed", {std::to_string(itemChanges)});
  tell("statuses", {std::to_string(weld.DisplayStatus()), std::to_string(loose.DisplayStatus()),
                    std::to_string(seam.DisplayStatus())});
  for (const DialogRequest& shown : dialogs.Shown()) seen += shown.title + shown.message + "\n";
  return seen;
}

std::string NameOf(const ZefBaseUnknown_var& object) {
  ZefListValZefBaseUnknown_var list;
  list.Append(object);
  return Names(list)[0];
}

}  // namespace tests
