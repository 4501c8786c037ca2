#include <ctime>
#include <gmock/gmock.h>
#include <set>

#include "tests/import/Lists.h"

namespace {

using namespace biwplan;
using namespace tests;
using testing::ElementsAre;
using testing::HasSubstr;

std::string Shown(const WeldList& list) {
  std::ostringstream text;
  for (const WeldRow& weld : list.welds) {
    text << weld.id << ' ' << weld.type << " (" << weld.position[0] << ' ' << weld.position[1]
         << ' ' << weld.position[2] << ')';
    for (const std::size_t part : weld.parts) text << " P" << part + 1;
    text << '\n';
  }
  for (const RowFault& fault : list.dropped) text << Located(list.source, fault) << '\n';
  return text.str();
}

TEST(WeldListTest, AListOfAnotherHandImportsWithoutEdits) {
  std::ifstream partsFile = OpenList(DataFile("rear_door_parts.csv"));
  const PartsList parts = ReadPartsList(partsFile, "parts");
  std::ifstream weldsFile = OpenList(DataFile("rear_door_welds.csv"));
  const WeldList list = ReadWeldList(weldsFile, "welds", parts.Index(), {.isStrict = true});
  ASSERT_EQ(list.welds.size(), 58u);
  EXPECT_TRUE(list.dropped.empty());
  EXPECT_EQ(list.Summary(), "welds: 58 rows read, 58 kept (58 point welds, 0 seams), 0 dropped");
  EXPECT_THAT(list.notes, ElementsAre("welds: columns not used: \"Remark\""));

  std::set<std::size_t> joined;
  int ofThree = 0;
  for (const WeldRow& weld : list.welds) {
    EXPECT_GE(weld.parts.size(), 2u) << weld.id;
    ofThree += weld.parts.size() == 3;
    joined.insert(weld.parts.begin(), weld.parts.end());
  }
  EXPECT_EQ(joined.size(), 5u);
  EXPECT_EQ(ofThree, 2);
  const WeldRow& fourth = list.welds[3];
  EXPECT_EQ(fourth.id, "WP_RDR_0040");
  EXPECT_EQ(fourth.line, 8);
  EXPECT_THAT(fourth.position, ElementsAre(1970.47, 747.7, 519.71));
  EXPECT_THAT(fourth.angles, ElementsAre(0, 90, 0));
  EXPECT_EQ(parts.parts[fourth.parts[0]].name, "Inner panel rear door RH");
  EXPECT_EQ(parts.parts[fourth.parts[1]].key, "RD-839-401-B");
}

TEST(WeldListTest, EveryShapeOfTheSameListReadsTheSame) {
  const PartsList parts = Parts(kParts);
  const std::string expected = "W1 spot (1.5 -2 30) P1 P2\nW2 endo (4 5 6) P2 P5 P1\n";
  const std::string shapes[] = {
      "weld_id,x,y,z,parts,type\nW1,1.5,-2,30,P1;P2,\nW2,4,5,6,P2;P5;P1,endo\n",
      "\xEF\xBB\xBFName;X;Y;Z;Part_IDs;Weld type\r\nW1;1.5;-2;+3e1;P1|P2;RSW\r\nW2;4;5;6;"
      "\"P2;P5;P1\";Endo weld\r\n",
      "id\tx [mm]\ty_mm\tZ (mm)\tpart 1\tpart_2\tPart3\ttype\nW1\t1.5\t-2\t30\tP1\tP2\t\t\n"
      "W2\t4\t5\t6\tP2\tP5\tP1\tENDO",
      "# plan 7\n\n$ exported; by, hand\nType,Parts,Z,Y,X,ID,\nspot weld,Inner panel;Outer panel,"
      "30,-2,1.5,W1,\n,,,,,,\nendo,\"P2,Beam + tube,P1\",6,5,4,W2,,\n# end",
      "type;id;x;y;z;parts\nspot;W1;1.5;-2;30;P1;P2\nendo;W2;4;5;6;P2;P5;P1\n",
      "sep=;\r\nid;x;y;z;parts;type;\r\nW1;1.5;-2;30;P1+P2;;\r\nW2;4;5;6;P2 P5 P1;endo;\r\n",
      "id,x,y,z,parts,type\rW1, 1.5 , -2,30,P1/P2\rW2,4,5,6,P2 / P5 / P1,\"endo\"",
  };
  for (const std::string& text : shapes) {
    EXPECT_EQ(Shown(Welds(text, parts, {.isStrict = true})), expected) << text;
  }
  const std::pair<std::string, std::string> ordered[] = {
      {"id,x,y,z,parts,type", "W1,1.5,-2,30,P1;P2,spot\nW2,4,5,6,P2;P5;P1,endo\n"},
      {"x;y;z;;id;type;parts", "1.5;-2;30;kept out;W1;;P1;P2\n4;5;6;;W2;endo;P2;P5;P1;\n"},
      {"id\tparts\tx\ty\tz\ttype", "W1\tP1,P2\t1.5\t-2\t30\nW2\tP2,P5,P1\t4\t5\t6\tendo\tmore\n"},
  };
  for (const auto& [order, text] : ordered) {
    EXPECT_EQ(Shown(Welds(text, parts, {order, true})), expected) << order;
  }
}

TEST(WeldListTest, ABrokenListReportsEachRowWithItsLine) {
  const PartsList parts = Parts(
      "number;name\nRD-839-212-A;Inner panel rear door RH\nRD-839-106;\nRD-839-401-B;\n"
      "RD-839-420;\nRD-839-517-A;\nR;Roof\nS;Sill\nA;Pillar A\nB;Pillar "
      "B\nK1;Bracket\nK2;Bracket\n");
  std::ifstream stream = OpenList(DataFile("broken_welds.csv"));
  const WeldList list = ReadWeldList(stream, "broken", parts.Index());
  ASSERT_EQ(list.welds.size(), 2u);
  EXPECT_EQ(list.welds[0].id, "G1");
  EXPECT_EQ(list.welds[0].position[2], 450);
  EXPECT_EQ(list.welds[1].id, "G2");

  const std::tuple<long, FaultKind, const char*> expected[] = {
      {3, FaultKind::MissingPart, "the part \"RD-999\" is not in the parts list"},
      {4, FaultKind::DuplicateId, "the id \"G1\" stands on line 2 already"},
      {5, FaultKind::BadNumber, "y is \"12o\"; it must be a number"},
      {6, FaultKind::ShortRow, "the row ends after 3 of at least 4 fields"},
      {7, FaultKind::NotFinite, "x is \"nan\""},
      {8, FaultKind::NotFinite, "y is \"-inf\""},
      {9, FaultKind::NotFinite, "z is \"1e999\""},
      {10, FaultKind::BadNumber, "z is \"1e300\"; it must lie between"},
      {11, FaultKind::BadNumber, "decimal comma; numbers take a decimal point, here 1010.5"},
      {12, FaultKind::BadText, "id is empty"},
      {13, FaultKind::MissingPart, "no part is named"},
      {14, FaultKind::TooManyNames, "more than 8 parts are named"},
      {15, FaultKind::AmbiguousName, "2 parts are called \"Bracket\""},
      {16, FaultKind::LongRow, "the row has 10 fields where the header has 8"},
      {17, FaultKind::BadNumber, "x is empty"},
      {18, FaultKind::BrokenSeam, "the seam \"S1\" on line 19 cannot be used"},
      {19, FaultKind::BadNumber, "y is \"x\""},
      {20, FaultKind::BrokenSeam, "the seam \"S1\" on line 19"},
      {21, FaultKind::BrokenSeam, "the seam \"S2\" has one point"},
      {22, FaultKind::BrokenSeam, "the seam \"S3\" on line 23"},
      {23, FaultKind::BrokenSeam, "joins other parts than line 22"},
  };
  ASSERT_EQ(list.dropped.size(), std::size(expected));
  for (std::size_t i = 0; i < std::size(expected); ++i) {
    const auto& [line, kind, text] = expected[i];
    EXPECT_EQ(list.dropped[i].line, line);
    EXPECT_EQ(list.dropped[i].kind, kind) << line;
    EXPECT_THAT(list.dropped[i].text, HasSubstr(text)) << line;
  }
  EXPECT_EQ(list.Summary(),
            "broken: 23 rows read, 2 kept (2 point welds, 0 seams), 21 dropped: 1 short row, "
            "1 long row, 1 bad text, 1 duplicate id, 5 bad number, 3 number not finite, "
            "2 missing part, 1 ambiguous part, 1 too many parts, 5 broken seam");

  stream = OpenList(DataFile("broken_welds.csv"));
  const std::string error =
      ErrorOf([&] { ReadWeldList(stream, "broken", parts.Index(), {.isStrict = true}); });
  EXPECT_THAT(error, HasSubstr("nothing is imported, because 21 faults were found in 23 rows"));
  for (const RowFault& fault : list.dropped)
    EXPECT_THAT(error, HasSubstr(Located("broken", fault)));
}

TEST(WeldListTest, SeamsLocatorsClampsAndUnknownTypes) {
  const WeldList list = Welds(
      "id,x,y,z,parts,type,diameter\n"
      "S1,0,0,0,P1;P2,MAG,\nW1,1,1,1,P1,spot,5.5\nS1,10,0,0\nS1,10,20,0,P1;P2,mag weld,\n"
      "L1,1,2,3,,locating pin,\nC1,4,5,6,P1,Clamp,\nX1,7,8,9,P2;P1,flow drill,\nW2,1,2,3\n",
      Parts(kParts));
  EXPECT_EQ(Shown(list),
            "S1 arc (0 0 0) P1 P2\nW1 spot (1 1 1) P1\nL1 locator (1 2 3)\nC1 clamp (4 5 6) P1\n"
            "X1 flow drill (7 8 9) P2 P1\n"
            "welds.csv, line 9: the row ends after 4 of at least 5 fields; every field up to the "
            "last required one must be there\n");
  ASSERT_EQ(list.welds[0].points.size(), 3u);
  EXPECT_THAT(list.welds[0].points[2].position, ElementsAre(10, 20, 0));
  EXPECT_EQ(list.welds[1].diameter, 5.5);
  EXPECT_THAT(list.Summary(), HasSubstr("7 kept (2 point welds, 1 seam, 1 locating point, 1 "
                                        "clamping point), 1 dropped"));
  EXPECT_EQ(list.CountWelds(), 3u);
  EXPECT_THAT(list.notes, ElementsAre("welds.csv: rows that end before the last column: 2; the "
                                      "fields they lack count as empty",
                                      "welds.csv: welds that name one part alone: 1",
                                      "welds.csv: types not known, kept for point welds: \"flow "
                                      "drill\""));
}

TEST(WeldListTest, WhatIsNoWeldListIsRefused) {
  const PartsList parts = Parts(kParts);
  const std::tuple<const char*, const char*, const char*> cases[] = {
      {"", "", "welds.csv: the list is empty"},
      {"# only\n\n", "", "welds.csv: the list is empty"},
      {"W1,1,2,3,P1\n", "", "welds.csv, line 1: no column is headed id, x, y, z;"},
      {"id,x,y,parts\n", "", "line 1: no column is headed z;"},
      {"id,x,y,z [inch],parts\n", "", "no column is headed z;"},
      {"id,x,y,z\n", "", "welds.csv: no column is headed parts or part1"},
      {"id,x,X,y,z,parts\n", "", "two columns are headed \"x\""},
      {"W1,1,2,3,P1\n", "id,x,y,parts", "the declared column order \"id,x,y,parts\": no column"},
      {"id,x,y,z,parts\nW1,1,2,3,\"P1\n", "", "welds.csv, line 2: the quote"},
  };
  for (const auto& [text, order, error] : cases) {
    EXPECT_THAT(ErrorOf([&, text = text, order = order] {
                  Welds(text, parts, {order, false});
                }),
                HasSubstr(error))
        << text;
  }
  EXPECT_THAT(ErrorOf([] { OpenList(DataFile("")); }), HasSubstr("is a directory"));
  EXPECT_THAT(ErrorOf([] { OpenList(DataFile("none.csv")); }), HasSubstr("cannot be opened"));
}

TEST(WeldListTest, HundredThousandRowsGoodAndBadAreNoWait) {
  std::string text = "id,x,y,z,parts\n";
  for (int i = 0; i < 50'000; ++i) text += "W" + std::to_string(i) + ",1,2,3,P1;P2\nS,1,2,3,P9\n";
  const PartsList parts = Parts(kParts);
  const std::clock_t start = std::clock();
  const WeldList list = Welds(text, parts);
  EXPECT_LT((std::clock() - start) / CLOCKS_PER_SEC, 30);
  EXPECT_EQ(list.welds.size(), 50'000u);
  EXPECT_EQ(list.dropped.size(), 50'000u);
  const std::string error = ErrorOf([&] { RefuseFaults("list", 100'000, list.dropped); });
  EXPECT_THAT(error, HasSubstr("list, line 2001: the part \"P9\""));
  EXPECT_THAT(error, testing::EndsWith("... and 49000 more"));
}

}  // namespace
