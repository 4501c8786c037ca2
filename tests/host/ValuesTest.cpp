#include <gtest/gtest.h>

#include "host/values/Values.h"

namespace {

TEST(TextTest, PositionsAndLengthsCountCharacters) {
  const ZefUnicodeString text("Tür $ Schweiß-µ $ 点");
  EXPECT_EQ(text.GetLengthInChar(), 19);
  const struct {
    const char* searched;
    int start, found;
  } searches[] = {{"$", 0, 4},   {"$", 5, 16}, {"$", 17, -1}, {"点", 0, 18}, {"$", -3, 4},
                  {"$", 99, -1}, {"", 2, 2},   {"ß-", 3, 12}, {"z", 0, -1}};
  for (const auto& [searched, start, found] : searches) {
    EXPECT_EQ(text.SearchSubString(searched, start, 0), found) << searched << " from " << start;
  }
  const struct {
    int start, length;
    const char* part;
  } parts[] = {{0, 3, "Tür"}, {1, 1, "ü"}, {16, 9, "$ 点"}, {19, 1, ""}, {0, 0, ""}, {2, -1, ""}};
  for (const auto& [start, length, part] : parts) {
    EXPECT_EQ(text.SubString(start, length), part) << start << ", " << length;
  }
}

TEST(TextTest, ComparesExactlyAndJoins) {
  const char* const none = nullptr;
  ZefUnicodeString text("a");
  EXPECT_NE(text.Compare("a"), 0) << "non-zero for equal texts";
  EXPECT_EQ(text.Compare("A"), 0);
  EXPECT_TRUE(text == "a" && text != "A" && ZefUnicodeString(none) == "");
  EXPECT_EQ("x" + text.Append("b").Append(ZefUnicodeString("c")).Append(none) + "d" + text,
            "xabcdabc");
}

TEST(TextTest, AListInsertsBeforeAPositionAndFinds) {
  ZefListValZefUnicodeString texts, other, common;
  texts.InsertBefore(1, "b");
  texts.InsertBefore(1, "a");
  texts.InsertBefore(9, "c");
  texts.Append("b");
  EXPECT_EQ(texts[1] + texts[2] + texts[3] + texts[4] + texts[5] + texts[0], "abcb");
  EXPECT_EQ(texts.Locate("b", 3), 4);
  EXPECT_EQ(texts.Locate("d", 1), 0);
  other.Append("b");
  common.Append("x");
  ZefListValZefUnicodeString::Intersection(texts, other, common);
  EXPECT_EQ(common[1] + common[2] + common[3], "bb");
}

void ExpectNear(const ZefMathVector& a, double x, double y, double z) {
  EXPECT_NEAR(a.GetX(), x, 1e-12);
  EXPECT_NEAR(a.GetY(), y, 1e-12);
  EXPECT_NEAR(a.GetZ(), z, 1e-12);
}

TEST(GeometryTest, AMatrixIsMadeOfItsColumns) {
  EXPECT_DOUBLE_EQ(ZefDegreeToRadian * 180, 3.141592653589793);
  const ZefMath3x3Matrix matrix({1, 2, 3}, {0, 4, 5}, {0, 0, 6});
  ExpectNear(matrix * ZefMathVector(1, 10, 100), 1, 42, 653);
  ExpectNear(matrix.Inverse() * ZefMathVector(1, 42, 653), 1, 10, 100);
  const ZefMath3x3Matrix flat({1, 2, 3}, {2, 4, 6}, {0, 0, 1});
  ExpectNear(flat.Inverse() * ZefMathVector(1, 1, 1), 0, 0, 0);
}

TEST(GeometryTest, ATransformationTurnsThenMoves) {
  // A quarter turn about Z.
  const ZefMathTransformation place({{0, 1, 0}, {-1, 0, 0}, {0, 0, 1}}, {10, 20, 30});
  ExpectNear(place.Inverse().GetVector(), -20, 10, -30);
  const ZefMathAxis axis = place * (place * ZefMathAxis());
  ExpectNear(axis.GetOrigin(), -10, 30, 60);
  ExpectNear(axis.GetDirections().Column(0), -1, 0, 0);
  const Zef4x4Matrix matrix(place * ZefMathAxis());
  const double expected[] = {0, -1, 0, 10, 1, 0, 0, 20, 0, 0, 1, 30, 0, 0, 0, 1};
  for (int i = 0; i < 16; ++i) EXPECT_EQ(matrix.At(i / 4, i % 4), expected[i]) << i;
}

}  // namespace
