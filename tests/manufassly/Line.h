#pragma once

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "manufassly/TuvIUpdateManufAssly.h"
#include "planner/check/AssemblyCheck.h"
#include "tests/support/EditedPlant.h"

namespace tests {

// Stations in an application, with the update of assemblies switched on through the first one.
class Line : public EditedPlant {
 public:
  explicit Line(const std::vector<std::string>& stations) {
    for (const std::string& key : stations) Station(key);
    Switch(true);
  }

  embedded::Activity& At(const std::string& key) const {
    embedded::Activity* const activity = Document()->FindActivity(key);
    if (!activity) ADD_FAILURE() << "no activity " << key;
    return activity ? *activity : Root();
  }
  void Switch(bool on) {
    if (!update_) update_ = ZefBaseUnknown_var(Document()->Activities()[1]->Identity());
    ASSERT_TRUE(update_);
    EXPECT_EQ(on ? update_->AddUpdateCallback() : update_->RemoveUpdateCallback(), S_OK);
  }

  void Link(const std::string& from, const std::string& to) {
    Document()->AddFlow(At(from), At(to));
  }
  void LinkOnce(const std::string& from, const std::string& to) {
    for (const embedded::ControlFlow* const flow : At(from).FlowsOut()) {
      if (&flow->To() == &At(to)) return;
    }
    Link(from, to);
  }
  void Unlink(const std::string& from, const std::string& to) {
    for (embedded::ControlFlow* const flow : At(from).FlowsOut()) {
      if (&flow->To() == &At(to)) return Document()->RemoveFlow(*flow);
    }
  }
  // An output whose assembly is named after the station: "A" gives "MA-A".
  embedded::MfgAssembly& Output(const std::string& station) {
    embedded::MfgAssembly& assembly = Document()->AddAssembly();
    assembly.SetName(("MA-" + station).c_str());
    ZefISPPProductIO_var output;
    At(station).AddProductOutput(output.Put(), nullptr);
    output->SetProduct(ZefISPPItem_var(assembly.Identity()));
    return assembly;
  }
  void RemoveOutput(const std::string& station) {
    if (At(station).Outputs().empty()) return;
    Document()->RemoveOutput(At(station), *At(station).Outputs().front());
  }
  void Drop(const std::string& item, const std::string& activity) {
    ZefBaseUnknown_var link;
    At(activity).AddItemLink(link.Put(), ZefISPPItem_var(ItemNamed(item)), nullptr, "", 1, 2);
  }
  void Drag(const std::string& item, const std::string& activity) {
    At(activity).RemoveItem(ItemNamed(item), 2);
  }

  // Names of what the assembly of a station contains.
  std::vector<std::string> Children(const std::string& station) const {
    const auto* const assembly = AssemblyOf(station);
    return assembly ? Names(assembly->OwnChildren()) : std::vector<std::string>{"no assembly"};
  }
  std::vector<std::string> Inputs(const std::string& activity) const {
    ZefListValZefBaseUnknown_var inputs;
    At(activity).GetFirstAssignedInputs(inputs);
    return Names(inputs);
  }
  // Title and message of each warning since the last call.
  std::vector<std::string> Warnings() {
    std::vector<std::string> texts;
    for (const DialogRequest& shown : dialogs.Shown()) {
      texts.push_back(shown.title + ": " + shown.message);
    }
    dialogs.Forget();
    return texts;
  }
  std::vector<std::string> OutOfStep() const {
    std::vector<std::string> findings;
    for (const auto& finding : biwplan::CheckAssemblies(*Document())) {
      findings.push_back(biwplan::Describe(finding));
    }
    return findings;
  }
  embedded::MfgAssembly* AssemblyOf(const std::string& station) const {
    const auto& outputs = At(station).Outputs();
    return outputs.empty()
               ? nullptr
               : embedded::ObjectAs<embedded::MfgAssembly>(outputs.front()->OwnProduct().Get());
  }

 private:
  // A part by its key, or the assembly "MA-A" of station A.
  ZefBaseUnknown_var ItemNamed(const std::string& name) const {
    if (auto* const part = Document()->FindProduct(name)) return part->Identity();
    auto* const assembly = AssemblyOf(name.substr(3));
    return assembly ? assembly->Identity() : nullptr;
  }

  TuvIUpdateManufAssly_var update_;
};

}  // namespace tests
