#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "tests/planner/Planner.h"
#include "tests/processdb/Databases.h"

namespace tests {
namespace {

using testing::AllOf;
using testing::HasSubstr;

// A line, its status, and what it answers or, with status 2, a piece of its message.
struct Case {
  std::string line;
  int status;
  std::string said;
};

// What a planner is told about what was dropped, refused or not found.
class AnswersTest : public PlannerTest {
 protected:
  void ExpectAnswers(const std::vector<Case>& cases) const {
    for (const auto& [line, status, said] : cases) {
      SCOPED_TRACE(line);
      const std::string before = Bytes("door.json");
      const Spoken spoken = Do(line);
      EXPECT_EQ(spoken.status, status) << spoken.messages;
      if (status == 2) {
        EXPECT_THAT(spoken.messages, HasSubstr(said));
        EXPECT_EQ(Bytes("door.json"), before);
      } else {
        EXPECT_EQ(spoken.results, said);
      }
    }
  }
};

TEST_F(AnswersTest, ANewPlanNeedsARowAndReplacesNothingWithoutOne) {
  folder_.Write("feet.csv", "id,x,y,z,parts\nSW-1,1,1,1,P7\nSW-2,a,1,1,P1\n");
  folder_.Write("header.csv", "id,x,y,z,parts\n");
  folder_.Write("dollar.csv", "id,name\nST10,Geo$\n");
  Begin();
  const std::string line = "new --replace --parts @parts.csv --process @process.csv --welds ";
  std::vector<std::string> arguments = biwplan::SplitWords("@door.json " + line);
  const std::string before = Bytes("door.json");
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"@feet.csv", "feet.csv: nothing is imported, because 2 faults were found in 2 rows"},
      {"@header.csv", "header.csv has no row below its header"}};
  for (const auto& [welds, message] : cases) {
    arguments.push_back(welds);
    const Spoken spoken = Run(arguments);
    EXPECT_EQ(spoken.status, 2);
    EXPECT_THAT(spoken.messages, HasSubstr(message));
    EXPECT_EQ(Bytes("door.json"), before);
    arguments.pop_back();
  }
  for (const char* const options : {"--process @dollar.csv", "--process @process.csv --name A$B"}) {
    const Spoken spoken = Run(biwplan::SplitWords(
        std::string("@door.json new --replace --parts @parts.csv --welds @welds.csv ") + options));
    EXPECT_EQ(spoken.status, 2);
    EXPECT_THAT(spoken.messages, HasSubstr("$, which separates names in warnings"));
  }
}

TEST_F(AnswersTest, ARemovedActivitySaysWhatBecameFree) {
  Begin();
  Run({"@door.json", "--script", "-"},
      "add operation OP40\nassign OP10 SW-1 SW-2\nassign OP20 SW-2\nassign OP40 SW-1\n"
      "assign OP30 SM-1\nfirst-assign OP10 P1 P2\ndrop P2 OP40\noutput ST10 Door\n"
      "drop MA-1 OP40\noutput OP10 Tack\n");
  ExpectAnswers(
      {{"remove-activity ST10", 2,
        "\"ST10\" is not empty: it has 3 activities below it, 3 welds, 2 parts, 2 assemblies made; "
        "--with-contents removes it with them"},
       {"remove-activity OP40", 2, "it has 1 weld, 1 part, 1 assembly taken in;"},
       {"remove-activity ST10 --with-contents", 0,
        "ST10 removed\n  with it: OP10, OP20, OP30\n  welds on no activity now: SW-2, SM-1\n"
        "  parts taken in nowhere now: P1\n  assemblies made by nobody now: MA-1, MA-2\n"},
       {"remove-activity OP40 --with-contents --json", 0,
        R"({"command":"remove-activity","removed":"OP40","activities":[],"welds":["SW-1"],)"
        R"("parts":["P2"],"assemblies":["MA-1"],"unmade":[],"points":[]})"
        "\n"},
       {"add station ST30", 0, "station ST30 added\n"},
       {"remove-activity ST30", 0, "ST30 removed\n"}});
}

TEST_F(AnswersTest, EachFailedCommandAnswersAProgram) {
  Begin();
  const Spoken spoken = Run({"--json", "--keep-going", "--script", "-", "@door.json"},
                            "assign OP99 SW-1\nexternal fly\nassign OP10 SW-1\n\"open\nnew\n");
  EXPECT_EQ(spoken.status, 2);
  std::istringstream lines(spoken.results);
  std::vector<nlohmann::json> answers;
  for (std::string line; std::getline(lines, line);) answers.push_back(nlohmann::json::parse(line));
  ASSERT_EQ(answers.size(), 5u);
  EXPECT_EQ(answers[0].at("command"), "assign");
  EXPECT_EQ(answers[0].at("place"), "input, line 1");
  EXPECT_THAT(answers[0].at("error"), HasSubstr("there is no activity \"OP99\""));
  EXPECT_EQ(answers[1].at("command"), "external");
  EXPECT_FALSE(answers[2].contains("error"));
  EXPECT_THAT(answers[3].at("error"), HasSubstr("quote"));
  EXPECT_EQ(answers[4].at("command"), "new");
  // Asked for by the command itself, and where no command can run.
  EXPECT_THAT(Do("drop P9 OP10 --json").results, HasSubstr(R"("command":"drop","error":)"));
  EXPECT_THAT(Run({"--json", "check"}).results, HasSubstr(R"({"error":)"));
}

TEST_F(AnswersTest, LinksThatAreThereOrRunInARingAreTold) {
  Begin();
  ExpectAnswers({{"link OP10 OP20", 1, "OP20 follows OP10: there already\n"},
                 {"unlink OP10 OP20", 0, "OP20 no longer follows OP10\n"},
                 {"unlink OP10 OP20", 2, "no flow leads from"},
                 {"link OP10 OP20", 0, "OP20 follows OP10\n"}});
  const Spoken ring = Do("link OP30 OP10 --json");
  EXPECT_EQ(ring.status, 0);
  EXPECT_THAT(ring.messages, HasSubstr("run in a ring now: OP10 -> OP20 -> OP30 -> OP10; unlink"));
  const nlohmann::json answer = nlohmann::json::parse(ring.results);
  EXPECT_EQ(answer.at("ring"), nlohmann::json({"OP10", "OP20", "OP30"}));
  EXPECT_EQ(answer.at("warnings").size(), 1u);
  EXPECT_THAT(Do("link ST10 ST10").messages, HasSubstr("in a ring now: ST10 -> ST10; unlink"));
}

TEST_F(AnswersTest, NamesThatListsRefuseAreRefusedByCommandsToo) {
  Begin();
  ExpectAnswers({{"add operation OP10", 2, "There is already an activity \"OP10\""},
                 {"add operation ''", 2, "KEY is empty"},
                 {"add operation " + std::string(201, 'x'), 2, "one line of 1 to 200 bytes"},
                 {"add operation Geo$", 2, "KEY is \"Geo$\", with a $"},
                 {"add operation OP50 --label Geo$", 2, "--label is \"Geo$\", with a $"},
                 {"output OP10 A$B", 2, "NAME is \"A$B\", with a $"},
                 {"add operation OP50$ --label Geo", 0, "operation OP50$ added\n"}});
  for (const char* const key : {"A\nB", "\x1b[2J", "A\x7f"}) {
    EXPECT_EQ(Run({"@door.json", "add", "station", key}).status, 2);
    EXPECT_EQ(Run({"@door.json", "add", "station", "ST50", "--label", key}).status, 2);
    EXPECT_EQ(Run({"@door.json", "output", "ST10", key}).status, 2);
  }
  // A label of before, in a document that is there already.
  std::string text = Bytes("door.json");
  text.replace(text.find("Geo station"), 3, "Ge$");
  folder_.Write("door.json", text);
  ExpectAnswers(
      {{"output ST10", 2, "name the assembly"}, {"output ST10 Door", 0, "ST10 makes MA-1 Door\n"}});
}

// One that is locked is refused like these, after a while.
TEST_F(AnswersTest, APlanOpensWithoutItsDatabase) {
  Begin();
  std::filesystem::create_directory(Path("lists"));
  folder_.Write("lists/processes.csv", "identifier\nPL-1\n");
  folder_.Write("lists/assignments.csv", "weld,process\nSW-1,PL-1\n");
  EXPECT_EQ(Do("external detach").status, 1);
  ASSERT_EQ(Do("external create @plant.db @lists").status, 0);
  const std::string whole = Bytes("plant.db");
  const std::string plan = Bytes("door.json");
  ASSERT_EQ(Do("external create @other.db @lists").status, 0);
  for (const std::string fault : {"missing", "cut", "foreign"}) {
    SCOPED_TRACE(fault);
    folder_.Write("door.json", plan);
    folder_.Write("plant.db", fault == "cut" ? whole.substr(0, 99) : whole);
    if (fault == "missing") std::filesystem::remove(Path("plant.db"));
    if (fault == "foreign") {
      EXPECT_EQ(ChangeAsOthers(Path("plant.db"), "ALTER TABLE process DROP label"), "");
    }
    const Spoken spoken = Do("assign OP10 SW-1 --json");
    EXPECT_EQ(spoken.status, 0);
    EXPECT_THAT(spoken.messages, HasSubstr("The plan is opened without its process database: "));
    EXPECT_EQ(nlohmann::json::parse(spoken.results).at("warnings").size(), 1u);
    for (const char* const line : {"external count SW-1", "external fill @lists", "validate OP10",
                                   "valid-version OP10 SW-1", "is-assigned SW-1"}) {
      const Spoken refused = Do(line);
      EXPECT_EQ(refused.status, 2) << line;
      EXPECT_THAT(refused.messages,
                  AllOf(HasSubstr("this needs the process database, but 'plant.db"),
                        HasSubstr("'external detach' none")));
    }
    EXPECT_THAT(Bytes("door.json"), HasSubstr("\"database\": \"plant.db\""));
    EXPECT_EQ(Do("external attach @other.db").status, 0);
    EXPECT_EQ(Do("external count SW-1").results, "SW-1: 1 assignment\n");
    EXPECT_EQ(Do("external detach").results, "other.db is detached\n");
    EXPECT_EQ(Do("is-assigned SW-1").results, "SW-1: assigned\n");
  }
}

}  // namespace
}  // namespace tests
