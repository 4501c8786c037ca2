#pragma once

#include <vector>

#include "embedded/model/Document.h"

namespace biwplan {

// All activities, each before those below it, those beside one another as the flows lead; as the
// document lists them where the flows say nothing or run in a ring.
std::vector<const embedded::Activity*> InProcessOrder(const embedded::Document& iDocument);

}  // namespace biwplan
