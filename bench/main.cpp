#include <cstdio>
#include <limits>
#include <malloc.h>
#include <thread>

#include "bench/Ratios.h"

namespace {

const std::vector<bench::Ratio> kRatios = {
    {"interface query and release : cross dynamic_cast", "Query", "CrossCast", 1.0},
    {"handle copy : boost::intrusive_ptr over the same counting", "HandleCopy/64",
     "IntrusiveCopy/64", 1.2},
    {"handle copy : std::shared_ptr", "HandleCopy/64", "SharedCopy/64", 0.5},
    {"Locate in 100,000 : std::unordered_set", "Locate/100000", "UnorderedSet/100000", 3.0},
    {"AssignListOfWelds, 10,000 : 1,000", "Assign/10000", "Assign/1000", 1.5},
    {"AssignListOfWelds, 100,000 : 1,000", "Assign/100000", "Assign/1000", 1.5},
    {"the same beside as many, 10,000 : 1,000", "AssignBeside/10000", "AssignBeside/1000", 1.5},
    {"the same beside as many, 100,000 : 1,000", "AssignBeside/100000", "AssignBeside/1000", 1.5},
    {"GetWeldFromActivity, 10,000 : 1,000", "ListWelds/10000", "ListWelds/1000", 1.5},
    {"GetWeldFromActivity, 100,000 : 1,000", "ListWelds/100000", "ListWelds/1000", 1.5},
    {"GetListOfAllActivities, 10,000 : 1,000", "ListActivities/10000", "ListActivities/1000", 1.5},
    {"GetListOfAllActivities, 100,000 : 1,000", "ListActivities/100000", "ListActivities/1000",
     1.5},
    {"CheckWeldAssignement, 10,000 : 1,000", "CheckWeld/10000", "CheckWeld/1000", 1.5},
    {"CheckWeldAssignement, 100,000 : 1,000", "CheckWeld/100000", "CheckWeld/1000", 1.5},
    {"GetAllPredecessors of a chain, 10,000 : 1,000", "ChainPredecessors/10000",
     "ChainPredecessors/1000", 1.5},
    {"GetAllPredecessors of a chain, 100,000 : 1,000", "ChainPredecessors/100000",
     "ChainPredecessors/1000", 1.5},
    {"the same, 100,000 : Boost.Graph on these activities", "ChainPredecessors/100000",
     "ChainBreadthFirst/100000", 5.0},
    {"the same, 100,000 : Boost.Graph on arrays of numbers", "ChainPredecessors/100000",
     "ChainNumbers/100000", 0},
    {"GetAllPredecessors in layers, 10,000 : 1,000", "LayerPredecessors/10000",
     "LayerPredecessors/1000", 1.5},
    {"GetAllPredecessors in layers, 100,000 : 1,000", "LayerPredecessors/100000",
     "LayerPredecessors/1000", 1.5},
    {"the same, 100,000 : Boost.Graph on these activities", "LayerPredecessors/100000",
     "LayerBreadthFirst/100000", 5.0},
    {"the same, 100,000 : Boost.Graph on arrays of numbers", "LayerPredecessors/100000",
     "LayerNumbers/100000", 0},
    {"GetDescendants, 10,000 : 1,000", "Descendants/10000", "Descendants/1000", 1.5},
    {"GetDescendants, 100,000 : 1,000", "Descendants/100000", "Descendants/1000", 1.5},
    {"the same, 100,000 : a recursive walk over vectors", "Descendants/100000",
     "RecursiveWalk/100000", 0},
    {"validate fasteners, 10,000 : 1,000", "Validate/10000", "Validate/1000", 1.5},
    {"check a document, 10,000 : 1,000 welds", "Check/10000", "Check/1000", 2.0},
    {"check a document, 100,000 : 1,000 welds", "Check/100000", "Check/1000", 3.0},
    {"a drop and its end, line of 1,000 : 10 stations", "Drop/1000", "Drop/10", 1.5},
    {"unlink and link, line of 1,000 : 10 stations", "Relink/1000", "Relink/10", 0},
    {"build lines of ten stations, 1,000 : 100 stations", "BuildInTens/1000", "BuildInTens/100",
     12.0},
    {"build one line, 1,000 : 100 stations", "BuildChain/1000", "BuildChain/100", 120.0},
    {"IsMAaChild, per assembly, 100,000 : 1,000", "IsChild/100000", "IsChild/1000", 1.5},
    {"load a document of 100,000 welds : parse it as JSON", "Load/100000", "Parse/100000", 2.0},
    {"save a document of 100,000 welds : dump and write JSON", "Save/100000", "Dump/100000", 2.0},
    {"read a weld list of 100,000 rows : its lines", "ReadWeldList/100000", "ReadLines/100000", 0},
    {"split it into fields : read its lines", "SplitFields/100000", "ReadLines/100000", 0},
};

}  // namespace

int main(int argc, char** argv) {
  // The heap stays with the process: else the system takes a large plant's memory back after each
  // run and clears it anew in the next, while a small one's is used again.
  mallopt(M_TRIM_THRESHOLD, std::numeric_limits<int>::max());
  mallopt(M_MMAP_MAX, 0);
  // A shared pointer counts atomically once the process had a second thread.
  std::thread([] {}).join();
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  bench::RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  return reporter.Print(kRatios) ? 0 : 1;
}
