#pragma once

#include <benchmark/benchmark.h>
#include <map>
#include <string>
#include <vector>

namespace bench {

// A row of the table: what one element costs in one benchmark, in units of what it costs in
// another.
struct Ratio {
  const char* subject;
  // Benchmarks as "Name" or "Name/size".
  const char* measured;
  const char* unit;
  // 0: none is set.
  double bound;
};

// Keeps the least processor time per element that each benchmark took in its repetitions: what
// disturbs a run only ever adds to it.
class RatioReporter : public benchmark::BenchmarkReporter {
 public:
  bool ReportContext(const Context&) override { return true; }
  void ReportRuns(const std::vector<Run>& iRuns) override;

  // Writes the table; false when a bound is missed or a benchmark failed. Rows whose benchmarks did
  // not run are left out.
  bool Print(const std::vector<Ratio>& iRatios) const;

 private:
  // Nanoseconds.
  std::map<std::string, double> fastest_;
  bool hasErrors_ = false;
};

}  // namespace bench
