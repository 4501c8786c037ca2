#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>

#include "embedded/Error.h"
#include "embedded/storage/CsvReader.h"

namespace {

using embedded::CsvOptions;
using embedded::CsvReader;
using embedded::InputError;
using testing::ElementsAre;
using testing::HasSubstr;

// One text per row: its line, then its fields in brackets.
std::vector<std::string> Rows(const std::string& text, const CsvOptions& options = {}) {
  std::istringstream stream(text);
  CsvReader reader(stream, "list.csv", options);
  std::vector<std::string> rows;
  while (reader.Next()) {
    std::string row = std::to_string(reader.Line()) + ":";
    for (const auto field : reader.Fields()) row.append("[").append(field).append("]");
    rows.push_back(row);
  }
  return rows;
}

std::string ErrorOf(const std::string& text, const CsvOptions& options = {}) {
  try {
    Rows(text, options);
  } catch (const InputError& error) {
    return error.what();
  }
  return "no error";
}

TEST(CsvReaderTest, FindsRowsWhateverTheirLineEndsCommentsAndMark) {
  const std::vector<std::string> expected = {"2:[id][x]", "4:[A][ü]", "6:[B][]"};
  for (const std::string end : {"\n", "\r\n", "\r"}) {
    std::string text = "# made by hand, no weld" + end + "id,x" + end + end + "A,ü" + end +
                       "$ \"open" + end + "B," + end;
    EXPECT_EQ(Rows(text), expected);
    EXPECT_EQ(Rows("\xEF\xBB\xBF" + text), expected);
    text.erase(text.size() - end.size());
    EXPECT_EQ(Rows(text), expected);
  }
  EXPECT_TRUE(Rows("").empty());
  EXPECT_TRUE(Rows("\xEF\xBB\xBF").empty());
  EXPECT_TRUE(Rows("\n ,, \n\n,,,\n# end").empty());
}

TEST(CsvReaderTest, FindsTheDelimiterInTheFirstRowThatHasOne) {
  EXPECT_THAT(Rows("a,b;c,d\n1,2"), ElementsAre("1:[a][b;c][d]", "2:[1][2]"));
  EXPECT_THAT(Rows("a;b;c\n1,5;2"), ElementsAre("1:[a][b][c]", "2:[1,5][2]"));
  EXPECT_THAT(Rows("a\t\tc\n"), ElementsAre("1:[a][][c]"));
  EXPECT_THAT(Rows("# a,b,c\nLeft door\n\"a,b,c,d\";x\n"),
              ElementsAre("2:[Left door]", "3:[a,b,c,d][x]"));
  EXPECT_THAT(Rows("a,b;c", {.delimiter = ';'}), ElementsAre("1:[a,b][c]"));
}

TEST(CsvReaderTest, QuotesKeepWhatPlainFieldsLose) {
  EXPECT_THAT(Rows(" a , \" b \" ,5\" rod,\"say \"\"on\"\"\",\"\"\n"),
              ElementsAre("1:[a][ b ][5\" rod][say \"on\"][]"));
  EXPECT_THAT(Rows("\"one\r\ntwo\rthree\",x\nnext,y"),
              ElementsAre("1:[one\ntwo\nthree][x]", "4:[next][y]"));
  EXPECT_THAT(Rows(" a ,b", {.trim = false}), ElementsAre("1:[ a ][b]"));
  EXPECT_THAT(Rows("\"#1\",a\n"), ElementsAre("1:[#1][a]"));
  EXPECT_THAT(Rows("a,b,,\n", {.dropTrailingEmpty = true}), ElementsAre("1:[a][b]"));
}

TEST(CsvReaderTest, ReadsAcrossTheEndsOfItsBuffer) {
  for (int padding = 65530; padding <= 65540; ++padding) {
    const auto size = static_cast<std::size_t>(padding);
    EXPECT_THAT(Rows("#" + std::string(size, 'x') + "\r\na;\"b\"\"c\r\n\";ü\r\nd;e"),
                ElementsAre("2:[a][b\"c\n][ü]", "4:[d][e]"));
  }
}

TEST(CsvReaderTest, RefusesWithTheLine) {
  using namespace std::string_literals;
  const std::pair<std::string, std::string> cases[] = {
      {"a,b\n\nc,\"d\ne\n", "list.csv, line 3: the quote"},
      {"a,\"b\n\"c\n", "line 2: text follows"},
      {"a,b\n1,\0\n"s, "line 2: there is a NUL"},
      {"a,\"\n\0\"\n"s, "line 2: there is a NUL"},
      {"#\n# \0\n"s, "line 2: there is a NUL"},
      {"a\nM\xFCller\n", "line 2: the text is not UTF-8"},
      {"a\n\xE2\x82,\xAC\n", "line 2: the text is not UTF-8"},
      {"\xED\xA0\x80\n", "line 1: the text is not UTF-8"},
      {"\xFF\xFE"
       "a\0"s,
       "line 1: the text is in UTF-16"},
  };
  for (const auto& [text, error] : cases) EXPECT_THAT(ErrorOf(text), HasSubstr(error)) << text;
}

TEST(CsvReaderTest, BoundsWhatItHolds) {
  const CsvOptions options{.maxFieldBytes = 8, .maxRowBytes = 12, .maxFields = 3};
  EXPECT_EQ(ErrorOf("12345678,1234,\n", options), "no error");
  EXPECT_THAT(ErrorOf("a\n123456789\n", options), HasSubstr("line 2: a field is longer than 8"));
  EXPECT_THAT(ErrorOf("a\n\"12345678\n", options), HasSubstr("line 2: a field is longer than 8"));
  EXPECT_THAT(ErrorOf("12345678,12345\n", options), HasSubstr("line 1: the row is longer than 12"));
  EXPECT_THAT(ErrorOf(",,,x\n", options), HasSubstr("line 1: the row has more than 3 fields"));
}

}  // namespace
