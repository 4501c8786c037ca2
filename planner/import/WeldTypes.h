#pragma once

#include <string>
#include <string_view>

namespace biwplan {

enum class WeldShape { Point, Curve, Locator, Clamp };

struct WeldType {
  // As the model keeps it: "spot", "endo", "seam", ...
  std::string name;
  WeldShape shape;
  // False for a word that is kept as the list has it.
  bool isKnown;
};

// The type that a list calls `iText` ("Spot weld", "RSW"): "spot" for an empty text, a point weld
// of that type for a word that is not known.
WeldType FindWeldType(std::string_view iText);

}  // namespace biwplan
