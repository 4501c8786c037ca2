#pragma once

#include <ostream>
#include <string_view>

#include "planner/report/PrintableStream.h"

namespace biwplan {

inline constexpr std::string_view kMemoryEnds = "biwplan: the memory does not suffice\n";

// Where the program speaks to: results on one stream, messages on the other. Whatever is written
// there, names of files and of what is planned included, does nothing to a terminal.
struct Console {
  // The streams outlive the console.
  Console(std::ostream& iResults, std::ostream& iMessages, bool iIsWatched = false)
      : results(iResults), messages(iMessages), terminal(iMessages), isWatched(iIsWatched) {}

  PrintableStream results;
  PrintableStream messages;
  // Says that the memory does not suffice, which needs none.
  void TellMemoryEnds();

  // Where the messages go, for bars of progress and for what must not want for memory.
  std::ostream& terminal;
  // A user watches the messages.
  bool isWatched;
  // Results are for programs.
  bool isJson = false;
  // The lines of a script stand before their answers.
  bool isEchoed = false;
};

}  // namespace biwplan
