#include <algorithm>
#include <functional>
#include <numeric>
#include <random>

#include "tests/manufassly/Line.h"

namespace {

using tests::Line;
using tests::Strings;
using Kind = biwplan::AssemblyFinding::Kind;
using Gesture = std::function<void(Line&)>;

using LineTest = tests::ReferenceAudit;

// The gestures that build a line of stations, each with a part, an output and a flow to the next.
std::vector<Gesture> GesturesOf(const Strings& stations, bool closed) {
  std::vector<Gesture> gestures;
  for (std::size_t i = 0; i < stations.size(); ++i) {
    const std::string station = stations[i];
    gestures.push_back([=](Line& line) { line.Output(station); });
    gestures.push_back([=](Line& line) { line.Drop("part " + station, station); });
    const std::string next = stations[(i + 1) % stations.size()];
    if (closed || i + 1 < stations.size()) {
      gestures.push_back([=](Line& line) { line.Link(station, next); });
    }
  }
  return gestures;
}

std::unique_ptr<Line> Perform(const Strings& stations, const std::vector<Gesture>& gestures,
                              const std::vector<int>& order) {
  auto line = std::make_unique<Line>(stations);
  for (const int i : order) gestures[static_cast<std::size_t>(i)](*line);
  return line;
}

bool ContainsItself(const Line& line) {
  const auto findings = biwplan::CheckAssemblies(*line.plant.Document());
  return std::any_of(findings.begin(), findings.end(),
                     [](const auto& finding) { return finding.kind == Kind::ContainsItself; });
}

// Every `stride`-th of all orders, beginning with the first; answers how many were run.
int ForOrders(std::size_t count, int stride,
              const std::function<void(const std::vector<int>&)>& run) {
  std::vector<int> order(count);
  std::iota(order.begin(), order.end(), 0);
  int position = 0;
  int runs = 0;
  do {
    if (position++ % stride != 0) continue;
    run(order);
    ++runs;
  } while (std::next_permutation(order.begin(), order.end()) && !testing::Test::HasFailure());
  return runs;
}

TEST_F(LineTest, AChainEndsInStepInWhateverOrderItIsBuilt) {
  const Strings stations{"A", "B", "C"};
  const std::vector<Gesture> gestures = GesturesOf(stations, false);
  const int runs = ForOrders(gestures.size(), 83, [&](const std::vector<int>& order) {
    const auto line = Perform(stations, gestures, order);
    EXPECT_EQ(line->OutOfStep(), Strings{});
    EXPECT_EQ(line->Children("C").size(), 2u);
    EXPECT_EQ(line->Warnings(), Strings{});
  });
  EXPECT_EQ(runs, 40320 / 83 + 1);
}

// Nobody can put an assembly into itself, so on a ring the last hand-over is refused with a
// warning.
TEST_F(LineTest, OnARingNoAssemblyEverContainsItself) {
  struct Case {
    Strings stations;
    int stride;
  };
  for (const Case& ring : {Case{{"A", "B"}, 7}, Case{{"A", "B", "C"}, 911}}) {
    const std::vector<Gesture> gestures = GesturesOf(ring.stations, true);
    ForOrders(gestures.size(), ring.stride, [&](const std::vector<int>& order) {
      const auto line = Perform(ring.stations, gestures, order);
      EXPECT_FALSE(ContainsItself(*line));
      EXPECT_FALSE(line->Warnings().empty());
    });
  }
}

// Random gestures with removals. The planner drags parts, never assemblies, and draws no flow a
// second time: removing one of two parallel flows withdraws what came along both.
class RandomPlanner {
 public:
  RandomPlanner(unsigned seed, bool withRings) : random_(seed), withRings_(withRings) {
    for (const std::string& station : stations_) {
      line_.plant.Operation("operation of " + station, tests::Plant::Task::None,
                            &line_.At(station));
    }
  }

  void Act() {
    const std::size_t from = Pick();
    const std::size_t to = Pick();
    const std::string& station = stations_[from];
    switch (random_() % 7) {
      case 0:
      case 1:
        if (from < to || withRings_) line_.LinkOnce(station, stations_[to]);
        break;
      case 2:
        line_.Unlink(station, stations_[to]);
        break;
      case 3:
        if (!line_.AssemblyOf(station)) line_.Output(station);
        break;
      case 4:
        line_.Drop("part " + stations_[to], Somewhere(station));
        break;
      case 5:
        line_.Drag("part " + stations_[to], Somewhere(station));
        break;
      default:
        if (random_() % 3 == 0) line_.RemoveOutput(station);
    }
  }
  Line& Plan() { return line_; }

 private:
  // The station, or on rings also the operation in it: a part that both hold leaves the assembly
  // with the first of the two drags, which is then out of step.
  std::string Somewhere(const std::string& station) {
    return !withRings_ || random_() % 2 == 0 ? station : "operation of " + station;
  }
  std::size_t Pick() { return random_() % stations_.size(); }

  const Strings stations_{"A", "B", "C", "D", "E"};
  std::mt19937 random_;
  bool withRings_;
  Line line_{stations_};
};

// What is out of step but for `expected`.
Strings Faults(const Line& line, Kind expected) {
  Strings faults;
  for (const auto& finding : biwplan::CheckAssemblies(*line.plant.Document())) {
    if (finding.kind != expected) faults.push_back(biwplan::Describe(finding));
  }
  return faults;
}

TEST_F(LineTest, RandomGesturesEndInStepButForWhatThePlannerIsToldToDecide) {
  for (unsigned seed = 1; seed <= 300 && !HasFailure(); ++seed) {
    SCOPED_TRACE(seed);
    RandomPlanner planner(seed, false);
    for (int i = 0; i < 25; ++i) planner.Act();
    EXPECT_EQ(Faults(planner.Plan(), Kind::Undecided), Strings{});
  }
}

TEST_F(LineTest, RandomGesturesOnRingsEndAndPutNoAssemblyIntoItself) {
  for (unsigned seed = 1; seed <= 300 && !HasFailure(); ++seed) {
    SCOPED_TRACE(seed);
    RandomPlanner planner(seed, true);
    for (int i = 0; i < 25; ++i) planner.Act();
    EXPECT_FALSE(ContainsItself(planner.Plan()));
  }
}

}  // namespace
