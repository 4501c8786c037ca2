#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "embedded/Application.h"
#include "embedded/dialog/RecordedDialogs.h"
#include "host/values/List.h"
#include "host/visu/ZefModelForRep3D.h"
#include "manufassly/TuvIUpdateManufAssly.h"
#include "planner/Console.h"
#include "planner/PlanFile.h"
#include "planner/history/History.h"
#include "planner/names/Names.h"
#include "planner/report/Progress.h"

namespace biwplan {

// One planner at work on one document file.
class Session {
 public:
  // The console outlives the session. The file is read when a command first needs it.
  // Such a session keeps others out only while it saves, and saves over nobody's changes.
  Session(std::filesystem::path iFile, Console& ioConsole);
  ~Session();
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  const std::filesystem::path& File() const { return file_.Path(); }
  PlanFile& Plan() { return file_; }
  embedded::Application& Application() { return application_; }

  // InputError when the file is missing or cannot be read.
  embedded::Document& Document();
  Names Find() { return Names(Document()); }
  // InputError when the document names a process database that cannot be opened, for what would
  // be answered from it.
  void RequireNoLostDatabase();
  // True once the document was read or made.
  bool HasDocument() const { return application_.Edited() != nullptr; }
  // Begins anew with this document, which is not saved yet. It may replace what the file holds
  // now, or else nothing.
  void Begin(embedded::Owned<embedded::Document> iDocument, bool iReplaces);
  // Takes what the file holds now, in place of all changes.
  void Reload();

  // From its first change on the session is alone on the file, until it ends.
  void StayAlone() { staysAlone_ = true; }
  // Before a command that may change the document.
  void PrepareChange();

  // The document differs from its file.
  void Changed() { isChanged_ = isUnrecorded_ = true; }
  bool IsChanged() const { return isChanged_; }
  // InputError when somebody else has changed the file since it was read, unless that may go.
  void Save(bool iOverwrites = false);

  // Steps that are not saved outlast the session.
  void KeepStepsAtOnce() { history_.KeepAtOnce(); }
  // Makes what a command has changed a step of the history.
  void Record(const std::string& iCommand);
  // Has the document as it was before what is no step yet.
  void TakeBack();
  // The steps that led here; it is there although the file may hold no document.
  History& Steps();
  // Says once which steps a shell that has ended did not save.
  void TellLost();
  // Nobody wants what is not saved.
  void Forsake() { history_.Forsake(); }
  // Goes there; nothing has changed when the text there is no document.
  void Go(History::Move iMove);
  void Recover(const History::Lost& iLost, bool iOverwrites);

  // Has the assemblies follow the process from now on, or not; the document keeps the choice.
  void SwitchUpdate(bool iOn);
  // Subscribes anew when the activity that it goes through was removed.
  void KeepUpdate();

  // Labels in the view, in place of those shown before; false when none could be shown.
  bool ShowLabels(ZefListValZefBaseUnknown_var& iWelds);
  // Answers how many there were.
  int DropLabels();

  // A bar on the console, if somebody watches.
  Progress Watch(const std::string& iWhat, std::size_t iTotal) const;

  // Shows one of the planner's own warnings, a sentence.
  void Warn(const std::string& iMessage);
  // The warnings shown since the last call.
  std::vector<DialogRequest> TakeWarnings();

  // The loop that runs the commands shall end.
  void Leave() { isLeaving_ = true; }
  void Stay() { isLeaving_ = false; }
  bool IsLeaving() const { return isLeaving_; }

 private:
  // Follows the choices that go with the document.
  void Adopt();
  void Subscribe();
  // Begins the history with what the file holds.
  void ReadFile();
  // Has this text's document.
  void Restore(const std::string& text);
  void Remark(const std::string& text);

  // Shows a warning as text and remembers it.
  class Dialogs : public embedded::RecordedDialogs {
   public:
    explicit Dialogs(Console& ioConsole) : console_(ioConsole) {}
    int Show(const DialogRequest& iRequest) override;
    // A message becomes one line, for a document in whose names lines end.
    void JoinLines(bool iOn) { joinsLines_ = iOn; }

   private:
    Console& console_;
    bool joinsLines_ = false;
  };

  // Has the trace lines come among the messages while it lives.
  class Traces {
   public:
    explicit Traces(Console& ioConsole);
    ~Traces();
    Traces(const Traces&) = delete;
    Traces& operator=(const Traces&) = delete;
  };

  Console& console_;
  PlanFile file_;
  Traces traces_;
  Dialogs dialogs_;
  embedded::Application application_;
  // The subscription goes through this activity alone; null while assemblies do not follow.
  TuvIUpdateManufAssly_var update_;
  // Whether welds are coloured when their activity is removed.
  bool isColouring_ = false;
  list<ZefModelForRep3D> labels_;
  History history_;
  bool isChanged_ = false;
  bool staysAlone_ = false;
  bool isUnrecorded_ = false;
  bool hasToldLost_ = false;
  bool isLeaving_ = false;
};

}  // namespace biwplan
