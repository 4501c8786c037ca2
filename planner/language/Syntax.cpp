#include "planner/language/Syntax.h"

#include <CLI/CLI.hpp>
#include <algorithm>

#include "embedded/Error.h"
#include "planner/import/RowFault.h"
#include "planner/report/Text.h"

namespace biwplan {

struct Syntax::Parser {
  Parser(const std::string& verb, const std::string& summary) : app(summary, verb) {
    app.set_help_flag("-h,--help", "Shows this.");
    app.get_formatter()->column_width(28);
    app.get_formatter()->label("Positionals", "Arguments");
  }
  CLI::App app;
};

namespace {

// One sentence in the planner's own words.
[[noreturn]] void Refuse(const std::string& verb, const std::string& why) {
  throw embedded::InputError(verb + ": " + why + "; 'help " + verb + "' shows what it takes");
}

// The parser takes a word in brackets for a list of its own; so such words go through it marked.
constexpr char kMark = '\1';

std::string Marked(const std::string& word) { return word.starts_with('[') ? kMark + word : word; }

void Unmark(std::string& text) {
  if (text.starts_with(kMark)) text.erase(0, 1);
}

std::string FirstLine(const std::string& text) { return text.substr(0, text.find('\n')); }

}  // namespace

Syntax::Syntax(const std::string& iVerb, const std::string& iSummary)
    : parser_(std::make_unique<Parser>(iVerb, iSummary)) {
  Flag("--json", isJson_, "Answers in JSON, one object in one line.");
}
Syntax::~Syntax() = default;

void Syntax::Required(NameKind iKind, const std::string& iName, std::string& oText,
                      const std::string& iHelp) {
  Optional(iKind, iName, oText, iHelp);
  parser_->app.get_option(iName)->required();
}

void Syntax::Optional(NameKind iKind, const std::string& iName, std::string& oText,
                      const std::string& iHelp) {
  parser_->app.add_option(iName, oText, iHelp)->type_name("");
  texts_.push_back(&oText);
  arguments_.push_back({{iKind, {}}, false});
}

void Syntax::AddSeveral(NameKind kind, const std::string& name, std::vector<std::string>& texts,
                        const std::string& help, bool isRequired) {
  parser_->app.add_option(name, texts, help)->required(isRequired)->type_name("");
  list_ = &texts;
  arguments_.push_back({{kind, {}}, true});
}

void Syntax::OneOrMore(NameKind iKind, const std::string& iName, std::vector<std::string>& oTexts,
                       const std::string& iHelp) {
  AddSeveral(iKind, iName, oTexts, iHelp, true);
}

void Syntax::AnyNumber(NameKind iKind, const std::string& iName, std::vector<std::string>& oTexts,
                       const std::string& iHelp) {
  AddSeveral(iKind, iName, oTexts, iHelp, false);
}

void Syntax::Choice(const std::vector<std::string>& iWords, std::string& oWord,
                    const std::string& iHelp) {
  Required(NameKind::Word, CLI::detail::join(iWords, "|"), oWord, iHelp);
  arguments_.back().candidates.words = iWords;
  chosen_ = &oWord;
  choices_ = iWords;
}

void Syntax::Flag(const std::string& iName, bool& oIsSet, const std::string& iHelp) {
  parser_->app.add_flag(iName, oIsSet, iHelp);
  options_.push_back({iName, false, NameKind::Word});
}

void Syntax::Option(NameKind iKind, const std::string& iName, const std::string& iValueName,
                    std::string& oText, const std::string& iHelp) {
  parser_->app.add_option(iName, oText, iHelp)->type_name(iValueName);
  texts_.push_back(&oText);
  options_.push_back({iName, true, iKind});
}

void Syntax::RequiredOption(NameKind iKind, const std::string& iName, const std::string& iValueName,
                            std::string& oText, const std::string& iHelp) {
  Option(iKind, iName, iValueName, oText, iHelp);
  parser_->app.get_option(iName)->required();
}

void Syntax::Note(const std::string& iText) { parser_->app.footer(iText); }

void Syntax::Read(const std::vector<std::string>& iWords) {
  const std::string verb = parser_->app.get_name();
  std::vector<std::string> words(iWords.size());
  std::transform(iWords.begin(), iWords.end(), words.rbegin(), Marked);
  try {
    parser_->app.parse(std::move(words));
  } catch (const CLI::CallForHelp&) {
    asksForHelp_ = true;
  } catch (const CLI::ExtrasError&) {
    Refuse(verb, Quoted(parser_->app.remaining().front()) + " is not understood");
  } catch (const CLI::ParseError& error) {
    Refuse(verb, FirstLine(error.what()));
  }
  for (std::string* const text : texts_) Unmark(*text);
  for (std::string& text : *list_) Unmark(text);
  const bool isChosen = !chosen_ || asksForHelp_ ||
                        std::find(choices_.begin(), choices_.end(), *chosen_) != choices_.end();
  if (!isChosen) Refuse(verb, Quoted(*chosen_) + " is not one of " + Listed(choices_));
}

std::string Syntax::Help() const { return parser_->app.help(); }

Syntax::Candidates Syntax::After(const std::vector<std::string>& iWords) const {
  std::size_t argument = 0;
  for (std::size_t i = 0; i < iWords.size(); ++i) {
    const auto option = std::find_if(options_.begin(), options_.end(),
                                     [&](const auto& shape) { return shape.name == iWords[i]; });
    const bool hasValue = option != options_.end() && option->hasValue;
    if (hasValue && i + 1 == iWords.size()) return {option->kind, {}};
    if (hasValue) ++i;
    const bool goesOn = argument < arguments_.size() && !arguments_[argument].isRepeated;
    if (option == options_.end() && goesOn) ++argument;
  }
  return argument < arguments_.size() ? arguments_[argument].candidates : Candidates{};
}

std::vector<std::string> Syntax::OptionNames() const {
  std::vector<std::string> names;
  for (const OptionShape& option : options_) names.push_back(option.name);
  return names;
}

}  // namespace biwplan
