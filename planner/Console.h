#pragma once

#include <ostream>

#include "planner/report/PrintableStream.h"

namespace biwplan {

// Where the program speaks to: results on one stream, messages on the other. Whatever is written
// there, names of files and of what is planned included, does nothing to a terminal.
struct Console {
  // The streams outlive the console.
  Console(std::ostream& iResults, std::ostream& iMessages, bool iIsWatched = false)
      : results(iResults), messages(iMessages), terminal(iMessages), isWatched(iIsWatched) {}

  PrintableStream results;
  PrintableStream messages;
  // Where the messages go, for bars of progress alone.
  std::ostream& terminal;
  // A user watches the messages.
  bool isWatched;
  // Results are for programs.
  bool isJson = false;
  // The lines of a script stand before their answers.
  bool isEchoed = false;
};

}  // namespace biwplan
