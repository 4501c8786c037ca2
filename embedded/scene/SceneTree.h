#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "embedded/scene/Box.h"
#include "embedded/scene/Viewer.h"

namespace embedded {

// One thing in a scene.
struct SceneNode {
  int depth = 0;       // below the last node before it whose depth is one less
  std::string kind{};  // "product", "assembly", "spot weld", "seam", "locating point",
                       // "clamping point", "group", "label", "temporary label", "representation"
  std::string name{};  // the object's name, a label's text, a representation's class; else empty
  std::optional<ZefMathVector> place{};        // mm
  std::optional<std::array<int, 3>> colour{};  // red, green, blue; 0 to 255
  bool hidden = false;
  bool highlighted = false;
  bool preselected = false;
  // What it shows: an object, or else a representation. Not counted.
  ZefBaseUnknown* object = nullptr;
  const Zef3DRep* representation = nullptr;
  // Of a group: from its own axes to the vehicle's.
  ZefMathTransformation frame{};
};

// What a viewer shows, in an order that depends on the model alone.
struct SceneTree {
  std::vector<SceneNode> nodes;
  // Names of what the sets hold, also of objects that have no place in the scene.
  std::vector<std::string> highlighted;
  std::vector<std::string> preselected;
  std::optional<Box> framed;  // mm
};

// The products and features of the viewer's document, then what is attached to its viewpoint, then
// the temporary objects. Nothing is made for it: an object without representation is listed, too.
SceneTree SceneOf(const Viewer& iViewer);

}  // namespace embedded
