#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "planner/Console.h"
#include "planner/Session.h"
#include "planner/language/Command.h"
#include "planner/language/Words.h"

namespace biwplan {

enum class Outcome { Yes, No, Failed };

// Runs commands and prints what they answer.
class Interpreter {
 public:
  Interpreter(Session& ioSession, Console& ioConsole) : session_(ioSession), console_(ioConsole) {}

  // Each command's changes are saved before it is answered.
  void SaveAtOnce() { savesAtOnce_ = true; }
  // Somebody goes on with the document after what ends in the middle.
  void GoOn() { goesOn_ = true; }
  // A failure is printed, with the place in front, and leaves the document as it was. Nothing to
  // run counts as Yes. Interrupted passes.
  Outcome Run(const std::vector<std::string>& iWords) { return Run(iWords, {}, InOneLine(iWords)); }
  Outcome RunLine(std::string_view iLine, const std::string& iPlace = {});
  // Shows a line of a script, comments too, where that is wanted and people read the results.
  void Echo(std::string_view iLine);

 private:
  Outcome Run(const std::vector<std::string>& words, const std::string& place,
              const std::string& typed);
  // False when the answer is no.
  bool Perform(const std::vector<std::string>& words, const std::string& typed);
  // Runs it and has what it changed in the history, or neither.
  struct Said {
    std::string text;
    bool isNo;
  };
  Said Carry(Command& command, const std::string& typed,
             const std::function<std::string(const Json&)>& inWords);
  // The plan as it was before a command that ended anywhere.
  void TakeAllBack(const Command& command);
  Outcome Fail(const std::string& place, const std::string& what,
               const std::vector<std::string>& words = {});
  template <class Action>
  Outcome Told(const std::string& place, const std::vector<std::string>& words,
               const Action& action);

  Session& session_;
  Console& console_;
  bool savesAtOnce_ = false;
  bool goesOn_ = false;
};

}  // namespace biwplan
