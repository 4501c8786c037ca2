#include "planner/language/Interpreter.h"

#include <algorithm>
#include <cassert>
#include <new>
#include <unistd.h>

#include "embedded/Error.h"
#include "host/component/Allocation.h"
#include "host/component/Interruption.h"
#include "planner/import/RowFault.h"
#include "planner/language/CommandTable.h"
#include "planner/language/Syntax.h"
#include "planner/language/Words.h"
#include "planner/report/Pulse.h"
#include "planner/report/Text.h"

namespace biwplan {

namespace {

// For a program: the command, its data, and the warnings that the user was shown.
std::string AsJson(const std::string& verb, const Json& data,
                   const std::vector<DialogRequest>& warnings) {
  Json object = Json::object();
  if (!verb.empty()) object["command"] = verb;
  object.update(data);
  for (const DialogRequest& warning : warnings) {
    object["warnings"].push_back({{"title", warning.title}, {"message", warning.message}});
  }
  return PrintableJson(object.dump(-1, ' ', false, Json::error_handler_t::replace)) + '\n';
}

// As the table has it, or the first word of what it has not.
std::string VerbOf(const std::vector<std::string>& words) {
  const CommandEntry* const entry = CommandTable::All().Find(words);
  if (entry) return entry->verb;
  return words.empty() ? std::string() : words.front();
}

}  // namespace

Outcome Interpreter::Fail(const std::string& place, const std::string& what,
                          const std::vector<std::string>& words) {
  const std::vector<DialogRequest> warnings = session_.TakeWarnings();
  if (console_.isJson || std::find(words.begin(), words.end(), "--json") != words.end()) {
    Json failure = {{"error", what}};
    if (!place.empty()) failure["place"] = place;
    console_.results << AsJson(VerbOf(words), failure, warnings);
  }
  console_.results.flush();
  console_.messages << "biwplan: " << Printable(place) << (place.empty() ? "" : ": ") << what
                    << '\n'
                    << std::flush;
  if (!console_.messages) console_.TellMemoryEnds();
  return Outcome::Failed;
}

// What goes wrong is told; while it is told, memory may end as well.
template <class Action>
Outcome Interpreter::Told(const std::string& place, const std::vector<std::string>& words,
                          const Action& action) {
  try {
    try {
      return action();
    } catch (const std::bad_alloc&) {
      return Fail(place, "the memory does not suffice", words);
    } catch (const RefusedRows& error) {
      return Fail(place, error.what(), words);
    } catch (const std::exception& error) {
      return Fail(place, Printable(error.what()), words);
    }
  } catch (const std::bad_alloc&) {
    console_.TellMemoryEnds();
    return Outcome::Failed;
  }
}

Outcome Interpreter::Run(const std::vector<std::string>& words, const std::string& place,
                         const std::string& typed) {
  const Interruption::Scope scope;
  return Told(place, words,
              [&] { return words.empty() || Perform(words, typed) ? Outcome::Yes : Outcome::No; });
}

Outcome Interpreter::RunLine(std::string_view iLine, const std::string& iPlace) {
  return Told(iPlace, {}, [&] { return Run(SplitWords(iLine), iPlace, std::string(iLine)); });
}

void Interpreter::Echo(std::string_view iLine) {
  if (!console_.isEchoed || console_.isJson) return;
  const bool isCommand = !iLine.empty() && iLine.front() != '#';
  console_.results << (isCommand ? "> " : "") << Printable(iLine) << '\n' << std::flush;
}

// The words are there before anything is kept: nothing can fail once it is.
Interpreter::Said Interpreter::Carry(Command& command, const std::string& typed,
                                     const std::function<std::string(const Json&)>& inWords) {
  // Where memory ended before, what a command left half done is still there.
  session_.TakeBack();
  if (command.MayChange()) session_.PrepareChange();
  const long failedAllocations = CountFailedAllocations();
  try {
    [[maybe_unused]] const bool wasChanged = session_.IsChanged();
    const Answer answer = command.Run(session_);
    assert(command.MayChange() || wasChanged || !session_.IsChanged());
    Said said = {inWords(answer.data), answer.isNo};
    if (CountFailedAllocations() != failedAllocations) throw std::bad_alloc();
    session_.Record(typed);
    if (savesAtOnce_ && session_.IsChanged()) {
      session_.Save();
      // What is saved is answered as saved.
      Interruption::Forget();
    }
    return said;
  } catch (const Interrupted&) {
    if (goesOn_) TakeAllBack(command);
    throw;
  } catch (const embedded::InputError&) {
    session_.TakeBack();
    if (CountFailedAllocations() != failedAllocations) throw std::bad_alloc();
    throw;
  } catch (...) {
    TakeAllBack(command);
    if (CountFailedAllocations() != failedAllocations) throw std::bad_alloc();
    throw;
  }
}

void Interpreter::TakeAllBack(const Command& command) {
  // What ended in the middle of a change has not said so.
  if (command.MayChange() && session_.HasDocument()) session_.Changed();
  const Interruption::Deferral whole;
  session_.TakeBack();
}

bool Interpreter::Perform(const std::vector<std::string>& words, const std::string& typed) {
  Interruption::Check();
  const CommandEntry& entry = CommandTable::All().Require(words);
  const std::unique_ptr<Command> command = entry.make();
  Syntax syntax(entry.verb, entry.summary);
  command->Declare(syntax);
  const auto first = words.begin() + static_cast<std::ptrdiff_t>(entry.WordCount());
  syntax.Read({first, words.end()});
  if (syntax.AsksForHelp()) {
    console_.results << syntax.Help() << std::flush;
    return true;
  }
  const Pulse pulse(console_.isWatched ? STDERR_FILENO : -1, entry.verb);
  const bool isJson = console_.isJson || syntax.IsJson();
  const Said said = Carry(*command, typed, [&](const Json& data) {
    const std::vector<DialogRequest> warnings = session_.TakeWarnings();
    return isJson ? AsJson(entry.verb, data, warnings) : command->InWords(data);
  });
  console_.results << said.text << std::flush;
  return !said.isNo;
}

}  // namespace biwplan
