#pragma once

#include <string_view>

namespace biwplan {

enum class WeldShape { Point, Curve };

struct WeldType {
  // As the model keeps it: "spot", "endo", "seam", ...
  std::string_view name;
  WeldShape shape;
};

// The type that a list calls `iText` ("Spot weld", "RSW"); "spot" for an empty text. RowError for
// any other word.
const WeldType& FindWeldType(std::string_view iText);

}  // namespace biwplan
