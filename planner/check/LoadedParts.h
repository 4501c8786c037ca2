#pragma once

#include <vector>

#include "embedded/model/Document.h"
#include "host/values/ZefListValZefBaseUnknown_var.h"

namespace biwplan {

struct LoadedQuestion {
  embedded::Activity* activity;
  // A product or a manufacturing assembly.
  ZefBaseUnknown* part;
};

// What TuvBIWServices::GetLoadedParts lists for the activity, each part once, in the order in which
// it comes first. Each activity is walked once, not along every path.
ZefListValZefBaseUnknown_var LoadedAt(embedded::Activity& iActivity);

// Whether each part is loaded at its activity, in the order of the questions: the membership in
// LoadedAt. Many questions are answered together, by handing 64 parts at a time along the whole
// flow.
std::vector<bool> AreLoaded(embedded::Document& iDocument,
                            const std::vector<LoadedQuestion>& iQuestions);

}  // namespace biwplan
