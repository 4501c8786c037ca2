#include "tests/services/Sketch.h"

#include <algorithm>

#include "host/product/Product.h"

namespace tests {

namespace {
constexpr int kSteps = 12;
constexpr int kFlows = 16;
constexpr int kParts = 10;
constexpr int kNumbers = 7;
}  // namespace

Sketch::Sketch(Plant& plant, unsigned seed, bool rings) : dice_(seed) {
  DrawParts(plant);
  DrawSteps(plant, rings);
  Hide();
}

const std::vector<int>& Sketch::PartsBelow(int part) const {
  const int reference = PartAt(part).reference;
  return PartAt(reference < 0 ? part : reference).children;
}

ReferenceSnapshot Sketch::Snapshot() const {
  ReferenceSnapshot snapshot{};
  for (const Step& step : steps_) snapshot.Add(step.activity->Identity());
  for (const Part& part : parts_) snapshot.Add(part.product->Identity());
  return snapshot;
}

// Every third part is an instance of a former one that has none itself above.
void Sketch::DrawParts(Plant& plant) {
  embedded::Document& document = *plant.Document();
  parts_.push_back({.product = &document.RootProduct()});
  for (int i = 1; i <= kParts; ++i) {
    const int above = Below(parts_.size());
    const int parent = PartAt(above).reference < 0 ? above : 0;
    const int reference = i % 3 == 0 && parent == 0 ? 1 : -1;
    const embedded::ProductData data{.key = "P" + std::to_string(i),
                                     .partNumber = "N" + std::to_string(i % kNumbers)};
    parts_.push_back(
        {.product = &document.AddProduct(*PartAt(parent).product, data,
                                         reference < 0 ? nullptr : PartAt(reference).product),
         .reference = reference,
         .number = i % kNumbers});
    parts_[static_cast<std::size_t>(parent)].children.push_back(i);
  }
}

void Sketch::DrawSteps(Plant& plant, bool rings) {
  embedded::Document& document = *plant.Document();
  steps_.push_back({.activity = &plant.Root()});
  for (int i = 1; i <= kSteps; ++i) {
    const int parent = Below(steps_.size());
    steps_.push_back(
        {.activity = &document.AddActivity(*At(parent).activity, {.key = "A" + std::to_string(i)}),
         .parent = parent});
    steps_[static_cast<std::size_t>(parent)].children.push_back(i);
  }
  for (int i = 0; i < kFlows; ++i) {
    const int from = Below(steps_.size());
    const int to = Below(steps_.size());
    if (!rings && from >= to) continue;
    document.AddFlow(*At(from).activity, *At(to).activity, true);
    auto& previous = steps_[static_cast<std::size_t>(to)].previous;
    if (std::count(previous.begin(), previous.end(), from) == 0) previous.push_back(from);
  }
  for (Step& step : steps_) {
    for (int i = Below(3); i > 0; --i) {
      step.items.push_back(Below(parts_.size()));
      plant.Assign(*step.activity, *PartAt(step.items.back()).product);
    }
    if (Below(2) == 0) continue;
    step.outputs.push_back(Below(parts_.size()));
    const ZefISPPItem_var product = PartAt(step.outputs.back()).product->Identity();
    ZefISPPProductIO_var output;
    step.activity->AddProductOutput(output.Put(), product);
  }
}

void Sketch::Hide() {
  const auto hide = [&](auto& object, const _GUID& interface, bool& answered) {
    if (Below(12) != 0) return;
    answered = false;
    object.AnswerInterface(interface, false);
  };
  for (Step& step : steps_) {
    hide(*step.activity, IID_ZefISPPActivity, step.isActivity);
    hide(*step.activity, IID_ZefISPPFlowMgt, step.hasFlow);
    hide(*step.activity, IID_ZefISPPChildManagement, step.hasChildren);
    hide(*step.activity, IID_ZefISPPItemMgt, step.hasItems);
  }
  for (Part& part : parts_) {
    hide(*part.product, IID_ZefIProduct, part.isProduct);
    hide(*part.product, IID_ZefINavigateObject, part.hasChildren);
  }
}

embedded::Activity& LayOutDeep(Plant& plant, bool nested) {
  embedded::Activity* last = &plant.Root();
  for (int i = 1; i <= kDepth; ++i) {
    auto& next =
        plant.Operation("OP" + std::to_string(i), Plant::Task::None, nested ? last : &plant.Root());
    plant.Flow(*last, next);
    last = &next;
  }
  return *last;
}

}  // namespace tests
