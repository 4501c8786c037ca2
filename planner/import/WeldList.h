#pragma once

#include <array>
#include <cstddef>
#include <istream>
#include <optional>
#include <string>
#include <vector>

#include "planner/import/NameIndex.h"
#include "planner/import/RowFault.h"
#include "planner/import/WeldTypes.h"

namespace biwplan {

// One corner of a seam.
struct SeamPoint {
  long line;
  // mm.
  std::array<double, 3> position;
};

// A weld of a list: one row, or for a seam one row per point. Locating and clamping points stand in
// the list like welds.
struct WeldRow {
  long line = 0;
  std::string id;
  // "spot", "endo", "seam", ...; see WeldTypes.h.
  std::string type;
  WeldShape shape = WeldShape::Point;
  // mm; the first point of a seam.
  std::array<double, 3> position{};
  // Degrees about X, Y and Z.
  std::array<double, 3> angles{};
  // mm.
  std::optional<double> diameter;
  // The joined parts, as the index numbers them; only locating and clamping points may have none.
  std::vector<std::size_t> parts;
  // Every point of a seam, in the order of the rows; empty for a point weld.
  std::vector<SeamPoint> points;
};

struct WeldListOptions {
  // The columns of a list without header, such as "id,x,y,z,parts"; empty when it has one.
  std::string columnOrder{};
  // Fails with every reason instead of dropping rows.
  bool isStrict = false;
};

struct WeldList {
  static constexpr std::size_t kMostRows = 1'000'000;
  // The parts that a weld joins at most.
  static constexpr std::size_t kMostParts = 8;

  std::string source;
  // In the order of the list.
  std::vector<WeldRow> welds;
  // By line.
  std::vector<RowFault> dropped;
  // Columns and fields that were passed over; nothing that loses a weld.
  std::vector<std::string> notes;
  std::size_t rowsRead = 0;

  // Locating and clamping points do not count.
  std::size_t CountWelds() const;
  // "file: 62 rows read, 58 kept (52 point welds, 2 seams), 4 dropped: 1 missing part, ...".
  std::string Summary() const;
};

// Reads a weld list; docs/formats.md describes it. InputError for text that is no such list, and in
// strict mode for any row that cannot be used.
WeldList ReadWeldList(std::istream& iStream, const std::string& iSource, const NameIndex& iParts,
                      const WeldListOptions& iOptions = {});

}  // namespace biwplan
