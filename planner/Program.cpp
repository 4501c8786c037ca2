#include "planner/Program.h"

#include <CLI/CLI.hpp>
#include <chrono>
#include <cmath>
#include <fstream>
#include <new>

#include "embedded/Error.h"
#include "embedded/storage/OrdinaryFile.h"
#include "host/component/Interruption.h"
#include "host/component/ZefTrace.h"
#include "planner/Resources.h"
#include "planner/Session.h"
#include "planner/language/CommandTable.h"
#include "planner/language/CtrlC.h"
#include "planner/language/Interpreter.h"
#include "planner/language/Script.h"
#include "planner/language/Shell.h"
#include "planner/language/Terminal.h"
#include "planner/report/Json.h"
#include "planner/report/Printable.h"

namespace biwplan {

namespace {

enum Status { kDone = 0, kNo = 1, kBad = 2 };

constexpr char kUses[] =
    "Plans welds: which activity of a process welds what.\n"
    "\n"
    "biwplan DOC VERB ...           runs one command on a process document\n"
    "biwplan DOC --script FILE      runs the commands of a file, - for standard input\n"
    "biwplan DOC                    asks for commands\n"
    "biwplan help VERB              explains a command\n";

constexpr char kEnd[] =
    "One command and a script write the document back when all went well and something changed.\n"
    "Exit status: 0 done, 1 the answer is no or nothing was to be done (one command), 2 bad "
    "input.\n"
    "docs/biwplan.md has an example.\n";

constexpr double kLongestWait = 86'400;

struct Demand {
  std::string document;
  std::string script;
  std::string language = "en";
  double wait = static_cast<double>(PlanFile::kUsualWait.count()) / 1000;
  bool keepsGoing = false;
  bool isEchoed = false;
  bool isTraced = false;
  bool isJson = false;
  bool asksForVersion = false;
  std::vector<std::string> words;
};

void Declare(CLI::App& app, Demand& demand) {
  app.prefix_command();
  app.set_help_flag();
  app.add_option("DOC", demand.document, "The process document, a JSON file.");
  app.add_option("--script", demand.script, "Runs the commands in this file.")->type_name("FILE");
  app.add_flag("--keep-going", demand.keepsGoing, "A script goes on after a command that fails.");
  app.add_flag("--echo", demand.isEchoed, "Shows each line of a script before its answer.");
  app.add_option("--language", demand.language, "Of the warnings: en, de.")
      ->type_name("CODE")
      ->check(CLI::IsMember({"en", "de"}));
  app.add_option("--wait", demand.wait, "For others who change the document, 10 unless given.")
      ->type_name("SECONDS")
      ->check(CLI::Range(0.0, kLongestWait));
  app.add_flag("--json", demand.isJson, "Answers in JSON, one object in one line.");
  app.add_flag("--trace", demand.isTraced, "Writes the library's trace lines among the messages.");
  app.add_flag("--version", demand.asksForVersion, "Prints the version.");
}

std::string HelpText(const CLI::App& app) {
  CLI::Formatter formatter;
  formatter.column_width(28);
  std::string text = std::string(kUses) + "\nOptions:\n";
  for (const CLI::Option* const option : app.get_options()) {
    if (option->get_positional()) continue;
    text += formatter.make_option(option, false);
  }
  return text + "\n" + HelpOnAll() + "\n" + kEnd;
}

bool IsHelp(const std::string& word) { return word == "--help" || word == "-h"; }

Demand ReadArguments(CLI::App& app, const std::vector<std::string>& arguments) {
  Demand demand;
  Declare(app, demand);
  try {
    app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
  } catch (const CLI::ParseError& error) {
    throw embedded::InputError(std::string(error.what()) + "; 'biwplan --help' shows the uses");
  }
  demand.words = app.remaining();
  return demand;
}

void RequireSense(const Demand& demand) {
  if (!demand.words.empty() && demand.words[0].starts_with('-')) {
    throw embedded::InputError("the option " + demand.words[0] +
                               " is not understood; 'biwplan --help' shows the options");
  }
  if (demand.document.empty()) {
    throw embedded::InputError("no document is named; 'biwplan --help' shows the uses");
  }
  if (!demand.script.empty() && !demand.words.empty()) {
    throw embedded::InputError("a command and a script are named; give one of them");
  }
  const bool isVerb = CommandTable::All().Find({demand.document}) != nullptr;
  if (isVerb && demand.words.empty() && !std::filesystem::exists(demand.document)) {
    throw embedded::InputError("the document is missing before the command; write 'biwplan DOC " +
                               demand.document + " ...'");
  }
}

// What the arguments ask to be explained, when they end with a demand for help: a command, with or
// without a document before it, or else the program.
bool Explain(std::vector<std::string> arguments, const std::string& general, std::ostream& out) {
  if (arguments.empty() || !IsHelp(arguments.back())) return false;
  arguments.pop_back();
  const CommandTable& table = CommandTable::All();
  const auto isVerb = [&table](const std::vector<std::string>& words) {
    return !words.empty() && !table.BeginningWith(words[0]).empty() &&
           (table.Find(words) || !table.BeginningWith(words[0] + " ").empty());
  };
  if (!isVerb(arguments) && !arguments.empty()) arguments.erase(arguments.begin());
  out << (isVerb(arguments) ? HelpOn(arguments) : general);
  return true;
}

bool RunFile(const Demand& demand, Session& session, Interpreter& interpreter) {
  embedded::RequireOrdinaryFile(demand.script, "name a script, or - for standard input");
  std::ifstream file(demand.script, std::ios::binary);
  if (!file) throw embedded::InputError("the script " + demand.script + " cannot be read");
  return RunScript(file, demand.script, demand.keepsGoing, session, interpreter);
}

// A script that keeps going keeps what succeeded.
Status SaveAfter(bool isSuccess, bool keepsGoing, Session& session, Console& console) {
  if (Interruption::IsRequested() && session.IsChanged()) throw Interrupted();
  const bool isKept = isSuccess || keepsGoing;
  if (session.IsChanged() && isKept) session.Save();
  if (session.IsChanged()) {
    console.messages << "biwplan: " << Printable(session.File().string()) << " is left as it was\n";
  }
  return isSuccess ? kDone : kBad;
}

Status RunDemand(const Demand& demand, const Surroundings& surroundings, Console& console) {
  Session session(demand.document, console);
  AddResources(session.Application().Catalogs());
  session.Application().Catalogs().SetLanguage(demand.language);
  session.Plan().WaitFor(std::chrono::milliseconds(std::lround(demand.wait * 1000)));
  Interpreter interpreter(session, console);
  if (!demand.words.empty()) {
    session.StayAlone();
    interpreter.SaveAtOnce();
    const Outcome outcome = interpreter.Run(demand.words);
    const Status status = SaveAfter(outcome != Outcome::Failed, false, session, console);
    return outcome == Outcome::No ? kNo : status;
  }
  const bool isScript = !demand.script.empty() && demand.script != "-";
  if (demand.script.empty() && surroundings.isTyped) {
    LetShellGoOn();
    Terminal user(session);
    RunShell(user, session, interpreter, console);
    return kDone;
  }
  session.StayAlone();
  const bool isSuccess =
      isScript ? RunFile(demand, session, interpreter)
               : RunScript(surroundings.input, "input", demand.keepsGoing, session, interpreter);
  return SaveAfter(isSuccess, demand.keepsGoing, session, console);
}

Status Run(const std::vector<std::string>& arguments, const Surroundings& surroundings,
           Console& console) {
  CLI::App app;
  Demand demand = ReadArguments(app, arguments);
  if (Explain(arguments, HelpText(app), console.results)) return kDone;
  if (arguments.empty()) {
    console.messages << HelpText(app);
    return kBad;
  }
  if (demand.asksForVersion) {
    console.results << "biwplan " << TUV_VERSION << '\n';
    return kDone;
  }
  if (demand.document == "help") {
    demand.words.insert(demand.words.begin(), "help");
  }
  console.isJson = demand.isJson;
  RequireSense(demand);
  console.isEchoed = demand.isEchoed;
  if (demand.isTraced) SwitchTrace("TuvKelBIWUtilsTrace", true);
  return RunDemand(demand, surroundings, console);
}

Status Fail(Console& console, const std::string& what) {
  if (console.isJson) {
    const std::string object =
        Json{{"error", what}}.dump(-1, ' ', false, Json::error_handler_t::replace);
    console.results << PrintableJson(object) << '\n' << std::flush;
  }
  console.messages << "biwplan: " << what << '\n';
  if (!console.messages) console.TellMemoryEnds();
  return kBad;
}

// Nothing of a wish to end is left when the program has ended.
struct Granted {
  ~Granted() { Interruption::Forget(); }
};

Status RunOrTell(const std::vector<std::string>& arguments, const Surroundings& surroundings,
                 Console& console) {
  try {
    return Run(arguments, surroundings, console);
  } catch (const std::bad_alloc&) {
    return Fail(console, "the memory does not suffice");
  } catch (const std::exception& error) {
    return Fail(console, Printable(error.what()));
  }
}

}  // namespace

int RunProgram(const std::vector<std::string>& iArguments, const Surroundings& iSurroundings,
               Console& ioConsole) {
  const Granted granted;
  try {
    return RunOrTell(iArguments, iSurroundings, ioConsole);
  } catch (const Interrupted&) {
    ioConsole.results.flush();
    ioConsole.messages << "biwplan: interrupted; what was not saved is dropped\n";
    return kInterruptedStatus;
  } catch (const std::bad_alloc&) {
    // Nor for what was to be told.
    ioConsole.TellMemoryEnds();
  }
  return kBad;
}

}  // namespace biwplan
