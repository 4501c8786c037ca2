#pragma once

#include <ostream>

namespace biwplan {

// Where the program speaks to: results on one stream, messages on the other. The streams outlive
// it.
struct Console {
  std::ostream& results;
  std::ostream& messages;
  // A user watches the messages.
  bool isWatched = false;
  // Results are for programs.
  bool isJson = false;
  // The lines of a script stand before their answers.
  bool isEchoed = false;
};

}  // namespace biwplan
