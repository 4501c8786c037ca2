#include <algorithm>

#include "embedded/Error.h"
#include "host/fastening/TuvIBIWFastener.h"
#include "planner/language/CommandTable.h"
#include "planner/language/Shell.h"
#include "planner/language/Syntax.h"
#include "planner/language/Words.h"
#include "planner/report/Printable.h"

namespace biwplan {

namespace {

std::vector<std::string> KeysOf(NameKind kind, Session& session) {
  std::vector<std::string> keys;
  const embedded::Document& document = session.Document();
  if (kind == NameKind::Activity) {
    for (const auto& activity : document.Activities()) keys.push_back(activity->Data().key);
  } else if (kind == NameKind::Part) {
    for (const auto& part : document.Products()) keys.push_back(part->Data().key);
  } else if (kind == NameKind::Weld) {
    const ZefListValZefBaseUnknown_var welds = session.Find().AllWelds();
    keys = NamesOf(&welds);
  }
  return keys;
}

// The verb's next word.
std::vector<std::string> Verbs(const std::vector<std::string>& words) {
  const std::string begin = words.empty() ? "" : words[0] + " ";
  std::vector<std::string> verbs;
  for (const CommandEntry* const entry : CommandTable::All().BeginningWith(begin)) {
    const std::string word = entry->verb.substr(begin.size());
    verbs.push_back(word.substr(0, word.find(' ')));
  }
  return verbs;
}

std::vector<std::string> Candidates(const std::vector<std::string>& words, const std::string& begun,
                                    Session& session) {
  const CommandEntry* const entry = CommandTable::All().Find(words);
  if (!entry) return words.size() < 2 ? Verbs(words) : std::vector<std::string>{};
  Syntax syntax(entry->verb, entry->summary);
  const std::unique_ptr<Command> command = entry->make();
  command->Declare(syntax);
  if (begun.starts_with('-')) return syntax.OptionNames();
  const auto first = words.begin() + static_cast<std::ptrdiff_t>(entry->WordCount());
  const Syntax::Candidates next = syntax.After({first, words.end()});
  return next.words.empty() ? KeysOf(next.kind, session) : next.words;
}

}  // namespace

std::vector<std::string> Complete(const std::string& iLine, Session& ioSession) {
  std::vector<std::string> found;
  try {
    std::vector<std::string> words = SplitWords(iLine);
    std::string begun;
    const bool isBegun = !iLine.empty() && iLine.back() != ' ' && !words.empty();
    if (isBegun) {
      begun = words.back();
      words.pop_back();
    }
    for (const std::string& candidate : Candidates(words, begun, ioSession)) {
      // What cannot be shown cannot be typed either.
      const bool isShown = Printable(candidate) == candidate;
      if (isShown && candidate.starts_with(begun)) found.push_back(QuotedWord(candidate));
    }
  } catch (const embedded::InputError&) {
    // A line that is not finished, or a document that cannot be read, offers nothing.
    return {};
  }
  std::sort(found.begin(), found.end());
  found.erase(std::unique(found.begin(), found.end()), found.end());
  return found;
}

}  // namespace biwplan
