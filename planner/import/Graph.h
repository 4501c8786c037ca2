#pragma once

#include <cstddef>
#include <vector>

namespace biwplan {

// For each node, by position from 0, the nodes that follow it.
using Graph = std::vector<std::vector<std::size_t>>;

// Some of the cycles, each as the nodes along it: none when there is none, at most `iMost`.
std::vector<std::vector<std::size_t>> FindCycles(const Graph& iNext, std::size_t iMost = 10);

// Every node of a graph without cycles before those that follow it, otherwise by position.
std::vector<std::size_t> SortNodes(const Graph& iNext);

// For each node of a graph without cycles how many nodes the longest way to it has, 1 at a start.
std::vector<std::size_t> Levels(const Graph& iNext);

}  // namespace biwplan
