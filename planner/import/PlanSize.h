#pragma once

#include "planner/import/PartsList.h"
#include "planner/import/ProcessList.h"
#include "planner/import/WeldList.h"

namespace biwplan {

// About what a plan takes in its file when each weld is assigned once, rather more than less.
struct PlanSize {
  std::size_t bytes = 0;
  std::size_t values = 0;
};

PlanSize SizeOf(const PartsList& iParts, const WeldList& iWelds, const ProcessList& iProcess);

// InputError for lists of which no plan could be saved; it names the list and the line where the
// room ends.
void RequireRoom(const PartsList& iParts, const WeldList& iWelds, const ProcessList& iProcess);

}  // namespace biwplan
