#pragma once

#include "embedded/scene/SceneTree.h"

namespace embedded {

// Appends the representation and what is below it, beginning at that depth: bags as groups, texts
// as nodes of kind `iLabelKind`, anything else as a representation. Places are those in the
// vehicle, with the places of the bags above applied.
void AppendRep(std::vector<SceneNode>& ioNodes, Zef3DRep& iRep, int iDepth,
               const std::string& iLabelKind);
// Only what is below a bag.
void AppendBelow(std::vector<SceneNode>& ioNodes, Zef3DBagRep& iBag, int iDepth);

}  // namespace embedded
