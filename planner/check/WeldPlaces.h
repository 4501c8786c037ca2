#pragma once

#include <vector>

#include "embedded/model/Document.h"

namespace biwplan {

// For each weld the first activity, in the order of the process, that takes welds of its kind and
// at which all its parts are loaded; null where there is none. Welds that join the same parts are
// answered together.
std::vector<const embedded::Activity*> FirstPlaces(embedded::Document& iDocument,
                                                   const std::vector<ZefBaseUnknown_var>& iWelds);

}  // namespace biwplan
