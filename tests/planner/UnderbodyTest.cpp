#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "embedded/storage/DocumentFile.h"
#include "host/values/Each.h"
#include "planner/names/Names.h"
#include "tests/planner/Planner.h"
#include "tests/support/SourceFiles.h"

namespace tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

// The example, whose plan makes four mistakes and mends them.
class UnderbodyTest : public PlannerTest {
 protected:
  Spoken Plan(std::vector<std::string> options) const {
    EXPECT_EQ(Run({"@door.json", "new", "--parts", Example("parts.csv"), "--welds",
                   Example("welds.csv"), "--process", Example("process.csv")})
                  .status,
              0);
    options.insert(options.end(), {"@door.json", "--script", Example("plan.biw")});
    return Run(options);
  }

  static std::string Example(const std::string& file) {
    return SourceFile("examples/underbody/" + file);
  }
};

bool IsWithin(const double (&point)[3], const embedded::ProductData& part) {
  bool isWithin = true;
  for (int i = 0; i < 3; ++i) {
    isWithin = isWithin && point[i] >= part.boxMin[i] && point[i] <= part.boxMax[i];
  }
  return isWithin;
}

TEST_F(UnderbodyTest, PlanMeetsEachWarningOnceAndEndsInStep) {
  const Spoken spoken = Plan({"--json"});
  EXPECT_EQ(spoken.status, 0) << spoken.messages;
  std::vector<std::string> warnings;
  std::istringstream lines(spoken.results);
  for (std::string line; std::getline(lines, line);) {
    const auto answer = nlohmann::json::parse(line);
    for (const auto& warning : answer.value("warnings", nlohmann::json::array())) {
      warnings.push_back(warning.at("message"));
    }
  }
  EXPECT_THAT(warnings,
              ElementsAre(HasSubstr("more than one product output on Front floor"),
                          HasSubstr("part of itself: Rear rails assembly"),
                          HasSubstr("run in a ring now: ST30 -> ST40 -> ST30"),
                          HasSubstr("could take over the product output of Underbody framing"),
                          HasSubstr("no longer first assigned to: \nLoad and clamp, tack tunnel")));
  const Spoken check = Do("check");
  EXPECT_EQ(check.status, 0) << check.results;
  EXPECT_THAT(Do("assemblies").results,
              HasSubstr("\nMA-9  Underbody: made by ST80, taken in by nobody\n"
                        "  MA-8  Respotted underbody: made by ST70, taken in by ST80\n"
                        "    MA-7  Framed underbody: made by ST60, taken in by ST70\n"
                        "      MA-2  Front floor assembly: made by ST20, taken in by ST60\n"));
  EXPECT_THAT(Do("flow --output @line.dot").results,
              HasSubstr("10 stations, 19 flows, 150 welds, 0 on no activity; no conflicts"));
}

TEST_F(UnderbodyTest, WeldsLieInTheBoxesOfTheirParts) {
  Plan({});
  const auto document = embedded::LoadDocument(Path("door.json"));
  int joints = 0;
  const ZefListValZefBaseUnknown_var welds = biwplan::Names(*document).AllWelds();
  for (const auto& weld : Each<TuvISpotWeld>(welds)) {
    const double point[3] = {weld->GetX(), weld->GetY(), weld->GetZ()};
    ZefListValZefBaseUnknown_var parts;
    TuvIBIWFastener_var(weld)->GetJointedParts(parts);
    for (int i = 1; i <= parts.Size(); ++i) {
      const auto* const part = embedded::ObjectAs<embedded::Product>(parts[i].Get());
      EXPECT_TRUE(IsWithin(point, part->Data())) << biwplan::NameOf(ZefBaseUnknown_var(weld));
      ++joints;
    }
  }
  EXPECT_GE(joints, 300);
}

TEST_F(UnderbodyTest, EchoShowsEachLineBeforeItsAnswer) {
  EXPECT_THAT(Plan({"--echo"}).results,
              HasSubstr("\n# The parts come first, the output after them: the new assembly is "
                        "filled at once.\n> first-assign OP11 UB-101 UB-102\nOP11 takes in UB-101, "
                        "UB-102\n> drop UB-103 OP12\n"));
}

}  // namespace
}  // namespace tests
