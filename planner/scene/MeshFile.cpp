#include "planner/scene/MeshFile.h"

#include <algorithm>
#include <assimp/IOSystem.hpp>
#include <assimp/Importer.hpp>
#include <assimp/MemoryIOWrapper.h>
#include <assimp/postprocess.h>
#include <assimp/scene.h>
#include <cmath>
#include <exception>
#include <map>
#include <memory>
#include <new>
#include <span>
#include <stdexcept>

#include "embedded/Error.h"
#include "embedded/storage/FileReplacement.h"
#include "planner/import/Values.h"
#include "planner/scene/MeshText.h"

namespace biwplan {

namespace {

namespace fs = std::filesystem;
using embedded::InputError;

// Faces with many corners take time by the square of their number.
constexpr unsigned kMostCorners = 64;
constexpr float kFarthest = 1e6F;  // mm

std::string Ending(const fs::path& file) { return Folded(file.extension().string()); }

[[noreturn]] void Refuse(const std::string& must) { throw std::runtime_error(must); }

// A folder with one file in memory, so that the file cannot have others opened.
class OneFile : public Assimp::IOSystem {
 public:
  OneFile(std::string name, const std::string& bytes) : name_(std::move(name)), bytes_(bytes) {}

  bool Exists(const char* file) const override { return name_ == file; }
  char getOsSeparator() const override { return '/'; }
  Assimp::IOStream* Open(const char* file, const char*) override {
    if (!Exists(file)) return nullptr;
    return new Assimp::MemoryIOStream(reinterpret_cast<const std::uint8_t*>(bytes_.data()),
                                      bytes_.size());
  }
  void Close(Assimp::IOStream* stream) override { delete stream; }

 private:
  std::string name_;
  const std::string& bytes_;
};

void CheckPoints(const aiMesh& mesh) {
  for (const aiVector3D& point : std::span(mesh.mVertices, mesh.mNumVertices)) {
    for (const float length : {point.x, point.y, point.z}) {
      if (!(std::abs(length) <= kFarthest)) Refuse("its points must lie within 1000000 mm");
    }
  }
}

void CheckFaces(const aiMesh& mesh) {
  for (const aiFace& face : std::span(mesh.mFaces, mesh.mNumFaces)) {
    if (face.mNumIndices <= kMostCorners) continue;
    Refuse("its faces must have at most " + std::to_string(kMostCorners) + " corners");
  }
}

// Joins the points at one place and leaves out triangles without area.
class Joiner {
 public:
  void Add(const aiMesh& mesh) {
    for (const aiFace& face : std::span(mesh.mFaces, mesh.mNumFaces)) {
      if (face.mNumIndices == 3) AddTriangle(mesh.mVertices, face.mIndices);
    }
    if (joined.triangles.size() > kMostMeshTriangles) {
      Refuse("it must have at most " + std::to_string(kMostMeshTriangles) + " triangles");
    }
  }

  TriangleMesh joined;

 private:
  void AddTriangle(const aiVector3D* points, const unsigned* corners) {
    const auto at = [&](int i) {
      const aiVector3D& point = points[corners[i]];
      return TriangleMesh::Triple{point.x, point.y, point.z};
    };
    if (at(0) == at(1) || at(1) == at(2) || at(2) == at(0)) return;
    joined.triangles.push_back({Number(at(0)), Number(at(1)), Number(at(2))});
  }

  std::uint32_t Number(const TriangleMesh::Triple& place) {
    const auto [known, isNew] =
        numbers_.try_emplace(place, static_cast<std::uint32_t>(joined.points.size()));
    if (isNew) joined.points.push_back(place);
    return known->second;
  }

  std::map<TriangleMesh::Triple, std::uint32_t> numbers_;
};

std::span<aiMesh* const> MeshesOf(const aiScene& scene) {
  return std::span(scene.mMeshes, scene.mNumMeshes);
}

// Of what stopped the reader only the want of memory is no fault of the file.
void RequireMemory(const std::exception_ptr& raised) {
  try {
    if (raised) std::rethrow_exception(raised);
  } catch (const std::bad_alloc&) {
    throw;
  } catch (const std::exception&) {
    // The reader has words for it.
  }
}

TriangleMesh Parse(const std::string& ending, const std::string& bytes) {
  const std::string name = "mesh." + ending;
  Assimp::Importer importer;
  importer.SetIOHandler(new OneFile(name, bytes));
  const aiScene* scene = importer.ReadFile(name, 0);
  if (!scene) {
    RequireMemory(importer.GetException());
    Refuse(std::string("it must be a complete ") + ending + " file (" + importer.GetErrorString() +
           ")");
  }
  for (const aiMesh* const mesh : MeshesOf(*scene)) {
    CheckPoints(*mesh);
    CheckFaces(*mesh);
  }
  scene = importer.ApplyPostProcessing(aiProcess_Triangulate);
  Joiner joiner;
  for (const aiMesh* const mesh : MeshesOf(*scene)) joiner.Add(*mesh);
  if (joiner.joined.triangles.empty()) Refuse("it must have at least one triangle");
  return std::move(joiner.joined);
}

std::string ReadBytes(const fs::path& file) {
  std::error_code error;
  if (!fs::exists(file, error)) Refuse("there is no such file");
  if (!fs::is_regular_file(file, error)) Refuse("it must be an ordinary file");
  if (fs::file_size(file, error) > kMostMeshBytes) {
    Refuse("it must have at most " + std::to_string(kMostMeshBytes >> 20) + " MiB");
  }
  return embedded::ReadWholeFile(file, kMostMeshBytes);
}

}  // namespace

bool IsMeshFile(const fs::path& iFile) {
  const std::string ending = Ending(iFile);
  return ending == "stl" || ending == "obj";
}

TriangleMesh ReadMesh(const fs::path& iFile) {
  const std::string ending = Ending(iFile);
  try {
    if (!IsMeshFile(iFile)) Refuse("its name must end in .stl or .obj");
    std::string bytes = ReadBytes(iFile);
    return Parse(ending, ending == "obj" ? ObjShape(bytes) : StlShape(std::move(bytes)));
  } catch (const InputError&) {
    throw;
  } catch (const std::runtime_error& error) {
    throw InputError(iFile.string() + ": the mesh cannot be read; " + error.what());
  }
}

}  // namespace biwplan
