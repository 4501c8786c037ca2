#pragma once

#include <string>

#include "embedded/scene/SceneTree.h"

namespace embedded {

// The scene to read, one line for each node, two blanks deeper for each level:
//
//   spot weld "SW-1" at 100 0 52.5 mm, colour 213 94 0, hidden
//     label "SW-1" at -100 0 -52.5 mm, colour 0 0 0
//
// and last the highlighted and the preselected objects and the framed box, as far as there are any.
// Lengths have at most three decimals; quotes and control characters in names are escaped.
std::string TextOf(const SceneTree& iTree);

}  // namespace embedded
