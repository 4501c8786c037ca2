#include <gmock/gmock.h>

#include "planner/names/Names.h"
#include "planner/names/Nearest.h"
#include "tests/planner/Planner.h"

namespace tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class ScriptTest : public PlannerTest {
 protected:
  Spoken RunScript(const std::string& text, std::vector<std::string> options = {}) {
    folder_.Write("plan.biw", text);
    options.insert(options.begin(), {"@door.json", "--script", "@plan.biw"});
    return Run(options);
  }
};

TEST_F(ScriptTest, StopsAtTheFirstErrorAndSavesNothing) {
  Begin();
  const std::string saved = Bytes("door.json");
  const Spoken spoken = RunScript("assign OP10 SW-1\n\n# no such weld\nassign OP10 SW-11\nshow\n");
  EXPECT_EQ(spoken.status, 2);
  EXPECT_EQ(spoken.results, "1 weld assigned to OP10\n");
  EXPECT_EQ(spoken.messages,
            "biwplan: plan.biw, line 4: there is no weld \"SW-11\"; nearest: SW-1, SW-2, SW-3; "
            "'welds' lists them\nbiwplan: door.json is left as it was\n");
  EXPECT_EQ(Bytes("door.json"), saved);
}

TEST_F(ScriptTest, KeepsGoingOnDemandAndKeepsWhatSucceeded) {
  Begin();
  const Spoken spoken =
      RunScript("assign OP10 SW-1\nassign OP9\n\"\nassign OP10 SW-2\n", {"--keep-going", "--json"});
  EXPECT_EQ(spoken.status, 2);
  EXPECT_EQ(std::count(spoken.results.begin(), spoken.results.end(), '\n'), 4);
  EXPECT_THAT(spoken.messages, HasSubstr("plan.biw, line 2: assign: WELD is required"));
  EXPECT_THAT(spoken.messages, HasSubstr("plan.biw, line 3: a quote \" is not closed"));
  EXPECT_EQ(Do("activities-of SW-1 SW-2").status, 0);
}

TEST_F(ScriptTest, SavesAtTheEndOrWhereItSays) {
  const std::string make = "\xEF\xBB\xBFnew --parts " + Path("parts.csv") + " --welds " +
                           Path("welds.csv") + " --process " + Path("process.csv") +
                           "\r\nassign OP10 'SW-1'  \"SW-2\" # and no more\r\n";
  EXPECT_EQ(RunScript(make + "is-assigned SW-3\nquit\nnonsense").status, 0);
  EXPECT_EQ(Do("activities-of SW-1 SW-2").status, 0);
  EXPECT_EQ(RunScript("assign OP20 SW-1\nsave\nassign OP20 SW-2\nnonsense\n").status, 2);
  EXPECT_EQ(Do("activities-of SW-1 SW-2").results, "SW-1: on OP10, OP20\nSW-2: on OP10\n");
}

TEST_F(ScriptTest, RefusesWhatIsNoScript) {
  Begin();
  const std::string saved = Bytes("door.json");
  EXPECT_EQ(RunScript("").status, 0);
  EXPECT_EQ(RunScript("\n  \n# nothing").status, 0);
  EXPECT_THAT(RunScript(std::string("show\0x\n", 7)).messages, HasSubstr("line 1: the line is no"));
  EXPECT_THAT(RunScript("\xFF\xFE").messages, HasSubstr("line 1: the line is no text"));
  EXPECT_THAT(RunScript(std::string(2'000'000, 'x'), {"--keep-going"}).messages,
              HasSubstr("line 1: the line is longer than a megabyte"));
  EXPECT_EQ(Run({"@door.json", "--script", "@none.biw"}).status, 2);
  EXPECT_EQ(Run({"@door.json", "--script", "@"}).status, 2);
  EXPECT_EQ(Bytes("door.json"), saved);
}

TEST_F(ScriptTest, RefusesNonsenseInOneSentence) {
  Begin();
  folder_.Write("noise.bin", std::string("\x7F"
                                         "ELF\0\1\2\3",
                                         8));
  folder_.Write("cut.json", Bytes("door.json").substr(0, 200));
  const std::string saved = Bytes("door.json");
  struct Nonsense {
    std::vector<std::string> arguments;
    std::string message;
  };
  const std::vector<Nonsense> cases = {
      {{"@door.json", "asign", "OP10"}, "there is no command \"asign\"; nearest: assign"},
      {{"@door.json", "external"}, "\"external\" goes on with a second word: external create"},
      {{"@door.json", "assign"}, "assign: ACTIVITY is required"},
      {{"@door.json", "assign", "--fast", "OP10", "SW-1"}, "assign: \"--fast\" is not understood"},
      {{"@door.json", "assign", "OP1", "SW-1"}, "no activity \"OP1\"; nearest: OP10, OP20, OP30"},
      {{"@door.json", "assign", "OP10", ""}, "there is no weld \"\""},
      {{"@door.json", "assign", "OP10", "[SW-1,SW-2]"}, "there is no weld \"[SW-1,SW-2]\""},
      {{"@door.json", "assign", "OP10", "SW-3..SW-1"}, "the second weld stands before the first"},
      {{"@door.json", "assign", "OP10", "X*"}, "no weld's name is like \"X*\""},
      {{"@door.json", "assign", "OP10", "L-1"}, "there is no weld \"L-1\""},
      {{"@door.json", "show", "a\x1b[31mb"}, "there is no activity \"a [31mb\""},
      {{"@door.json", "show", std::string(100'000, 'x')}, "xxx...\"; 'activities' lists them"},
      {{"@door.json", "labels", "maybe"}, "\"maybe\" is not one of on, off"},
      {{"@door.json", "cycle-time", "ST10"}, "\"ST10\" neither welds nor makes seams"},
      {{"@door.json", "save", "@parts.csv"}, "parts.csv exists already"},
      {{"@door.json", "save", "@no/such/folder.json"}, "folder.json"},
      {{"@noise.bin", "show"}, "noise.bin: "},
      {{"@cut.json", "show"}, "cut.json, "},
      {{"@none.json", "show"}, "there is no document none.json; 'new' makes it"},
      {{"@", "show"}, ""},
      {{"@door.json", "--fast", "show"}, "the option --fast is not understood"},
      {{"show"}, "the document is missing before the command"},
      {{"@door.json", "--script", "@x", "show"}, "a command and a script are named"},
      {{"@door.json", "--language", "fr", "show"}, "--language: fr not in {en,de}"},
      {{}, "biwplan DOC VERB"},
  };
  for (const Nonsense& each : cases) {
    const Spoken spoken = Run(each.arguments);
    EXPECT_EQ(spoken.status, 2) << each.message;
    EXPECT_THAT(spoken.messages, HasSubstr(each.message));
    EXPECT_EQ(spoken.results, "");
    EXPECT_LT(spoken.messages.size(), 8000u);
  }
  EXPECT_EQ(Bytes("door.json"), saved);
  EXPECT_FALSE(std::filesystem::exists(Path("none.json")));
}

TEST(WordsTest, SplitsAndQuotes) {
  EXPECT_THAT(biwplan::SplitWords("  assign\tOP10 'a \"b' \"c \\\" \\\\ \\d\" e'f g'h i#j #k l"),
              ElementsAre("assign", "OP10", "a \"b", "c \" \\ \\d", "ef gh", "i#j"));
  EXPECT_THAT(biwplan::SplitWords("'' \"\""), ElementsAre("", ""));
  for (const std::string word : {"", "a b", "#x", "it's", "\"", "back\\slash here", "plain"}) {
    EXPECT_THAT(biwplan::SplitWords(biwplan::QuotedWord(word)), ElementsAre(word));
  }
}

TEST(NearestNamesTest, MeasuresSlipsOfTheKeyboard) {
  EXPECT_EQ(biwplan::EditDistance("OP10", "op10", 3), 0u);
  EXPECT_EQ(biwplan::EditDistance("SW-012", "SW-021", 3), 1u);
  EXPECT_EQ(biwplan::EditDistance("assign", "asign", 3), 1u);
  EXPECT_EQ(biwplan::EditDistance("kitten", "sitting", 5), 3u);
  EXPECT_GT(biwplan::EditDistance("", "abcdef", 3), 3u);
}

TEST(PatternTest, MatchesStarsAndQuestionMarks) {
  for (const char* const pattern : {"*", "SW-*", "*1*", "S?-?01", "SW-001", "**SW**0*1"}) {
    EXPECT_TRUE(biwplan::MatchesPattern("SW-001", pattern)) << pattern;
  }
  for (const char* const pattern : {"", "?", "SW-*2", "SW-0011", "W*", "*?SW-001"}) {
    EXPECT_FALSE(biwplan::MatchesPattern("SW-001", pattern)) << pattern;
  }
}

}  // namespace
}  // namespace tests
