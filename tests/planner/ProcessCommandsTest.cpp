#include <gmock/gmock.h>

#include "tests/planner/Planner.h"

namespace tests {
namespace {

using testing::HasSubstr;

struct Case {
  std::string line;
  int status;
  std::string results;
};

class ProcessCommandsTest : public PlannerTest {
 protected:
  void ExpectAnswers(const std::vector<Case>& cases) const {
    for (const auto& [line, status, results] : cases) {
      SCOPED_TRACE(line);
      const Spoken spoken = Do(line);
      EXPECT_EQ(spoken.status, status) << spoken.messages;
      EXPECT_EQ(spoken.results, results);
    }
  }
};

// Each line is a run of its own, so what assemblies follow is kept in the document in between.
TEST_F(ProcessCommandsTest, AssembliesFollowTheProcessFromRunToRun) {
  Begin();
  ExpectAnswers({{"add station ST20", 0, "station ST20 added\n"},
                 {"add operation OP50 ST20 --task curve", 0, "operation OP50 added\n"},
                 {"update status", 0, "the update of assemblies is off\n"},
                 {"update on", 0, "the update of assemblies is on, through Process\n"},
                 {"output ST10", 0, "ST10 makes MA-1 Geo station\n"},
                 {"output ST20 Door", 0, "ST20 makes MA-2 Door\n"},
                 {"drop P1 OP10", 0, "OP10 takes in P1\n"},
                 {"link ST10 ST20", 0, "ST20 follows ST10\n"},
                 {"first-assign ST20 P2 P3", 0, "ST20 takes in P2, P3\n"},
                 {"first-assigned ST10", 0, "P1  Inner panel  (through an operation)\n"},
                 {"assemblies", 0,
                  "MA-2  Door: made by ST20, taken in by nobody\n"
                  "  MA-1  Geo station: made by ST10, taken in by ST20\n    P1  Inner panel\n"
                  "  P2  Outer panel\n  P3  Hinge\n"},
                 {"drag P1 OP10", 0, "OP10 no longer takes in P1\n"},
                 {"drag P1 OP10", 2, ""},
                 {"unlink ST10 ST20", 0, "ST20 no longer follows ST10\n"},
                 {"unlink ST10 ST20", 2, ""},
                 {"assemblies", 0,
                  "MA-1  Geo station: made by ST10, taken in by nobody\n"
                  "MA-2  Door: made by ST20, taken in by nobody\n  P2  Outer panel\n  P3  Hinge\n"},
                 {"remove-output ST10", 0, "ST10 no longer makes MA-1 Geo station\n"},
                 {"remove-activity ST20 --with-contents", 0,
                  "ST20 removed\n  with it: OP50\n  parts taken in nowhere now: P2, P3\n"
                  "  assemblies made by nobody now: MA-2\n"},
                 {"update off", 0, "the update of assemblies is off\n"},
                 {"drop P1 OP10", 0, "OP10 takes in P1\n"}});
  const Spoken ring = Do("drop ST99 OP10");
  EXPECT_EQ(ring.status, 2);
  EXPECT_THAT(ring.messages, HasSubstr("there is no part \"ST99\""));
}

TEST_F(ProcessCommandsTest, FlowAndPartsAreAsked) {
  Begin();
  ExpectAnswers({{"drop P1 OP10", 0, "OP10 takes in P1\n"},
                 {"hierarchy OP20", 0, "Geo station->Respot\n"},
                 {"hierarchy Process", 1, "Process is the process\n"},
                 {"predecessor OP20", 0, "OP10\n"},
                 {"predecessor OP10", 1, "none\n"},
                 {"predecessors OP30", 0, "OP20\n"},
                 {"all-predecessors OP30", 0, "OP20 OP10\n"},
                 {"previous OP30", 0, "OP20 OP10 ST10 Process\n"},
                 {"descendants ST10", 0, "OP10 OP20 OP30\n"},
                 {"loaded-parts OP30", 0, "P1\n"},
                 {"assigned-parts OP30", 1, "none\n"},
                 {"child-parts Products", 0, "P1\nP2\nP3\n"},
                 {"sibling-parts P2", 0, "P1\nP3\n"},
                 {"part-in-list P1 OP20", 0, "yes\n"},
                 {"parts-loaded-for SW-1 OP20", 1, "no\n"}});
}

TEST_F(ProcessCommandsTest, ValidatingAndCheckingSayWhatToMend) {
  Begin();
  ExpectAnswers(
      {{"validate OP10 SW-1 SM-1", 1,
        "1 weld may go to OP10\n  SW-1\nSM-1: no, the activity does not take this kind of weld\n"},
       {"settings part-load-constraint on", 0,
        "welds may only be assigned where their parts are loaded\n"},
       {"first-assign OP10 P1 P2", 0, "OP10 takes in P1, P2\n"},
       {"validate OP10 SW-* --apply", 1,
        "2 welds assigned to OP10\n  SW-1 SW-2\nSW-3: no, part not loaded: P3\n"},
       {"valid-version OP10 SW-3", 0, "yes\n"},
       {"assign OP20 SW-1 SW-3 --anyway", 0, "2 welds assigned to OP20\n"},
       {"check --pitch 15 --csv", 1,
        "kind,weld,activity,part,message\n"
        "unassigned,SM-1,,,SM-1 is on no activity; assign it to one\n"
        "several activities,SW-1,OP10,,\"SW-1 is on OP10, OP20; leave it on one of them\"\n"
        "part not loaded,SW-3,OP20,P3,\"SW-3 on OP20 joins P3, which is loaded nowhere; drop it on "
        "OP20 or on an activity before it\"\n"
        "too close,SW-1,,,\"SW-1 and SW-2 are 10 mm apart, less than the pitch of 15 mm; move one "
        "of them\"\n"
        "too close,SW-2,,,\"SW-2 and SW-3 are 10 mm apart, less than the pitch of 15 mm; move one "
        "of them\"\n"},
       {"drop P3 OP30", 0, "OP30 takes in P3\n"}});
  EXPECT_THAT(Do("check").results,
              HasSubstr("too early: 1\n  SW-3 on OP20 joins P3, which does not come before OP30"));
  EXPECT_EQ(Do("check --pitch near").status, 2);
}

}  // namespace
}  // namespace tests
