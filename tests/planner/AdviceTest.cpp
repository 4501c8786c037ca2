#include <gmock/gmock.h>
#include <nlohmann/json.hpp>
#include <random>
#include <set>

#include "planner/check/DocumentCheck.h"
#include "planner/check/PartConstraint.h"
#include "planner/flow/Conflicts.h"
#include "services/TuvBIWServices.h"
#include "tests/planner/Planner.h"
#include "tests/support/Plant.h"

namespace tests {
namespace {

using testing::HasSubstr;
using testing::Not;

// What `check`, `assign` and `flow` say is true, and following it helps.
class AdviceTest : public PlannerTest {
 protected:
  void DoAll(const std::string& lines) const {
    const Spoken spoken = Run({"@door.json", "--script", "-"}, lines);
    EXPECT_EQ(spoken.status, 0) << spoken.messages;
  }
};

TEST_F(AdviceTest, FollowingItMendsThePlan) {
  const struct {
    const char* lines;
    const char* advice;
    const char* remedy;
  } cases[] = {
      // Parallel branches, each with one of the parts.
      {"unlink OP10 OP20\nadd operation OP25 ST10\nlink OP10 OP25\nlink OP20 OP25\ndrop P1 OP10\n"
       "drop P2 OP20\nassign OP10 SW-1\n",
       "SW-1 on OP10 joins P2, which does not come before OP20; move the weld to OP25, the first "
       "activity that has all its parts",
       "reallocate OP10 OP25 SW-1"},
      {"drop P1 OP10\ndrop P3 OP30\nassign OP10 SW-3\n",
       "which does not come before OP30, and no activity that takes the weld has all its parts; "
       "drop P3 on OP10 or on",
       "drop P3 OP10"},
      {"assign OP10 SW-1\ndrop P1 OP10\n", "which is loaded nowhere; drop it on OP10",
       "drop P2 OP10"},
      // A part that two operations hold leaves with the first drag.
      {"update on\noutput ST10 Door\ndrop P1 OP10\ndrop P1 OP20\ndrag P1 OP10\n",
       "Door lacks P1, which ST10 takes in; drop P1 on ST10", "drop P1 ST10"},
      {"update on\noutput ST10 Door\ndrop P1 ST10\ndrop P1 OP20\ndrag P1 OP20\n",
       "Door lacks P1, which ST10 takes in; drop P1 on OP10", "drop P1 OP10"},
      {"output ST10 Door\ndrop P1 OP10\nupdate on\n",
       "Door lacks P1, which ST10 takes in; drop P1 on", "drop P1 ST10"},
      {"output ST10 Door\ndrop P1 OP10\n", "takes in; with update on, drop P1 on ST10",
       "update on\ndrop P1 ST10"},
      {"update on\noutput ST10 Door\ndrop P1 OP10\nupdate off\ndrag P1 OP10\nupdate on\n",
       "Door contains P1, which ST10 does not take in; drop P1 on ST10, and drag it off again",
       "drop P1 ST10\ndrag P1 ST10"},
      // What is taken in below operations belongs to no assembly, in whatever order it came.
      {"update on\nadd operation OP11 OP10\nadd operation OP12 OP11\noutput ST10 Door\n"
       "drop P1 OP12\n",
       "P1 is taken in by OP12, too deep below ST10 to belong to its assembly; drop P1 on OP10",
       "drop P1 OP10"},
      {"update on\nadd operation OP11 OP10\ndrop P1 OP11\noutput ST10 Door\n",
       "P1 is taken in by OP11, too deep below ST10 to belong to its assembly; drop P1 on OP10",
       "drop P1 OP10"},
      // Between stations.
      {"add station ST20\noutput ST10 Door\nlink ST10 ST20\n",
       "Door of ST10 is not handed on to ST20; drop Door on ST20", "drop Door ST20"},
      {"add station ST20\nadd operation OP21 ST20\noutput ST10 Door\ndrop Door OP21\n",
       "taken in by OP21, which the flow does not lead to; drag it off OP21 or link ST10 to ST20",
       "link ST10 ST20"},
      {"update on\nadd station ST20\noutput ST10\noutput ST20\nlink ST10 ST20\nlink ST20 ST10\n",
       "contains what ST10 makes, which comes next; unlink the flow that leads back",
       "unlink ST20 ST10"},
      {"link OP30 OP10\n", "the links run in a ring: OP10 -> OP20 -> OP30 -> OP10; unlink one",
       "unlink OP30 OP10"},
      {"output ST10\noutput ST10\n",
       "ST10 has 2 outputs, so that no part goes into any; remove all", "remove-output ST10 MA-1"},
  };
  for (const auto& [lines, advice, remedy] : cases) {
    SCOPED_TRACE(lines);
    std::filesystem::remove(Path("door.json"));
    Begin();
    DoAll(lines);
    EXPECT_THAT(Do("check --all").results, HasSubstr(advice));
    DoAll(remedy);
    for (const char* const kind : {"assembly", "ring", "'too early'", "'part not loaded'"}) {
      const Spoken check = Do(std::string("check --kind ") + kind);
      EXPECT_EQ(check.status, 0) << check.results;
    }
  }
}

TEST_F(AdviceTest, CheckCountsByKindAndTellsTwentyOfAKind) {
  std::string welds = "id,x,y,z,parts\n";
  for (int i = 1; i <= 25; ++i)
    welds += "W" + std::to_string(i) + "," + std::to_string(i) + "00,0,0,P1;P2\n";
  folder_.Write("welds.csv", welds);
  Begin();
  DoAll("link OP10 OP10");
  const std::string brief = Do("check").results;
  EXPECT_THAT(brief, HasSubstr("unassigned: 25\n  W1 is on no activity; assign it to one\n"));
  EXPECT_THAT(brief, HasSubstr("W20 is on no activity; assign it to one\n  ... and 5 more; --all "
                               "prints them\nring: 1\n  the links run in a ring: OP10 -> OP10;"));
  EXPECT_THAT(brief, HasSubstr("\n26 findings\n"));
  EXPECT_THAT(Do("check --all").results, HasSubstr("W25 is on no activity"));
  const Spoken ring = Do("check --kind ring --json");
  EXPECT_EQ(ring.status, 1);
  EXPECT_EQ(nlohmann::json::parse(ring.results).at("counts"), nlohmann::json({{"ring", 1}}));
  EXPECT_EQ(nlohmann::json::parse(Do("check --json").results).at("findings").size(), 26u);
  EXPECT_EQ(Do("check --kind assembly").results, "0 findings\n");
  EXPECT_THAT(Do("check --kind fog").messages, HasSubstr("the kinds are unassigned, several"));
}

TEST_F(AdviceTest, TheConstraintOnLoadedPartsBindsWhoeverAssigns) {
  folder_.Write(
      "welds.csv",
      "id,x,y,z,parts,type\nSW-1,0,0,0,P1;P2,\nSW-2,99,0,0,P1;P3,\nE-1,199,0,0,P1;P3,endo\n"
      "E-2,299,0,0,P2;P3,endo\n");
  Begin();
  DoAll("drop P1 OP10\nsettings part-load-constraint on\n");
  const struct {
    const char* line;
    int status;
    const char* results;
  } cases[] = {
      {"check-assignment OP10 *", 1,
       "SW-1: lacks on OP10: P2\nSW-2: lacks on OP10: P3\nE-1: may be assigned to OP10\n"
       "E-2: lacks on OP10: P2, P3\n"},
      {"assign OP10 *", 0,
       "1 weld assigned to OP10\n  lacking P2: SW-1\n  lacking P3: SW-2\n  lacking P2, P3: E-2\n"
       "  --anyway takes them all the same\n"},
      {"assign OP10 SW-1", 1,
       "0 welds assigned to OP10\n  lacking P2: SW-1\n  --anyway takes them all the same\n"},
      {"assign OP10 SW-1 --anyway", 0, "1 weld assigned to OP10\n"},
      {"reallocate OP10 OP20 SW-1", 1,
       "0 welds moved from OP10 to OP20\n  lacking P2: SW-1\n  --anyway takes them all the same\n"},
      {"reallocate OP10 OP20 SW-1 --anyway", 0, "1 weld moved from OP10 to OP20\n"},
      {"check-assignment OP30 SW-2", 1, "SW-2: not of a kind that OP30 takes\n"},
      {"settings part-load-constraint off", 0, "welds may be assigned wherever they are taken\n"},
      {"assign OP10 SW-2", 0, "1 weld assigned to OP10\n"},
  };
  for (const auto& [line, status, results] : cases) {
    const Spoken spoken = Do(line);
    EXPECT_EQ(spoken.status, status) << spoken.messages;
    EXPECT_EQ(spoken.results, results);
  }
}

TEST_F(AdviceTest, PointsInAnotherUnitAreTold) {
  folder_.Write("welds.csv",
                "id,x,y,z,parts\nSW-1,1.034,-.818,.43,P1;P2\nSW-2,1.034,-.772,.43,P1;P2\n");
  const char hint[] =
      "all points lie within 0.046 mm; positions are in millimetres, so metres must";
  const std::string lists = " --parts @parts.csv --welds @welds.csv --process @process.csv";
  EXPECT_THAT(Do("new" + lists).results, HasSubstr(std::string("welds.csv: ") + hint));
  const std::string check = Do("check").results;
  EXPECT_THAT(check, HasSubstr(std::string("SW-1 and SW-2 are 0.046 mm apart; ") + hint));
  EXPECT_THAT(check, Not(HasSubstr("remove one of them")));
  folder_.Write("welds.csv", "id,x,y,z,parts\nSW-1,0,0,0,P1;P2\nSW-2,0,20,0,P1;P2\n");
  EXPECT_THAT(Do("new --replace" + lists).results, Not(HasSubstr("millimetres")));
}

// Stations and operations with flows, outputs and inputs at random, out of step as they come.
Plant RandomPlan(unsigned seed) {
  std::mt19937 random(seed);
  const auto below = [&](std::size_t limit) { return random() % limit; };
  Plant plant;
  std::vector<embedded::Activity*> activities;
  std::vector<ZefBaseUnknown_var> items;
  for (int i = 0; i < 5; ++i) {
    items.push_back(HandleOf(plant.Part("P" + std::to_string(i))));
    activities.push_back(&plant.Station("ST" + std::to_string(i)));
    for (int j = 0; j < 2; ++j) {
      embedded::Activity* const parent = j == 1 && below(3) == 0 ? activities.back() : nullptr;
      const std::string key = "OP" + std::to_string(i) + std::to_string(j);
      activities.push_back(&plant.Operation(key, Plant::Task::Welding, parent));
    }
  }
  const auto any = [&]() -> embedded::Activity& { return *activities[below(activities.size())]; };
  for (std::size_t outputs = below(6); outputs > 0; --outputs) {
    embedded::MfgAssembly& assembly = plant.Document()->AddAssembly();
    ZefISPPProductIO_var output;
    any().AddProductOutput(output.Put(), assembly.Identity());
    for (const ZefBaseUnknown_var& item : items) {
      if (below(4) == 0) assembly.AddChild(item);
    }
    items.push_back(assembly.Identity());
  }
  for (std::size_t flows = below(9); flows > 0; --flows) plant.Flow(any(), any());
  for (std::size_t drops = below(12); drops > 0; --drops) {
    any().Link(items[below(items.size())], embedded::ItemLink::FirstAssigned);
  }
  return plant;
}

TEST_F(AdviceTest, PicturesOfTheFlowAndCheckJudgeAlike) {
  std::size_t met = 0;
  for (unsigned seed = 0; seed < 300; ++seed) {
    const Plant plant = RandomPlan(seed);
    std::multiset<std::string> checked;
    std::set<std::string> drawn;
    for (const biwplan::Finding& finding : biwplan::CheckDocument(*plant.Document(), {})) {
      if (finding.kind == "assembly" || finding.kind == "ring") checked.insert(finding.activity);
      EXPECT_FALSE(finding.message.empty());
    }
    for (const auto& conflict : biwplan::ConflictsOf(*plant.Document())) {
      drawn.insert(conflict.activity->Key());
    }
    EXPECT_EQ(std::set<std::string>(checked.begin(), checked.end()), drawn) << seed;
    met += checked.size();
  }
  EXPECT_GT(met, 300u);
}

}  // namespace
}  // namespace tests
