#include <gmock/gmock.h>

#include "embedded/storage/DocumentFile.h"
#include "planner/import/PlanSize.h"
#include "tests/import/Lists.h"
#include "tests/support/LoweredLimits.h"
#include "tests/support/ReferenceAudit.h"

namespace {

using namespace biwplan;
using namespace tests;
using testing::StartsWith;

class PlanSizeTest : public ReferenceAudit {
 protected:
  const PartsList parts =
      Parts("id,number,name,x,rz\nA,100.25,\"A \"\"panel\"\"\",-1.2345678,33.333\nB,2,Beam,0,0\n");
  const ProcessList process = Process(
      "id,name,parent,task,next,inputs,items,outputs\nST1,Start,,,ST2,,,Sub\n"
      "OP1,\"Tack \\ weld\",ST1,welding,,A;B,A,\nST2,,,,,Sub,,\n",
      parts);
  const WeldList welds = Welds(
      "id,x,y,z,parts,rx,diameter\nW1,0.1234567,-99999.5,3,A;B,12.34567,5.5\n"
      "\"W \"\"2\"\"\",1,2,3,A,0,\nW3,1,2,3,B,0,\n",
      parts);
};

TEST_F(PlanSizeTest, IsNoLessThanWhatThePlanTakesWithAllWeldsAssigned) {
  const auto document = BuildDocument(parts, welds, process, "Process");
  for (const auto& feature : document->Features()) {
    document->FindActivity("OP1")->Link(feature, embedded::ItemLink::Plain);
  }
  const std::string text = embedded::WriteDocument(*document);
  const PlanSize size = SizeOf(parts, welds, process);
  EXPECT_GE(size.bytes, text.size());
  // Near enough to tell lists that have room from those that have none.
  EXPECT_LE(size.bytes, 5 * text.size());
  const LoweredLimits lowered({.bytes = size.bytes, .values = size.values});
  EXPECT_EQ(embedded::WriteDocument(*document), text);
  EXPECT_EQ(ErrorOf([&] { RequireRoom(parts, welds, process); }), "no error");
}

TEST_F(PlanSizeTest, ListsWithoutRoomAreRefusedAtTheirRow) {
  const PlanSize size = SizeOf(parts, welds, process);
  const struct {
    embedded::JsonLimits limits;
    const char* place;
  } cases[] = {{{.bytes = size.bytes - 1}, "welds.csv, line 4: "},
               {{.values = size.values - 1}, "welds.csv, line 4: "},
               {{.bytes = 700}, "parts.csv, line 2: "},
               {{.values = 100}, "parts.csv, line 3: "}};
  for (const auto& [limits, place] : cases) {
    const LoweredLimits lowered(limits);
    EXPECT_THAT(ErrorOf([&] { RequireRoom(parts, welds, process); }), StartsWith(place));
  }
}

// A million welds with eight parts each, all assigned; names as long as those that people use.
TEST_F(PlanSizeTest, TheLongestListHasRoom) {
  WeldRow row;
  row.id = "BSL-UNDERBODY-SW-0000001";
  row.type = "spot";
  row.parts.assign(WeldList::kMostParts, 0);
  WeldList one;
  const PlanSize none = SizeOf(parts, one, process);
  one.welds.push_back(row);
  const PlanSize all = SizeOf(parts, one, process);
  const embedded::JsonLimits limits;
  EXPECT_LE((all.bytes - none.bytes) * WeldList::kMostRows, limits.bytes - (limits.bytes >> 3));
  EXPECT_LE((all.values - none.values) * WeldList::kMostRows, limits.values);
}

}  // namespace
