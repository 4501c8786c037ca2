#include "planner/language/Shell.h"

#include "embedded/Error.h"
#include "host/component/Interruption.h"
#include "planner/report/Printable.h"

namespace biwplan {

namespace {

bool IsAnswer(const std::optional<std::string>& text, char letter) {
  return text && !text->empty() && ((*text)[0] | 0x20) == letter;
}

// False when the user wants to go on.
bool SettleChanges(LineSource& user, Session& session, Interpreter& interpreter, Console& console) {
  if (!session.IsChanged()) return true;
  const std::optional<std::string> answer = user.Ask(
      "Save the changes to " + Printable(session.File().string()) + "? (yes, no, cancel) ");
  if (IsAnswer(answer, 'y')) return interpreter.Run({"save"}) != Outcome::Failed;
  if (answer && !IsAnswer(answer, 'n')) return false;
  if (answer) session.Forsake();
  const bool isKept = !answer && session.Steps().KeepsUnsaved();
  console.messages << "biwplan: the changes are not saved"
                   << (isKept ? "; 'recover' brings them back\n" : "\n") << std::flush;
  return true;
}

void TellLost(Session& session) {
  try {
    session.TellLost();
  } catch (const embedded::InputError&) {
    // The first command that needs the document says it.
  }
}

void RunInterruptibly(const std::string& line, Interpreter& interpreter, Session& session,
                      Console& console) {
  // What was pressed before is no answer to this line.
  Interruption::Forget();
  try {
    interpreter.RunLine(line);
  } catch (const Interrupted&) {
    session.TakeWarnings();
    console.messages << "biwplan: interrupted; the plan is as it was before\n" << std::flush;
  }
  Interruption::Forget();
}

}  // namespace

void RunShell(LineSource& ioUser, Session& ioSession, Interpreter& ioInterpreter,
              Console& ioConsole) {
  ioSession.KeepStepsAtOnce();
  TellLost(ioSession);
  ioInterpreter.GoOn();
  while (true) {
    const std::optional<std::string> line =
        ioUser.Ask(ioSession.IsChanged() ? "biwplan*> " : "biwplan> ");
    if (line && line->find_first_not_of(" \t") != std::string::npos) ioUser.Remember(*line);
    if (line) RunInterruptibly(*line, ioInterpreter, ioSession, ioConsole);
    if (line && !ioSession.IsLeaving()) continue;
    if (SettleChanges(ioUser, ioSession, ioInterpreter, ioConsole)) return;
    ioSession.Stay();
  }
}

}  // namespace biwplan
