#pragma once

#include <vector>

#include "embedded/model/Document.h"

namespace biwplan {

// A weld whose parts keep it off an activity.
struct LackingParts {
  ZefBaseUnknown_var weld;
  // What is not loaded there; empty for a weld that joins no part at all.
  ZefListValZefBaseUnknown_var parts;
};

// The welds, in their order, that the document's constraint on loaded parts keeps off the activity;
// none while it is off. Judges as TuvBIWServices::ValidateListOfFastenersForAssignmentToActivity,
// by the hand-over of AreLoaded.
std::vector<LackingParts> KeptOffByParts(embedded::Document& iDocument,
                                         embedded::Activity& iActivity,
                                         const ZefListValZefBaseUnknown_var& iWelds);

}  // namespace biwplan
