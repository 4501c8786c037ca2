#include "planner/scene/ShapeStore.h"

#include <algorithm>
#include <cstddef>

#include "embedded/Error.h"
#include "planner/scene/MeshFile.h"
#include "planner/scene/Shapes.h"

namespace biwplan {

namespace {

constexpr double kLocatorRadius = 8;  // mm
constexpr double kClampRadius = 6;
constexpr std::size_t kMostTriangles = 8'000'000;

bool HasBox(const embedded::ProductData& data) {
  const auto isZero = [](double length) { return length == 0; };
  return !std::all_of(data.boxMin, data.boxMin + 3, isZero) ||
         !std::all_of(data.boxMax, data.boxMax + 3, isZero);
}

Point PointOf(const double (&point)[3]) { return {point[0], point[1], point[2]}; }

}  // namespace

template <class MakeMesh>
Glb::Shape ShapeStore::Known(const std::string& kind, double size, const MakeMesh& make) {
  const auto key = std::make_pair(kind, size);
  const auto known = known_.find(key);
  if (known != known_.end()) return known->second;
  return known_.emplace(key, Add(make())).first->second;
}

Glb::Shape ShapeStore::Ball(double iDiameter) {
  return Known("", iDiameter, [&] { return Sphere(iDiameter / 2); });
}

Glb::Shape ShapeStore::Locator() {
  return Known("locator", 0, [] { return Octahedron(kLocatorRadius); });
}

Glb::Shape ShapeStore::Clamp() {
  return Known("clamp", 0, [] {
    return BoxBetween({-kClampRadius, -kClampRadius, -kClampRadius},
                      {kClampRadius, kClampRadius, kClampRadius});
  });
}

std::optional<Glb::Shape> ShapeStore::PartShape(const embedded::ProductData& iData) {
  if (!iData.mesh.empty()) {
    return Known("mesh " + iData.mesh.string(), 0, [&] { return ReadMesh(iData.mesh); });
  }
  if (!HasBox(iData)) return std::nullopt;
  return Known("box of " + iData.key, 0,
               [&] { return BoxBetween(PointOf(iData.boxMin), PointOf(iData.boxMax)); });
}

Glb::Shape ShapeStore::Add(const TriangleMesh& iMesh) {
  triangles_ += iMesh.triangles.size();
  if (triangles_ <= kMostTriangles) return glb_.AddShape(iMesh);
  throw embedded::InputError("the scene has more than " + std::to_string(kMostTriangles) +
                             " triangles; coarser meshes or 'preview' make it smaller");
}

}  // namespace biwplan
