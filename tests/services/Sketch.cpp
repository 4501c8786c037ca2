#include "tests/services/Sketch.h"

#include <algorithm>

namespace tests {

namespace {
constexpr int kSteps = 12;
constexpr int kFlows = 16;
constexpr int kParts = 10;
}  // namespace

Sketch::Sketch(Plant& plant, unsigned seed, bool rings)
    : steps{{.activity = &plant.Root()}},
      parts{{.product = &plant.Document()->RootProduct()}},
      dice_(seed) {
  DrawParts(*plant.Document());
  DrawTree(*plant.Document());
  DrawFlows(*plant.Document(), rings);
  DrawItems(plant);
  Hide();
}

ReferenceSnapshot Sketch::Snapshot() const {
  ReferenceSnapshot snapshot{};
  for (const Step& step : steps) snapshot.Add(step.activity->Identity());
  for (const Part& part : parts) snapshot.Add(part.product->Identity());
  return snapshot;
}

// Some parts are instances of the first one.
void Sketch::DrawParts(embedded::Document& document) {
  for (int i = 1; i <= kParts; ++i) {
    const int above = Draw(parts.size());
    const int parent = parts[above].reference < 0 ? above : 0;
    const int reference = i % 3 == 0 && parent == 0 ? 1 : -1;
    parts.push_back(
        {.product = &document.AddProduct(*parts[parent].product, {.key = "P" + std::to_string(i)},
                                         reference < 0 ? nullptr : parts[reference].product),
         .reference = reference});
    parts[parent].children.push_back(i);
  }
}

void Sketch::DrawTree(embedded::Document& document) {
  for (int i = 1; i <= kSteps; ++i) {
    const int parent = Draw(steps.size());
    auto& activity =
        document.AddActivity(*steps[parent].activity, {.key = "A" + std::to_string(i)});
    steps.push_back({.activity = &activity, .parent = parent});
    steps[parent].children.push_back(i);
  }
}

void Sketch::DrawFlows(embedded::Document& document, bool rings) {
  for (int i = 0; i < kFlows; ++i) {
    const int from = Draw(steps.size());
    const int to = Draw(steps.size());
    if (!rings && from >= to) continue;
    document.AddFlow(*steps[from].activity, *steps[to].activity, true);
    auto& previous = steps[to].previous;
    if (std::count(previous.begin(), previous.end(), from) == 0) previous.push_back(from);
  }
}

void Sketch::DrawItems(Plant& plant) {
  for (Step& step : steps) {
    plant.Assign(*step.activity, plant.Weld("SW-" + step.activity->Key()));
    for (int i = Draw(3); i > 0; --i) {
      step.items.push_back(Draw(parts.size()));
      plant.Assign(*step.activity, *parts[step.items.back()].product);
    }
    for (int i = Draw(3); i > 0; --i) {
      step.outputs.push_back(Draw(parts.size()));
      ZefISPPProductIO_var output;
      const ZefISPPItem_var product = parts[step.outputs.back()].product->Identity();
      step.activity->AddProductOutput(output.Put(), product);
    }
  }
}

void Sketch::Hide() {
  const auto hide = [&](auto& object, const _GUID& interface, bool& answered) {
    answered = Draw(12) != 0;
    object.AnswerInterface(interface, answered);
  };
  for (Step& step : steps) {
    hide(*step.activity, IID_ZefISPPActivity, step.isActivity);
    hide(*step.activity, IID_ZefISPPFlowMgt, step.hasFlow);
    hide(*step.activity, IID_ZefISPPChildManagement, step.hasChildren);
    hide(*step.activity, IID_ZefISPPItemMgt, step.hasItems);
  }
  for (Part& part : parts) hide(*part.product, IID_ZefIProduct, part.isProduct);
}

embedded::Activity& LayOutDeep(Plant& plant, bool nested) {
  embedded::Activity* last = &plant.Root();
  for (int i = 1; i <= kDepth; ++i) {
    auto& parent = nested ? *last : plant.Root();
    auto& next = plant.Operation("OP" + std::to_string(i), Plant::Task::None, &parent);
    plant.Flow(*last, next);
    last = &next;
  }
  return *last;
}

}  // namespace tests
