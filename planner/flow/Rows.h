#pragma once

#include <cstddef>
#include <vector>

#include "planner/flow/FlowChart.h"

namespace biwplan {

// Where boxes go, so that a long line is read like a text, from left to right and row by row.
struct Rows {
  struct Place {
    std::size_t row = 0;
    std::size_t column = 0;
  };
  // The box that leads a column of its own: an operation stands below its station.
  std::vector<std::size_t> leader;
  // For each box the place of its leader.
  std::vector<Place> places;
  std::size_t count = 0;
};

Rows ArrangeInRows(const FlowChart& iChart);

}  // namespace biwplan
