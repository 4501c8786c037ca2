#pragma once

#include <optional>
#include <string>
#include <vector>

#include "planner/language/Interpreter.h"

namespace biwplan {

// Where a user types.
class LineSource {
 public:
  virtual ~LineSource() = default;
  // Nothing when the user has left.
  virtual std::optional<std::string> Ask(const std::string& iPrompt) = 0;
  // A line that the user may want again.
  virtual void Remember(const std::string& /*iLine*/) {}
};

// Runs what a user types until the user leaves. Changes that are not saved are asked about.
void RunShell(LineSource& ioUser, Session& ioSession, Interpreter& ioInterpreter,
              Console& ioConsole);

// What may stand at the end of a line: verbs, then what the command takes there.
std::vector<std::string> Complete(const std::string& iLine, Session& ioSession);

}  // namespace biwplan
