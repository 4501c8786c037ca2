#include <atomic>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <gmock/gmock.h>
#include <new>
#include <random>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

#include "embedded/storage/DocumentFile.h"
#include "embedded/storage/FileCalls.h"
#include "embedded/storage/FileLock.h"
#include "embedded/storage/FileReplacement.h"
#include "tests/planner/Typist.h"
#include "tests/support/Campaign.h"

namespace tests {
namespace {

using embedded::FileLock;
using std::chrono::milliseconds;
using testing::HasSubstr;
using testing::MatchesRegex;

class TwoWritersTest : public ShellFixture {
 protected:
  Spoken Hurried(std::vector<std::string> words) {
    words.insert(words.begin(), {"@door.json", "--wait", "0.02"});
    return Run(std::move(words));
  }
  // W-0, W-1, ...
  static std::string ManyWelds(int count) {
    std::string welds = "id,x,y,z,parts\n";
    for (int i = 0; i < count; ++i) {
      welds += "W-" + std::to_string(i) + "," + std::to_string(i) + ",0,0,P1;P2\n";
    }
    return welds;
  }
};

TEST_F(TwoWritersTest, EveryCommandThatSaysDoneIsInTheFile) {
  constexpr int kProcesses = 8;
  constexpr int kCommands = 25;
  folder_.Write("welds.csv", ManyWelds(kProcesses * kCommands));
  Begin();
  const long files = CountFiles(folder_.Path());
  std::vector<pid_t> children;
  for (int process = 0; process < kProcesses; ++process) {
    children.push_back(::fork());
    if (children.back() != 0) continue;
    int failures = 0;
    for (int i = 0; i < kCommands; ++i) {
      const std::string weld = "W-" + std::to_string(process * kCommands + i);
      failures += Run({"@door.json", "--wait", "300", "assign", "OP10", weld}).status;
    }
    ::_exit(failures);
  }
  for (const pid_t child : children) {
    int status = 1;
    ::waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
  }
  EXPECT_EQ(Do("is-assigned W-0..W-199").status, 0);
  EXPECT_EQ(CountFiles(folder_.Path()), files);
}

// Commands by a process that is killed; how many of them had said that they were done.
TEST_F(TwoWritersTest, AKillLosesNothingThatWasReported) {
  constexpr int kCount = 400;
  folder_.Write("welds.csv", ManyWelds(kCount));
  Begin();
  const long files = CountFiles(folder_.Path());
  void* const shared = ::mmap(nullptr, sizeof(std::atomic<int>), PROT_READ | PROT_WRITE,
                              MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  ASSERT_NE(shared, MAP_FAILED);
  auto& done = *new (shared) std::atomic<int>(0);
  std::mt19937 random(5);
  for (int round = 0; round < CampaignSize(50); ++round) {
    const pid_t child = ::fork();
    while (child == 0 && done < kCount) {
      if (Run({"@door.json", "assign", "OP10", "W-" + std::to_string(done)}).status < 2) ++done;
    }
    if (child == 0) ::_exit(0);
    std::this_thread::sleep_for(std::chrono::microseconds(5000 + random() % 60000));
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
    if (done == 0) continue;
    const std::string last = "W-" + std::to_string(done - 1);
    ASSERT_EQ(Hurried({"is-assigned", "W-0.." + last}).status, 0);
    // The next command that saves sweeps what was left.
    ASSERT_EQ(Hurried({"hide", last}).status, 0);
    ASSERT_EQ(Hurried({"show-points", last}).status, 0);
    ASSERT_EQ(CountFiles(folder_.Path()), files);
    if (done < kCount) continue;
    done = 0;
    ASSERT_LT(Hurried({"unassign", "OP10", "W-*"}).status, 2);
  }
  ::munmap(shared, sizeof(std::atomic<int>));
}

TEST_F(TwoWritersTest, SaysWhoHasThePlanAndLetsReadersPass) {
  Begin();
  std::filesystem::create_symlink("door.json", Path("link.json"));
  const std::string before = Bytes("door.json");
  FileLock lock;
  ASSERT_EQ(lock.Take(Path("door.json"), milliseconds(0)), FileLock::State::Held);
  for (const char* const document : {"@door.json", "@link.json"}) {
    const Spoken refused = Run({document, "--wait", "0.02", "assign", "OP10", "SW-1"});
    EXPECT_EQ(refused.status, 2);
    EXPECT_EQ(refused.results, "");
    EXPECT_THAT(refused.messages,
                MatchesRegex("biwplan: [a-z]+.json: the plan is held by process " +
                             std::to_string(::getpid()) +
                             " \\(.*tests.*, user .+\\) since "
                             "20..-..-.. ..:..:..; try again .*\n"));
  }
  for (const char* const verb : {"show", "check", "welds"}) {
    EXPECT_LT(Hurried({verb}).status, 2) << verb;
  }
  EXPECT_EQ(Hurried({"update", "status"}).status, 0);
  EXPECT_EQ(Hurried({"update", "on"}).status, 2);
  EXPECT_EQ(Hurried({"new", "--replace", "--parts", "@parts.csv", "--welds", "@welds.csv",
                     "--process", "@process.csv"})
                .status,
            2);
  EXPECT_EQ(Bytes("door.json"), before);
  lock.Release();
  EXPECT_EQ(Hurried({"assign", "OP10", "SW-1"}).status, 0);
  EXPECT_NE(Run({"@door.json", "--wait", "-1", "show"}).status, 0);
}

// What a session of this sort does between the commands of a script.
TEST_F(TwoWritersTest, AScriptIsAloneFromItsFirstChangeOn) {
  Begin();
  std::ostringstream none;
  biwplan::Console console{none, none};
  {
    biwplan::Session session(Path("door.json"), console);
    session.StayAlone();
    biwplan::Interpreter interpreter(session, console);
    interpreter.Run({"show"});
    EXPECT_EQ(Hurried({"assign", "OP10", "SW-1"}).status, 0);
    interpreter.Run({"assign", "OP10", "SW-2"});
    EXPECT_EQ(Hurried({"assign", "OP10", "SW-3"}).status, 2);
    interpreter.Run({"save"});
    // The lock has gone over to the file that took the place.
    EXPECT_EQ(Hurried({"assign", "OP10", "SW-3"}).status, 2);
    interpreter.Run({"unassign", "OP10", "SW-2"});
    session.Save();
  }
  EXPECT_EQ(Hurried({"assign", "OP10", "SW-3"}).status, 0);
  EXPECT_TRUE(IsAssigned("SW-1"));
  EXPECT_FALSE(IsAssigned("SW-2"));
  EXPECT_TRUE(IsAssigned("SW-3"));
}

TEST_F(TwoWritersTest, TheShellSavesOverNobodysChanges) {
  const struct {
    const char* way;
    bool keepsOwn;
    bool keepsOthers;
  } cases[] = {{"save @other.json", false, true},
               {"reload", false, true},
               {"save --overwrite", true, false},
               {"quit", false, true}};
  for (const auto& [way, keepsOwn, keepsOthers] : cases) {
    std::filesystem::remove(Path("door.json"));
    Begin();
    std::string line = way;
    if (const auto at = line.find('@'); at != std::string::npos) {
      line.replace(at, 1, folder_.Path().string() + "/");
    }
    Typist user({"assign OP10 SW-1", "save", line});
    user.onPrompt = [this](std::size_t prompt) {
      if (prompt != 2) return;
      EXPECT_EQ(Hurried({"assign", "OP10", "SW-2"}).status, 0);
    };
    const Spoken spoken = Type(user);
    EXPECT_THAT(spoken.messages,
                HasSubstr("door.json was changed by somebody else meanwhile and is left so: 'save "
                          "OTHER.json' keeps this plan beside it, 'reload' takes that one, 'save "
                          "--overwrite' replaces it\n"));
    EXPECT_EQ(IsAssigned("SW-1"), keepsOwn) << way;
    EXPECT_EQ(IsAssigned("SW-2"), keepsOthers) << way;
  }
  EXPECT_EQ(Run({"@other.json", "activities-of", "SW-1"}).status, 0);
}

TEST_F(TwoWritersTest, AFileThatAppearsIsLeftAlone) {
  const std::string lists = "new --parts " + Path("parts.csv") + " --welds " + Path("welds.csv") +
                            " --process " + Path("process.csv");
  Typist user({lists, "save", "save --overwrite"});
  user.onPrompt = [this](std::size_t prompt) {
    if (prompt == 2) folder_.Write("door.json", "another's");
    if (prompt != 3) return;
    EXPECT_EQ(Bytes("door.json"), "another's");
  };
  EXPECT_THAT(Type(user).messages, HasSubstr("was made by somebody else meanwhile"));
  EXPECT_THAT(Bytes("door.json"), HasSubstr("SW-1"));
  const auto place = [&] {
    embedded::ReplaceFile(Path("door.json"), "text", {.onlyIfFree = true});
  };
  EXPECT_THAT(ErrorOf(place), HasSubstr("appeared meanwhile"));
  EXPECT_THAT(Bytes("door.json"), HasSubstr("SW-1"));
  EXPECT_EQ(Type({"assign OP10 SW-1", "save " + Path("door.json") + " --replace"}).messages, "");
  EXPECT_TRUE(IsAssigned("SW-1"));
}

class NoLocks : public embedded::FileCalls {
 public:
  NoLocks() { Replace(this); }
  ~NoLocks() override { Replace(nullptr); }
  NoLocks(const NoLocks&) = delete;
  NoLocks& operator=(const NoLocks&) = delete;
  int Lock(int, int) override {
    errno = ENOLCK;
    return -1;
  }
};

TEST_F(TwoWritersTest, WithoutLocksTheComparisonStillProtects) {
  Begin();
  const NoLocks noLocks;
  const std::string sentence =
      "biwplan: door.json: its file system cannot lock files; changes by others are found only "
      "when it is saved\n";
  EXPECT_EQ(Do("assign OP10 SW-1").messages, sentence);
  Typist user({"assign OP10 SW-2", "save", "unassign OP10 SW-2", "save", "quit", "no"});
  user.onPrompt = [this](std::size_t prompt) {
    if (prompt != 4) return;
    EXPECT_EQ(Hurried({"assign", "OP10", "SW-3"}).status, 0);
  };
  EXPECT_THAT(Type(user).messages,
              testing::StartsWith(sentence + "biwplan: door.json was changed"));
  for (const char* const weld : {"SW-1", "SW-2", "SW-3"}) EXPECT_TRUE(IsAssigned(weld)) << weld;
}

// A command that cannot save has not said before that all went well.
TEST_F(TwoWritersTest, SuccessIsToldAfterTheSave) {
  Begin();
  struct rlimit before {};
  ::getrlimit(RLIMIT_FSIZE, &before);
  const auto handler = std::signal(SIGXFSZ, SIG_IGN);
  struct rlimit limit = before;
  limit.rlim_cur = 100;
  ::setrlimit(RLIMIT_FSIZE, &limit);
  const Spoken spoken = Do("assign OP10 SW-1");
  ::setrlimit(RLIMIT_FSIZE, &before);
  std::signal(SIGXFSZ, handler);
  EXPECT_EQ(spoken.status, 2);
  EXPECT_EQ(spoken.results, "");
  EXPECT_THAT(spoken.messages, HasSubstr("door.json: the file cannot be saved (File too large)"));
}

}  // namespace
}  // namespace tests
