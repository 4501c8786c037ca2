#include "tests/manufassly/Line.h"

#include "tests/support/SourceFiles.h"

namespace tests {

using embedded::Activity;
using embedded::MfgAssembly;
using embedded::ObjectAs;

Line::Line(const Strings& stations) {
  application.Catalogs().AddFolder(SourceFile("resources/catalogs"));
  for (const std::string& key : stations) plant.Station(key);
  update_ = At(stations.front()).Identity();
  EXPECT_EQ(update_->AddUpdateCallback(), S_OK);
}

Activity& Line::At(const std::string& key) const {
  Activity* const activity = plant.Document()->FindActivity(key);
  if (!activity) ADD_FAILURE() << "no activity " << key;
  return activity ? *activity : plant.Root();
}

embedded::ControlFlow& Line::Link(const std::string& from, const std::string& to) {
  return plant.Document()->AddFlow(At(from), At(to));
}

void Line::LinkOnce(const std::string& from, const std::string& to) {
  if (!At(from).FlowTo(At(to))) Link(from, to);
}

void Line::Unlink(const std::string& from, const std::string& to) {
  if (embedded::ControlFlow* const flow = At(from).FlowTo(At(to))) {
    plant.Document()->RemoveFlow(*flow);
  }
}

MfgAssembly& Line::Output(const std::string& station, const std::string& assembly) {
  const std::string name = assembly.empty() ? "MA-" + station : assembly;
  MfgAssembly* made = plant.Document()->FindAssembly(name);
  if (!made) made = &plant.Document()->AddAssembly(name);
  made->SetName(name);
  ZefISPPProductIO_var output;
  At(station).AddProductOutput(output.Put(), nullptr);
  if (output) output->SetProduct(ZefISPPItem_var(made->Identity()));
  return *made;
}

void Line::RemoveOutput(const std::string& station) {
  if (At(station).Outputs().empty()) return;
  plant.Document()->RemoveOutput(At(station), *At(station).Outputs().front());
}

void Line::Drop(const std::string& item, const std::string& activity) {
  ZefBaseUnknown_var link;
  At(activity).AddItemLink(link.Put(), ZefISPPItem_var(Item(item)), nullptr, "", 1, 2);
}

void Line::Drag(const std::string& item, const std::string& activity) {
  At(activity).RemoveItem(Item(item), 2);
}

ZefBaseUnknown_var Line::Item(const std::string& name) {
  if (auto* const assembly = plant.Document()->FindAssembly(name)) return assembly->Identity();
  if (auto* const part = plant.Document()->FindProduct(name)) return part->Identity();
  return plant.Part(name).Identity();
}

MfgAssembly* Line::AssemblyOf(const std::string& station) const {
  const auto& outputs = At(station).Outputs();
  return outputs.empty() ? nullptr : ObjectAs<MfgAssembly>(outputs.front()->OwnProduct().Get());
}

Strings Line::Children(const std::string& station) const {
  const auto* const assembly = AssemblyOf(station);
  return assembly ? Names(assembly->OwnChildren()) : Strings{"no assembly"};
}

Strings Line::FirstAssigned(const std::string& activity) const {
  ZefISPPActivity_var handle = At(activity).Identity();
  ZefListValZefBaseUnknown_var items;
  Update().GetFirstAssignedItems(handle, items);
  return Names(items);
}

Strings Line::Warnings() {
  Strings texts;
  for (const DialogRequest& shown : dialogs.Shown()) {
    texts.push_back(shown.title + ": " + shown.message);
  }
  dialogs.Forget();
  return texts;
}

Strings Line::OutOfStep() const {
  Strings findings;
  for (const auto& finding : biwplan::CheckAssemblies(*plant.Document())) {
    findings.push_back(biwplan::Describe(finding));
  }
  return findings;
}

}  // namespace tests
