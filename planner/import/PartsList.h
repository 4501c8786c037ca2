#pragma once

#include <array>
#include <cstddef>
#include <filesystem>
#include <istream>
#include <optional>
#include <string>
#include <vector>

#include "planner/import/NameIndex.h"

namespace biwplan {

// A part or an assembly of a parts list.
struct PartRow {
  struct Box {
    std::array<double, 3> least;
    std::array<double, 3> most;
  };

  long line = 0;
  // Unique: the identifier in the list, else the number, else the name.
  std::string key;
  std::string number;
  std::string name;
  // The assembly that contains it, by position in the list; none at the top.
  std::optional<std::size_t> parent;
  // The part that it is an instance of; none for a part of its own.
  std::optional<std::size_t> reference;
  // Red, green and blue from 0 to 255.
  std::optional<std::array<int, 3>> colour;
  // In the part's own axes, mm.
  std::optional<Box> box;
  // File with the shape, as the list names it; may be empty.
  std::string geometry;
  // STL or OBJ file with the shape, with the list's folder; may be empty.
  std::filesystem::path mesh;
  // In the vehicle: mm, then degrees about X, Y and Z.
  std::array<double, 6> position{};
};

struct PartsList {
  static constexpr std::size_t kMostRows = 100'000;
  static constexpr std::size_t kMostLevels = 100;
  // Parts that the tree shows, those inside of instances counted each time.
  static constexpr std::size_t kMostShown = 1'000'000;

  std::string source;
  // In the order of the list.
  std::vector<PartRow> parts;
  // Positions in `parts`, each after its assembly and after the part that it is an instance of.
  std::vector<std::size_t> order;
  // Columns and fields that were passed over.
  std::vector<std::string> notes;

  // Finds the parts by their position in `parts`.
  NameIndex Index() const;
};

// Reads a parts list; docs/formats.md describes it. All or nothing: InputError names every row that
// cannot be used, with its line. `iOrder` declares the columns of a list without header.
PartsList ReadPartsList(std::istream& iStream, const std::string& iSource,
                        const std::string& iOrder = {});

}  // namespace biwplan
