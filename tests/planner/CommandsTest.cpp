#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "tests/planner/Planner.h"

namespace tests {
namespace {

using testing::HasSubstr;

using CommandsTest = PlannerTest;

struct Case {
  std::string line;
  int status;
  std::string results;
};

constexpr char kNew[] = "new --parts @parts.csv --welds @welds.csv --process @process.csv ";

// Each line is a run of its own, so the document is saved and read again in between.
TEST_F(CommandsTest, AnswersInWords) {
  const std::vector<Case> cases = {
      {kNew, 0,
       "welds.csv: 7 rows read, 7 kept (3 point welds, 1 seam, 1 locating point, 1 clamping "
       "point), "
       "0 dropped\n3 parts, 4 welds, 4 activities\n"},
      {"assign OP10 SW-1 SW-2 SW-1", 0, "2 welds assigned to OP10\n"},
      {"assign Tack SW-1 SW-3 SM-1", 0,
       "1 weld assigned to OP10\n  there already: SW-1\n  not of a kind that it takes: SM-1\n"},
      {"assign OP10 SW-*", 1, "0 welds assigned to OP10\n  there already: SW-1, SW-2, SW-3\n"},
      {"assign OP30 SM-1", 0, "1 weld assigned to OP30\n"},
      {"reallocate OP10 OP20 SW-3 SM-1", 0,
       "1 weld moved from OP10 to OP20\n  not on OP10: SM-1\n"},
      {"assign OP10 SW-3", 0, "1 weld assigned to OP10\n"},
      {"reallocate OP10 OP20 SW-3", 1,
       "0 welds moved from OP10 to OP20\n  on OP20 already: SW-3\n"},
      {"reallocate OP10 OP30 SW-1", 1,
       "0 welds moved from OP10 to OP30\n  not of a kind that OP30 takes: SW-1\n"},
      {"unassign OP10 SW-3 SM-1", 0, "1 weld unassigned from OP10\n  not there: SM-1\n"},
      {"unassign OP10 SW-3", 1, "0 welds unassigned from OP10\n  not there: SW-3\n"},
      {"activities-of SW-1..SM-1", 0,
       "SW-1: on OP10\nSW-2: on OP10\nSW-3: on OP20\nSM-1: on OP30\n"},
      {"is-assigned SW-1 SM-1", 1, "SW-1: assigned\nSM-1: not assigned\n"},
      {"is-valid-for OP30 SM-1", 0, "SM-1: of a kind that OP30 takes\n"},
      {"is-valid-for OP30 SW-1", 1, "SW-1: not of a kind that OP30 takes\n"},
      {"check-assignment OP20 SW-1 SW-1 SW-3", 1,
       "SW-1: may be assigned to OP20\nSW-1: would be on OP20 twice\nSW-3: would be on OP20 "
       "twice\n"},
      {"cycle-time OP10", 0, "activity  seconds\nOP10           18\n"},
      {"cycle-time", 0,
       "activity  seconds\nOP10           18\nOP20           15\nOP30            2\ntogether 35 "
       "s\n"},
      {"show", 0,
       "Process  (process)\n  ST10  Geo station  (station)\n"
       "    OP10  Tack  (operation, welding): 2 welds, 18 s\n        SW-1 SW-2\n"
       "    OP20  Respot  (operation, welding): 1 weld, 15 s\n        SW-3\n"
       "    OP30  Seal  (operation, curve fastening): 1 weld, 2 s\n        SM-1\n"
       "4 welds, 0 on no activity\n"},
      {"show OP20 --brief", 0, "OP20  Respot  (operation, welding): 1 weld, 15 s\n"},
      {"welds --activity ST10 --part Hinge", 0,
       "weld  type    x  y     z  parts   activities\n"
       "SW-3  spot  120  0  52.5  P1, P3  OP20\nSM-1  seam    0  0     0  P1, P3  OP30\n2 welds\n"},
      {"welds --unassigned", 0, "0 welds\n"},
      {"parts", 0,
       "part  number  name         in        instance of\nP1    P1      Inner panel  Products\n"
       "P2    P2      Outer panel  Products\nP3    P3      Hinge        Products\n3 parts\n"},
      {"activities", 0,
       "activity  label        role       task             in       welds  seconds\n"
       "ST10      Geo station  station                     Process      0        0\n"
       "OP10      Tack         operation  welding          ST10         2       18\n"
       "OP20      Respot       operation  welding          ST10         1       15\n"
       "OP30      Seal         operation  curve fastening  ST10         1        2\n4 "
       "activities\n"},
      {"locators", 0, "name  x  y  z\nL-1   5  6  7\n1 in all\n"},
      {"clamps", 0, "name  x  y  z\nC-1   1  2  3\n1 in all\n"},
      {"hide SW-1", 0, "1 weld hidden\n"},
      {"show-points SW-1 SW-2", 0, "2 welds shown\n"},
      {"save @copy.json", 0, "saved copy.json\n"},
  };
  for (const Case& each : cases) {
    SCOPED_TRACE(each.line);
    const Spoken spoken = Do(each.line);
    EXPECT_EQ(spoken.results, each.results);
    EXPECT_EQ(spoken.status, each.status) << spoken.messages;
  }
  EXPECT_EQ(Bytes("copy.json"), Bytes("door.json"));
}

TEST_F(CommandsTest, AnswersProgramsInJson) {
  const std::vector<Case> cases = {
      {kNew, 0,
       R"({"parts":3,"welds":4,"activities":4,"dropped":[],"notes":[],"summary":"welds.csv: 7 rows read, 7 kept (3 point welds, 1 seam, 1 locating point, 1 clamping point), 0 dropped"})"},
      {"assign OP10 SW-1 SW-2", 0,
       R"({"activity":"OP10","assigned":["SW-1","SW-2"],"duplicates":[],"lacking":[],"refused":[]})"},
      {"assign OP10 SW-1 SM-1", 1,
       R"({"activity":"OP10","assigned":[],"duplicates":["SW-1"],"lacking":[],"refused":["SM-1"],"warnings":[{"title":"WARNING","message":"Duplicated weld assignements to \nthe SAME activity are illegal and\nignored."}]})"},
      {"reallocate OP10 OP20 SW-2", 0,
       R"({"from":"OP10","to":"OP20","reallocated":["SW-2"],"missing":[],"duplicates":[],"lacking":[],"refused":[]})"},
      {"unassign OP20 SW-2 SW-3", 0,
       R"({"activity":"OP20","unassigned":["SW-2"],"missing":["SW-3"]})"},
      {"activities-of SW-1", 0, R"({"welds":[{"weld":"SW-1","activities":["OP10"]}]})"},
      {"welds SW-1 SM-1 --assigned", 0,
       R"({"welds":[{"weld":"SW-1","type":"spot","position":[100.0,0.0,52.5],"parts":["P1","P2"],"activities":["OP10"]}]})"},
      {"welds SM-1", 0,
       R"({"welds":[{"weld":"SM-1","type":"seam","position":[0.0,0.0,0.0],"length":30.0,"parts":["P1","P3"],"activities":[]}]})"},
      {"cycle-time OP10", 0, R"({"activities":[{"activity":"OP10","seconds":15.0}]})"},
      {"show OP10", 0,
       R"({"activities":[{"activity":"OP10","label":"Tack","role":"operation","task":"welding","parent":"ST10","seconds":15.0,"depth":0,"welds":["SW-1"]}]})"},
      {"which-visualised --not", 0, R"({"visualised":false,"welds":["SW-1","SW-2","SW-3"]})"},
      {"highlight P2", 0, R"({"highlighted":["P2"]})"},
  };
  for (const Case& each : cases) {
    SCOPED_TRACE(each.line);
    const Spoken spoken = Do(each.line + " --json");
    EXPECT_EQ(spoken.status, each.status) << spoken.messages;
    EXPECT_EQ(std::count(spoken.results.begin(), spoken.results.end(), '\n'), 1);
    nlohmann::json answer = nlohmann::json::parse(spoken.results);
    const std::string verb = each.line.substr(0, each.line.find(' '));
    EXPECT_EQ(answer["command"], verb);
    answer.erase("command");
    EXPECT_EQ(answer, nlohmann::json::parse(each.results));
  }
}

TEST_F(CommandsTest, ShowsTheViewWithinOneSession) {
  Begin();
  const Spoken spoken = Run({"@door.json"},
                            "visualise SW-1\nvisualise SW-1 SW-2\nvisualise --add SW-2\n"
                            "which-visualised\nlabels on SM-1\nlabels on SW-3\nhighlight SW-2\n"
                            "scene\nlabels off\nlabels off\n");
  EXPECT_EQ(spoken.results,
            "1 weld now with label, 0 without\n1 weld now with label, 1 without\n"
            "1 weld now with label, 0 without\n1 spot weld with label\n  SW-2\n"
            "1 label shown\n1 label shown\nhighlighted: SW-2\n"
            "product \"P1\" at 0 0 0 mm\nproduct \"P2\" at 0 0 0 mm\nproduct \"P3\" at 0 0 0 mm\n"
            "spot weld \"SW-1\" at 100 0 52.5 mm, colour 213 94 0\n"
            "spot weld \"SW-2\" at 110 0 52.5 mm, colour 213 94 0, highlighted\n"
            "  label \"SW-2\" at -110 0 -52.5 mm, colour 0 0 0\n"
            "  label \"SW-2\" at -110 0 -52.5 mm, colour 0 0 0\n"
            "spot weld \"SW-3\" at 120 0 52.5 mm, colour 213 94 0\n"
            "seam \"SM-1\" at 0 0 0 mm, colour 213 94 0\n"
            "locating point \"L-1\" at 5 6 7 mm\nclamping point \"C-1\" at 1 2 3 mm\n"
            "temporary label \"SW-3\" at 120 0 52.5 mm, colour 240 228 66\n"
            "highlighted: \"SW-2\"\n1 label taken away\n0 labels taken away\n");
  EXPECT_EQ(spoken.status, 0);
}

TEST_F(CommandsTest, WarnsOfDuplicatesInTheUsersLanguage) {
  Begin();
  Do("assign OP10 SW-1");
  EXPECT_EQ(Do("assign OP10 SW-1").messages,
            "WARNING\n-------\nDuplicated weld assignements to \nthe SAME activity are illegal "
            "and\nignored.\n");
  const Spoken german = Run({"--language", "de", "@door.json", "assign", "OP10", "SW-1"});
  EXPECT_THAT(german.messages, testing::StartsWith("WARNUNG\n"));
}

TEST_F(CommandsTest, AsksTheExternalDatabase) {
  Begin();
  folder_.Write("lists/processes.csv",
                "identifier,label,base\nPL,Plant,1\nPL-1,Door line,1\nPL-2,Tack,1\n");
  folder_.Write("lists/parents.csv", "process,parent\nPL-1,PL\nPL-2,PL-1\n");
  folder_.Write("lists/activities.csv", "activity,process\nOP10,PL-2\n");
  folder_.Write("more/assignments.csv", "weld,process\nSW-1,PL-2\nSW-1,PL-1\n");
  const std::vector<Case> cases = {
      {"external count SW-1", 2, ""},
      {"external create @plant.db @lists", 0,
       "plant.db\n  processes.csv: 3 rows\n  parents.csv: 2 rows\n  activities.csv: 1 row\n"},
      {"external fill @more", 0, "plant.db\n  assignments.csv: 2 rows\n"},
      {"external assigned SW-1 SW-2", 1,
       "SW-1: assigned in the database\nSW-2: not assigned in the database\n"},
      {"external count SW-1", 0, "SW-1: 2 assignments\n"},
      {"external text SW-1", 0, "SW-1: PL-2;PL-1\n"},
      {"external chain OP10", 0, "PL > PL-1 > PL-2\n"},
      {"external chain PL-1", 0, "PL > PL-1\n"},
      {"external chain OP20", 2, ""},
      {"external chain nowhere", 2, ""},
      {"external attach @plant.db", 0, "plant.db is attached\n"},
      {"external attach @parts.csv", 2, ""},
      {"external create @plant.db @lists", 2, ""},
      {"welds --assigned SW-*", 0,
       "weld  type    x  y     z  parts   activities\nSW-1  spot  100  0  52.5  P1, P2\n1 weld\n"},
      {"is-assigned SW-1", 0, "SW-1: assigned\n"},
  };
  for (const Case& each : cases) {
    SCOPED_TRACE(each.line);
    const Spoken spoken = Do(each.line);
    EXPECT_EQ(spoken.results, each.results);
    EXPECT_EQ(spoken.status, each.status) << spoken.messages;
  }
}

TEST_F(CommandsTest, ReportsDroppedRowsOrFailsStrictly) {
  folder_.Write("welds.csv", std::string(kWelds) + "SW-9,1,2,3,P9,\nSW-1,1,1,1,P1;P2,\n");
  const std::string line = kNew;
  const Spoken strict = Do(line + "--strict");
  EXPECT_EQ(strict.status, 2);
  EXPECT_THAT(strict.messages, HasSubstr("welds.csv, line 9: "));
  EXPECT_FALSE(std::filesystem::exists(Path("door.json")));
  const Spoken spoken = Do(line);
  EXPECT_THAT(spoken.results, HasSubstr("welds.csv, line 9: the part \"P9\""));
  EXPECT_THAT(spoken.results, HasSubstr("2 dropped: 1 duplicate id, 1 missing part\n"));
  const std::string saved = Bytes("door.json");
  EXPECT_EQ(Do(line).status, 2);
  EXPECT_EQ(Bytes("door.json"), saved);
  EXPECT_EQ(Do(line + "--replace").status, 0);
}

TEST_F(CommandsTest, ExplainsEveryCommand) {
  for (const std::string verb : {"new", "assign", "welds", "external chain", "labels", "help"}) {
    std::vector<std::string> words = biwplan::SplitWords(verb);
    words.push_back("--help");
    const Spoken spoken = Run(words);
    EXPECT_EQ(spoken.status, 0);
    EXPECT_THAT(spoken.results, HasSubstr("Usage: " + verb + " "));
  }
  EXPECT_THAT(Run({"--help"}).results, HasSubstr("  which-visualised    Lists"));
  EXPECT_THAT(Run({"help", "external"}).results, HasSubstr("  external fill "));
}

}  // namespace
}  // namespace tests
