#pragma once

#include <cstddef>
#include <istream>
#include <optional>
#include <string>
#include <vector>

#include "embedded/model/ActivityData.h"
#include "planner/import/PartsList.h"

namespace biwplan {

// An activity of a process list. Items are numbered: the parts by their position in the parts list,
// then the assemblies of the process.
struct ActivityRow {
  long line = 0;
  embedded::ActivityData data;
  // By position in the list; none for an activity of the process itself.
  std::optional<std::size_t> parent;
  std::vector<std::size_t> firstAssigned;
  std::vector<std::size_t> items;
  std::vector<std::size_t> outputs;
};

struct ProcessFlow {
  // Positions in the list.
  std::size_t from;
  std::size_t to;
  // Where the list says so first.
  long line;
};

struct ProcessList {
  static constexpr std::size_t kMostRows = 100'000;
  static constexpr std::size_t kMostLevels = 100;
  // Neighbours, items or outputs in one field.
  static constexpr std::size_t kMostNamed = 1000;

  std::string source;
  // In the order of the list.
  std::vector<ActivityRow> activities;
  // Positions in `activities`, each after its parent.
  std::vector<std::size_t> order;
  // Each once, in the order of the list.
  std::vector<ProcessFlow> flows;
  // Outputs that are no parts of the parts list, by name.
  std::vector<std::string> assemblies;
  // Columns and fields that were passed over.
  std::vector<std::string> notes;
};

// Reads a process list; docs/formats.md describes it. All or nothing: InputError names every row
// that cannot be used, with its line. `iOrder` declares the columns of a list without header.
ProcessList ReadProcessList(std::istream& iStream, const std::string& iSource,
                            const PartsList& iParts, const std::string& iOrder = {});

}  // namespace biwplan
