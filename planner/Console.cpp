#include "planner/Console.h"

namespace biwplan {

void Console::TellMemoryEnds() {
  messages.flush();
  // What was to be said and could not be must not keep back what comes next.
  messages.clear();
  terminal << kMemoryEnds << std::flush;
}

}  // namespace biwplan
