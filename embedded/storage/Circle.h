#pragma once

#include <cstddef>
#include <vector>

namespace embedded {

// For each object the numbers of those below it, counted from 0. Gives the numbers along one
// circle, empty when there is none.
std::vector<std::size_t> FindCircle(const std::vector<std::vector<std::size_t>>& iBelow);

}  // namespace embedded
