#include <gmock/gmock.h>
#include <random>

#include "tests/history/Planned.h"

namespace tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

using HistoryTest = HistoryFixture;

TEST_F(HistoryTest, TellsWhoDidWhat) {
  Do("assign OP10 SW-1 SW-2");
  Do("show");
  Do("assign OP10 SW-1");
  EXPECT_EQ(
      Run({"@door.json", "--script", "-"}, "  link OP10  OP30 # \"why\"\nunassign OP10 SW-1\n")
          .status,
      0);
  EXPECT_THAT(Commands(), ElementsAre(HasSubstr("new --parts "), "assign OP10 SW-1 SW-2",
                                      "  link OP10  OP30 # \"why\"", "unassign OP10 SW-1"));
  EXPECT_THAT(Commands("--weld SW-1 --last 2"),
              ElementsAre("assign OP10 SW-1 SW-2", "unassign OP10 SW-1"));
  EXPECT_THAT(Commands("--activity OP30 --last 1"), ElementsAre(HasSubstr("link")));
  EXPECT_THAT(Commands("--activity OP20 --last 1"), ElementsAre(HasSubstr("new")));
  EXPECT_EQ(Do("history --weld XX").status, 1);
  const auto step = Steps("--last 1")[0];
  EXPECT_THAT(step.at("time").get<std::string>(),
              testing::MatchesRegex("20..-..-.. ..:..:..[.]..."));
  EXPECT_THAT(step.at("user").get<std::string>(), Not(""));
  EXPECT_THAT(Do("history --csv --last 1").results, HasSubstr(",unassign OP10 SW-1,,SW-1,OP10\n"));
  EXPECT_THAT(Do("history --last 1").results, HasSubstr("unassign OP10 SW-1\n"));
  EXPECT_THAT(Files(), ElementsAre("door.history", "door.json"));
}

TEST_F(HistoryTest, GoesBackAndForth) {
  std::vector<std::string> texts = {Bytes("door.json")};
  for (const std::string weld : {"SW-1", "SW-2", "SW-3"}) {
    Do("assign OP10 " + weld);
    texts.push_back(Bytes("door.json"));
  }
  const struct {
    std::string line;
    int status;
    std::size_t text;
    std::string says;
  } cases[] = {
      {"redo", 1, 3, "nothing is there to be redone\n"},
      {"undo", 0, 2, "undone: step 4: assign OP10 SW-3\n"},
      {"undo 9", 0, 0, "undone: step 3: assign OP10 SW-2\nundone: step 2: assign OP10 SW-1\n"},
      {"undo", 1, 0, "nothing is there to be undone\n"},
      {"redo 2", 0, 2, "redone: step 2: assign OP10 SW-1\nredone: step 3: assign OP10 SW-2\n"},
      {"undo --to 2", 0, 1, "undone: step 3: assign OP10 SW-2\n"},
      {"undo --to 4", 0, 3, "redone: step 3: assign OP10 SW-2\nredone: step 4: assign OP10 SW-3\n"},
      {"undo --to 9", 2, 3, ""},
      {"undo 0", 2, 3, ""},
      {"undo -- -1", 2, 3, ""},
      {"undo 1 --to 2", 2, 3, ""},
      {"redo x", 2, 3, ""},
  };
  for (const auto& each : cases) {
    const Spoken spoken = Do(each.line);
    EXPECT_EQ(spoken.status, each.status) << each.line << spoken.messages;
    EXPECT_EQ(spoken.results, each.says);
    EXPECT_EQ(Bytes("door.json"), texts[each.text]) << each.line;
  }
  Do("undo 2");
  EXPECT_THAT(Do("history").results, HasSubstr("undone  assign OP10 SW-3"));
  Do("assign OP20 SW-3");
  EXPECT_EQ(Do("redo").status, 1);
  EXPECT_THAT(Commands("--last 2"), ElementsAre("assign OP10 SW-1", "assign OP20 SW-3"));
}

TEST_F(HistoryTest, GivesBackWhatOthersChanged) {
  Do("assign OP10 SW-1");
  const std::string ours = Bytes("door.json");
  for (const std::string& theirs : {ours + "\n", std::string("{"), std::string()}) {
    folder_.Write("door.json", theirs);
    EXPECT_EQ(Do("undo").results.substr(0, 12), "undone: step") << theirs;
    EXPECT_EQ(Bytes("door.json"), ours);
  }
  std::filesystem::remove(Path("door.json"));
  EXPECT_EQ(Do("undo").status, 0);
  EXPECT_EQ(Bytes("door.json"), ours);
  folder_.Write("door.json", ours + "\n");
  Do("assign OP10 SW-2");
  EXPECT_THAT(Commands("--last 2"), ElementsAre("changed by another program", "assign OP10 SW-2"));
  Do("undo");
  EXPECT_EQ(Bytes("door.json"), ours + "\n");
}

TEST_F(HistoryTest, ReplacingAPlanIsAStep) {
  Do("assign OP10 SW-1");
  const std::string former = Bytes("door.json");
  Do("new --parts @parts.csv --welds @welds.csv --process @process.csv --replace");
  EXPECT_NE(Bytes("door.json"), former);
  Do("undo");
  EXPECT_EQ(Bytes("door.json"), former);
}

TEST_F(HistoryTest, KeepsAsManyStepsAsIsSet) {
  for (const char* const weld : {"SW-1", "SW-2", "SW-3"}) Do(std::string("assign OP10 ") + weld);
  const struct {
    std::string line;
    int status;
    std::size_t steps;
    std::string says;
  } cases[] = {
      {"settings history status", 0, 4, "the history keeps 1000 steps, and has 4 in "},
      {"settings history 2", 0, 2, "the history keeps 2 steps, and has 2 in "},
      {"assign OP20 SW-1", 0, 2, "1 weld assigned"},
      {"undo 9", 0, 2, "undone: step 5: assign OP20 SW-1\nundone: step 4: assign OP10 SW-3\n"},
      {"redo", 0, 2, "redone: step 4"},
      {"settings history 1", 0, 1, "the history keeps 1 step,"},
      {"settings history 0", 2, 1, ""},
      {"settings history", 2, 1, ""},
      {"settings history off", 0, 0, "no history is kept\n"},
      {"assign OP30 SM-1", 0, 0, "1 weld assigned"},
      {"undo", 1, 0, "nothing is there"},
      {"settings history 5", 0, 0, "the history keeps 5 steps"},
      {"unassign OP30 SM-1", 0, 1, "1 weld unassigned"},
      {"undo", 0, 1, "undone: step"},
  };
  for (const auto& each : cases) {
    const Spoken spoken = Do(each.line);
    EXPECT_EQ(spoken.status, each.status) << each.line << spoken.messages;
    EXPECT_THAT(spoken.results, testing::StartsWith(each.says)) << each.line;
    EXPECT_EQ(Steps().size(), each.steps) << each.line;
  }
}

TEST_F(HistoryTest, UndoesAndRedoesWholeSequences) {
  const std::vector<std::string> lines = {"assign OP10 SW-*",
                                          "assign OP20 SW-1..SW-2",
                                          "unassign OP10 SW-1",
                                          "assign OP30 SM-1",
                                          "reallocate OP10 OP20 SW-3",
                                          "hide SW-2",
                                          "add station ST30",
                                          "add operation OP40 ST30",
                                          "link ST10 ST30",
                                          "output ST10 First",
                                          "update on",
                                          "update off",
                                          "drop P1 OP10",
                                          "remove-activity ST30 --with-contents",
                                          "remove-activity OP20 --with-contents",
                                          "cycle-time",
                                          "undo",
                                          "undo 3",
                                          "redo",
                                          "settings part-load-constraint on",
                                          "settings part-load-constraint off",
                                          "save",
                                          "redo 2"};
  const std::string began = Bytes("door.json");
  for (int round = 0; round < Times(25); ++round) {
    std::mt19937 random(static_cast<unsigned>(round));
    for (auto scripts = 1 + random() % 3; scripts > 0; --scripts) {
      std::string script;
      for (auto count = random() % 8; count > 0; --count)
        script += lines[random() % lines.size()] + "\n";
      Run({"@door.json", "--keep-going", "--script", "-"}, script);
      if (random() % 4 == 0) folder_.Write("door.json", Bytes("door.json") + " \n");
    }
    Do("redo 1000");
    const std::string ended = Bytes("door.json");
    Do("undo 1000");
    ASSERT_EQ(Bytes("door.json"), began) << round;
    Do("redo 1000");
    ASSERT_EQ(Bytes("door.json"), ended) << round;
    Do("undo 1000");
  }
}

}  // namespace
}  // namespace tests
