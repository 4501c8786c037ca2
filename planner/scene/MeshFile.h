#pragma once

#include <cstddef>
#include <filesystem>

#include "planner/scene/TriangleMesh.h"

namespace biwplan {

constexpr std::size_t kMostMeshBytes = std::size_t{64} << 20;
constexpr std::size_t kMostMeshTriangles = 1'000'000;

// Whether the name ends in .stl or .obj, in small or capital letters.
bool IsMeshFile(const std::filesystem::path& iFile);

// The shape in an STL or OBJ file, one or more triangles; points at one place are one point. Of an
// OBJ file only points and faces count. InputError that names the file for one that is missing, cut
// short, malformed or too large.
TriangleMesh ReadMesh(const std::filesystem::path& iFile);

}  // namespace biwplan
