#include "planner/language/CommandTable.h"

#include "embedded/Error.h"
#include "planner/commands/Commands.h"
#include "planner/import/RowFault.h"
#include "planner/language/Syntax.h"
#include "planner/names/Nearest.h"
#include "planner/report/Text.h"

namespace biwplan {

namespace {

CommandTable MakeTable() {
  CommandTable table;
  table.Begin("Document");
  AddDocumentCommands(table);
  table.Begin("History");
  AddHistoryCommands(table);
  table.Begin("Lists");
  AddListCommands(table);
  table.Begin("Assignment");
  AddAssignmentCommands(table);
  AddQuestionCommands(table);
  AddValidationCommands(table);
  AddCheckCommand(table);
  table.Begin("Flow and parts");
  AddNavigationCommands(table);
  AddPartsAtCommands(table);
  table.Begin("Process and assemblies");
  AddGestureCommands(table);
  AddAssemblyCommands(table);
  AddFlowCommand(table);
  table.Begin("3D view");
  AddViewCommands(table);
  AddSceneCommands(table);
  table.Begin("External process database");
  AddExternalCommands(table);
  table.Begin("Further");
  AddCycleTimeCommand(table);
  AddShellCommands(table);
  return table;
}

std::string Line(const CommandEntry& entry) {
  constexpr std::size_t kColumn = 20;
  return "  " + Padded(entry.verb, kColumn) + entry.summary + "\n";
}

bool BeginsWith(const std::vector<std::string>& words, const CommandEntry& entry) {
  if (words.empty()) return false;
  if (entry.WordCount() == 1) return words[0] == entry.verb;
  return words.size() > 1 && words[0] + " " + words[1] == entry.verb;
}

}  // namespace

const CommandTable& CommandTable::All() {
  static const CommandTable table = MakeTable();
  return table;
}

const CommandEntry* CommandTable::Find(const std::vector<std::string>& iWords) const {
  for (const Group& group : groups_) {
    for (const CommandEntry& entry : group.entries) {
      if (BeginsWith(iWords, entry)) return &entry;
    }
  }
  return nullptr;
}

std::vector<const CommandEntry*> CommandTable::BeginningWith(const std::string& iWord) const {
  std::vector<const CommandEntry*> found;
  for (const Group& group : groups_) {
    for (const CommandEntry& entry : group.entries) {
      if (entry.verb.starts_with(iWord)) found.push_back(&entry);
    }
  }
  return found;
}

const CommandEntry& CommandTable::Require(const std::vector<std::string>& iWords) const {
  if (const CommandEntry* const entry = Find(iWords)) return *entry;
  const std::string& verb = iWords.at(0);
  std::vector<std::string> further;
  for (const CommandEntry* const entry : BeginningWith(verb + " ")) further.push_back(entry->verb);
  if (!further.empty()) {
    throw embedded::InputError(Quoted(verb) + " goes on with a second word: " + Listed(further));
  }
  NearestNames nearest(verb);
  for (const CommandEntry* const entry : BeginningWith("")) nearest.Offer(entry->verb);
  throw embedded::InputError("there is no command " + Quoted(verb) + nearest.Hint() +
                             "; 'help' lists the commands");
}

std::string HelpOn(const std::vector<std::string>& iWords) {
  std::string text;
  for (const CommandEntry* const entry : CommandTable::All().BeginningWith(iWords.at(0) + " ")) {
    text += Line(*entry);
  }
  if (!text.empty() && !CommandTable::All().Find(iWords)) return text;
  const CommandEntry& entry = CommandTable::All().Require(iWords);
  Syntax syntax(entry.verb, entry.summary);
  const std::unique_ptr<Command> command = entry.make();
  command->Declare(syntax);
  return syntax.Help();
}

std::string HelpOnAll() {
  std::string text;
  for (const CommandTable::Group& group : CommandTable::All().Groups()) {
    text += group.title + ":\n";
    for (const CommandEntry& entry : group.entries) text += Line(entry);
  }
  return text;
}

}  // namespace biwplan
