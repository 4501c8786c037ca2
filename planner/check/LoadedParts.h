#pragma once

#include <vector>

#include "embedded/model/Document.h"

namespace biwplan {

struct LoadedQuestion {
  embedded::Activity* activity;
  // A product or a manufacturing assembly.
  ZefBaseUnknown* part;
};

// Whether each part is loaded at its activity, in the order of the questions: the membership in
// what TuvBIWServices::GetLoadedParts lists. That service walks every path of the flow for one
// activity; many questions are answered together, by handing 64 parts at a time along the whole
// flow.
std::vector<bool> AreLoaded(embedded::Document& iDocument,
                            const std::vector<LoadedQuestion>& iQuestions);

}  // namespace biwplan
