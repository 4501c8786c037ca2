#include <gmock/gmock.h>

#include "planner/language/Shell.h"
#include "tests/planner/Typist.h"

namespace tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

using ShellTest = ShellFixture;

TEST_F(ShellTest, GoesOnAfterErrorsAndMarksUnsavedChanges) {
  Begin();
  Typist user({"nonsense", "", "assign OP10 SW-1", "save", "quit"});
  const Spoken spoken = Type(user);
  EXPECT_THAT(user.prompts,
              ElementsAre("biwplan> ", "biwplan> ", "biwplan> ", "biwplan*> ", "biwplan> "));
  EXPECT_THAT(user.remembered, ElementsAre("nonsense", "assign OP10 SW-1", "save", "quit"));
  EXPECT_THAT(spoken.messages, HasSubstr("biwplan: there is no command \"nonsense\""));
  EXPECT_EQ(spoken.results, "1 weld assigned to OP10\nsaved door.json\n");
  EXPECT_TRUE(IsAssigned("SW-1"));
}

TEST_F(ShellTest, AsksBeforeItLosesChanges) {
  Begin();
  Typist careless({"assign OP10 SW-1", "quit", "cancel", "quit", "no"});
  EXPECT_THAT(Type(careless).messages, HasSubstr("the changes are not saved"));
  EXPECT_THAT(careless.prompts[2], HasSubstr("Save the changes to "));
  EXPECT_FALSE(IsAssigned("SW-1"));
  Type({"assign OP10 SW-2"});
  EXPECT_FALSE(IsAssigned("SW-2"));
  Type({"assign OP10 SW-3", "quit", "Yes"});
  EXPECT_TRUE(IsAssigned("SW-3"));
}

TEST_F(ShellTest, StaysWhenSavingFails) {
  Begin();
  Typist user({"assign OP10 SW-1", "quit", "yes", "quit", "yes"});
  user.onPrompt = [this](std::size_t prompt) {
    if (prompt == 3) std::filesystem::rename(Path("door.json"), Path("away.json"));
    if (prompt == 3) folder_.Write("door.json/in-the-way", "");
    if (prompt == 5) std::filesystem::remove_all(Path("door.json"));
  };
  EXPECT_THAT(Type(user).messages, testing::MatchesRegex("biwplan: door.json: .*\n"));
  EXPECT_EQ(user.prompts.size(), 5u);
  EXPECT_TRUE(IsAssigned("SW-1"));
}

TEST_F(ShellTest, CompletesVerbsAndNames) {
  Begin();
  std::ostringstream none;
  biwplan::Console console{none, none};
  biwplan::Session session(Path("door.json"), console);
  const std::vector<std::pair<std::string, std::vector<std::string>>> cases = {
      {"unas", {"unassign"}},
      {"external cha", {"chain"}},
      {"exter", {"external"}},
      {"assign ", {"OP10", "OP20", "OP30", "Process", "ST10"}},
      {"assign OP", {"OP10", "OP20", "OP30"}},
      {"assign OP10 SW-1 S", {"SM-1", "SW-1", "SW-2", "SW-3"}},
      {"reallocate OP10 OP2", {"OP20"}},
      {"labels o", {"off", "on"}},
      {"welds --part P", {"P1", "P2", "P3", "Products"}},
      {"welds --un", {"--unassigned"}},
      {"assign \"OP", {}},
      {"nonsense ", {}},
      {"save ", {}},
  };
  for (const auto& [line, expected] : cases) {
    EXPECT_EQ(biwplan::Complete(line, session), expected) << line;
  }
}

TEST_F(ShellTest, CompletesNothingInADocumentThatIsNone) {
  folder_.Write("door.json", "{");
  std::ostringstream none;
  biwplan::Console console{none, none};
  biwplan::Session session(Path("door.json"), console);
  EXPECT_TRUE(biwplan::Complete("assign ", session).empty());
  EXPECT_EQ(biwplan::Complete("unas", session), std::vector<std::string>{"unassign"});
}

}  // namespace
}  // namespace tests
