#pragma once

#include <optional>

#include "host/values/Geometry.h"

namespace embedded {

// Box along the vehicle's axes, in mm.
struct Box {
  ZefMathVector low;
  ZefMathVector high;

  ZefMathVector Centre() const { return 0.5 * (low + high); }
};

// The smallest box around the box, when there is one, and the point.
Box Extended(const std::optional<Box>& iBox, const ZefMathVector& iPoint);
std::optional<Box> United(const std::optional<Box>& iFirst, const std::optional<Box>& iSecond);

}  // namespace embedded
