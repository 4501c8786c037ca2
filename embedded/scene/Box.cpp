#include "embedded/scene/Box.h"

#include <algorithm>

namespace embedded {

Box Extended(const std::optional<Box>& iBox, const ZefMathVector& iPoint) {
  if (!iBox) return {iPoint, iPoint};
  const auto& [low, high] = *iBox;
  return {{std::min(low.GetX(), iPoint.GetX()), std::min(low.GetY(), iPoint.GetY()),
           std::min(low.GetZ(), iPoint.GetZ())},
          {std::max(high.GetX(), iPoint.GetX()), std::max(high.GetY(), iPoint.GetY()),
           std::max(high.GetZ(), iPoint.GetZ())}};
}

std::optional<Box> United(const std::optional<Box>& iFirst, const std::optional<Box>& iSecond) {
  if (!iSecond) return iFirst;
  return Extended(Extended(iFirst, iSecond->low), iSecond->high);
}

}  // namespace embedded
