#include <algorithm>
#include <benchmark/benchmark.h>
#include <boost/smart_ptr/intrusive_ptr.hpp>
#include <memory>
#include <random>
#include <unordered_set>

#include "tests/support/Plant.h"

// Found by boost::intrusive_ptr through its argument, so it stands beside the interface.
inline void intrusive_ptr_add_ref(ZefISPPActivity* object) { object->AddRef(); }
inline void intrusive_ptr_release(ZefISPPActivity* object) { object->Release(); }

namespace {

// An activity of the embedded host: an object with some twenty interfaces.
class OneActivity {
 public:
  OneActivity() : activity_(plant_.Operation("OP10").Identity()) {}
  const ZefISPPActivity_var& Get() const { return activity_; }

 private:
  tests::Plant plant_;
  ZefISPPActivity_var activity_;
};

template <class Interface>
void QueryOne(ZefISPPActivity* object) {
  void* answer = nullptr;
  object->QueryInterface(Interface::InterfaceId(), &answer);
  benchmark::DoNotOptimize(answer);
  static_cast<Interface*>(answer)->Release();
}

template <class Interface>
void CastOne(ZefISPPActivity* object) {
  benchmark::DoNotOptimize(dynamic_cast<Interface*>(object));
}

void Query(benchmark::State& state) {
  const OneActivity one;
  ZefISPPActivity* object = one.Get();
  for (auto _ : state) {
    benchmark::DoNotOptimize(object);
    QueryOne<ZefISPPFlowMgt>(object);
    QueryOne<ZefISPPItemMgt>(object);
    QueryOne<ZefIRedrawEvent>(object);
    QueryOne<TuvIRabBltMgr>(object);
  }
  state.counters["elements"] = 4;
}
BENCHMARK(Query);

void CrossCast(benchmark::State& state) {
  const OneActivity one;
  ZefISPPActivity* object = one.Get();
  for (auto _ : state) {
    benchmark::DoNotOptimize(object);
    CastOne<ZefISPPFlowMgt>(object);
    CastOne<ZefISPPItemMgt>(object);
    CastOne<ZefIRedrawEvent>(object);
    CastOne<TuvIRabBltMgr>(object);
  }
  state.counters["elements"] = 4;
}
BENCHMARK(CrossCast);

// Copies pointers to several objects in turn: one again and again would measure how soon a count
// can be read that was just stored.
template <class Pointer>
void CopyInTurn(benchmark::State& state, const std::vector<Pointer>& originals) {
  for (auto _ : state) {
    for (const Pointer& original : originals) {
      Pointer copy(original);
      benchmark::DoNotOptimize(copy);
    }
  }
  state.counters["elements"] = static_cast<double>(originals.size());
}

// Pointers to as many activities as asked for.
template <class Pointer>
void CopyActivities(benchmark::State& state) {
  tests::Plant plant;
  std::vector<Pointer> pointers;
  for (long i = 0; i < state.range(); ++i) {
    const ZefISPPActivity_var activity = plant.Operation("OP" + std::to_string(i)).Identity();
    pointers.emplace_back(activity.Get());
  }
  CopyInTurn(state, pointers);
}

void HandleCopy(benchmark::State& state) { CopyActivities<ZefISPPActivity_var>(state); }
void IntrusiveCopy(benchmark::State& state) {
  CopyActivities<boost::intrusive_ptr<ZefISPPActivity>>(state);
}
void SharedCopy(benchmark::State& state) {
  std::vector<std::shared_ptr<long>> pointers;
  for (long i = 0; i < state.range(); ++i) pointers.push_back(std::make_shared<long>(i));
  CopyInTurn(state, pointers);
}
BENCHMARK(HandleCopy)->Arg(64);
BENCHMARK(IntrusiveCopy)->Arg(64);
BENCHMARK(SharedCopy)->Arg(64);

// Welds as a list, and once more in an order in which they are looked for.
class ShuffledWelds {
 public:
  explicit ShuffledWelds(long count) {
    for (long i = 0; i < count; ++i) {
      order.emplace_back(plant_.Weld("SW-" + std::to_string(i)).Identity());
    }
    std::shuffle(order.begin(), order.end(), std::mt19937(1));
  }
  const ZefListValZefBaseUnknown_var& List() const { return plant_.Fasteners(); }
  std::vector<ZefBaseUnknown_var> order;

 private:
  tests::Plant plant_;
};

void Locate(benchmark::State& state) {
  const ShuffledWelds welds(state.range());
  for (auto _ : state) {
    for (const auto& weld : welds.order) benchmark::DoNotOptimize(welds.List().Locate(weld));
  }
  state.counters["elements"] = static_cast<double>(state.range());
}
BENCHMARK(Locate)->Arg(100'000);

void UnorderedSet(benchmark::State& state) {
  const ShuffledWelds welds(state.range());
  std::unordered_set<const ZefBaseUnknown*> set;
  for (int i = 1; i <= welds.List().Size(); ++i) set.insert(welds.List()[i].Get());
  for (auto _ : state) {
    for (const auto& weld : welds.order) benchmark::DoNotOptimize(set.find(weld.Get()));
  }
  state.counters["elements"] = static_cast<double>(state.range());
}
BENCHMARK(UnorderedSet)->Arg(100'000);

}  // namespace
