#pragma once

#include <istream>
#include <string>

#include "planner/language/Interpreter.h"

namespace biwplan {

// Runs commands line by line, up to the first that fails or, with `iKeepsGoing`, all of them.
// InputError for a line that is too long to be one. Answers whether every command succeeded; a no
// is a success.
bool RunScript(std::istream& iLines, const std::string& iName, bool iKeepsGoing, Session& ioSession,
               Interpreter& ioInterpreter);

}  // namespace biwplan
