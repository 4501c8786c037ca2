#pragma once

#include <string>
#include <vector>

#include "embedded/scene/SceneTree.h"
#include "planner/scene/ShapeStore.h"
#include "planner/scene/ShownParts.h"

namespace biwplan {

// What a file of a scene says of one thing, besides how it looks; docs/formats.md lists the extras.

Glb::Node PartNode(const ShownPart& iPart, ShapeStore& ioShapes);
// A weld, a locating or a clamping point, moved from where it stands.
Glb::Node WeldNode(const embedded::SceneNode& iNode, const ZefMathTransformation& iMove,
                   ShapeStore& ioShapes);
// A text at the weld whose it is, or else where the scene has it.
Glb::Node LabelNode(const embedded::SceneNode& iNode, ZefBaseUnknown* iWeld);

// The activities that an object is linked to, each once.
std::vector<std::string> ActivityNames(ZefBaseUnknown* iObject);

}  // namespace biwplan
