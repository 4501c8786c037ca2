#include "planner/check/UnitHint.h"

#include <algorithm>

#include "planner/report/Text.h"

namespace biwplan {

std::string UnitHint(const std::vector<std::array<double, 3>>& iPoints) {
  // mm; a door in metres spans two.
  constexpr double kLeastExtent = 20;
  if (iPoints.size() < 2) return {};
  double extent = 0;
  for (std::size_t axis = 0; axis < 3; ++axis) {
    const auto [least, most] =
        std::minmax_element(iPoints.begin(), iPoints.end(),
                            [axis](const auto& a, const auto& b) { return a[axis] < b[axis]; });
    extent = std::max(extent, (*most)[axis] - (*least)[axis]);
  }
  if (extent >= kLeastExtent) return {};
  return "all points lie within " + Number(extent) +
         " mm; positions are in millimetres, so metres must be multiplied by 1000";
}

}  // namespace biwplan
