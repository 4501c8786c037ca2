#include <gmock/gmock.h>

#include "tests/planner/GlbReader.h"
#include "tests/planner/Planner.h"

// Assimp loses the pieces that it has begun when it refuses an STL file of text.
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions() { return "leak:libassimp"; }

namespace {

using namespace tests;
using Json = GlbReader::Json;
using testing::HasSubstr;

constexpr char kTetrahedron[] =
    "mtllib /dev/zero\no tip\nusemtl red\nv 0 0 0\nv 30 0 0\nv 0 20 0\nv 0 0 10\nvn 0 0 1\n"
    "f 1//1 3//1 2//1\nf 1 2 4\nf -4 -1 -2 # counted back\nf 2 3 \\\n4\n";

std::string BinaryStl(const std::vector<std::array<float, 9>>& triangles) {
  std::string bytes(80, ' ');
  const auto append = [&bytes](const auto& value) {
    bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
  };
  append(static_cast<std::uint32_t>(triangles.size()));
  for (const std::array<float, 9>& corners : triangles) {
    append(std::array<float, 3>{0, 0, 1});
    append(corners);
    append(std::uint16_t{0});
  }
  return bytes;
}

class SceneFileTest : public PlannerTest {
 protected:
  void Begin(const std::string& parts, const std::string& welds = kWelds) {
    folder_.Write("parts.csv", parts);
    folder_.Write("welds.csv", welds);
    const Spoken begun =
        Do("new --parts @parts.csv --welds @welds.csv --process @process.csv --replace");
    ASSERT_EQ(begun.status, 0) << begun.messages;
  }
  GlbReader Glb(const std::string& name) const { return GlbReader(Bytes(name)); }

  static void ExpectNear(const GlbReader::Point& at, const GlbReader::Point& expected) {
    for (std::size_t i = 0; i < 3; ++i) EXPECT_NEAR(at[i], expected[i], 1e-9);
  }
};

TEST_F(SceneFileTest, EveryPartWeldAndLabelIsANodeInItsPlace) {
  folder_.Write("meshes/tip.obj", kTetrahedron);
  Begin(
      "id,number,name,parent,instance_of,colour,xmin,ymin,zmin,xmax,ymax,zmax,x,y,z,rz,mesh\n"
      "DOOR,,Door,,,#102030,,,,,,,,,,,\n"
      "P1,,Inner panel,DOOR,,,0,0,0,10,20,30,1,2,3,,\n"
      "P2,,Outer panel,DOOR,,#FF0000,,,,,,,5,0,0,90,meshes/tip.obj\n"
      "P3,,Hinge,,,,,,,,,,,,,,\nPIN,,Pin,P3,,,-1,-1,-1,1,1,1,10,0,0,,\n"
      "H.1,,Upper hinge,DOOR,P3,,,,,,,,1000,0,7,90,\n",
      std::string(kWelds) + "SW-4,1,2,3,P1;P2,projection\n");
  const Spoken drawn = Run({"@door.json", "--script", "-"},
                           "assign OP10 SW-1 SW-2\nassign OP20 SW-2\nassign OP30 SM-1\n"
                           "hide SW-3\nhighlight SW-4\nvisualise SW-1\nlabels on SW-2\n"
                           "scene --output @door.glb\n");
  ASSERT_EQ(drawn.status, 0) << drawn.messages;
  EXPECT_THAT(drawn.results, HasSubstr("door.glb: 7 parts, 7 welds, 2 labels; "));
  const GlbReader glb = Glb("door.glb");
  // The labels share their names with welds.
  EXPECT_EQ(glb.json["nodes"].size(), 1u + 7 + 7 + 2);

  const std::string& scene = glb.json["scenes"][0]["extras"].dump();
  EXPECT_EQ(scene,
            R"({"activities":[)"
            R"({"id":"Process","kind":"other","name":"Process","parent":null,"welds":0},)"
            R"({"id":"ST10","kind":"station","name":"Geo station","parent":"Process","welds":0},)"
            R"({"id":"OP10","kind":"operation","name":"Tack","parent":"ST10","welds":2},)"
            R"({"id":"OP20","kind":"operation","name":"Respot","parent":"ST10","welds":1},)"
            R"({"id":"OP30","kind":"operation","name":"Seal","parent":"ST10","welds":1}],)"
            R"("document":"door","program":"biwplan"})");
  EXPECT_EQ(glb.Extras("SW-2").dump(),
            R"({"activities":["OP10","OP20"],"assigned":true,"color":"#009E73","diameter":6.0,)"
            R"("highlighted":false,"id":"SW-2","kind":"weld","name":"SW-2","parts":["P1","P2"],)"
            R"("position":[110.0,0.0,52.5],"processType":"spot","shown":true,"status":"several",)"
            R"("type":"spot"})");
  EXPECT_EQ(glb.Extras("L-1")["type"], "locating");
  EXPECT_EQ(glb.Extras("C-1")["type"], "clamping");
  EXPECT_EQ(glb.Extras("SW-4")["color"], "#56B4E9");
  EXPECT_EQ(glb.Extras("SW-3")["shown"], false);
  EXPECT_EQ(glb.Material("SW-3")["alphaMode"], "MASK");
  EXPECT_EQ(glb.Material("SW-3")["pbrMetallicRoughness"]["baseColorFactor"][3], 0.0);

  // Metres, Y up.
  ExpectNear(glb.World("SW-1"), {0.100, 0.0525, 0});
  ExpectNear(glb.World("L-1"), {0.005, 0.007, -0.006});
  ExpectNear(glb.World("P1", {10, 20, 30}), {0.011, 0.033, -0.022});
  ExpectNear(glb.World("P2", {30, 0, 0}), {0.005, 0, -0.030});
  ExpectNear(glb.World("H.1/PIN"), {1.000, 0.007, -0.010});
  EXPECT_EQ(glb.Bounds("P2"), (std::array<GlbReader::Point, 2>{{{0, 0, 0}, {30, 20, 10}}}));
  EXPECT_EQ(glb.Triangles("P2"), 4u);
  EXPECT_EQ(glb.Bounds("P1")[1], (GlbReader::Point{10, 20, 30}));
  // A tube of 4 mm from 0 0 0 to 0 30 0, a ball of 6 mm.
  const auto tube = glb.Bounds("SM-1");
  ExpectNear(tube[0], {-2, 0, -2});
  ExpectNear(tube[1], {2, 30, 2});
  EXPECT_EQ(glb.Bounds("SW-1")[1][2], 3.0);

  // Of its own, of the assembly above; a pattern is not drawn, its instance is.
  EXPECT_EQ(glb.Extras("P2")["color"], "#FF0000");
  EXPECT_EQ(glb.Material("P2")["pbrMetallicRoughness"]["baseColorFactor"],
            Json({1.0, 0.0, 0.0, 1.0}));
  EXPECT_EQ(glb.Extras("P1")["color"], "#102030");
  EXPECT_EQ(glb.Extras("PIN")["shown"], false);
  EXPECT_FALSE(glb.nodes.at("PIN").contains("mesh"));
  EXPECT_EQ(glb.Extras("H.1/PIN")["color"], "#102030");
}

TEST_F(SceneFileTest, MeshesAreAlikeInEveryFormat) {
  const std::string corners[3] = {"0 0 0", "9 0 0", "0 8 1e-3"};
  std::string ascii = "solid plate\nfacet normal 0 0 1\nouter loop\n";
  for (const std::string& corner : corners) ascii += "vertex " + corner + "\n";
  folder_.Write("a.stl", ascii + "endloop\nendfacet\nendsolid plate\n");
  folder_.Write("b.STL", BinaryStl({{0, 0, 0, 9, 0, 0, 0, 8, 1e-3F}, {1, 1, 1, 1, 1, 1, 2, 2, 2}}));
  folder_.Write("c.obj", "v 0 0 0\r\nv 9 0 0\r\nv 0 8 1e-3\r\nf 1/9/9 2 3\r\n");
  Begin("number,mesh\nP1,a.stl\nP2,b.STL\nP3,c.obj\n");
  ASSERT_EQ(Do("scene --output @s.glb").status, 0);
  const GlbReader glb = Glb("s.glb");
  for (const char* const part : {"P1", "P2", "P3"}) {
    EXPECT_EQ(glb.Triangles(part), 1u) << part;
    EXPECT_EQ(glb.Bounds(part)[1], (GlbReader::Point{9, 8, 1e-3F})) << part;
  }
}

TEST_F(SceneFileTest, AMeshThatCannotBeReadIsNamedAndNothingIsLost) {
  const std::string one = BinaryStl({{0, 0, 0, 9, 0, 0, 0, 8, 1}});
  std::string many = one;
  many[80] = 2;
  std::string corners = "v 0 0 0\nv 1 0 0\nv 1 1 0\nf";
  for (int i = 0; i < 65; ++i) corners += " 1 2 3";
  std::string faces = "v 0 0 0\nv 1 0 0\nv 1 1 0\n";
  for (int i = 0; i <= 1'000'000; ++i) faces += "f 1 2 3\n";
  const float nan = std::nanf("");
  struct Case {
    const char* name;
    std::string bytes;
    const char* reason;
  };
  const Case cases[] = {
      {"cut.stl", one.substr(0, one.size() - 9), "it must be a complete stl file"},
      {"short.stl", "abc", "it must be a complete stl file"},
      {"empty.stl", "", "it must be a complete stl file"},
      {"promises.stl", many, "it must be a complete stl file"},
      {"words.stl", "solid\nfacet normal x y z\nouter loop\nvertex no\n", "must"},
      {"nan.stl", BinaryStl({{nan, 0, 0, 9, 0, 0, 0, 8, 1}}), "must lie within 1000000 mm"},
      {"far.obj", "v 0 0 1e30\nv 1 0 0\nv 0 1 0\nf 1 2 3\n", "must lie within 1000000 mm"},
      {"flat.stl", BinaryStl({{1, 1, 1, 1, 1, 1, 2, 2, 2}}), "it must have at least one triangle"},
      {"points.obj", "v 0 0 1\n", "must"},
      {"index.obj", "v 0 0 0\nv 1 0 0\nf 1 2 7\n", "must"},
      {"corners.obj", corners, "its faces must have at most 64 corners"},
      {"faces.obj", faces, "it must have at most 1000000 faces"},
  };
  folder_.Write("old.glb", "the former file");
  for (const Case& each : cases) {
    folder_.Write(each.name, each.bytes);
    Begin("number,mesh\nP1,\nP2,\nP3," + std::string(each.name) + "\n");
    const std::string document = Bytes("door.json");
    const Spoken drawn = Do("scene --output @old.glb");
    EXPECT_EQ(drawn.status, 2) << each.name;
    EXPECT_THAT(drawn.messages, HasSubstr(std::string(each.name) + ": the mesh cannot be read; "));
    EXPECT_THAT(drawn.messages, HasSubstr(each.reason));
    EXPECT_EQ(std::count(drawn.messages.begin(), drawn.messages.end(), '\n'), 1) << drawn.messages;
    EXPECT_EQ(Bytes("door.json"), document);
  }
  std::filesystem::remove(Path("faces.obj"));
  EXPECT_THAT(Do("scene --output @old.glb").messages,
              HasSubstr("faces.obj: the mesh cannot be read; there is no such file"));
  EXPECT_EQ(Bytes("old.glb"), "the former file");
  EXPECT_EQ(Do("scene --output @scene.txt").status, 2);
  folder_.Write("parts.csv", "number,mesh\nP1,shape.step\n");
  EXPECT_THAT(
      Do("new --replace --parts @parts.csv --welds @welds.csv --process @process.csv").messages,
      HasSubstr("parts.csv, line 2: mesh is \"shape.step\"; it must be"));
}

TEST_F(SceneFileTest, APreviewShowsTheChosenItemsAloneInBothModes) {
  Begin(
      "number,parent,instance_of,colour,xmin,ymin,zmin,xmax,ymax,zmax,x,y,z,rz\n"
      "P1,,,#FF0000,0,0,0,10,20,30,7,8,9,90\nP2,P1,,,0,0,0,1,1,1,1,2,3,30\nP3,,,,,,,,,,,,,\n"
      "P4,,P3,,0,0,0,1,1,1,5,5,5,\n");
  for (const std::string mode : {"", " --own-scene"}) {
    const Spoken drawn = Do("preview P1 SW-1..SW-2 SM-1 L-1 P1 --output @p.glb" + mode);
    EXPECT_EQ(drawn.results.substr(0, 32), "p.glb: 2 parts, 4 welds, 0 label") << drawn.messages;
    const GlbReader glb = Glb("p.glb");
    EXPECT_EQ(glb.nodes.size(), 6u) << mode;
    ExpectNear(glb.World("SW-1"), {0.100, 0.0525, 0});
    ExpectNear(glb.World("SM-1"), {0, 0, 0});
    ExpectNear(glb.World("P1", {10, 0, 30}), {0.007, 0.039, -0.018});
    ExpectNear(glb.World("P2"), {0.001, 0.003, -0.002});
    EXPECT_EQ(glb.Extras("P2")["color"], "#FF0000");
    EXPECT_EQ(glb.Extras("SW-1")["color"], "#D55E00");
    EXPECT_EQ(glb.json["scenes"][0]["extras"]["framed"][1][2], 52.5) << mode;
  }
  std::string document = Bytes("door.json");
  document.insert(document.find("\"key\": \"P4\"") + 11, ", \"hasShape\": false");
  folder_.Write("door.json", document);
  EXPECT_EQ(Do("preview P4 --own-scene --output @none.glb").status, 1);
  EXPECT_EQ(Do("preview P9 --output @none.glb").status, 2);
  EXPECT_FALSE(std::filesystem::exists(Path("none.glb")));
}

TEST_F(SceneFileTest, APageHoldsTheSceneInPlaceOfItsMarker) {
  Begin(kParts);
  setenv("TUV_RESOURCES", folder_.Path().c_str(), 1);
  folder_.Write("viewer/scene.html", "<p><!--SCENE--></p>");
  EXPECT_EQ(Do("scene --output @s.glb").status, 0);
  EXPECT_EQ(Do("scene --output @s.HTML").status, 0);
  const std::string page = Bytes("s.HTML");
  const std::size_t bytes = Bytes("s.glb").size();
  const std::string before = "<p><script id=\"scene\" type=\"application/octet-stream;base64\">";
  EXPECT_EQ(page.substr(0, before.size() + 10), before + "Z2xURgIAAA");
  EXPECT_EQ(page.size(), before.size() + (bytes + 2) / 3 * 4 + 13);
  EXPECT_EQ(std::count(page.end() - 16, page.end(), '='), (3 - bytes % 3) % 3);
  EXPECT_TRUE(page.ends_with("</script></p>"));
  folder_.Write("viewer/scene.html", "<!--SCENE--><!--SCENE-->");
  EXPECT_EQ(Do("scene --output @t.html").status, 2);
  EXPECT_FALSE(std::filesystem::exists(Path("t.html")));
  unsetenv("TUV_RESOURCES");
}

}  // namespace
