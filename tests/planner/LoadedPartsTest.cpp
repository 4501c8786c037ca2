#include <optional>
#include <random>

#include "planner/check/LoadedParts.h"
#include "services/TuvBIWServices.h"
#include "tests/support/PlantTest.h"

namespace {

using biwplan::LoadedQuestion;
using embedded::Activity;
using embedded::ItemLink;

class LoadedPartsTest : public tests::PlantTest {
 protected:
  std::mt19937 random{20260318};

  template <class Object>
  Object& AnyOf(const std::vector<Object*>& objects) {
    return *objects[random() % objects.size()];
  }

  // A few activities, some below others, with flows in any direction, parts with parts below them,
  // and assemblies that are items and outputs.
  void LayOut() {
    std::vector<ZefBaseUnknown*> items;
    embedded::Product* above = nullptr;
    for (int i = 0; i < 6; ++i) {
      auto& part = plant.Part("P" + std::to_string(i), random() % 2 ? above : nullptr);
      items.push_back(part.Identity());
      above = &part;
      joints.Append(plant.Weld("SW" + std::to_string(i), {}, {&part}).Identity());
    }
    for (int i = 0; i < 3; ++i) {
      auto& assembly = plant.Document()->AddAssembly("MA" + std::to_string(i));
      for (int child = 0; child < 2; ++child) assembly.AddChild(&AnyOf(items));
      items.push_back(assembly.Identity());
    }
    for (int i = 0; i < 7; ++i) {
      Activity* const parent =
          activities.empty() || random() % 2 ? &plant.Root() : activities.back();
      activities.push_back(
          &plant.Operation("OP" + std::to_string(i), tests::Plant::Task::None, parent));
      if (random() % 3 == 0) continue;
      activities.back()->Link(&AnyOf(items),
                              random() % 2 ? ItemLink::Plain : ItemLink::FirstAssigned);
      ZefISPPProductIO_var output;
      if (random() % 2) activities.back()->AddProductOutput(output.Put(), &AnyOf(items));
    }
    for (int i = 0; i < 9; ++i) {
      Activity& from = AnyOf(activities);
      Activity& to = AnyOf(activities);
      if (&from != &to) plant.Flow(from, to);
    }
    for (Activity* const activity : activities) {
      for (ZefBaseUnknown* const item : items) questions.push_back({activity, item});
    }
  }

  void TearDown() override {
    joints.RemoveAll();
    PlantTest::TearDown();
  }

  // The welds that the part-load constraint leaves, each of which joins one of the objects. While
  // nobody reads the trace, the service does not walk every path.
  tests::Strings Accepted(Activity& activity, bool isTraced) {
    application.SetPartLoadConstraint(true);
    ZefListValZefBaseUnknown_var welds = joints;
    std::optional<tests::TraceRecorder> reader;
    TapTraces({});
    if (isTraced) reader.emplace("TuvKelBIWUtilsTrace");
    TuvBIWServices::ValidateListOfFastenersForAssignmentToActivity(welds, activity.Identity());
    return tests::Names(welds);
  }

  ZefListValZefBaseUnknown_var joints;
  std::vector<Activity*> activities;
  std::vector<LoadedQuestion> questions;
};

class RandomPlants : public LoadedPartsTest, public testing::WithParamInterface<int> {};

TEST_P(RandomPlants, LoadWhatTheServiceLists) {
  random.seed(static_cast<unsigned>(GetParam()));
  LayOut();
  const std::vector<bool> answers = biwplan::AreLoaded(*plant.Document(), questions);
  ASSERT_EQ(answers.size(), questions.size());
  for (std::size_t i = 0; i < questions.size(); ++i) {
    ZefListValZefBaseUnknown_var loaded;
    auto* list = &loaded;
    TuvBIWServices::GetLoadedParts(questions[i].activity->Identity(), list);
    EXPECT_EQ(answers[i], loaded.Locate(questions[i].part) != 0)
        << questions[i].activity->Key() << ", " << tests::Names(loaded).size() << " listed, " << i;
  }
  for (Activity* const activity : activities) {
    ZefListValZefBaseUnknown_var loaded, once;
    auto* list = &loaded;
    TuvBIWServices::GetLoadedParts(activity->Identity(), list);
    for (int i = 1; i <= loaded.Size(); ++i) {
      if (once.Locate(loaded[i]) == 0) once.Append(loaded[i]);
    }
    EXPECT_EQ(tests::Names(biwplan::LoadedAt(*activity)), tests::Names(once)) << activity->Key();
    EXPECT_EQ(Accepted(*activity, true), Accepted(*activity, false)) << activity->Key();
  }
}

INSTANTIATE_TEST_SUITE_P(LoadedPartsTest, RandomPlants, testing::Range(0, 40));

TEST_F(LoadedPartsTest, AnswersManyPartsOnALongLineEachAsItsOwn) {
  constexpr int kStations = 200;
  for (int i = 0; i < kStations; ++i) {
    activities.push_back(&plant.Station("ST" + std::to_string(i)));
    if (i > 0) plant.Flow(*activities[static_cast<std::size_t>(i) - 1], *activities.back());
    plant.Assign(*activities.back(), plant.Part("P" + std::to_string(i)));
  }
  for (int at = 0; at < kStations; at += 7) {
    for (int part = 0; part < kStations; ++part) {
      auto* const asked = plant.Document()->FindProduct("P" + std::to_string(part));
      questions.push_back({activities[static_cast<std::size_t>(at)], asked->Identity()});
    }
  }
  const std::vector<bool> answers = biwplan::AreLoaded(*plant.Document(), questions);
  for (std::size_t i = 0; i < answers.size(); ++i) {
    EXPECT_EQ(answers[i], i % kStations <= i / kStations * 7);
  }
}

// 2^40 paths lead to the last station.
TEST_F(LoadedPartsTest, ParallelBranchesThatJoinAgainCostNoMoreThanTheirStations) {
  Activity* last = &plant.Station("ST0");
  plant.Assign(*last, plant.Part("P1"));
  joints.Append(plant.Weld("SW1", {}, {plant.Document()->FindProduct("P1")}).Identity());
  for (int i = 0; i < 40; ++i) {
    Activity& left = plant.Station("L" + std::to_string(i));
    Activity& right = plant.Station("R" + std::to_string(i));
    Activity& next = plant.Station("J" + std::to_string(i));
    for (Activity* const branch : {&left, &right}) {
      plant.Flow(*last, *branch);
      plant.Flow(*branch, next);
    }
    last = &next;
  }
  EXPECT_EQ(tests::Names(biwplan::LoadedAt(*last)), tests::Strings{"P1"});
  EXPECT_EQ(Accepted(*last, false), tests::Strings{"SW1"});
}

}  // namespace
