#pragma once

#include <array>
#include <string>
#include <vector>

namespace biwplan {

// A sentence without full stop when points in mm span so little that they were most likely meant in
// another unit; empty otherwise, and for fewer than two points.
std::string UnitHint(const std::vector<std::array<double, 3>>& iPoints);

}  // namespace biwplan
