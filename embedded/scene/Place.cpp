#include "embedded/scene/Place.h"

#include <unordered_set>
#include <vector>

#include "embedded/model/Fasteners.h"
#include "embedded/model/Product.h"
#include "embedded/model/ProductWalk.h"
#include "host/values/Each.h"
#include "host/visu/ZefPathElement.h"
#include "host/visu/ZefSelectionSet.h"

namespace embedded {

namespace {

template <std::size_t N>
ZefMathVector Vector(const std::array<double, N>& place) {
  return {place[0], place[1], place[2]};
}

bool HasBox(const ProductData& data) {
  for (int i = 0; i < 3; ++i) {
    if (data.boxMin[i] != 0 || data.boxMax[i] != 0) return true;
  }
  return false;
}

std::optional<Box> BoxOf(const Product& product) {
  const ProductData& data = product.Data();
  const ZefMathTransformation place = TransformationOf(data.position);
  if (!HasBox(data)) return Extended({}, place.GetVector());
  std::optional<Box> box;
  for (unsigned corner = 0; corner < 8; ++corner) {
    const auto side = [&](unsigned axis) {
      return (corner >> axis) & 1u ? data.boxMax[axis] : data.boxMin[axis];
    };
    box = Extended(
        box, place.GetMatrix() * ZefMathVector(side(0), side(1), side(2)) + place.GetVector());
  }
  return box;
}

std::optional<Box> BoxOf(const CurveFastener& seam) {
  std::optional<Box> box;
  for (const auto& point : seam.Points()) box = Extended(box, Vector(point));
  return box;
}

// Without what is below it.
std::optional<Box> OwnExtent(ZefBaseUnknown* object) {
  const auto* const product = ObjectAs<Product>(object);
  if (product && product->Below().empty()) return BoxOf(*product);
  if (const auto* const seam = ObjectAs<CurveFastener>(object)) return BoxOf(*seam);
  const std::optional<ZefMathVector> place = product ? std::nullopt : PlaceOf(object);
  return place ? std::optional<Box>(Extended({}, *place)) : std::nullopt;
}

}  // namespace

ZefBaseUnknown* EndOfPath(ZefBaseUnknown* iObject) {
  const auto* const path = dynamic_cast<const ZefPathElement*>(iObject);
  return path ? path->GetObject() : iObject;
}

std::optional<ZefMathVector> PlaceOf(ZefBaseUnknown* iObject) {
  ZefBaseUnknown* const object = EndOfPath(iObject);
  if (const auto* const weld = ObjectAs<SpotWeld>(object)) return Vector(weld->Position());
  if (const auto* const point = ObjectAs<PointFeature>(object)) {
    return Vector(point->Data().position);
  }
  if (const auto* const product = ObjectAs<Product>(object)) {
    return TransformationOf(product->Data().position).GetVector();
  }
  const auto* const seam = ObjectAs<CurveFastener>(object);
  if (!seam || seam->Points().empty()) return std::nullopt;
  return Vector(seam->Points().front());
}

std::optional<Box> ExtentOf(ZefBaseUnknown* iObject) {
  std::optional<Box> extent;
  std::vector<ZefBaseUnknown_var> open{EndOfPath(iObject)};
  std::unordered_set<const ZefBaseUnknown*> seen{open.front().Get()};
  while (!open.empty()) {
    const ZefBaseUnknown_var object = open.back();
    open.pop_back();
    extent = United(extent, OwnExtent(object.Get()));
    for (const auto& child : Each<ZefBaseUnknown>(ChildrenBelow(object.Get()))) {
      if (seen.insert(child.Get()).second) open.push_back(child);
    }
  }
  return extent;
}

std::optional<Box> ExtentOf(const ZefSelectionSet& iSet) {
  std::optional<Box> extent;
  for (const auto& element : Each<ZefBaseUnknown>(iSet.Elements())) {
    extent = United(extent, ExtentOf(element.Get()));
  }
  return extent;
}

}  // namespace embedded
