#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "planner/scene/MeshFile.h"
#include "tests/planner/Planner.h"

namespace tests {

namespace {

using ::testing::AnyOf;
using ::testing::HasSubstr;

class InputFilesTest : public PlannerTest {
 protected:
  // A pipe without writer: whoever opens it waits for ever.
  InputFilesTest() {
    for (const char* const name : {"pipe", "pipe.stl", "lists/processes.csv", "door.history",
                                   "pask.db-journal", "plan.history-journal"}) {
      std::filesystem::create_directories(std::filesystem::path(Path(name)).parent_path());
      ::mkfifo(Path(name).c_str(), 0600);
    }
  }
};

TEST_F(InputFilesTest, WaitsForNoPipeAndReadsNoDeviceOrFolder) {
  const auto isRefused =
      AnyOf(HasSubstr("is a pipe; "), HasSubstr("is a device; "), HasSubstr("is a directory; "),
            HasSubstr("is not a file; "), HasSubstr("is no ordinary file; "),
            HasSubstr("gives no list; "), HasSubstr("must be an ordinary file"));
  const std::vector<std::vector<std::string>> commands = {
      {"@door.json", "new", "--parts", "%", "--welds", "@welds.csv", "--process", "@process.csv"},
      {"@door.json", "new", "--parts", "@parts.csv", "--welds", "%", "--process", "@process.csv"},
      {"@door.json", "new", "--parts", "@parts.csv", "--welds", "@welds.csv", "--process", "%"},
      {"@plan.json", "external", "attach", "%"},
      {"@plan.json", "external", "create", "@new.db", "%"},
      {"@plan.json", "external", "create", "@new.db", "@lists"},
      {"@plan.json", "external", "attach", "@pask.db"},
      {"@plan.json", "--script", "%"},
      {"%", "show"},
  };
  folder_.Write("pask.db", "");
  ASSERT_EQ(Run({"@plan.json", "new", "--parts", "@parts.csv", "--welds", "@welds.csv", "--process",
                 "@process.csv"})
                .status,
            0);
  for (const char* const input : {"@pipe", "/dev/zero", "@lists"}) {
    for (std::vector<std::string> command : commands) {
      for (std::string& word : command) word = word == "%" ? input : word;
      const Spoken spoken = Run(command);
      EXPECT_EQ(spoken.status, 2) << testing::PrintToString(command);
      EXPECT_THAT(spoken.messages, isRefused) << testing::PrintToString(command);
    }
  }
  EXPECT_THROW(biwplan::ReadMesh(Path("pipe.stl")), std::runtime_error);
  // What stands in the history's place is no obstacle.
  Begin();
  EXPECT_EQ(Do("assign OP10 SW-1").status, 0);
  EXPECT_EQ(Do("show").status, 0);
}

}  // namespace

}  // namespace tests
