#pragma once

#include <string>
#include <utility>
#include <vector>

#include "tests/support/PlantTest.h"

namespace tests {

// A planner at a small line with an object of every kind: three stations in a row, two of them with
// an operation, parts, fasteners, an assembly.
class World : public Desk {
 public:
  World();

  // Every object by its kind; a kind stands here as often as there are objects of it.
  struct Specimen {
    std::string kind;
    ZefBaseUnknown_var object;
  };
  std::vector<Specimen> Specimens() const;

  // What can be seen of the model without asking any interface.
  std::string Seen();

  embedded::Activity& st10 = plant.Station("ST10");
  embedded::Activity& op10 = plant.Operation("OP10", Plant::Task::Welding);
  embedded::Activity& st20 = plant.Station("ST20");
  embedded::Activity& op20 = plant.Operation("OP20", Plant::Task::CurveFastening);
  embedded::Activity& st30 = plant.Station("ST30");
  embedded::Product& frame = plant.Document()->AddProduct(
      plant.Document()->RootProduct(), {.key = "FRAME", .colour = {255, 0, 9}, .position = {100}});
  embedded::Product& bolt = plant.Part("BOLT", &frame);
  embedded::Product& door = plant.Part("DOOR");
  embedded::SpotWeld& weld = plant.Weld("SW-1", {1, 2, 3}, {&frame});
  embedded::SpotWeld& loose = plant.Weld("SW-2", {4, 5, 6}, {&door});
  embedded::CurveFastener& seam = plant.Seam("SEAM", {{7, 0, 0}, {7, 0, 9}}, {&frame});
  embedded::MfgAssembly& assembly = plant.Document()->AddAssembly("MA");
  embedded::ControlFlow& flow = plant.Flow(st10, st20);
  // How often the operations' items were said to have changed.
  int itemChanges = 0;
};

// As Names; of one object.
std::string NameOf(const ZefBaseUnknown_var& object);

// A group of services that an application uses together, with a planner's hour of work that passes
// through all of them: what comes out of it, in one text.
struct ServiceGroup {
  const char* name;
  std::string (*run)(World&);
};
extern const std::vector<ServiceGroup> kServiceGroups;

}  // namespace tests
