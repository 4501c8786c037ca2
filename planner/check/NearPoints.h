#pragma once

#include <array>
#include <cstddef>
#include <vector>

namespace biwplan {

// Two points by their positions in a list, from 0, the first one lower, and their distance in mm.
struct NearPair {
  std::size_t first;
  std::size_t second;
  double distance;
};

// The pairs of points closer than the limit, in order; of each point at least its `iMost` nearest
// ones are considered, so that points crowded at one place cost no more than others.
std::vector<NearPair> FindNearPairs(const std::vector<std::array<double, 3>>& iPoints,
                                    double iLimit, unsigned iMost = 6);

}  // namespace biwplan
