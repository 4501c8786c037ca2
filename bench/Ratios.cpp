#include "bench/Ratios.h"

#include <algorithm>
#include <cstdio>

namespace bench {

void RatioReporter::ReportRuns(const std::vector<Run>& iRuns) {
  for (const Run& run : iRuns) {
    if (run.run_type != Run::RT_Iteration) continue;
    const std::string& size = run.run_name.args;
    const std::string name = run.run_name.function_name + (size.empty() ? "" : "/" + size);
    if (run.error_occurred) {
      std::fprintf(stderr, "%s: %s\n", name.c_str(), run.error_message.c_str());
      hasErrors_ = true;
      continue;
    }
    const double elements = run.counters.at("elements");
    const double time =
        1e9 * run.cpu_accumulated_time / static_cast<double>(run.iterations) / elements;
    const auto entry = fastest_.try_emplace(name, time).first;
    entry->second = std::min(entry->second, time);
  }
}

bool RatioReporter::Print(const std::vector<Ratio>& iRatios) const {
  bool isMet = !hasErrors_;
  std::printf(
      "| what, in units of what | ns | ns | ratio | bound | |\n|---|--:|--:|--:|--:|---|\n");
  for (const Ratio& ratio : iRatios) {
    const auto measured = fastest_.find(ratio.measured);
    const auto unit = fastest_.find(ratio.unit);
    if (measured == fastest_.end() || unit == fastest_.end()) continue;
    const double value = measured->second / unit->second;
    const bool isWithin = ratio.bound <= 0 || value <= ratio.bound;
    std::printf("| %s | %.1f | %.1f | %.2f | ", ratio.subject, measured->second, unit->second,
                value);
    ratio.bound > 0 ? std::printf("%.1f | %s |\n", ratio.bound, isWithin ? "met" : "missed")
                    : std::printf("- | |\n");
    isMet = isMet && isWithin;
  }
  return isMet;
}

}  // namespace bench
