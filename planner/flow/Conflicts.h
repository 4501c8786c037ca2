#pragma once

#include <string>
#include <vector>

#include "embedded/model/Document.h"

namespace biwplan {

// Why an activity's assemblies do not follow the process.
struct FlowConflict {
  const embedded::Activity* activity;
  // A few words, such as "MA-1 lacks P7".
  std::string reason;
  // Whom the assembly goes to wrongly, or could go to and does not.
  std::vector<const embedded::Activity*> towards{};
};

// What `check` finds about rings of links and about assemblies, with the parts that lack or exceed
// told together.
std::vector<FlowConflict> ConflictsOf(const embedded::Document& iDocument);

}  // namespace biwplan
