#pragma once

#include <memory>
#include <string>
#include <vector>

namespace biwplan {

// What an argument names, which completion offers.
enum class NameKind { Activity, Weld, Part, File, Word };

// What a command takes. It is declared once: for reading, for help and for completion. The targets
// outlive the syntax. Every command has the options --json and --help besides.
class Syntax {
 public:
  Syntax(const std::string& iVerb, const std::string& iSummary);
  ~Syntax();
  Syntax(const Syntax&) = delete;
  Syntax& operator=(const Syntax&) = delete;

  // Arguments, in their order. Only the last may be optional or stand several times.
  void Required(NameKind iKind, const std::string& iName, std::string& oText,
                const std::string& iHelp);
  void Optional(NameKind iKind, const std::string& iName, std::string& oText,
                const std::string& iHelp);
  void OneOrMore(NameKind iKind, const std::string& iName, std::vector<std::string>& oTexts,
                 const std::string& iHelp);
  void AnyNumber(NameKind iKind, const std::string& iName, std::vector<std::string>& oTexts,
                 const std::string& iHelp);
  void Choice(const std::vector<std::string>& iWords, std::string& oWord, const std::string& iHelp);

  // Options, such as "--strict"; a flag takes no value.
  void Flag(const std::string& iName, bool& oIsSet, const std::string& iHelp);
  void Option(NameKind iKind, const std::string& iName, const std::string& iValueName,
              std::string& oText, const std::string& iHelp);
  void RequiredOption(NameKind iKind, const std::string& iName, const std::string& iValueName,
                      std::string& oText, const std::string& iHelp);
  // Further lines of help.
  void Note(const std::string& iText);

  // InputError for what does not fit. After a demand for help the targets are not all filled.
  void Read(const std::vector<std::string>& iWords);
  bool AsksForHelp() const { return asksForHelp_; }
  // The answer is wanted for programs.
  bool IsJson() const { return isJson_; }
  std::string Help() const;

  struct Candidates {
    NameKind kind = NameKind::Word;
    std::vector<std::string> words;
  };
  // What may stand behind these words of the command.
  Candidates After(const std::vector<std::string>& iWords) const;
  std::vector<std::string> OptionNames() const;

 private:
  struct Parser;
  struct Argument {
    Candidates candidates;
    bool isRepeated;
  };
  struct OptionShape {
    std::string name;
    bool hasValue;
    NameKind kind;
  };

  void AddSeveral(NameKind kind, const std::string& name, std::vector<std::string>& texts,
                  const std::string& help, bool isRequired);

  std::unique_ptr<Parser> parser_;
  std::vector<Argument> arguments_;
  std::vector<OptionShape> options_;
  std::vector<std::string*> texts_;
  std::vector<std::string> none_;
  std::vector<std::string>* list_ = &none_;
  // What the command has to choose; null when there is nothing.
  const std::string* chosen_ = nullptr;
  std::vector<std::string> choices_;
  bool isJson_ = false;
  bool asksForHelp_ = false;
};

}  // namespace biwplan
