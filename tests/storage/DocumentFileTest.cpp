#include <cstdlib>
#include <gmock/gmock.h>
#include <iterator>
#include <limits>

#include "embedded/processdb/ProcessDatabase.h"
#include "embedded/storage/DocumentFile.h"
#include "tests/storage/DocumentFileSample.h"
#include "tests/support/Plant.h"
#include "tests/support/ReferenceAudit.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/SourceFiles.h"

namespace {

using namespace embedded;
using testing::HasSubstr;
using testing::StartsWith;
using tests::ErrorOf;
using tests::RichDocument;
namespace fs = std::filesystem;

class DocumentFileTest : public tests::ReferenceAudit {};

std::string ErrorIn(const std::string& text) {
  return ErrorOf([&] { ReadDocument(text, "door.json"); });
}

std::string Replaced(std::string text, const std::string& from, const std::string& to) {
  const std::size_t at = text.find(from);
  if (at == std::string::npos) ADD_FAILURE() << "there is no " << from;
  return at == std::string::npos ? text : text.replace(at, from.size(), to);
}

std::string BytesOf(const std::string& file) {
  std::ifstream stream(tests::SourceFile(file), std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

std::string RichText() { return BytesOf("tests/storage/everything.json"); }

void ExpectSameAfterReading(const std::string& text) {
  EXPECT_EQ(WriteDocument(*ReadDocument(text, "door.json")), text);
}

TEST_F(DocumentFileTest, KeepsEverythingAndGivesTheSameBytesAgain) {
  const Owned<Document> document = RichDocument();
  EXPECT_EQ(WriteDocument(*document), RichText());
  ExpectSameAfterReading(RichText());
  // Gaps, and the source of a link that is gone.
  Activity& op10 = *document->FindActivity("OP10");
  document->RemoveFeature(document->FindFeature("SW-2"));
  document->RemoveOutput(op10, *op10.Outputs().front());
  document->RemoveActivity(*document->FindActivity("LOG"));
  ExpectSameAfterReading(WriteDocument(*document));

  using Kind = Document::Kind;
  for (const Kind kind : {Kind::Process, Kind::Product, Kind::Neither}) {
    ExpectSameAfterReading(WriteDocument(*MakeOwned<Document>(kind, "Plan")));
  }
  ExpectSameAfterReading(WriteDocument(*tests::Plant::OfSize(300).Document()));
}

TEST_F(DocumentFileTest, ReadsTheExampleOfItsDescription) {
  const std::string page = BytesOf("docs/document-format.md");
  const std::size_t begin = page.find("```json\n") + 8;
  ExpectSameAfterReading(page.substr(begin, page.find("```", begin) - begin));
}

TEST_F(DocumentFileTest, KeepsTheWayToTheDatabaseWhereverTheFolderStands) {
  const tests::ScratchFolder scratch;
  const fs::path plant = scratch.Path() / "plant";
  fs::create_directories(plant / "data");
  const Owned<Document> document = MakeOwned<Document>(Document::Kind::Process);
  document->AttachDatabase(ProcessDatabase::Create(plant / "data" / "plan.db"));
  SaveDocument(*document, plant / "door.json");
  document->AttachDatabase(nullptr);

  fs::rename(plant, scratch.Path() / "moved");
  fs::create_symlink("moved/door.json", scratch.Path() / "link.json");
  for (const char* const name : {"moved/door.json", "link.json"}) {
    const Owned<Document> loaded = LoadDocument(scratch.Path() / name);
    ASSERT_TRUE(loaded->Database());
    EXPECT_TRUE(fs::equivalent(loaded->Database()->File(), scratch.Path() / "moved/data/plan.db"));
  }
  const std::string text =
      WriteDocument(*LoadDocument(scratch.Path() / "link.json"), scratch.Path() / "moved");
  fs::remove(scratch.Path() / "moved/data/plan.db");
  const Owned<Document> without = LoadDocument(scratch.Path() / "link.json");
  ASSERT_TRUE(without->Lost());
  EXPECT_THAT(without->Lost()->reason, HasSubstr("moved/data/plan.db' is not a file"));
  EXPECT_EQ(WriteDocument(*without, scratch.Path() / "moved"), text);
}

TEST_F(DocumentFileTest, RefusesWhatMakesNoSenseAndNamesThePlace) {
  struct Case {
    const char* from;
    const char* to;
    const char* place;
    const char* reason;
  };

  const Case cases[] = {
      {R"("version": 1)", R"("version": 2)", ", /version: ", "newer program"},
      {R"("version": 1)", R"("version": 0)", ", /version: ", "out of range"},
      {"biw-process-document", "csv", ", /format: ", "another format"},
      {R"("kind": "both")", R"("kind": "plan")", ", /kind: ", R"(one of "process", "product")"},
      {R"("kind": "both")", R"("kind": "product")", ", /activities: ", "no activities"},
      {R"("flows": [)", R"("flow": [)", ": ", R"(the key "flows" is missing)"},
      {R"({"key": "Process", )", R"({"key": "Process", "x/y~": 1, )",
       ", /activities/0/x~1y~0: ", R"(not known; known here are "key")"},
      {R"("parent": "Process", )", "", ", /activities/1: ", "second root"},
      {R"("parent": "Process")", R"("parent": "OP10")", ", /activities/1/parent: ", "further up"},
      {R"("parent": "Process")", R"("parent": "ST10")", ", /activities/1/parent: ", "further up"},
      {R"("key": "OP20")", R"("key": "OP10")", ", /activities/3/key: ", "already"},
      {R"("key": "OP20")", R"("key": "")", ", /activities/3/key: ", "empty"},
      {R"("secondsPerWeld": 3, )", "", ", /activities/1: ", R"("secondsPerWeld" is missing)"},
      {": 12,", ": -1,", ", /activities/1/fixedSeconds: ", "between 0 and 1e+09"},
      {": 12,", R"(: "12",)", ", /activities/1/fixedSeconds: ", "a number"},
      {": 12,", ": 1e999,", ", /activities/1/fixedSeconds: ", "too large"},
      {": 12,", ": 99999999999999999999999,", ", /activities/1/fixedSeconds: ", "out of range"},
      {": 12,", ": NaN,", ", /activities/1/fixedSeconds: ", "not JSON at line 7, column 113"},
      {R"("key": "LOG")", R"("kind": "logical", "key": "LOG")", ", /activities/4/kind: ", "twice"},
      {R"("from": "OP20")", R"("from": "OP99")", ", /flows/0/from: ", "of this document"},
      {R"({"key": "Products"})", R"({"key": "Parts"})", ", /products/0/key: ", "\"Products\""},
      {R"("parent": "DOOR"})", R"("parent": "DOOR.1"})", ", /products/2/parent: ", "further up"},
      {R"("hasShape": false})", R"("hasShape": false}, {"key": "X", "parent": "DOOR.1"})",
       ", /products/4/parent: ", R"(its reference "DOOR" must be the parent)"},
      {R"("hasShape": false})",
       R"("hasShape": false}, {"key": "X", "parent": "INNER", "reference": "DOOR"})",
       ", /products/4/reference: ", "circle"},
      {"[255, 0, 255]", "[255, 0, 256]", ", /products/1/colour/2: ", "out of range"},
      {"[255, 0, 255]", "[255, 0.5, 255]", ", /products/1/colour/1: ", "whole number"},
      {"[255, 0, 255]", "[255, 0]", ", /products/1/colour: ", "exactly 3 numbers"},
      {R"("boxMax": [0, 0, 12.5], )", "", ", /products/1: ", R"("boxMax" is missing)"},
      {"\n    \"DOOR.1\",", "\n    \"X\",", ", /productRoots/0: ", "names no product"},
      {"Door complete", "A$B", ", /assemblies/0/name: ", "without \"$\""},
      {"Door complete", "Door \xFF", ", /assemblies/0/name: ", "not UTF-8"},
      {"Door complete", R"(Door\u0000)", ", /assemblies/0/name: ", "NUL"},
      {R"({"product": "INNER"}])", R"({"assembly": "MA-2"}])",
       ", /assemblies/0/children/1: ", "already"},
      {R"({"key": "MA-2"})", R"({"key": "MA-2", "children": [{"assembly": "MA-9"}]})",
       ", /assemblies/1/children: ", "circle"},
      {R"({"output": 1, "of": "OP20"}, )", "", ", /activities/3/outputs/0: ", "producers"},
      {R"({"output": 1, "of": "OP20"}, )", R"({"output": 1, "of": "OP10"}, )",
       ", /assemblies/0/producers/1: ", "already"},
      {R"({"output": 1, "of": "OP20"}, )", R"({"output": 2, "of": "OP10"}, )",
       ", /assemblies/0/producers/0: ", "does not give"},
      {R"({"output": 1, "of": "OP20"}, )", R"({"output": 2, "of": "OP20"}, )",
       ", /assemblies/0/producers/0/output: ", "between 1 and 1"},
      {R"("key": "SEAM")", R"("key": "C-1")", ", /features/3/key: ", "already"},
      {R"("parts": ["INNER")", R"("parts": ["X")", ", /features/0/parts/0: ", "names no product"},
      {"[1000000000, ", "[1000000001, ", ", /features/0/position/0: ", "out of range"},
      {"[[0, 0, 0], ", "[[0, 0], ", ", /features/3/points/0: ", "exactly 3 numbers"},
      {R"("show": 3)", R"("show": 4)", ", /features/3/show: ", "between 0 and 3"},
      {R"({"feature": "SW-2"})", R"({"feature": "SW-9"})",
       ", /links/0/item/feature: ", R"("SW-9" names no feature)"},
      {R"({"feature": "SW-2"})", R"({"weld": "SW-2"})", ", /links/0/item/weld: ", "not known"},
      {R"({"feature": "SW-2"})", "{}", ", /links/0/item: ", "one key"},
      {R"({"feature": "SW-2"})", "5", ", /links/0/item: ", "an object"},
      {R"("selector": 7)", R"("selector": 3000000000)", ", /links/4/selector: ", "out of range"},
      {R"("flows": [)", R"("flows": [[[[[[[[[[[[[[[[[[[)",
       ", /flows/0/0/0/0/0/0/0/0/0/0/0/0/0/0/0: ", "nested more than 16 deep"},
      {"\n  ]\n}\n", "\n  ]\n}\n}", ": ", "not JSON at line 53, column 1"},
  };
  const std::string text = RichText();
  for (const Case& test : cases) {
    const std::string error = ErrorIn(Replaced(text, test.from, test.to));
    EXPECT_THAT(error, StartsWith("door.json" + std::string(test.place)));
    EXPECT_THAT(error, HasSubstr(test.reason));
  }
  for (const char* const other : {"[]", "null", "5", "\"text\"", "{}", "[[]]"}) {
    EXPECT_THAT(ErrorIn(other), StartsWith("door.json: ")) << other;
  }
}

TEST_F(DocumentFileTest, RefusesATextThatBreaksOffAnywhere) {
  const std::string text = RichText();
  for (std::size_t length = 0; length + 1 < text.size(); ++length) {
    const std::string error = ErrorIn(text.substr(0, length));
    ASSERT_THAT(error, HasSubstr("the text breaks off at line ")) << length;
  }
  EXPECT_EQ(ErrorIn(text.substr(0, text.size() - 1)), "");
  EXPECT_THAT(ErrorIn(text.substr(0, text.find("\"SEAM\""))),
              StartsWith("door.json, /features/3/key: "));
}

TEST_F(DocumentFileTest, RefusesToWriteWhatCouldNotBeRead) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  tests::Plant plant;
  plant.Weld("SW-1");
  plant.Weld("SW-2", {0, nan, 0});
  EXPECT_EQ(
      ErrorOf([&] { WriteDocument(*plant.Document()); }),
      "The document cannot be saved: at /features/1, \"position\" is nan and must lie between "
      "-1e+09 and 1e+09");
  tests::Plant other;
  other.Part("D\xFC");
  EXPECT_THAT(ErrorOf([&] { WriteDocument(*other.Document()); }), HasSubstr("not UTF-8"));
  tests::Plant mixed;
  mixed.Assign(mixed.Operation("OP10"), plant.Weld("SW-3"));
  EXPECT_THAT(ErrorOf([&] { WriteDocument(*mixed.Document()); }),
              HasSubstr("at /links/0, the item is no object of this document"));
}

TEST_F(DocumentFileTest, FollowsItsSchema) {
  if (std::system("python3 -c 'import jsonschema' 2>/dev/null") != 0) GTEST_SKIP();
  const tests::ScratchFolder scratch;
  const std::string text = RichText();
  const auto matches = [&](const std::string& document) {
    const std::string file = scratch.Write("door.json", document).string();
    const std::string schema =
        tests::SourceFile("resources/schema/biw-process-document.schema.json");
    const std::string command =
        "python3 -c 'import json, sys, jsonschema; jsonschema.validate("
        "*(json.load(open(name)) for name in sys.argv[1:]))' '" +
        file + "' '" + schema + "' 2>/dev/null";
    return std::system(command.c_str()) == 0;
  };
  EXPECT_TRUE(matches(text));
  EXPECT_FALSE(matches(Replaced(text, "\"represented\"", "\"shown\"")));
  EXPECT_FALSE(matches(Replaced(text, "\"output\": 1", "\"output\": 0")));
}

}  // namespace
