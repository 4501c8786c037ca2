#pragma once

#include <string>
#include <vector>

#include "embedded/model/Document.h"

namespace biwplan {

// Something a planner should look at.
struct Finding {
  // One of FindingKinds().
  std::string kind;
  // Keys; empty where the finding is not about one.
  std::string weld;
  std::string activity;
  std::string part;
  // What is wrong and what to do, in one sentence without full stop.
  std::string message;
};

// In the order in which findings are told.
const std::vector<std::string>& FindingKinds();

struct CheckOptions {
  // Spot welds closer than this are reported, mm.
  double pitch = 20.0;
};

// By kind in that order, within a kind in the document's order. The cost grows like n log n with
// the welds; parts are looked up once for each activity that has welds.
std::vector<Finding> CheckDocument(embedded::Document& iDocument, const CheckOptions& iOptions);

}  // namespace biwplan
