#pragma once

#include <string>

#include "embedded/model/Document.h"
#include "planner/import/PartsList.h"
#include "planner/import/ProcessList.h"
#include "planner/import/WeldList.h"

namespace biwplan {

// A new process document of the three lists, all or nothing: InputError with file and line for what
// the document refuses. The welds and the process were read with this very parts list. An assembly
// that one activity makes as its only output contains what goes into that activity. Nothing is
// assigned yet. `iProcess` is the identifier of the process itself.
embedded::Owned<embedded::Document> BuildDocument(const PartsList& iParts, const WeldList& iWelds,
                                                  const ProcessList& iProcess,
                                                  const std::string& iProcessKey = "Process");

}  // namespace biwplan
