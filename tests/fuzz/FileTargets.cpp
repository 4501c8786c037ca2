#include <cmath>
#include <cstring>
#include <gmock/gmock.h>

#include "embedded/dialog/CatalogFile.h"
#include "embedded/storage/DocumentFile.h"
#include "planner/scene/MeshFile.h"
#include "tests/fuzz/Targets.h"
#include "tests/support/ScratchFolder.h"

namespace tests {

using biwplan::TriangleMesh;
using embedded::Catalog;
using testing::HasSubstr;
using testing::StartsWith;

void FuzzDocument(std::string_view iBytes) {
  embedded::Owned<embedded::Document> document;
  const std::string error =
      ErrorOf([&] { document = embedded::ReadDocument(iBytes, "door.json"); });
  if (document) return ExpectStored(*document);
  EXPECT_THAT(error, StartsWith("door.json"));
  EXPECT_EQ(error.find('\n'), std::string::npos) << error;
}

namespace {

std::string AsText(const Catalog& catalog) {
  const std::map<char, std::string> escapes = {
      {'\n', "\\n"}, {'\t', "\\t"}, {' ', "\\s"}, {'\\', "\\\\"}};
  std::string text = "\n";
  for (const auto& [key, message] : catalog) {
    text += key + "=";
    for (const char c : message) {
      text += escapes.contains(c) ? escapes.at(c) : std::string(1, c);
    }
    text += "\n";
  }
  return text;
}

// As an STL file, whose numbers are those of the mesh.
std::string AsStl(const TriangleMesh& mesh) {
  std::string bytes(80, ' ');
  const auto append = [&bytes](const auto& value) {
    bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
  };
  append(static_cast<std::uint32_t>(mesh.triangles.size()));
  for (const auto& triangle : mesh.triangles) {
    append(TriangleMesh::Triple{});
    for (const std::uint32_t corner : triangle) append(mesh.points.at(corner));
    append(std::uint16_t{0});
  }
  return bytes;
}

}  // namespace

void FuzzCatalog(std::string_view iBytes) {
  const ScratchFolder scratch;
  const auto file = scratch.Write("texts.en.txt", std::string(iBytes));
  Catalog catalog;
  const std::string error = ErrorOf([&] { catalog = embedded::ReadCatalogFile(file); });
  if (error.empty()) {
    EXPECT_EQ(embedded::ReadCatalogFile(scratch.Write("again.en.txt", AsText(catalog))), catalog);
  } else {
    EXPECT_THAT(error, HasSubstr(file.string()));
  }
}

// The first byte says whether it is an STL file; the others are the file.
void FuzzMesh(std::string_view iBytes) {
  const ScratchFolder scratch;
  const bool isStl = iBytes.starts_with('S');
  iBytes.remove_prefix(std::min<std::size_t>(iBytes.size(), 1));
  const auto file = scratch.Write(isStl ? "mesh.stl" : "mesh.obj", std::string(iBytes));
  TriangleMesh mesh;
  const std::string error = ErrorOf([&] { mesh = biwplan::ReadMesh(file); });
  if (!error.empty()) {
    EXPECT_THAT(error, StartsWith(file.string() + ": "));
    return;
  }
  EXPECT_FALSE(mesh.triangles.empty());
  const TriangleMesh again = biwplan::ReadMesh(scratch.Write("again.stl", AsStl(mesh)));
  EXPECT_EQ(again.points, mesh.points);
  EXPECT_EQ(again.triangles, mesh.triangles);
}

}  // namespace tests
