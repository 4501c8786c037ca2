#include "tests/support/Plant.h"

#include <random>

#include "tests/support/PlantTest.h"

namespace tests {

namespace {

using embedded::Activity;
using embedded::ActivityData;

constexpr int kWeldsPerPart = 20;
constexpr int kWeldsPerOperation = 25;
constexpr int kOperationsPerStation = 4;

// The same numbers with every standard library, unlike its distributions.
class Dice {
 public:
  explicit Dice(unsigned seed) : engine_(seed) {}
  std::size_t Below(std::size_t limit) { return engine_() % limit; }
  Point PointInVehicle() {
    const auto coordinate = [&](std::size_t extent) {
      return static_cast<double>(Below(10 * extent)) / 10.0;
    };
    return {coordinate(4500), coordinate(1800) - 900.0, coordinate(1400)};
  }

 private:
  std::mt19937 engine_;
};

std::string Numbered(const char* prefix, int number) { return prefix + std::to_string(number); }

void AddOperations(Plant& plant, int count) {
  for (int i = 0; i < count; ++i) {
    if (i % kOperationsPerStation == 0) {
      plant.Station(Numbered("ST", 10 * (i / kOperationsPerStation + 1)));
    }
    plant.Operation(Numbered("OP", 10 * (i + 1)), Plant::Task::Both);
    if (i > 0) plant.Flow(*plant.Operations()[i - 1], *plant.Operations()[i]);
  }
}

template <class Fastener>
void AssignThreeOfFour(Plant& plant, Dice& dice, Fastener& fastener) {
  if (dice.Below(4) == 0) return;
  plant.Assign(*plant.Operations()[dice.Below(plant.Operations().size())], fastener);
}

}  // namespace

Plant::Plant(Kind kind) : document_(embedded::MakeOwned<embedded::Document>(kind)) {}

Plant Plant::OfSize(int welds, unsigned seed) {
  Plant plant;
  Dice dice(seed);
  AddOperations(plant, welds / kWeldsPerOperation + 1);
  std::vector<embedded::Product*> parts;
  for (int i = 0; i <= welds / kWeldsPerPart + 1; ++i) {
    parts.push_back(&plant.Part(Numbered("P", i + 1)));
  }
  for (int i = 1; i <= welds; ++i) {
    const std::size_t part = dice.Below(parts.size() - 1);
    const Point at = dice.PointInVehicle();
    const Point end = dice.PointInVehicle();
    const std::vector joined{parts[part], parts[part + 1]};
    if (i % 10 == 0) {
      AssignThreeOfFour(plant, dice, plant.Seam(Numbered("SEAM-", i), {at, end}, joined));
    } else {
      AssignThreeOfFour(plant, dice, plant.Weld(Numbered("SW-", i), at, joined));
    }
  }
  return plant;
}

Activity& Plant::Station(const std::string& key) {
  station_ = &document_->AddActivity(Root(), {.key = key, .role = ActivityData::Role::Station});
  return *station_;
}

Activity& Plant::Operation(const std::string& key, Task task, Activity* parent) {
  Activity& below = parent ? *parent : station_ ? *station_ : Root();
  operations_.push_back(&document_->AddActivity(below, {.key = key, .task = task}));
  return *operations_.back();
}

embedded::ControlFlow& Plant::Flow(Activity& from, Activity& to) {
  return document_->AddFlow(from, to, true);
}

embedded::Product& Plant::Part(const std::string& key, embedded::Product* parent) {
  return document_->AddProduct(parent ? *parent : document_->RootProduct(), {.key = key});
}

embedded::SpotWeld& Plant::Weld(const std::string& key, const Point& at,
                                const std::vector<embedded::Product*>& joined) {
  embedded::SpotWeldData data;
  data.key = key;
  data.type = "spot";
  data.parts = joined;
  data.position = {at[0], at[1], at[2], 0, 0, 0};
  embedded::SpotWeld& weld = document_->AddSpotWeld(data);
  fasteners_.Append(weld.Identity());
  return weld;
}

embedded::CurveFastener& Plant::Seam(const std::string& key, const std::vector<Point>& points,
                                     const std::vector<embedded::Product*>& joined) {
  embedded::CurveFastenerData data;
  data.key = key;
  data.type = "seam";
  data.parts = joined;
  data.points = points;
  embedded::CurveFastener& seam = document_->AddCurveFastener(data);
  fasteners_.Append(seam.Identity());
  return seam;
}

embedded::PointFeature& Plant::Locator(const std::string& key, const Point& at) {
  return document_->AddPointFeature({key, at, false});
}

embedded::PointFeature& Plant::Clamp(const std::string& key, const Point& at) {
  return document_->AddPointFeature({key, at, true});
}

std::vector<std::string> Names(const ZefListValZefBaseUnknown_var& list) {
  std::vector<std::string> names;
  for (int i = 1; i <= list.Size(); ++i) {
    const ZefBaseUnknown_var element = list[i];
    const auto* const named = embedded::ObjectAs<embedded::Aliased>(element.Get());
    names.push_back(named ? named->Key() : element ? "?" : "null");
  }
  return names;
}

Strings Lines(const Strings& operations) {
  Strings lines;
  for (const std::string& operation : operations) {
    const std::string name = "TuvBIWServices::" + operation;
    if (operation.front() == '=') {
      lines.push_back(operation.substr(1));
    } else if (operation.front() == '<') {
      lines.push_back("TuvBIWServices::" + operation.substr(1) + " <-- OUT");
    } else if (operation.back() == '>') {
      lines.push_back(name.substr(0, name.size() - 1) + " --> IN");
    } else {
      lines.push_back(name + " --> IN");
      lines.push_back(name + " <-- OUT");
    }
  }
  return lines;
}

Strings Joined(std::initializer_list<Strings> parts) {
  Strings joined;
  for (const Strings& part : parts) joined.insert(joined.end(), part.begin(), part.end());
  return joined;
}

}  // namespace tests
