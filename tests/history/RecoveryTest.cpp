#include <csignal>
#include <gmock/gmock.h>
#include <random>
#include <sys/resource.h>
#include <sys/stat.h>

#include "tests/history/Planned.h"

namespace tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class RecoveryTest : public HistoryFixture {
 protected:
  // A shell that gets these lines and is killed when it waits for the next.
  void TypeAndDie(const std::deque<std::string>& lines) {
    const pid_t shell = Apart([&] {
      Typist user(lines);
      user.onPrompt = [&](std::size_t prompt) {
        if (prompt > lines.size()) ::raise(SIGKILL);
      };
      Type(user);
    });
    EXPECT_EQ(EndOf(shell), -SIGKILL);
  }
};

TEST_F(RecoveryTest, BringsBackWhatAKilledShellDidNotSave) {
  const std::string saved = Bytes("door.json");
  TypeAndDie({"assign OP10 SW-1", "assign OP10 SW-2", "undo", "assign OP10 SW-3"});
  EXPECT_EQ(Bytes("door.json"), saved);
  EXPECT_THAT(Do("show").messages,
              testing::MatchesRegex("biwplan: 2 steps of .+, the last at 20.+ UTC, were not saved; "
                                    "'recover' brings them back, 'discard' drops them\n"));
  EXPECT_EQ(Do("recover").results, "2 steps recovered\n");
  EXPECT_THAT(Commands("--last 2"), ElementsAre("assign OP10 SW-1", "assign OP10 SW-3"));
  EXPECT_TRUE(IsAssigned("SW-1") && IsAssigned("SW-3") && !IsAssigned("SW-2"));
  EXPECT_EQ(Do("show").messages, "");
  EXPECT_THAT(Files(), ElementsAre("door.history", "door.json"));
  Do("undo 2");
  EXPECT_EQ(Bytes("door.json"), saved);
  EXPECT_EQ(Do("recover").status, 2);
}

TEST_F(RecoveryTest, RecoversInAShellAndAfterUndo) {
  Do("assign OP10 SW-1");
  const std::string saved = Bytes("door.json");
  TypeAndDie({"undo"});
  EXPECT_THAT(Type({"recover"}).messages, HasSubstr("the changes are not saved; 'recover'"));
  EXPECT_EQ(Bytes("door.json"), saved);
  Type({"recover", "assign OP20 SW-1", "save", "quit"});
  EXPECT_THAT(Do("activities-of SW-1").results, HasSubstr("OP20"));
  EXPECT_EQ(Do("undo").status, 0);
  EXPECT_FALSE(IsAssigned("SW-1"));
  EXPECT_EQ(Do("show").messages, "");
}

TEST_F(RecoveryTest, DropsWhatIsNotWanted) {
  TypeAndDie({"assign OP10 SW-1"});
  TypeAndDie({"assign OP10 SW-2"});
  EXPECT_THAT(Do("recover").messages, HasSubstr("give the number of the steps, one of 2, 3\n"));
  EXPECT_EQ(Do("discard 2").results, "1 step dropped\n");
  EXPECT_EQ(Do("recover").status, 0);
  EXPECT_TRUE(IsAssigned("SW-2") && !IsAssigned("SW-1"));
  EXPECT_EQ(Type({"assign OP10 SW-3", "quit", "no"}).messages,
            "biwplan: the changes are not saved\n");
  EXPECT_EQ(Do("discard").status, 2);
}

TEST_F(RecoveryTest, PutsThePlanInPlaceOfAnotherOnlyOnDemand) {
  TypeAndDie({"assign OP10 SW-1"});
  Do("assign OP10 SW-2");
  const std::string theirs = Bytes("door.json");
  EXPECT_THAT(Do("recover").messages, HasSubstr("the plan was changed after these steps"));
  EXPECT_EQ(Bytes("door.json"), theirs);
  EXPECT_EQ(Do("recover --overwrite").status, 0);
  EXPECT_TRUE(IsAssigned("SW-1") && !IsAssigned("SW-2"));
  Do("undo");
  EXPECT_EQ(Bytes("door.json"), theirs);
}

TEST_F(RecoveryTest, AShellThatOverwritesOthersCanBeUndone) {
  Typist user({"assign OP10 SW-1", "save --overwrite", "quit"});
  user.onPrompt = [this](std::size_t prompt) {
    if (prompt == 2) Do("assign OP10 SW-2");
  };
  Type(user);
  EXPECT_TRUE(IsAssigned("SW-1") && !IsAssigned("SW-2"));
  Do("undo");
  EXPECT_TRUE(IsAssigned("SW-2") && !IsAssigned("SW-1"));
}

// What is reported as done is one byte in a pipe each.
class Reports {
 public:
  Reports() { EXPECT_EQ(::pipe(ends_), 0); }
  ~Reports() {
    ::close(ends_[0]);
    ::close(ends_[1]);
  }
  void Done() const { EXPECT_EQ(::write(ends_[1], "x", 1), 1); }
  int Count() {
    ::close(ends_[1]);
    char bytes[4096];
    return static_cast<int>(std::max<ssize_t>(0, ::read(ends_[0], bytes, sizeof bytes)));
  }

 private:
  int ends_[2] = {};
};

TEST_F(RecoveryTest, KillsLoseNothingThatWasReported) {
  const std::string began = Bytes("door.json");
  std::mt19937 random(11);
  for (int round = 0; round < Times(16); ++round) {
    const bool isShell = round % 2 == 1;
    Reports reports;
    const pid_t child = Apart([&] {
      const std::string lines[] = {"assign OP10 SW-1", "assign OP20 SW-2", "unassign OP10 SW-1"};
      std::deque<std::string> typed;
      for (int i = 0; i < 400; ++i) typed.push_back(lines[i % 3]);
      Typist user(typed);
      user.onPrompt = [&](std::size_t prompt) {
        if (prompt > 1) reports.Done();
      };
      if (isShell) Type(user);
      for (const std::string& line : typed) {
        if (Do(line).status < 2) reports.Done();
      }
    });
    ::usleep(static_cast<useconds_t>(random() % 150'000));
    ::kill(child, SIGKILL);
    EndOf(child);
    const int reported = reports.Count();
    if (isShell) Do("recover");
    const auto steps = static_cast<int>(Steps().size()) - 1;
    // The last one may be there without having been reported. Saying a second time what is so
    // already is no step.
    const int expected = reported - std::max(0, (reported - 2) / 3);
    EXPECT_GE(steps, expected) << round << (isShell ? " shell" : "");
    EXPECT_LE(steps, expected + 1) << round << (isShell ? " shell" : "");
    Do("save");
    ASSERT_THAT(Files(), ElementsAre("door.history", "door.json"));
    const std::string ended = Bytes("door.json");
    Do("undo 1000");
    ASSERT_EQ(Bytes("door.json"), began) << round;
    Do("redo 1000");
    ASSERT_EQ(Bytes("door.json"), ended) << round;
    std::filesystem::remove(Path("door.json"));
    std::filesystem::remove(Path("door.history"));
    Begin();
  }
}

TEST_F(RecoveryTest, APlanIsSavedThoughItsHistoryCannotGrow) {
  std::filesystem::remove(Path("door.history"));
  for (int kibibytes = 4; kibibytes <= 64; kibibytes += 4) {
    const std::string before = Bytes("door.json");
    const std::string verb = IsAssigned("SW-1") ? "unassign" : "assign";
    const pid_t child = Apart([&] {
      std::signal(SIGXFSZ, SIG_IGN);
      const rlimit limit{static_cast<rlim_t>(kibibytes) * 1024, RLIM_INFINITY};
      ::setrlimit(RLIMIT_FSIZE, &limit);
      ::_exit(Do(verb + " OP10 SW-1").status);
    });
    EXPECT_EQ(EndOf(child), 0) << kibibytes;
    EXPECT_EQ(IsAssigned("SW-1"), verb == "assign") << kibibytes;
    const std::string after = Bytes("door.json");
    const bool isStep = Do("undo").status == 0;
    EXPECT_EQ(Bytes("door.json") == before, isStep) << kibibytes;
    EXPECT_EQ(Do("redo").status == 0, isStep);
    EXPECT_EQ(Bytes("door.json") == after, true) << kibibytes;
    EXPECT_THAT(Files(), testing::IsSubsetOf({"door.history", "door.json"}));
  }
}

TEST_F(RecoveryTest, WhatIsNoHistoryIsSetAside) {
  const std::string sound = Bytes("door.history");
  for (const std::string& bytes : {std::string("no database at all"), sound.substr(0, 5000),
                                   sound.substr(0, 100) + std::string(9000, 'x')}) {
    folder_.Write("door.history", bytes);
    std::filesystem::remove(Path("door.history.damaged-1"));
    const Spoken spoken = Do("assign OP10 SW-1");
    EXPECT_EQ(spoken.status, 0) << spoken.messages;
    EXPECT_THAT(spoken.messages, HasSubstr("it is door.history.damaged-1 now"));
    EXPECT_EQ(Bytes("door.history.damaged-1"), bytes);
    EXPECT_EQ(Do("undo").status, 0);
  }
  for (const bool isPipe : {false, true}) {
    std::filesystem::remove_all(Path("door.history"));
    if (isPipe) {
      ASSERT_EQ(::mkfifo(Path("door.history").c_str(), 0600), 0);
    } else {
      folder_.Write("door.history/file", "");
    }
    const Spoken spoken = Do("assign OP10 SW-1");
    EXPECT_EQ(spoken.status, 0);
    EXPECT_THAT(spoken.messages, HasSubstr("is no ordinary file; the plan is worked on without"));
    Do("unassign OP10 SW-1");
  }
}

TEST_F(RecoveryTest, DamageIsNeverAnObstacle) {
  for (const char* const weld : {"SW-1", "SW-2", "SW-3"}) Do(std::string("assign OP10 ") + weld);
  TypeAndDie({"unassign OP10 SW-1"});
  const std::string sound = Bytes("door.history");
  const std::string plan = Bytes("door.json");
  std::mt19937 random(3);
  for (int i = 0; i < Times(15); ++i) {
    std::string bytes = sound;
    for (int flips = 0; flips < 4; ++flips) {
      bytes[random() % bytes.size()] = static_cast<char>(random());
    }
    folder_.Write("door.history", bytes);
    folder_.Write("door.json", plan);
    for (const char* const line : {"history", "undo 2", "redo", "recover", "assign OP20 SW-1"}) {
      EXPECT_LE(Do(line).status, 2) << i;
      ASSERT_EQ(Do("show").status, 0) << i << line;
    }
    EXPECT_LE(Do("unassign OP20 SW-1").status, 1) << i;
  }
}

}  // namespace
}  // namespace tests
