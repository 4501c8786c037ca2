#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "planner/language/Command.h"

namespace biwplan {

struct CommandEntry {
  // One word or two ("external chain").
  std::string verb;
  std::string summary;
  std::unique_ptr<Command> (*make)();
  std::size_t WordCount() const { return verb.find(' ') == std::string::npos ? 1 : 2; }
};

// The commands, in the order in which help lists them.
class CommandTable {
 public:
  static const CommandTable& All();

  struct Group {
    std::string title;
    std::vector<CommandEntry> entries;
  };

  void Begin(std::string_view iTitle) { groups_.push_back({std::string(iTitle), {}}); }
  template <class T>
  void Add(std::string_view iVerb, std::string_view iSummary) {
    groups_.back().entries.push_back(
        {std::string(iVerb), std::string(iSummary),
         []() -> std::unique_ptr<Command> { return std::make_unique<T>(); }});
  }

  const std::vector<Group>& Groups() const { return groups_; }
  // The command that the words begin with; null when there is none.
  const CommandEntry* Find(const std::vector<std::string>& iWords) const;
  // The same; InputError with the nearest verbs.
  const CommandEntry& Require(const std::vector<std::string>& iWords) const;
  // Every verb that begins with the word.
  std::vector<const CommandEntry*> BeginningWith(const std::string& iWord) const;

 private:
  std::vector<Group> groups_;
};

// The summary and the arguments of the command that the words begin with, or the commands whose
// first word they are. InputError when there is none.
std::string HelpOn(const std::vector<std::string>& iWords);
// Every command in one line.
std::string HelpOnAll();

}  // namespace biwplan
