#include <benchmark/benchmark.h>
#include <boost/graph/adjacency_list.hpp>
#include <boost/graph/breadth_first_search.hpp>
#include <cstddef>
#include <memory>
#include <random>
#include <unordered_map>
#include <vector>

#include "bench/FlowGraph.h"
#include "planner/check/DocumentCheck.h"
#include "services/TuvBIWServices.h"
#include "tests/support/PlantTest.h"

namespace {

using Services = TuvBIWServices;
using Predecessors = std::vector<std::vector<std::size_t>>;

constexpr std::size_t kLayer = 100;

// Each activity follows the one before.
Predecessors Chain(std::size_t size) {
  Predecessors graph(size);
  for (std::size_t i = 1; i < size; ++i) graph[i] = {i - 1};
  return graph;
}

// Layers of a hundred activities, each behind three of the layer before.
Predecessors Layers(std::size_t size) {
  std::mt19937 random(7);
  Predecessors graph(size);
  for (std::size_t i = kLayer; i < size; ++i) {
    const std::size_t layer = (i / kLayer - 1) * kLayer;
    for (int edge = 0; edge < 3; ++edge) graph[i].push_back(layer + random() % kLayer);
  }
  return graph;
}

void CountElements(benchmark::State& state, std::size_t elements) {
  state.counters["elements"] = static_cast<double>(elements);
}

// A plant with that flow.
tests::Plant PlantOf(const Predecessors& graph) {
  tests::Plant plant;
  for (std::size_t i = 0; i < graph.size(); ++i) plant.Operation("OP" + std::to_string(i));
  for (std::size_t i = 0; i < graph.size(); ++i) {
    for (const std::size_t from : graph[i]) {
      plant.Flow(*plant.Operations()[from], *plant.Operations()[i]);
    }
  }
  return plant;
}

template <Predecessors (*Make)(std::size_t)>
void AllPredecessors(benchmark::State& state) {
  const tests::Plant plant = PlantOf(Make(static_cast<std::size_t>(state.range())));
  const ZefISPPActivity_var last = plant.Operations().back()->Identity();
  int reached = 0;
  for (auto _ : state) {
    ZefListValZefBaseUnknown_var found;
    Services::GetAllPredecessors(last, found);
    reached = found.Size();
  }
  CountElements(state, static_cast<std::size_t>(reached));
}

// Notes what a search meets, in order.
template <class Vertex>
class Meet : public boost::default_bfs_visitor {
 public:
  explicit Meet(std::vector<Vertex>& ioFound) : found_(&ioFound) {}
  template <class Graph>
  void discover_vertex(Vertex vertex, const Graph&) {
    found_->push_back(vertex);
  }

 private:
  std::vector<Vertex>* found_;
};

// Boost.Graph over the very activities that the service walks.
template <Predecessors (*Make)(std::size_t)>
void SameActivities(benchmark::State& state) {
  using bench::ActivityPointer;
  const tests::Plant plant = PlantOf(Make(static_cast<std::size_t>(state.range())));
  std::size_t reached = 0;
  for (auto _ : state) {
    std::vector<ActivityPointer> found;
    std::unordered_map<ActivityPointer, boost::default_color_type> colours;
    boost::queue<ActivityPointer> open;
    boost::breadth_first_visit(bench::FlowGraph(), ActivityPointer(plant.Operations().back()), open,
                               Meet(found), boost::make_assoc_property_map(colours));
    reached = found.size();
  }
  CountElements(state, reached);
}

// Boost.Graph over the same graph in arrays of numbers.
template <Predecessors (*Make)(std::size_t)>
void Numbers(benchmark::State& state) {
  const Predecessors predecessors = Make(static_cast<std::size_t>(state.range()));
  boost::adjacency_list<boost::vecS, boost::vecS, boost::directedS> graph(predecessors.size());
  for (std::size_t i = 0; i < predecessors.size(); ++i) {
    for (const std::size_t from : predecessors[i]) boost::add_edge(i, from, graph);
  }
  std::size_t reached = 0;
  for (auto _ : state) {
    std::vector<std::size_t> found;
    boost::breadth_first_search(graph, predecessors.size() - 1, boost::visitor(Meet(found)));
    reached = found.size();
  }
  CountElements(state, reached);
}

// Below which activity each one stands; the first stands below none.
std::vector<std::size_t> RandomTree(std::size_t size) {
  std::mt19937 random(11);
  std::vector<std::size_t> parents(size, 0);
  for (std::size_t i = 1; i < size; ++i) {
    parents[i] = i - 1 - random() % std::min<std::size_t>(i, 50);
  }
  return parents;
}

void Descendants(benchmark::State& state) {
  const std::vector<std::size_t> parents = RandomTree(static_cast<std::size_t>(state.range()));
  tests::Plant plant;
  std::vector<embedded::Activity*> made{&plant.Station("ST")};
  for (std::size_t i = 1; i < parents.size(); ++i) {
    made.push_back(
        &plant.Operation("OP" + std::to_string(i), tests::Plant::Task::None, made[parents[i]]));
  }
  const ZefISPPActivity_var top = made.front()->Identity();
  for (auto _ : state) {
    ZefListValZefBaseUnknown_var found;
    Services::GetDescendants(top, found);
  }
  CountElements(state, parents.size());
}

void AppendBelow(const Predecessors& children, std::size_t node, std::vector<std::size_t>& found) {
  for (const std::size_t child : children[node]) {
    found.push_back(child);
    AppendBelow(children, child, found);
  }
}

void RecursiveWalk(benchmark::State& state) {
  const std::vector<std::size_t> parents = RandomTree(static_cast<std::size_t>(state.range()));
  Predecessors children(parents.size());
  for (std::size_t i = 1; i < parents.size(); ++i) children[parents[i]].push_back(i);
  for (auto _ : state) {
    std::vector<std::size_t> found;
    AppendBelow(children, 0, found);
    benchmark::DoNotOptimize(found.data());
  }
  CountElements(state, parents.size());
}

// Every fastener joins two of a hundred parts; every tenth has one that is not loaded.
void Validate(benchmark::State& state) {
  tests::Desk desk;
  desk.application.SetPartLoadConstraint(true);
  embedded::Activity& operation = desk.plant.Operation("OP10");
  std::vector<embedded::Product*> parts;
  for (int i = 0; i < 100; ++i) {
    parts.push_back(&desk.plant.Part("P" + std::to_string(i)));
    desk.plant.Assign(operation, *parts.back());
  }
  embedded::Product& missing = desk.plant.Part("PX");
  ZefListValZefBaseUnknown_var fasteners;
  for (long i = 0; i < state.range(); ++i) {
    const auto first = static_cast<std::size_t>(i) % 100;
    embedded::Product* const second = i % 10 == 0 ? &missing : parts[(first + 1) % 100];
    fasteners.Append(
        desk.plant.Weld("SW" + std::to_string(i), {}, {parts[first], second}).Identity());
  }
  for (auto _ : state) {
    ZefListValZefBaseUnknown_var valid = fasteners;
    Services::ValidateListOfFastenersForAssignmentToActivity(valid, operation.Identity());
    if (valid.Size() != fasteners.Size() * 9 / 10) state.SkipWithError("not one in ten is refused");
  }
  CountElements(state, static_cast<std::size_t>(state.range()));
}

void Check(benchmark::State& state) {
  const tests::Desk desk(tests::Plant::OfSize(static_cast<int>(state.range())));
  for (auto _ : state) {
    benchmark::DoNotOptimize(biwplan::CheckDocument(*desk.plant.Document(), {}));
  }
  CountElements(state, static_cast<std::size_t>(state.range()));
}

void Sizes(benchmark::internal::Benchmark* benchmark) {
  benchmark->Arg(1'000)->Arg(10'000)->Arg(100'000);
}
BENCHMARK(AllPredecessors<Chain>)->Name("ChainPredecessors")->Apply(Sizes);
BENCHMARK(SameActivities<Chain>)->Name("ChainBreadthFirst")->Apply(Sizes);
BENCHMARK(Numbers<Chain>)->Name("ChainNumbers")->Apply(Sizes);
BENCHMARK(AllPredecessors<Layers>)->Name("LayerPredecessors")->Apply(Sizes);
BENCHMARK(SameActivities<Layers>)->Name("LayerBreadthFirst")->Apply(Sizes);
BENCHMARK(Numbers<Layers>)->Name("LayerNumbers")->Apply(Sizes);
BENCHMARK(Descendants)->Apply(Sizes);
BENCHMARK(RecursiveWalk)->Apply(Sizes);
BENCHMARK(Validate)->Arg(1'000)->Arg(10'000);
BENCHMARK(Check)->Apply(Sizes);

}  // namespace
