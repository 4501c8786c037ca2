#include <gmock/gmock.h>

#include "tests/import/Lists.h"
#include "tests/support/ReferenceAudit.h"
#include "tests/support/SourceFiles.h"

namespace {

using namespace biwplan;
using namespace tests;
using embedded::Document;
using embedded::ObjectAs;
using embedded::Owned;
using testing::ElementsAre;
using testing::HasSubstr;

class DocumentBuilderTest : public ReferenceAudit {};

Owned<Document> Build(const std::string& parts, const std::string& welds,
                      const std::string& process, const std::string& key = "Process") {
  const PartsList list = Parts(parts);
  return BuildDocument(list, Welds(welds, list), Process(process, list), key);
}

std::vector<std::string> Keys(const ZefListValZefBaseUnknown_var& list) {
  std::vector<std::string> keys;
  for (int i = 1; i <= list.Size(); ++i) {
    keys.push_back(ObjectAs<embedded::Aliased>(list[i].Get())->Key());
  }
  return keys;
}

TEST_F(DocumentBuilderTest, MakesTheWholeDocument) {
  const Owned<Document> document = Build(
      "id,number,name,parent,instance_of,colour\nD,,Door,,\nP,100,Panel,D,,#010203\n"
      "H,200,Hinge\nh1,,,D,H\nB,300,Beam\n",
      "id,x,y,z,parts,type,rz,diameter\nW1,1,2,3,P;h1,,90,5\nS1,0,0,0,P;Beam,laser\n"
      "S1,0,0,9,,\nL1,1,1,1,,locator\nC1,2,2,2,,clamp\n",
      "id,parent,task,next,inputs,items,outputs\nST1,,,ST2,,,Sub\nOP1,ST1,welding,,100;h1,,\n"
      "ST2,,,,Sub;B,P,Door shell\n",
      "Line 3");
  EXPECT_EQ(document->Root()->Key(), "Line 3");
  const embedded::Product& hinge = *document->FindProduct("h1");
  EXPECT_EQ(hinge.Reference(), document->FindProduct("H"));
  EXPECT_EQ(hinge.Parent(), document->FindProduct("D"));
  EXPECT_EQ(hinge.Data().partNumber, "200");
  EXPECT_EQ(document->FindProduct("P")->Data().colour[2], 3);
  EXPECT_EQ(document->FindProduct("B")->Parent(), &document->RootProduct());

  const auto* const weld = ObjectAs<embedded::SpotWeld>(document->FindFeature("W1"));
  EXPECT_THAT(weld->Position(), ElementsAre(1, 2, 3, 0, 0, 90));
  EXPECT_EQ(weld->Diameter(), 5);
  EXPECT_EQ(weld->Fastening().type, "spot");
  EXPECT_THAT(Keys(weld->OwnParts()), ElementsAre("P", "h1"));
  const auto* const seam = ObjectAs<embedded::CurveFastener>(document->FindFeature("S1"));
  EXPECT_EQ(seam->Length(), 9);
  EXPECT_THAT(Keys(seam->OwnParts()), ElementsAre("P", "B"));
  EXPECT_FALSE(ObjectAs<embedded::PointFeature>(document->FindFeature("L1"))->Data().isClamp);
  EXPECT_TRUE(ObjectAs<embedded::PointFeature>(document->FindFeature("C1"))->Data().isClamp);

  embedded::Activity& first = *document->FindActivity("ST1");
  embedded::Activity& second = *document->FindActivity("ST2");
  EXPECT_EQ(document->FindActivity("OP1")->Parent(), &first);
  EXPECT_THAT(Keys(first.GetNextActivities("Activity")), ElementsAre("ST2"));
  ZefListValZefBaseUnknown_var inputs;
  second.GetInputItems(inputs);
  EXPECT_THAT(Keys(inputs), ElementsAre("Sub", "B"));
  ASSERT_EQ(first.Outputs().size(), 1u);
  embedded::MfgAssembly& sub = *document->FindAssembly("Sub");
  EXPECT_EQ(first.Outputs()[0]->OwnProduct(), sub.Identity());
  EXPECT_EQ(sub.OwnName(), "Sub");
  EXPECT_THAT(Keys(sub.OwnChildren()), ElementsAre("P", "h1"));
  EXPECT_THAT(Keys(document->FindAssembly("Door shell")->OwnChildren()), ElementsAre("Sub", "B"));
}

TEST_F(DocumentBuilderTest, RefusesWithTheLineAndLeavesNothingBehind) {
  constexpr char kWelds[] = "id,x,y,z,parts\nW1,1,2,3,P1\n";
  EXPECT_THAT(ErrorOf([&] { Build(kParts, kWelds, "id\nOP\nProcess\n"); }),
              HasSubstr("process.csv, line 3: "));
  EXPECT_THAT(ErrorOf([&] { Build("id\nP1\nProducts\n", kWelds, "id\nOP\n"); }),
              HasSubstr("parts.csv, line 3: "));
  EXPECT_THAT(ErrorOf([&] { Build(kParts, kWelds, "id,inputs,outputs\nA,Y,X\nB,X,Y\nC,,Z\n"); }),
              HasSubstr("process.csv, line 2: the output \"X\" would contain itself"));
  EXPECT_EQ(ErrorOf([&] { Build(kParts, kWelds, "id,inputs,outputs\nA,P1,X\nB,X,Y\n"); }),
            "no error");
}

TEST_F(DocumentBuilderTest, TheExampleIsADoor) {
  const std::string folder = SourceFile("examples/front-door/");
  std::ifstream partsFile = OpenList(folder + "parts.csv");
  std::ifstream weldsFile = OpenList(folder + "welds.csv");
  std::ifstream processFile = OpenList(folder + "process.csv");
  const PartsList parts = ReadPartsList(partsFile, "parts");
  const WeldList welds = ReadWeldList(weldsFile, "welds", parts.Index(), {.isStrict = true});
  const ProcessList process = ReadProcessList(processFile, "process", parts);
  EXPECT_THAT(welds.Summary(), HasSubstr("60 point welds, 5 seams, 3 locating points, 4 clamping"));
  EXPECT_THAT(welds.notes, ElementsAre());
  for (const WeldRow& weld : welds.welds) {
    for (const std::size_t part : weld.parts) {
      const PartRow::Box& box = *parts.parts[part].box;
      for (std::size_t axis = 0; axis < 3; ++axis) {
        EXPECT_GE(weld.position[axis], box.least[axis]) << weld.id;
        EXPECT_LE(weld.position[axis], box.most[axis]) << weld.id;
      }
    }
  }
  const Owned<Document> document = BuildDocument(parts, welds, process);
  const embedded::MfgAssembly& door = *document->FindAssembly("Front door in white");
  EXPECT_THAT(Keys(door.OwnChildren()), ElementsAre("FD-130", "FD-131", "Reinforced inner panel"));
}

}  // namespace
