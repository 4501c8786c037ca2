#pragma once

#include <array>
#include <cstdint>
#include <vector>

namespace biwplan {

// Triangles in a shape's own axes, mm.
struct TriangleMesh {
  using Triple = std::array<float, 3>;

  std::vector<Triple> points;
  // One for each point, of length 1; none where every triangle is flat to the eye.
  std::vector<Triple> normals;
  // Points, counted from 0.
  std::vector<std::array<std::uint32_t, 3>> triangles;
};

}  // namespace biwplan
