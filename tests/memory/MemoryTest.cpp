#include <array>
#include <filesystem>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <streambuf>

#include "embedded/storage/DocumentFile.h"
#include "host/component/Allocation.h"
#include "planner/scene/MeshFile.h"
#include "tests/memory/FailingMemory.h"
#include "tests/planner/Planner.h"
#include "tests/processdb/Databases.h"
#include "tests/support/Campaign.h"
#include "tests/support/SourceFiles.h"

namespace tests {

namespace {

namespace fs = std::filesystem;

// Takes text without asking for memory.
class FixedBuffer : public std::streambuf {
 public:
  FixedBuffer() { setp(bytes_.data(), bytes_.data() + bytes_.size()); }
  std::string Text() const { return {pbase(), pptr()}; }

 private:
  std::array<char, 1 << 18> bytes_;
};

// Every block in turn where they are few, fewer of them further on.
long After(long nth) { return nth + 1 + nth / (20 * CampaignSize(1)); }

// The JSON library loses what an object in braces held so far.
constexpr long kMostLost = 40;

class MemoryTest : public PlannerTest {
 protected:
  struct Told {
    int status = -1;
    std::string results;
    std::string messages;
    std::string plan;
    bool operator==(const Told&) const = default;
  };

  MemoryTest() {
    WriteLists(folder_);
    Begin();
    for (const char* const line :
         {"external create @pask.db @.", "assign OP10 SW-1 SW-3", "output ST10 Frame", "update on",
          "add station ST20", "link ST10 ST20", "add operation OP50 ST20"}) {
      EXPECT_EQ(Do(line).status, 0) << line;
    }
    plan_ = Bytes("door.json");
    history_ = Bytes("door.history");
  }

  // One command on the plan as it was, with the n-th block refused; all blocks for 0.
  Told RunFailing(const std::vector<std::string>& arguments, long nth, bool allAfter) const {
    for (const char* const name : {"new.db", "picture.dot", "picture.glb", "picture.html"}) {
      fs::remove(Path(name));
    }
    folder_.Write("door.json", plan_);
    folder_.Write("door.history", history_);
    FixedBuffer results;
    FixedBuffer messages;
    std::istringstream lines;
    Told told;
    {
      std::ostream resultStream(&results);
      std::ostream messageStream(&messages);
      biwplan::Console console{resultStream, messageStream};
      const FailingMemory memory(nth, allAfter);
      told.status = biwplan::RunProgram(arguments, {lines}, console);
      console.results.flush();
      if (!console.results) told.status = 2;
    }
    told.results = results.Text();
    told.messages = messages.Text();
    told.plan = Bytes("door.json");
    return told;
  }

  // A command that had too little memory says so and leaves the plan alone; where it got along
  // without, its answer is the usual one.
  void ExpectSentences(const std::string& line) const {
    SCOPED_TRACE(line);
    std::vector<std::string> arguments = biwplan::SplitWords(line);
    for (std::string& word : arguments) {
      if (word.starts_with('@')) word = Path(word.substr(1));
    }
    arguments.insert(arguments.begin(), Path("door.json"));
    if (HasFailure()) return;
    const Told usual = RunFailing(arguments, 0, false);
    EXPECT_LT(usual.status, 2) << usual.messages;
    for (const bool allAfter : {false, true}) {
      const long failures = Repeat(arguments, allAfter, usual);
      EXPECT_GT(failures, 20);
    }
  }

  std::string plan_;
  std::string history_;

 private:
  long Repeat(const std::vector<std::string>& arguments, bool allAfter, const Told& usual) const {
    long failures = 0;
    for (long nth = 1; !HasFailure(); nth = After(nth)) {
      SCOPED_TRACE(testing::Message() << "block " << nth << (allAfter ? " and all later" : ""));
      const long blocks = FailingMemory::CountBlocks();
      const long objects = CountLiveObjects();
      {
        const Told told = RunFailing(arguments, nth, allAfter);
        if (!FailingMemory::HasStruck()) return failures;
        if (told.status == usual.status) {
          EXPECT_EQ(told.results, usual.results);
          EXPECT_TRUE(told.plan == usual.plan) << told.plan;
        } else {
          EXPECT_EQ(told.status, 2);
          EXPECT_THAT(told.messages, testing::HasSubstr("the memory does not suffice\n"));
          EXPECT_TRUE(told.plan == plan_) << told.plan;
        }
      }
      ++failures;
      EXPECT_LE(FailingMemory::CountBlocks() - blocks, kMostLost) << "memory is lost";
      EXPECT_EQ(CountLiveObjects(), objects) << "objects are lost";
    }
    return failures;
  }
};

TEST_F(MemoryTest, ImportersEndWithASentence) {
  ExpectSentences("new --replace --parts @parts.csv --welds @welds.csv --process @process.csv");
  ExpectSentences("external create @new.db @.");
}

TEST_F(MemoryTest, QuestionsEndWithASentence) {
  for (const char* const line : {"show --json",
                                 "check",
                                 "check --csv",
                                 "welds",
                                 "parts",
                                 "activities",
                                 "validate OP10",
                                 "hierarchy OP10",
                                 "all-predecessors OP30",
                                 "loaded-parts OP30",
                                 "is-assigned SW-1 SW-2",
                                 "check-assignment OP20 SW-1",
                                 "scene",
                                 "flow --output @picture.dot",
                                 "external text SW-1",
                                 "external chain OP10",
                                 "assemblies",
                                 "history --json",
                                 "cycle-time",
                                 "help welds"}) {
    ExpectSentences(line);
  }
}

TEST_F(MemoryTest, ChangesAreMadeAsAWholeOrNotAtAll) {
  for (const char* const line :
       {"assign OP20 SW-1 SW-2", "unassign OP10 SW-*", "add operation OP40 ST10",
        "remove-activity OP20", "drop P3 OP10", "unlink ST10 ST20", "undo"}) {
    ExpectSentences(line);
  }
}

// What a reader makes of a file, without a program around it.
TEST_F(MemoryTest, ReadersGiveEverythingBack) {
  const std::string document = SourceFile("tests/storage/everything.json");
  const std::string mesh = Path("one.obj");
  folder_.Write("one.obj", "v 0 0 0\nv 30 0 0\nv 0 20 0\nv 0 0 10\nf 1 2 3\nf 1 2 4\n");
  const auto expectAll = [](const std::function<std::string()>& read, bool losesNothing) {
    const std::string usual = read();
    for (const bool allAfter : {false, true}) {
      bool hasStruck = true;
      for (long nth = 1; hasStruck && !HasFailure(); nth = After(nth)) {
        SCOPED_TRACE(testing::Message() << "block " << nth << (allAfter ? " and all later" : ""));
        const long blocks = FailingMemory::CountBlocks();
        const long objects = CountLiveObjects();
        try {
          const FailingMemory memory(nth, allAfter);
          EXPECT_TRUE(read() == usual);
        } catch (const std::bad_alloc&) {
          EXPECT_TRUE(FailingMemory::HasStruck());
        }
        hasStruck = FailingMemory::HasStruck();
        const long lost = FailingMemory::CountBlocks() - blocks;
        EXPECT_TRUE(lost == 0 || !losesNothing) << lost << " blocks are lost";
        EXPECT_EQ(CountLiveObjects(), objects);
      }
    }
  };
  const auto reread = [&] {
    return embedded::WriteDocument(*embedded::LoadDocument(document), folder_.Path());
  };
  expectAll(reread, true);
  // The library behind it loses what it has begun to make.
  expectAll([&] { return std::to_string(biwplan::ReadMesh(mesh).triangles.size()); }, false);
}

// A host that is refused an object answers as if there were none; the program knows better.
TEST_F(MemoryTest, NoAnswerIsMadeOfObjectsThatCouldNotBeMade) {
  for (const char* const line : {"external chain OP10", "external text SW-1", "scene --json",
                                 "output ST20 Floor", "link OP50 OP10"}) {
    const Spoken usual = Do(line);
    for (int nth = 1;; ++nth) {
      folder_.Write("door.json", plan_);
      folder_.Write("door.history", history_);
      const long failed = CountFailedAllocations();
      FailAllocation(nth);
      const Spoken spoken = Do(line);
      FailAllocation(0);
      if (CountFailedAllocations() == failed) break;
      EXPECT_EQ(spoken.status, 2) << line << ", object " << nth;
      EXPECT_THAT(spoken.messages, testing::HasSubstr("the memory does not suffice")) << line;
      EXPECT_EQ(Bytes("door.json"), plan_) << line;
    }
  }
}

}  // namespace

}  // namespace tests
