#include <cstdlib>
#include <gmock/gmock.h>
#include <sys/wait.h>
#include <thread>

#include "planner/report/Progress.h"
#include "planner/report/Text.h"
#include "tests/planner/Planner.h"

namespace tests {
namespace {

using testing::HasSubstr;

// The real executable, behind a shell.
class ProgramTest : public PlannerTest {
 protected:
  int Execute(const std::string& line) const {
    const std::string command = "cd '" + folder_.Path().string() + "' && " + line;
    const int status = std::system(command.c_str());
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }
  const std::string biwplan_ = "'" TUV_BIWPLAN "' ";
};

TEST_F(ProgramTest, KeepsResultsMessagesAndStatusApart) {
  Begin();
  const struct {
    std::string line;
    int status;
    std::string results;
    std::string messages;
  } cases[] = {
      {"door.json assign OP10 SW-1", 0, "1 weld assigned to OP10\n", ""},
      {"door.json is-assigned SW-2", 1, "SW-2: not assigned\n", ""},
      {"door.json is-assigned XX-2", 2, "",
       "biwplan: there is no weld \"XX-2\"; nearest: SW-2; 'welds' lists them\n"},
      {"door.json < /dev/null", 0, "", ""},
      {"none.json show", 2, "", "biwplan: there is no document none.json; 'new' makes it\n"},
  };
  for (const auto& each : cases) {
    EXPECT_EQ(Execute(biwplan_ + each.line + " > out.txt 2> err.txt"), each.status);
    EXPECT_EQ(Bytes("out.txt"), each.results);
    EXPECT_EQ(Bytes("err.txt"), each.messages);
  }
  EXPECT_EQ(Execute("echo is-assigned SW-1 | " + biwplan_ + "door.json --script - > out.txt"), 0);
  EXPECT_EQ(Bytes("out.txt"), "SW-1: assigned\n");
}

TEST_F(ProgramTest, TracesTheLibraryOnDemand) {
  Begin();
  EXPECT_EQ(Execute(biwplan_ + "--trace door.json assign OP10 SW-1 2> err.txt > /dev/null"), 0);
  EXPECT_THAT(Bytes("err.txt"), HasSubstr("TuvBIWServices::AssignKoraWeld --> IN\n"));
  EXPECT_EQ(Execute("printf 'trace on\\nassign OP10 SW-2\\ntrace off\\nassign OP10 SW-3\\n' | " +
                    biwplan_ + "door.json 2> err.txt > /dev/null"),
            0);
  const std::string lines = Bytes("err.txt");
  const std::string entry = "AssignKoraWeld --> IN";
  EXPECT_NE(lines.find(entry), std::string::npos);
  EXPECT_EQ(lines.find(entry), lines.rfind(entry));
}

TEST_F(ProgramTest, SavesThoughNobodyReadsTheResults) {
  Begin();
  Execute("(sleep 0.2; " + biwplan_ + "door.json assign OP10 SW-1) | true");
  EXPECT_EQ(Do("activities-of SW-1").status, 0);
  EXPECT_EQ(Execute(biwplan_ + "door.json show > /dev/full"), 2);
}

TEST_F(ProgramTest, LeavesTheDocumentWholeWhenItCannotBeWritten) {
  Begin();
  const std::string saved = Bytes("door.json");
  // The file may not grow: saving fails half-way.
  EXPECT_EQ(Execute("ulimit -f 0; trap '' XFSZ; " + biwplan_ +
                    "door.json assign OP10 SW-1 > /dev/null 2>&1"),
            2);
  EXPECT_EQ(Bytes("door.json"), saved);
  for (const auto& entry : std::filesystem::directory_iterator(folder_.Path())) {
    EXPECT_THAT(
        entry.path().filename().string(),
        testing::AnyOf("door.json", "door.history", "parts.csv", "welds.csv", "process.csv"));
  }
}

TEST(ProgressTest, DrawsOnlyWhatLastsAndIsWatched) {
  std::ostringstream terminal;
  {
    biwplan::Progress quick(&terminal, "quick", 10);
    for (int i = 0; i < 10; ++i) quick.Advance();
  }
  EXPECT_EQ(terminal.str(), "");
  {
    biwplan::Progress slow(&terminal, "slow", 4);
    biwplan::Progress unwatched(nullptr, "slow", 4);
    std::this_thread::sleep_for(std::chrono::milliseconds(450));
    slow.Advance(2);
    unwatched.Advance(2);
  }
  EXPECT_EQ(terminal.str(), "\rslow [###############               ] 50%\x1b[K\r\x1b[K");
}

TEST(TextTest, WritesNumbersTablesAndNames) {
  EXPECT_EQ(biwplan::Number(812.5), "812.5");
  EXPECT_EQ(biwplan::Number(-0.00001), "0");
  EXPECT_EQ(biwplan::Number(1e300).size(), 301u);
  EXPECT_EQ(biwplan::Counted(1, "activity"), "1 activity");
  EXPECT_EQ(biwplan::Counted(0, "activity"), "0 activities");
  biwplan::Table table({{"name"}, {"x", true}});
  table.Add({"Tür", "1"});
  table.Add({"a\nb\x1b", "-12.5"});
  EXPECT_EQ(table.Text(), "name      x\nTür       1\na b   -12.5\n");
  EXPECT_EQ(biwplan::Wrapped({std::string(60, 'a'), std::string(60, 'b'), "c"}, 2),
            "  " + std::string(60, 'a') + "\n  " + std::string(60, 'b') + " c\n");
}

}  // namespace
}  // namespace tests
