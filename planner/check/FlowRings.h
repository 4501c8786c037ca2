#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "embedded/model/Document.h"

namespace biwplan {

// Activities in the order of the flow; from the last a link leads back to the first.
using FlowRing = std::vector<const embedded::Activity*>;

// A shortest way along the links, both ends named; empty where none leads there.
std::vector<const embedded::Activity*> WayBetween(const embedded::Activity& iFrom,
                                                  const embedded::Activity& iTo);

// Rings of links, in the document's order: at least one for each group of activities that come
// before themselves, and `iMost` of them at most.
std::vector<FlowRing> RingsOf(const embedded::Document& iDocument, std::size_t iMost = 100);

// "OP10 -> OP20 -> OP10", cut short in the middle where it is long.
std::string Describe(const FlowRing& iRing);

}  // namespace biwplan
