#pragma once

#include <array>
#include <vector>

#include "planner/scene/TriangleMesh.h"

namespace biwplan {

using Point = std::array<double, 3>;  // mm

// Shapes of the scene around the origin, closed and facing outwards.
TriangleMesh Sphere(double iRadius);
// Eight faces, the corners on the axes.
TriangleMesh Octahedron(double iRadius);
TriangleMesh BoxBetween(const Point& iLeast, const Point& iMost);
// Around the line through the points, whose first is the origin. A sphere when all of them are one.
TriangleMesh Tube(const std::vector<Point>& iPoints, double iRadius);

}  // namespace biwplan
