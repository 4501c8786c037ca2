#pragma once

#include <istream>
#include <string>
#include <vector>

#include "planner/Console.h"

namespace biwplan {

// What the program is started with, besides its arguments.
struct Surroundings {
  std::istream& input;
  // A user types the input.
  bool isTyped = false;
};

// Runs the program; answers its exit status: 0, 1 when the answer to a single command is no, 2 when
// something could not be done.
int RunProgram(const std::vector<std::string>& iArguments, const Surroundings& iSurroundings,
               Console& ioConsole);

}  // namespace biwplan
