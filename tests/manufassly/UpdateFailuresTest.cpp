#include "tests/manufassly/Line.h"
#include "tests/support/HostFailures.h"

namespace {

using tests::Line;
using tests::Strings;

// A line with a branch and nested operations, where every gesture has consequences.
std::unique_ptr<Line> LayOut() {
  auto line = std::make_unique<Line>(Strings{"A", "B", "C", "D"});
  for (const char* const key : {"A1", "A2", "B1"}) {
    line->plant.Operation(key, tests::Plant::Task::None, &line->At(std::string(1, key[0])));
  }
  for (const char* const key : {"P1", "P2", "P3"}) line->Item(key);
  line->Output("A");
  line->Output("B");
  line->Drop("P1", "A1");
  line->Drop("P2", "B");
  line->Link("A", "B");
  line->Link("B", "C");
  line->Drop("MA-A", "B1");
  line->Update().AddWeldColorUpdateCallback();
  line->plant.Assign(line->At("B"), line->plant.Weld("SW-1"));
  line->Warnings();
  return line;
}

struct Scenario {
  const char* what;
  void (*run)(Line&);
};

const Scenario kGestures[] = {
    {"a flow between stations", [](Line& line) { line.Link("C", "D"); }},
    {"a flow that branches", [](Line& line) { line.Link("A", "D"); }},
    {"a flow between operations", [](Line& line) { line.Link("A1", "A2"); }},
    {"a flow that closes a ring", [](Line& line) { line.Link("B", "A"); }},
    {"an output", [](Line& line) { line.Output("C"); }},
    {"a second output", [](Line& line) { line.Output("A", "second"); }},
    {"a drop on an operation", [](Line& line) { line.Drop("P3", "A2"); }},
    {"a drop of an assembly that contains the station's",
     [](Line& line) { line.Drop("MA-B", "A"); }},
    {"a drag", [](Line& line) { line.Drag("P1", "A1"); }},
    {"a removed flow", [](Line& line) { line.Unlink("A", "B"); }},
    {"a removed output", [](Line& line) { line.RemoveOutput("A"); }},
    {"a removed operation",
     [](Line& line) { line.plant.Document()->RemoveActivity(line.At("A1")); }},
    {"a removed station", [](Line& line) { line.plant.Document()->RemoveActivity(line.At("B")); }},
    {"a removed activity with a station below it",
     [](Line& line) {
       auto& zone = line.plant.Document()->AddActivity(line.plant.Root(), {.key = "ZONE"});
       line.plant.Document()->AddActivity(
           zone, {.key = "S", .role = embedded::ActivityData::Role::Station});
       line.Output("S");
       line.Link("ZONE", "D");
       line.Drop("P3", "S");
       line.plant.Document()->RemoveActivity(zone);
     }},
    {"one gesture after the other",
     [](Line& line) {
       line.Link("C", "D");
       line.Drop("P3", "A2");
       line.Output("C");
       line.Unlink("A", "B");
       line.Link("A", "B");
       line.Drag("P1", "A1");
       line.RemoveOutput("B");
     }},
    {"switching off", [](Line& line) { line.Update().RemoveUpdateCallback(); }},
    {"switching on twice", [](Line& line) { line.Update().AddUpdateCallback(); }},
};

// Whatever was missed when the host failed, the next gestures are followed as ever.
void ExpectUsable(Line& line) {
  line.Update().AddUpdateCallback();
  line.Drop("P9", "D");
  line.Output("D", "MA-D");
  line.Drop("P8", "D");
  EXPECT_EQ(line.Children("D").back(), "P8");
  for (const auto& finding : biwplan::CheckAssemblies(*line.plant.Document())) {
    EXPECT_NE(finding.kind, biwplan::AssemblyFinding::Kind::ContainsItself);
  }
}

TEST(UpdateFailuresTest, EveryGestureOutlivesEveryFailureOfTheHost) {
  const long alive = CountLiveObjects();
  long total = 0;
  for (const auto& [what, run] : kGestures) {
    SCOPED_TRACE(what);
    auto line = LayOut();
    const auto scenario = [&, run = run] { run(*line); };
    const auto check = [&] {
      ExpectUsable(*line);
      line.reset();
      EXPECT_EQ(CountLiveObjects(), alive);
      line = LayOut();
    };
    total += tests::ForEachHostFailure(scenario, check, tests::NullHandle::Fault);
    if (HasFailure()) return;
  }
  RecordProperty("host failures met", static_cast<int>(total));
  EXPECT_GE(total, 2000);
}

}  // namespace
