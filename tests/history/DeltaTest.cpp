#include <algorithm>
#include <gmock/gmock.h>
#include <random>

#include "planner/history/Compression.h"
#include "planner/history/Damage.h"
#include "planner/history/Delta.h"
#include "planner/history/TouchedNames.h"

namespace tests {
namespace {

using biwplan::ApplyDelta;
using biwplan::Compare;
using biwplan::Direction;

// Few different lines, so that many stand several times; some texts end without a line end.
std::string SomeText(std::mt19937& random) {
  std::string text;
  for (auto lines = random() % 12; lines > 0; --lines) {
    text += std::string(random() % 3, static_cast<char>('a' + random() % 6)) + "\n";
  }
  if (random() % 3 == 0) text += "end";
  return text;
}

TEST(DeltaTest, LeadsBothWaysBetweenAnyTexts) {
  std::mt19937 random(7);
  for (int i = 0; i < 4000; ++i) {
    const std::string old = SomeText(random);
    const std::string fresh = random() % 4 == 0 ? SomeText(random) + old : SomeText(random);
    const std::string delta = PackDelta(Compare(old, fresh), old, fresh);
    ASSERT_EQ(ApplyDelta(delta, old, Direction::Forward), fresh) << old << "->" << fresh;
    ASSERT_EQ(ApplyDelta(delta, fresh, Direction::Back), old) << old << "->" << fresh;
  }
}

TEST(DeltaTest, HoldsOnlyTheLinesThatDiffer) {
  std::string old;
  for (int i = 0; i < 5000; ++i) old += "line " + std::to_string(i) + " of a plan\n";
  std::string fresh = old;
  fresh.insert(fresh.find("line 4000"), "added\n");
  fresh.erase(fresh.find("line 17 "), fresh.find("line 18 ") - fresh.find("line 17 "));
  fresh.replace(fresh.find("line 2000"), 4, "LINE");
  EXPECT_EQ(Compare(old, fresh).size(), 3u);
  EXPECT_LT(PackDelta(Compare(old, fresh), old, fresh).size(), 120u);
}

TEST(DeltaTest, RefusesWhatDoesNotFit) {
  const std::string old = "a\nb\nc\n";
  const std::string fresh = "a\nB\nc\n";
  const std::string delta = PackDelta(Compare(old, fresh), old, fresh);
  EXPECT_THROW(ApplyDelta(delta, fresh, Direction::Forward), biwplan::DamagedHistory);
  EXPECT_THROW(ApplyDelta(delta, "a\n", Direction::Forward), biwplan::DamagedHistory);
  EXPECT_THROW(ApplyDelta("nonsense", old, Direction::Forward), biwplan::DamagedHistory);
  std::mt19937 random(5);
  for (int i = 0; i < 2000; ++i) {
    std::string bytes = biwplan::Decompress(delta);
    bytes[random() % bytes.size()] = static_cast<char>(random());
    try {
      EXPECT_LT(ApplyDelta(biwplan::Compress(bytes), old, Direction::Forward).size(), 1000u);
    } catch (const biwplan::DamagedHistory&) {
    }
  }
}

TEST(DeltaTest, NamesWhatALineIsAbout) {
  const std::string old =
      "{\"key\": \"ST10\", \"cycleTime\": 1},\n"
      "{\"kind\": \"spotWeld\", \"key\": \"SW-1\", \"position\": [1]},\n"
      "{\"activity\": \"OP10\", \"item\": {\"feature\": \"SW-2\"}}\n";
  const std::string fresh =
      "{\"key\": \"ST10\", \"cycleTime\": 2},\n"
      "{\"kind\": \"spotWeld\", \"key\": \"SW-1\", \"position\": [2]},\n"
      "{\"activity\": \"OP10\", \"item\": {\"feature\": \"SW-2\"}},\n"
      "{\"activity\": \"OP20\", \"item\": {\"feature\": \"SW-3\"}},\n"
      "{\"from\": \"OP30\", \"to\": \"OP40\"}\n"
      "{\"key\": \"P1\", \"position\": [1]}, not an element\n";
  const biwplan::TouchedNames names = FindTouched(Compare(old, fresh), old, fresh);
  EXPECT_THAT(names.welds, testing::ElementsAre("SW-1", "SW-3"));
  EXPECT_THAT(names.activities, testing::ElementsAre("OP20", "OP30", "OP40", "ST10"));
  EXPECT_EQ(biwplan::UnpackNames(Pack(names)).welds, names.welds);
}

}  // namespace
}  // namespace tests
