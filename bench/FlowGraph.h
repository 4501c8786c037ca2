#pragma once

#include <boost/graph/graph_traits.hpp>
#include <cstddef>
#include <utility>
#include <vector>

#include "embedded/model/Activity.h"
#include "embedded/model/ControlFlow.h"

namespace bench {

using ActivityPointer = const embedded::Activity*;

// The activities of a plant as Boost.Graph sees them, in place: an edge leads back along a flow.
struct FlowGraph {
  using vertex_descriptor = ActivityPointer;
  using edge_descriptor = embedded::Neighbour;
  using directed_category = boost::directed_tag;
  using edge_parallel_category = boost::allow_parallel_edge_tag;
  using traversal_category = boost::incidence_graph_tag;
  using out_edge_iterator = embedded::FlowPlace::Neighbours::const_iterator;
  using degree_size_type = std::size_t;
};

inline ActivityPointer source(const FlowGraph::edge_descriptor& flow, const FlowGraph&) {
  return &flow.flow->To();
}
inline ActivityPointer target(const FlowGraph::edge_descriptor& flow, const FlowGraph&) {
  return flow.activity;
}
inline auto out_edges(ActivityPointer activity, const FlowGraph&) {
  return std::pair(activity->Previous().begin(), activity->Previous().end());
}
inline std::size_t out_degree(ActivityPointer activity, const FlowGraph&) {
  return activity->Previous().size();
}

}  // namespace bench
