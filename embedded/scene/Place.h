#pragma once

#include <optional>

#include "embedded/scene/Box.h"

class ZefBaseUnknown;
class ZefSelectionSet;

namespace embedded {

// Where objects stand, in vehicle coordinates, mm. A path stands for the object that it leads to.

// A weld's point, a seam's first point, a product's origin; none for an object without a place.
std::optional<ZefMathVector> PlaceOf(ZefBaseUnknown* iObject);
// The smallest box around an object and everything below it; none when nothing of it has a place.
std::optional<Box> ExtentOf(ZefBaseUnknown* iObject);
std::optional<Box> ExtentOf(const ZefSelectionSet& iSet);
// What the object is, or the object at the end of a path.
ZefBaseUnknown* EndOfPath(ZefBaseUnknown* iObject);

}  // namespace embedded
