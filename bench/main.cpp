#include <cstdio>
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
    {"load a document of 100,000 welds : parse it as JSON", "Load/100000", "Parse/100000", 2.0},
    {"save a document of 100,000 welds : dump and write JSON", "Save/100000", "Dump/100000", 2.0},
    {"read a weld list of 100,000 rows : its lines", "ReadWeldList/100000", "ReadLines/100000", 0},
    {"split it into fields : read its lines", "SplitFields/100000", "ReadLines/100000", 0},
};

}  // namespace

int main(int argc, char** argv) {
  // A shared pointer counts atomically once the process had a second thread.
  std::thread([] {}).join();
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  bench::RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  return reporter.Print(kRatios) ? 0 : 1;
}
