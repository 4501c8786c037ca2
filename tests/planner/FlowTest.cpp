#include <array>
#include <gmock/gmock.h>

#include "tests/planner/Planner.h"

namespace tests {
namespace {

using testing::Contains;
using testing::HasSubstr;
using testing::IsSupersetOf;
using testing::Not;
using testing::UnorderedElementsAre;
using Texts = std::vector<std::string>;

std::string WithoutEntities(std::string text) {
  static constexpr std::array<std::array<const char*, 2>, 6> kEntities{{{"&lt;", "<"},
                                                                        {"&gt;", ">"},
                                                                        {"&quot;", "\""},
                                                                        {"&#45;", "-"},
                                                                        {"&#160;", " "},
                                                                        {"&amp;", "&"}}};
  for (const auto& [entity, character] : kEntities) {
    for (std::size_t at = 0; (at = text.find(entity, at)) != std::string::npos; ++at) {
      text.replace(at, std::string(entity).size(), character);
    }
  }
  return text;
}

// The contents of the elements of that name in an SVG file.
Texts ContentsOf(const std::string& element, const std::string& svg) {
  Texts texts;
  for (std::size_t at = 0; (at = svg.find('<' + element, at)) != std::string::npos;) {
    at = svg.find('>', at) + 1;
    texts.push_back(WithoutEntities(svg.substr(at, svg.find('<', at) - at)));
  }
  return texts;
}

class FlowTest : public PlannerTest {
 protected:
  std::string Draw(const std::string& arguments = "") const {
    const Spoken spoken = Do("flow --output @flow.svg " + arguments);
    EXPECT_EQ(spoken.status, 0) << spoken.messages;
    return Bytes("flow.svg");
  }

  void DoAll(const Texts& lines) const {
    for (const std::string& line : lines) {
      const Spoken spoken = Do(line);
      EXPECT_EQ(spoken.status, 0) << line << ": " << spoken.messages;
    }
  }

  static Texts Arrows(const std::string& svg) {
    Texts arrows = ContentsOf("title", svg);
    std::erase_if(arrows,
                  [](const std::string& title) { return title.find("->") == std::string::npos; });
    return arrows;
  }
};

TEST_F(FlowTest, PictureShowsStationsFlowsAssembliesAndWelds) {
  Begin();
  DoAll({"update on", "add station ST20", "output ST10", "link ST10 ST20", "drop P1 OP10",
         "assign OP20 SW-1 SW-2", "add station ST30", "update off", "drop MA-1 ST30"});
  const std::string svg = Draw();
  EXPECT_THAT(Arrows(svg),
              UnorderedElementsAre("OP10:s->OP20:n", "OP20:s->OP30:n", "ST10->ST20", "ST10->ST30"));
  EXPECT_THAT(ContentsOf("title", svg), IsSupersetOf({"cluster ST10", "OP10", "OP20", "ST20"}));
  const Texts texts = ContentsOf("text", svg);
  EXPECT_THAT(texts, IsSupersetOf({"Geo station", "2 welds", "1 part, 0 welds", "2 on no activity",
                                   "1 conflict", "no flow takes MA-1 to", "MA-1 Geo station"}));
  EXPECT_THAT(ContentsOf("title", Draw("ST20")), Not(Contains("ST10")));
  EXPECT_EQ(Do("flow --output @flow.dot").results,
            "flow.dot: 3 stations, 3 flows, 4 welds, 2 on no activity; 1 conflict\n"
            "  ST10: no flow takes MA-1 to ST30\n");
  EXPECT_THAT(Bytes("flow.dot"), HasSubstr("\"ST10\" -> \"ST20\" [weight=8, label="));
  EXPECT_EQ(Do("flow --output @flow.png").status, 0);
  EXPECT_TRUE(Bytes("flow.png").starts_with("\x89PNG"));
}

TEST_F(FlowTest, NamesComeThroughUnharmed) {
  const Texts names = {"a \"b\"", "\\N c\\", "<b>&amp; x</b>", "Tür €", "&#65;", "--> ] ; }"};
  Begin();
  for (std::size_t i = 0; i < names.size(); ++i) {
    const Spoken spoken =
        Run({"@door.json", "add", "station", "A&B;" + std::to_string(i), "--label", names[i]});
    EXPECT_EQ(spoken.status, 0) << spoken.messages;
  }
  EXPECT_EQ(Run({"@door.json", "add", "station", "origin", "--label", "one|two"}).status, 0);
  std::string text = Bytes("door.json");
  folder_.Write("door.json", text.replace(text.find("one|two"), 7, "one\\ntwo"));
  DoAll({"output origin 'M \"1\" \\<i>'"});
  const std::string svg = Draw();
  EXPECT_THAT(ContentsOf("text", svg), IsSupersetOf(names));
  EXPECT_THAT(ContentsOf("text", svg), IsSupersetOf({"one", "two", "makes MA-1 M \"1\" \\<i>"}));
  EXPECT_THAT(ContentsOf("title", svg), IsSupersetOf({"A&B;0", "origin"}));
}

TEST_F(FlowTest, ConflictsAreMarked) {
  Begin();
  DoAll({"add station ST20", "add station ST30", "output ST10", "link ST10 ST20"});
  EXPECT_THAT(Do("flow --output @flow.dot --json").results,
              HasSubstr("\"conflicts\":[{\"activity\":\"ST10\",\"reason\":\"MA-1 is not handed on "
                        "to ST20\"}]}"));
  DoAll({"link ST10 ST30", "output ST20", "output ST20"});
  const std::string svg = Draw();
  EXPECT_THAT(ContentsOf("text", svg),
              IsSupersetOf({"several could take in", "MA-1: ST20, ST30", "2 outputs: none gets",
                            "parts", "2 conflicts"}));
  std::size_t red = 0;
  for (std::size_t at = 0; (at = svg.find("stroke=\"#c00000\"", at)) != std::string::npos; ++at) {
    ++red;
  }
  // Two stations, and two arrows of a line and a head each.
  EXPECT_EQ(red, 6U);
}

TEST_F(FlowTest, RingsAreMarked) {
  Begin();
  DoAll({"update on", "add station ST20", "output ST10", "output ST20", "link ST10 ST20",
         "link ST20 ST10"});
  EXPECT_EQ(Do("flow --output @flow.dot").results,
            "flow.dot: 2 stations, 4 flows, 4 welds, 4 on no activity; 2 conflicts\n"
            "  ST10: the links run in a ring: ST10 -> ST20 -> ST10\n"
            "  ST20: MA-2 contains what ST10 makes\n");
}

TEST_F(FlowTest, WhatCannotBeDrawnIsRefusedAndAnEmptyProcessIsDrawn) {
  folder_.Write("none.csv", "id,name\n");
  EXPECT_EQ(Do("new --parts @parts.csv --welds @welds.csv --process @none.csv").status, 0);
  folder_.Write("flow.pdf", "mine");
  const Spoken pdf = Do("flow --output @flow.pdf");
  EXPECT_EQ(pdf.status, 2);
  EXPECT_EQ(pdf.messages,
            "biwplan: flow.pdf: the ending of the name says what to draw; it must be .dot, .svg or "
            ".png\n");
  EXPECT_EQ(Bytes("flow.pdf"), "mine");
  EXPECT_EQ(Do("flow --output @nowhere/flow.svg").status, 2);
  EXPECT_EQ(Do("flow").status, 2);
  EXPECT_THAT(ContentsOf("text", Draw()), Contains("nothing is planned yet"));
}

}  // namespace
}  // namespace tests
