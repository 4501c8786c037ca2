#include <benchmark/benchmark.h>
#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "tests/manufassly/Line.h"

namespace {

using tests::Line;

std::string Name(long number) { return "ST" + std::to_string(number); }

// Stations with an output each, in chains of `length`; each takes a part in.
std::unique_ptr<Line> LineOf(long stations, long length) {
  tests::Strings names;
  for (long i = 0; i < stations; ++i) names.push_back(Name(i));
  auto line = std::make_unique<Line>(names);
  for (long i = 0; i < stations; ++i) {
    line->Output(Name(i));
    if (i % length != 0) line->Link(Name(i - 1), Name(i));
    line->Drop("P" + std::to_string(i), Name(i));
  }
  return line;
}

// A drop at the last station, and its end; none of the others is concerned.
void Drop(benchmark::State& state) {
  const auto line = LineOf(state.range(), state.range());
  const std::string last = Name(state.range() - 1);
  line->Item("PX");
  for (auto _ : state) {
    line->Drop("PX", last);
    line->Drag("PX", last);
  }
  state.counters["elements"] = 1;
}

// The flow to the last station, taken away and made again.
void Relink(benchmark::State& state) {
  const auto line = LineOf(state.range(), state.range());
  const std::string from = Name(state.range() - 2);
  const std::string to = Name(state.range() - 1);
  for (auto _ : state) {
    line->Unlink(from, to);
    line->Link(from, to);
  }
  state.counters["elements"] = 1;
}

// A whole line. One element is the line: how its cost grows is what is asked.
void Build(benchmark::State& state, long length) {
  for (auto _ : state) {
    auto line = LineOf(state.range(), length);
    state.PauseTiming();
    if (!line->OutOfStep().empty()) state.SkipWithError("out of step");
    line.reset();
    state.ResumeTiming();
  }
  state.counters["elements"] = 1;
}
void BuildInTens(benchmark::State& state) { Build(state, 10); }
void BuildChain(benchmark::State& state) { Build(state, state.range()); }

// Assemblies with ten more in each; the one that is asked for stands nowhere among them.
void IsChild(benchmark::State& state) {
  tests::Plant plant;
  std::vector<embedded::MfgAssembly*> made;
  for (long i = 0; i < state.range(); ++i) {
    made.push_back(&plant.Document()->AddAssembly("MA" + std::to_string(i)));
    if (i > 0) {
      TuvIMfgAssembly_var(made[static_cast<std::size_t>(i - 1) / 10]->Identity())
          ->AddChild(made.back()->Identity());
    }
  }
  TuvIMfgAssembly_var top = made.front()->Identity();
  TuvIMfgAssembly_var other = plant.Document()->AddAssembly("other").Identity();
  const Line line({"A"});
  for (auto _ : state) benchmark::DoNotOptimize(line.Update().IsMAaChild(top, other));
  state.counters["elements"] = static_cast<double>(state.range());
}

void Lengths(benchmark::internal::Benchmark* benchmark) {
  benchmark->Arg(10)->Arg(100)->Arg(1'000);
}
BENCHMARK(Drop)->Apply(Lengths);
BENCHMARK(Relink)->Apply(Lengths);
BENCHMARK(BuildInTens)->Arg(100)->Arg(1'000)->Unit(benchmark::kMillisecond);
BENCHMARK(BuildChain)->Arg(100)->Arg(1'000)->Unit(benchmark::kMillisecond);
BENCHMARK(IsChild)->Arg(1'000)->Arg(100'000);

}  // namespace
