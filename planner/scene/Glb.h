#pragma once

#include <array>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "host/values/Geometry.h"
#include "planner/report/Json.h"
#include "planner/scene/TriangleMesh.h"

namespace tinygltf {
class Model;
}

namespace biwplan {

using Colour = std::array<int, 3>;  // red, green, blue; 0 to 255

// How a shape is drawn. What is hidden is in the file, but no viewer draws it.
struct Surface {
  enum class Kind { Solid, Glass, Hidden };

  Colour colour{};
  Kind kind = Kind::Solid;
  friend auto operator<=>(const Surface&, const Surface&) = default;
};

// A scene as binary glTF 2.0: nodes in mm, Z up, below one root node that leads to metres, Y up.
class Glb {
 public:
  explicit Glb(const std::string& iRootName);
  ~Glb();

  // A shape is stored once, however many nodes show it.
  using Shape = int;
  Shape AddShape(const TriangleMesh& iMesh);

  struct Node {
    std::string name;
    ZefMathTransformation place{};  // in the vehicle, mm
    // Without shape it is a mere place.
    std::optional<Shape> shape{};
    Surface surface{};
    Json extras{};
  };
  void AddNode(Node iNode);

  std::string Bytes(const Json& iSceneExtras) const;

 private:
  int MaterialOf(const Surface& surface);
  int MeshOf(Shape shape, const Surface& surface);
  // The number of a new accessor.
  template <class Element>
  int AddAccessor(const std::vector<Element>& elements, int target, int componentType, int type);

  std::unique_ptr<tinygltf::Model> model_;
  // Points, normals (or -1) and triangles of each shape.
  std::vector<std::array<int, 3>> shapes_;
  std::map<Surface, int> materials_;
  std::map<std::pair<Shape, int>, int> meshes_;
  // By node.
  std::vector<Json> extras_;
};

}  // namespace biwplan
