#include <map>

#include "services/TuvBIWActivityIntelligenceServices.h"
#include "tests/support/PlantTest.h"

namespace {

using Intelligence = TuvBIWActivityIntelligenceServices;
using namespace tests;
using Task = Plant::Task;

class Welder : public TuvIBIWActivityWelding {
 public:
  HRESULT UpdateCycleTime() final { return Update("welding"); }
  virtual HRESULT Update(const char* iAs) = 0;
};

class SeamMaker : public TuvIBIWActivityCurveFastening {
 public:
  HRESULT UpdateCycleTime() final { return Update("seams"); }
  virtual HRESULT Update(const char* iAs) = 0;
};

// An activity that welds and makes seams. When it is contrary, the code of a query says the
// opposite of its pointer.
class Robot : public ComponentObject<ZefISPPActivity, Welder, SeamMaker> {
 public:
  using ComponentObject::QueryInterface;
  ZefMetaClass* GetMetaObject() const override { return ZefBaseUnknown::MetaObject(); }
  HRESULT GetParentActivity(ZefISPPAbstractActivity_var&) override { return E_FAIL; }
  ZefUnicodeString GetLabel() override { return {}; }
  HRESULT Update(const char* iAs) override {
    updates.push_back(iAs);
    return E_FAIL;
  }
  HRESULT QueryInterface(const _GUID& iIID, void** oPtr) override {
    const HRESULT result = ComponentObject::QueryInterface(iIID, oPtr);
    if (!isContrary) return result;
    return *oPtr ? E_FAIL : S_OK;
  }

  bool isContrary = false;
  Strings updates;
};

class CycleTimeTest : public PlantTest {
 protected:
  // Two welding operations, one for seams, one for neither; 12 s to begin with, 3 s for a weld, 15
  // mm/s.
  void LayOut() {
    plant.Station("ST1");
    auto& welding = plant.Operation("WELDING");
    plant.Operation("MOVING", Task::None);
    auto& seams = plant.Operation("SEAMS", Task::CurveFastening);
    plant.Assign(welding, plant.Weld("SW-1"));
    plant.Assign(welding, plant.Weld("SW-2"));
    plant.Assign(seams, plant.Seam("SEAM-1", {{0, 0, 0}, {30, 40, 0}, {30, 40, 100}}));
    // What an activity does not make takes none of its time.
    plant.Assign(seams, plant.Weld("SW-3"));
    plant.Assign(welding, plant.Seam("SEAM-2", {{0, 0, 0}, {150, 0, 0}}));
    Forget();
  }
  void Forget() {
    for (const auto& activity : plant.Document()->Activities()) activity->SetCycleTime(-1);
  }
  std::map<std::string, double> Times() const {
    std::map<std::string, double> times;
    for (const auto& activity : plant.Document()->Activities()) {
      times[activity->Key()] = activity->CycleTime();
    }
    return times;
  }
};

TEST_F(CycleTimeTest, AnActivityIsUpdatedAsEachOfItsKindsWeldingFirst) {
  const struct {
    bool welds, makesSeams;
    HRESULT result;
    Strings updates;
  } cases[] = {{true, true, S_OK, {"welding", "seams"}},
               {true, false, S_OK, {"welding"}},
               {false, true, S_OK, {"seams"}},
               {false, false, E_FAIL, {}}};
  for (const bool isContrary : {false, true}) {
    for (const auto& c : cases) {
      SCOPED_TRACE(testing::Message() << &c - cases << (isContrary ? " contrary" : ""));
      const auto robot = embedded::MakeOwned<Robot>();
      robot->isContrary = isContrary;
      robot->AnswerInterface(IID_TuvIBIWActivityWelding, c.welds);
      robot->AnswerInterface(IID_TuvIBIWActivityCurveFastening, c.makesSeams);
      EXPECT_EQ(Intelligence::UpdateCycleTimeForWelding(robot.Get()), c.result);
      EXPECT_EQ(robot->updates, c.updates);
      EXPECT_EQ(robot->Identity()->ReferenceCount(), 1u);
    }
  }
  EXPECT_EQ(Intelligence::UpdateCycleTimeForWelding(nullptr), E_FAIL);
}

const std::map<std::string, double> kUpdated = {
    {"Process", -1}, {"ST1", -1}, {"WELDING", 18}, {"MOVING", -1}, {"SEAMS", 10}};

TEST_F(CycleTimeTest, EveryActivityOfTheCurrentDocumentButTheRootIsUpdated) {
  LayOut();
  EXPECT_EQ(Intelligence::UpdateAllCycleTimeActivities(), S_OK);
  EXPECT_EQ(Times(), kUpdated);
  EXPECT_EQ(trace.Take(),
            Lines({"GetListOfAllActivities>", "GetCurrentDocument", "<GetListOfAllActivities"}));
  EXPECT_EQ(Intelligence::UpdateCycleTimeForWelding(&plant.Root()), E_FAIL);
  EXPECT_EQ(trace.Take(), Strings());
  application.SetCurrentEditor(nullptr);
  EXPECT_EQ(Intelligence::UpdateAllCycleTimeActivities(), E_FAIL);
}

TEST_F(CycleTimeTest, TheListOfActivitiesDecidesWhetherTheUpdateSucceeds) {
  EXPECT_EQ(Intelligence::UpdateAllCycleTimeActivities(), E_FAIL) << "the root is alone";
  plant.Operation("MOVING", Task::None);
  EXPECT_EQ(Intelligence::UpdateAllCycleTimeActivities(), S_OK) << "there is nothing to update";
  application.Edit(embedded::MakeOwned<embedded::Document>(Plant::Kind::Product));
  EXPECT_EQ(Intelligence::UpdateAllCycleTimeActivities(), E_FAIL) << "there is no process";
}

}  // namespace
