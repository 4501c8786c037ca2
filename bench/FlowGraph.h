#pragma once

#include <boost/graph/graph_traits.hpp>
#include <boost/iterator/transform_iterator.hpp>
#include <cstddef>
#include <utility>

#include "embedded/model/Activity.h"

namespace bench {

using ActivityPointer = const embedded::Activity*;

// Makes the edges of an activity of its previous ones.
struct EdgesFrom {
  ActivityPointer from;
  std::pair<ActivityPointer, ActivityPointer> operator()(ActivityPointer to) const {
    return {from, to};
  }
};

// The activities of a plant as Boost.Graph sees them, in place: an edge leads back along a flow.
struct FlowGraph {
  using vertex_descriptor = ActivityPointer;
  using edge_descriptor = std::pair<ActivityPointer, ActivityPointer>;
  using directed_category = boost::directed_tag;
  using edge_parallel_category = boost::allow_parallel_edge_tag;
  using traversal_category = boost::incidence_graph_tag;
  using out_edge_iterator =
      boost::transform_iterator<EdgesFrom, embedded::Activities::const_iterator>;
  using degree_size_type = std::size_t;
};

inline ActivityPointer source(const FlowGraph::edge_descriptor& edge, const FlowGraph&) {
  return edge.first;
}
inline ActivityPointer target(const FlowGraph::edge_descriptor& edge, const FlowGraph&) {
  return edge.second;
}
inline auto out_edges(ActivityPointer activity, const FlowGraph&) {
  const EdgesFrom edges{activity};
  return std::pair(boost::make_transform_iterator(activity->Previous().begin(), edges),
                   boost::make_transform_iterator(activity->Previous().end(), edges));
}
inline std::size_t out_degree(ActivityPointer activity, const FlowGraph&) {
  return activity->Previous().size();
}

}  // namespace bench
