#include <algorithm>

#include "tests/fuzz/Targets.h"
#include "tests/manufassly/Line.h"
#include "tests/support/HostFailures.h"

namespace tests {

namespace {

using Kind = biwplan::AssemblyFinding::Kind;

// Gestures at a line of five stations with an operation in each. A tame planner draws flows ahead
// and no flow twice, drags parts and never assemblies, and drops on stations alone: removing one of
// two parallel flows withdraws what came along both, and a part that a station and its operation
// hold leaves the assembly with the first of two drags.
class Planner {
 public:
  explicit Planner(Choices& choices) : choices_(choices) {
    isTame_ = choices_.Below(2) == 0;
    hasFaults_ = !isTame_ && choices_.Below(2) == 0;
    for (const std::string& station : stations_) {
      line_.plant.Operation("operation of " + station, Plant::Task::Welding, &line_.At(station));
    }
  }

  void Act() {
    if (!hasFaults_ || choices_.Below(4) != 0) return Gesture();
    const auto nth = static_cast<long>(choices_.Below(256));
    RunWithFailure([this] { Gesture(); }, nth + 1, choices_.Below(2) == 0, NullHandle::Fault);
  }

  void ExpectInOrder() {
    for (const auto& finding : biwplan::CheckAssemblies(*line_.plant.Document())) {
      EXPECT_NE(finding.kind, Kind::ContainsItself);
      const bool isExpected = !isTame_ || finding.kind == Kind::Undecided;
      EXPECT_TRUE(isExpected) << biwplan::Describe(finding);
    }
    ExpectStored(*line_.plant.Document());
  }

 private:
  void Gesture() {
    const std::size_t from = choices_.Below(stations_.size());
    const std::size_t to = choices_.Below(stations_.size());
    const std::string& station = stations_[from];
    switch (choices_.Below(isTame_ ? 7 : 13)) {
      case 0:
      case 1:
        if (from < to || !isTame_) line_.LinkOnce(station, stations_[to]);
        break;
      case 2:
        line_.Unlink(station, stations_[to]);
        break;
      case 3:
        if (!line_.AssemblyOf(station)) line_.Output(station, NewAssembly(station));
        break;
      case 4:
        line_.Drop("part " + stations_[to], Somewhere(station));
        break;
      case 5:
        line_.Drag("part " + stations_[to], Somewhere(station));
        break;
      case 6:
        if (choices_.Below(3) == 0) line_.RemoveOutput(station);
        break;
      default:
        WildGesture(station, stations_[to]);
    }
  }

  void WildGesture(const std::string& station, const std::string& other) {
    embedded::Document& document = *line_.plant.Document();
    switch (choices_.Below(7)) {
      case 0:
        line_.Link(Somewhere(station), Somewhere(other));
        break;
      case 1:
        line_.Drop("MA-" + station, Somewhere(other));
        break;
      case 2:
        line_.Drag("MA-" + station, Somewhere(other));
        break;
      case 3:
        line_.Output(station, "second");
        break;
      case 4:
        if (auto* const operation = document.FindActivity("operation of " + station)) {
          document.RemoveActivity(*operation);
        }
        break;
      case 5:
        LinkRemoved(station, WeldOf(other).Identity());
        break;
      default:
        line_.plant.Assign(line_.At(station), WeldOf(other));
    }
  }

  void LinkRemoved(const std::string& station, const ZefBaseUnknown_var& weld) {
    line_.plant.Document()->RemoveFeature(weld.Get());
    ZefBaseUnknown_var linked;
    EXPECT_EQ(line_.At(station).AddItem(weld, linked), E_FAIL);
  }

  // An assembly that was an output once may still be taken in where it went then: a tame planner
  // makes a new one each time.
  std::string NewAssembly(const std::string& station) {
    return "MA-" + station + (isTame_ ? std::to_string(++outputs_) : "");
  }

  // The station, or the operation in it.
  std::string Somewhere(const std::string& station) {
    const std::string operation = "operation of " + station;
    const bool isThere = line_.plant.Document()->FindActivity(operation) != nullptr;
    return isTame_ || !isThere || choices_.Below(2) == 0 ? station : operation;
  }

  embedded::SpotWeld& WeldOf(const std::string& station) {
    auto* const known = line_.plant.Document()->FindFeature("weld " + station);
    return known ? *embedded::ObjectAs<embedded::SpotWeld>(known)
                 : line_.plant.Weld("weld " + station);
  }

  const Strings stations_{"A", "B", "C", "D", "E"};
  Choices& choices_;
  bool isTame_;
  bool hasFaults_;
  int outputs_ = 0;
  Line line_{stations_};
};

}  // namespace

void FuzzGestures(std::string_view iBytes) {
  Choices choices(iBytes.substr(0, 512));
  Planner planner(choices);
  while (!choices.IsEmpty()) planner.Act();
  planner.ExpectInOrder();
}

}  // namespace tests
