#pragma once

#include <vector>

#include "embedded/model/Document.h"

namespace embedded {

// All item links of a document in one order that agrees with the order of each activity's links
// and with that of each item's. It depends on these alone.
std::vector<ItemLink*> ListLinks(const Document& iDocument);

}  // namespace embedded
