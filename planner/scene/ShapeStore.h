#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <utility>

#include "embedded/model/Product.h"
#include "planner/scene/Glb.h"

namespace biwplan {

// The shapes of one file, each made and read once. InputError for a mesh that cannot be read, and
// for more triangles than a scene can hold. The file outlives it.
class ShapeStore {
 public:
  explicit ShapeStore(Glb& ioGlb) : glb_(ioGlb) {}

  Glb::Shape Ball(double iDiameter);
  Glb::Shape Locator();
  Glb::Shape Clamp();
  // The mesh of a product or else its box, in its own axes; none when it has neither.
  std::optional<Glb::Shape> PartShape(const embedded::ProductData& iData);
  // A shape of which there is one.
  Glb::Shape Add(const TriangleMesh& iMesh);

 private:
  template <class MakeMesh>
  Glb::Shape Known(const std::string& kind, double size, const MakeMesh& make);

  Glb& glb_;
  std::map<std::pair<std::string, double>, Glb::Shape> known_;
  std::size_t triangles_ = 0;
};

}  // namespace biwplan
