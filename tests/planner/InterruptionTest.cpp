#include <gmock/gmock.h>

#include "host/component/Interruption.h"
#include "tests/planner/Typist.h"

namespace tests {
namespace {

using testing::HasSubstr;

// A user who presses Ctrl-C while the n-th operation of the host runs.
class InterruptionTest : public ShellFixture {
 protected:
  void SetUp() override {
    ShellFixture::SetUp();
    Begin();
    ASSERT_EQ(Run({"@door.json", "--script", "-"},
                  "update on\nadd station ST20\nadd operation OP21 ST20\noutput ST10\noutput ST20\n"
                  "link ST10 ST20\ndrop P1 OP10\nassign OP10 SW-1..SW-2\n")
                  .status,
              0);
  }
  void TearDown() override {
    Interruption::RequestAt(0);
    ShellFixture::TearDown();
  }
  static long After(long n) { return n < 40 ? n + 1 : n + n / 3; }
};

TEST_F(InterruptionTest, EndsACommandAndLeavesWhatWasThere) {
  const std::string before = Bytes("door.json");
  for (const char* const line :
       {"assign OP21 SW-3", "reallocate OP10 OP20 SW-1", "link OP20 OP21", "unlink ST10 ST20",
        "drop P2 OP20", "drag P1 OP10", "remove-activity ST20", "update off", "check", "show",
        "validate OP20 --apply", "loaded-parts OP21", "flow --output @flow.dot",
        "scene --output @scene.glb", "preview P1 SW-1 --output @view.glb --own-scene", "welds",
        "visualise",
        "new --replace --parts @parts.csv --welds @welds.csv --process @process.csv"}) {
    std::vector<std::string> arguments = biwplan::SplitWords(line);
    arguments.insert(arguments.begin(), "@door.json");
    long n = 1;
    for (Spoken spoken{130, {}, {}}; spoken.status == 130; n = After(n)) {
      Interruption::RequestAt(n);
      spoken = Run(arguments);
      Interruption::RequestAt(0);
      if (spoken.status != 130) continue;
      EXPECT_EQ(Bytes("door.json"), before) << line << " at " << n;
      EXPECT_THAT(spoken.messages, HasSubstr("interrupted; what was not saved is dropped"));
    }
    EXPECT_GT(n, 2) << line;
    folder_.Write("door.json", before);
  }
}

TEST_F(InterruptionTest, BringsTheShellBackToThePlanBeforeTheCommand) {
  for (const char* const line : {"remove-activity ST20", "drop P2 OP20", "reallocate OP10 OP20 *",
                                 "unlink ST10 ST20", "assign OP21 SW-3"}) {
    for (long n = 1; n < 3000; n = After(n)) {
      Typist user({"assign OP20 SW-2", "save '" + Path("one.json") + "' --replace", line,
                   "save '" + Path("two.json") + "' --replace"});
      user.onPrompt = [n](std::size_t prompt) { Interruption::RequestAt(prompt == 3 ? n : 0); };
      const Spoken spoken = Type(user);
      const bool isInterrupted = spoken.messages.find("interrupted") != std::string::npos;
      ASSERT_EQ(user.prompts.size(), 6u) << spoken.messages;
      if (!isInterrupted) break;
      EXPECT_EQ(Bytes("one.json"), Bytes("two.json")) << line << " at " << n;
      EXPECT_THAT(spoken.messages, HasSubstr("the plan is as it was before"));
    }
  }
}

TEST_F(InterruptionTest, EndsAScriptWhateverItKeeps) {
  const std::string before = Bytes("door.json");
  Interruption::RequestAt(60);
  const Spoken spoken = Run({"@door.json", "--keep-going", "--script", "-"},
                            "assign OP20 SW-3\ncheck\nshow\nwelds\n");
  EXPECT_EQ(spoken.status, 130);
  EXPECT_EQ(Bytes("door.json"), before);
}

}  // namespace
}  // namespace tests
