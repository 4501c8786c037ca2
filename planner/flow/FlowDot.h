#pragma once

#include <string>

#include "planner/flow/FlowChart.h"

namespace biwplan {

// The picture as a DOT file that Graphviz's `dot` lays out: a node for each activity, named by its
// key, in a cluster for each that has others inside.
std::string DotOf(const FlowChart& iChart);

}  // namespace biwplan
