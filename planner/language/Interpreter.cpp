#include "planner/language/Interpreter.h"

#include <algorithm>
#include <cassert>
#include <new>

#include "embedded/Error.h"
#include "host/component/Interruption.h"
#include "planner/import/RowFault.h"
#include "planner/language/CommandTable.h"
#include "planner/language/Syntax.h"
#include "planner/language/Words.h"
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
  return Outcome::Failed;
}

Outcome Interpreter::Run(const std::vector<std::string>& words, const std::string& place,
                         const std::string& typed) {
  if (words.empty()) return Outcome::Yes;
  const Interruption::Scope scope;
  try {
    return Perform(words, typed) ? Outcome::Yes : Outcome::No;
  } catch (const std::bad_alloc&) {
    return Fail(place, "the memory does not suffice", words);
  } catch (const RefusedRows& error) {
    return Fail(place, error.what(), words);
  } catch (const std::exception& error) {
    return Fail(place, Printable(error.what()), words);
  }
}

Outcome Interpreter::RunLine(std::string_view iLine, const std::string& iPlace) {
  std::vector<std::string> words;
  try {
    words = SplitWords(iLine);
  } catch (const embedded::InputError& error) {
    return Fail(iPlace, error.what());
  }
  return Run(words, iPlace, std::string(iLine));
}

void Interpreter::Echo(std::string_view iLine) {
  if (!console_.isEchoed || console_.isJson) return;
  const bool isCommand = !iLine.empty() && iLine.front() != '#';
  console_.results << (isCommand ? "> " : "") << Printable(iLine) << '\n' << std::flush;
}

Answer Interpreter::Carry(Command& command, const std::string& typed) {
  if (command.MayChange()) session_.PrepareChange();
  try {
    [[maybe_unused]] const bool wasChanged = session_.IsChanged();
    Answer answer = command.Run(session_);
    assert(command.MayChange() || wasChanged || !session_.IsChanged());
    session_.Record(typed);
    if (savesAtOnce_ && session_.IsChanged()) {
      session_.Save();
      // What is saved is answered as saved.
      Interruption::Forget();
    }
    return answer;
  } catch (const Interrupted&) {
    if (goesOn_) TakeAllBack(command);
    throw;
  } catch (const embedded::InputError&) {
    session_.TakeBack();
    throw;
  } catch (...) {
    TakeAllBack(command);
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
  const Answer answer = Carry(*command, typed);
  const std::vector<DialogRequest> warnings = session_.TakeWarnings();
  const bool isJson = console_.isJson || syntax.IsJson();
  console_.results << (isJson ? AsJson(entry.verb, answer.data, warnings)
                              : command->InWords(answer.data))
                   << std::flush;
  return !answer.isNo;
}

}  // namespace biwplan
