#include <gmock/gmock.h>

#include "tests/import/Lists.h"

namespace {

using namespace biwplan;
using namespace tests;
using testing::ElementsAre;
using testing::HasSubstr;
using Role = embedded::ActivityData::Role;
using Task = embedded::ActivityData::Task;

TEST(PartsListTest, ReadsTreesInstancesColoursAndBoxes) {
  const PartsList list = Parts(
      "id;part number;name;parent;instance of;colour;x;y;z;rx;ry;rz;xmin;ymin;zmin;xmax;ymax;zmax\n"
      "h1;;Hinge top;Door;h0;;10;-20;30;0;0;90\n"
      "p1;7-100;Panel;d;;#1E90FF;;;;;;;-1;-2;-3;1;2;3\n"
      "d;7-000;Door\n"
      "h0;7-200;Hinge;;;30 144 255\n");
  ASSERT_EQ(list.parts.size(), 4u);
  EXPECT_THAT(list.order, ElementsAre(2, 1, 3, 0));
  EXPECT_EQ(list.parts[0].parent, 2u);
  EXPECT_EQ(list.parts[0].reference, 3u);
  EXPECT_THAT(list.parts[0].position, ElementsAre(10, -20, 30, 0, 0, 90));
  EXPECT_THAT(*list.parts[1].colour, ElementsAre(30, 144, 255));
  EXPECT_EQ(list.parts[1].colour, list.parts[3].colour);
  EXPECT_THAT(list.parts[1].box->least, ElementsAre(-1, -2, -3));
  EXPECT_FALSE(list.parts[2].box);
  const NameIndex index = list.Index();
  EXPECT_EQ(index.Find("p1"), 1u);
  EXPECT_EQ(index.Find("7-100"), 1u);
  EXPECT_EQ(index.Find("Panel"), 1u);
  EXPECT_FALSE(index.Find("panel "));
  EXPECT_EQ(Parts("Left door\nRight door\n", "name").parts[1].key, "Right door");
}

TEST(PartsListTest, RefusesWithEveryLine) {
  const std::pair<const char*, std::vector<const char*>> cases[] = {
      {"name,number,parent\nA,1\nB,1\n,,\"x\"\nC,3,9\n",
       {"parts.csv: nothing is imported, because 3 faults were found in 4 rows:\n",
        "line 3: the part \"1\" stands on line 2 already", "line 4: number is empty",
        "line 5: the part \"9\" is not in the parts list"}},
      {"id,parent\nA,B\nB,C\nC,A\nD,D\n",
       {"2 faults",
        "line 2: the part contains itself: \"A\" (line 2), which contains \"C\" (line 4)",
        "line 5: the part contains itself"}},
      {"id,parent,reference\nA\nB\na,B,A\nb,A,B\n", {"line 2: the part contains itself"}},
      {"id,parent,reference\nA\na,,A\nb,,a\nc,a\n",
       {"line 4: \"a\" is an instance", "line 5: \"a\" is an instance", "name \"A\""}},
      {"id,colour\nA,red\nB,#12345\nC,1 2 256\n", {"line 2: colour", "line 3: c", "line 4: c"}},
      {"id,xmin,ymin,zmin,xmax,ymax,zmax\nA,0,5,0,1,4,1\nB,0,0,0,1,1\n",
       {"line 2: ymin is greater than ymax", "line 3: zmax is empty"}},
      {"id,x\nA,1e7\nB,-\n", {"line 2: x is \"1e7\"", "line 3: x is \"-\""}},
      {"weight,colour\n1,2\n", {"parts.csv: no column is headed id or number or name"}},
  };
  for (const auto& [text, errors] : cases) {
    const std::string error = ErrorOf([text = text] { Parts(text); });
    for (const char* const part : errors) EXPECT_THAT(error, HasSubstr(part)) << text;
  }
}

TEST(PartsListTest, InstancesInInstancesDoNotGrowWithoutBound) {
  std::string text = "id,parent,reference\nA0\n";
  for (int i = 1; i < 40; ++i) {
    const std::string above = std::to_string(i - 1);
    const std::string own = std::to_string(i);
    text += "A" + own + "\nl" + own + ",A" + own + ",A" + above + "\nr" + own + ",A" + own + ",A" +
            above + "\n";
  }
  EXPECT_THAT(ErrorOf([&] { Parts(text); }), HasSubstr("more than the 1000000 parts"));
  text = "id,parent\n0,\n";
  for (int i = 1; i < 5000; ++i) text += std::to_string(i) + ',' + std::to_string(i - 1) + '\n';
  EXPECT_THAT(ErrorOf([&] { Parts(text); }), HasSubstr("stands deeper in the tree than the 100"));
  text = "id\n";
  for (int i = 0; i <= 100'000; ++i) text += std::to_string(i) + '\n';
  EXPECT_THAT(ErrorOf([&] { Parts(text); }),
              HasSubstr("parts.csv, line 100002: the list has more"));
}

TEST(ProcessListTest, ReadsTheTreeTheFlowsAndWhatGoesInAndOut) {
  const PartsList parts = Parts(kParts);
  const ProcessList list = Process(
      "id;label;parent;type;task;kind;predecessors;first assigned;items;outputs;fixed_seconds;"
      "seconds_per_weld;speed [mm/s]\n"
      "OP10;Weld brackets;Inner station;;spot welding;;;;P3;;8;2.5;\n"
      "ST1;Inner station;;;;;;P1|P3;;Inner assembly\n"
      "OP20;;ST1;operation;curve-fastening;logical;OP10;\"P2;Beam + tube\";;;;;25\n"
      "ST2;;;station;;physical;Inner station;Inner assembly;;P2\n"
      "Z;;;line;both\n",
      parts);
  ASSERT_EQ(list.activities.size(), 5u);
  EXPECT_THAT(list.order, ElementsAre(1, 0, 2, 3, 4));
  const ActivityRow& weld = list.activities[0];
  EXPECT_EQ(weld.data.key, "OP10");
  EXPECT_EQ(weld.data.label, "Weld brackets");
  EXPECT_EQ(weld.data.role, Role::Operation);
  EXPECT_EQ(weld.data.task, Task::Welding);
  EXPECT_EQ(weld.data.fixedSeconds, 8);
  EXPECT_EQ(weld.data.secondsPerWeld, 2.5);
  EXPECT_EQ(weld.data.speedMmPerSecond, embedded::ActivityData().speedMmPerSecond);
  EXPECT_EQ(weld.parent, 1u);
  EXPECT_THAT(weld.items, ElementsAre(2));
  EXPECT_EQ(list.activities[1].data.role, Role::Station);
  EXPECT_THAT(list.activities[1].firstAssigned, ElementsAre(0, 2));
  const ActivityRow& curve = list.activities[2];
  EXPECT_EQ(curve.data.kind, embedded::ActivityData::Kind::Logical);
  EXPECT_EQ(curve.data.task, Task::CurveFastening);
  EXPECT_EQ(curve.data.speedMmPerSecond, 25);
  EXPECT_THAT(curve.firstAssigned, ElementsAre(1, 4));
  EXPECT_THAT(list.assemblies, ElementsAre("Inner assembly"));
  EXPECT_THAT(list.activities[1].outputs, ElementsAre(5));
  EXPECT_THAT(list.activities[3].firstAssigned, ElementsAre(5));
  EXPECT_THAT(list.activities[3].outputs, ElementsAre(1));
  EXPECT_EQ(list.activities[4].data.role, Role::Step);
  EXPECT_EQ(list.activities[4].data.task, Task::Both);
  ASSERT_EQ(list.flows.size(), 2u);
  EXPECT_EQ(list.flows[0].from, 0u);
  EXPECT_EQ(list.flows[1].from, 1u);
  EXPECT_EQ(list.flows[1].to, 3u);

  const ProcessList both = Process("id,next,previous\nA,B;C,\nB,C,A\nC,,A B\n", parts);
  ASSERT_EQ(both.flows.size(), 3u);
  EXPECT_EQ(both.flows[2].line, 3);
}

TEST(ProcessListTest, RefusesWithEveryLine) {
  const PartsList parts = Parts(kParts);
  const std::pair<const char*, std::vector<const char*>> cases[] = {
      {"id,parent,next,inputs,outputs\nA\nA\nB,X\nC,,Y\nD,,,P9\nE,,,Bracket\nF,,,,MA$1\n,A\n",
       {"nothing is imported, because 7 faults were found in 8 rows",
        "line 3: the activity \"A\" stands on line 2 already",
        "line 4: the activity \"X\" is not in the process list", "line 5: the activity \"Y\"",
        "line 6: the part \"P9\" is not in the parts list", "line 7: 2 parts are called",
        "line 8: outputs is \"MA$1\", with a $", "line 9: id is empty"}},
      {"id,parent\nA,C\nB,A\nC,B\nD,D\n",
       {"line 2: the activity stands below itself: \"A\" (line 2), \"B\" (line 3), \"C\" (line 4), "
        "then \"A\" again",
        "line 5: the activity stands below itself"}},
      {"id,next\nA,B\nB,C\nC,A\nD,D\n",
       {"line 2: the flow runs in a circle: \"A\" (line 2), \"B\" (line 3), \"C\" (line 4), then",
        "line 5: the flow"}},
      {"id,type,kind,fixed_seconds,weld_time,speed\nA,robot\nB,station,logical operation\n"
       "C,,,-1\nD,,,,nan\nE,,,,,0\nF,,,,,1e300\n",
       {"line 2: type is \"robot\"; write station",
        "line 3: kind is \"operation\", which contradicts", "line 4: fixed_seconds is \"-1\"",
        "line 5: seconds_per_weld is \"nan\"", "line 6: speed is \"0\"; it must be at least 0.001",
        "line 7: speed is \"1e300\""}},
      {"label\nA\n", {"no column is headed id"}},
  };
  for (const auto& [text, errors] : cases) {
    const std::string error = ErrorOf([&, text = text] { Process(text, parts); });
    for (const char* const part : errors) EXPECT_THAT(error, HasSubstr(part)) << text;
  }
  std::string deep = "id,parent\n0,\n";
  for (int i = 1; i < 5000; ++i) deep += std::to_string(i) + ',' + std::to_string(i - 1) + '\n';
  EXPECT_THAT(ErrorOf([&] { Process(deep, parts); }), HasSubstr("more than 100 levels deep"));
}

}  // namespace
