#pragma once

#include <array>
#include <cstddef>
#include <istream>
#include <optional>
#include <string>
#include <vector>

#include "planner/import/PartIndex.h"

namespace biwplan {

// A part or an assembly of a parts list.
struct PartRow {
  struct Box {
    std::array<double, 3> least;
    std::array<double, 3> most;
  };

  long line = 0;
  std::string number;
  std::string name;
  // Number of the assembly that contains it; empty at the top.
  std::string parent;
  // Number of the part that it is an instance of; empty for a part of its own.
  std::string reference;
  // Red, green and blue from 0 to 255.
  std::optional<std::array<int, 3>> colour;
  // In the part's own axes, mm.
  std::optional<Box> box;
  // File with the shape, as the list names it; may be empty.
  std::string geometry;
  // In the vehicle: mm, then degrees about X, Y and Z.
  std::array<double, 6> position{};
};

struct PartsList {
  static constexpr std::size_t kMostRows = 100'000;

  // Each after its assembly and the part that it is an instance of, otherwise in the list's order.
  std::vector<PartRow> parts;
  std::vector<std::string> notes;

  // Finds the parts by their position in `parts`.
  PartIndex Index() const;
};

// Reads a parts list; docs/formats.md describes it. All or nothing: InputError names every row that
// cannot be used, with its line.
PartsList ReadPartsList(std::istream& iStream, const std::string& iSource);

}  // namespace biwplan
