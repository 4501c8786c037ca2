#include <benchmark/benchmark.h>
#include <memory>

#include "services/TuvBIWServices.h"
#include "tests/support/PlantTest.h"

namespace {

using Services = TuvBIWServices;

// A plant under edit with one operation: some welds are on it, as many others are not.
struct Workshop : tests::Desk {
  Workshop(long carried, long free) {
    for (long i = 0; i < carried; ++i) plant.Assign(operation, AddWeld(i));
    for (long i = 0; i < free; ++i) welds.Append(AddWeld(carried + i).Identity());
  }
  embedded::SpotWeld& AddWeld(long number) { return plant.Weld("SW-" + std::to_string(number)); }

  embedded::Activity& operation = plant.Operation("OP10");
  ZefISPPActivity_var activity = operation.Identity();
  ZefListValZefBaseUnknown_var welds;
};

void CountElements(benchmark::State& state) {
  state.counters["elements"] = static_cast<double>(state.range());
}

void AssignTo(benchmark::State& state, long carried) {
  for (auto _ : state) {
    state.PauseTiming();
    auto shop = std::make_unique<Workshop>(carried, state.range());
    state.ResumeTiming();
    benchmark::DoNotOptimize(Services::AssignListOfWelds(&shop->welds, shop->activity, nullptr, 0));
    state.PauseTiming();
    shop.reset();
    state.ResumeTiming();
  }
  CountElements(state);
}

void Assign(benchmark::State& state) { AssignTo(state, 0); }
void AssignBeside(benchmark::State& state) { AssignTo(state, state.range()); }

void ListWelds(benchmark::State& state) {
  const Workshop shop(state.range(), 0);
  for (auto _ : state) {
    ZefListValZefBaseUnknown_var* welds = nullptr;
    Services::GetWeldFromActivity(shop.activity, welds, 1, 0);
    delete welds;
  }
  CountElements(state);
}

void ListActivities(benchmark::State& state) {
  tests::Desk desk;
  for (long i = 0; i < state.range(); ++i) desk.plant.Operation("OP" + std::to_string(i));
  for (auto _ : state) {
    ZefListValZefBaseUnknown_var* activities = nullptr;
    Services::GetListOfAllActivities(activities, nullptr);
    delete activities;
  }
  CountElements(state);
}

// One weld against those on the activity and as many that wait for being assigned.
void CheckWeld(benchmark::State& state) {
  Workshop shop(state.range(), state.range());
  const ZefBaseUnknown_var weld = shop.AddWeld(-1).Identity();
  for (auto _ : state) {
    benchmark::DoNotOptimize(Services::CheckWeldAssignement(weld, shop.activity, &shop.welds, 0));
  }
  CountElements(state);
}

void Sizes(benchmark::internal::Benchmark* benchmark) {
  benchmark->Arg(1'000)->Arg(10'000)->Arg(100'000);
}
BENCHMARK(Assign)->Apply(Sizes);
BENCHMARK(AssignBeside)->Apply(Sizes);
BENCHMARK(ListWelds)->Apply(Sizes);
BENCHMARK(ListActivities)->Apply(Sizes);
BENCHMARK(CheckWeld)->Apply(Sizes);

}  // namespace
