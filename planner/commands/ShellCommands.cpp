#include "host/component/ZefTrace.h"
#include "planner/Session.h"
#include "planner/commands/Commands.h"
#include "planner/language/CommandTable.h"
#include "planner/language/Syntax.h"

namespace biwplan {

namespace {

class Trace : public Command {
 public:
  void Declare(Syntax& ioSyntax) override {
    ioSyntax.Choice({"on", "off"}, word_, "The library's trace lines, among the messages.");
  }

  Answer Run(Session&) override {
    SwitchTrace("TuvKelBIWUtilsTrace", word_ == "on");
    return {{{"on", word_ == "on"}}};
  }

  std::string InWords(const Json&) const override { return {}; }

 private:
  std::string word_;
};

class Help : public Command {
 public:
  void Declare(Syntax& ioSyntax) override {
    ioSyntax.AnyNumber(NameKind::Word, "VERB", words_, "A command; without it all are listed.");
  }

  Answer Run(Session&) override {
    return {{{"text", words_.empty() ? HelpOnAll() : HelpOn(words_)}}};
  }

  std::string InWords(const Json& iData) const override {
    return iData.at("text").get<std::string>();
  }

 private:
  std::vector<std::string> words_;
};

class Quit : public Command {
 public:
  Answer Run(Session& ioSession) override {
    ioSession.Leave();
    return {};
  }

  std::string InWords(const Json&) const override { return {}; }
};

}  // namespace

void AddShellCommands(CommandTable& ioTable) {
  ioTable.Add<Trace>("trace", "Shows what the library does, step by step.");
  ioTable.Add<Help>("help", "Lists the commands, or explains one.");
  ioTable.Add<Quit>("quit", "Leaves the shell, or ends a script.");
}

}  // namespace biwplan
