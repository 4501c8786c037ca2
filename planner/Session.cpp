#include "planner/Session.h"

#include <algorithm>
#include <new>
#include <utility>

#include "embedded/Error.h"
#include "embedded/dialog/ConsoleDialogs.h"
#include "embedded/storage/DocumentFile.h"
#include "embedded/storage/FileReplacement.h"
#include "host/component/Interruption.h"
#include "host/component/ZefTrace.h"
#include "planner/import/RowFault.h"
#include "planner/report/Printable.h"
#include "services/TuvBIWServices.h"

namespace biwplan {

namespace {

bool HasLineEnd(const std::string& text) { return text.find('\n') != std::string::npos; }

bool HasLineEnds(const embedded::Document& document) {
  const auto isOf = [](const auto& objects, const auto& nameOf) {
    return std::any_of(objects.begin(), objects.end(), [&](const auto& object) {
      return HasLineEnd(object->Key()) || HasLineEnd(nameOf(*object));
    });
  };
  return isOf(document.Activities(), [](const auto& each) { return each.Data().label; }) ||
         isOf(document.Products(), [](const auto& each) { return each.Data().name; }) ||
         isOf(document.Assemblies(), [](const auto& each) { return each.OwnName(); });
}

}  // namespace

int Session::Dialogs::Show(const DialogRequest& iRequest) {
  console_.results.flush();
  DialogRequest shown = iRequest;
  shown.title = Printable(shown.title);
  if (joinsLines_) shown.message = Printable(shown.message);
  embedded::ConsoleDialogs(console_.messages).Show(shown);
  return RecordedDialogs::Show(iRequest);
}

Session::Traces::Traces(Console& ioConsole) {
  DivertTraces(
      [&ioConsole](const char* line) { ioConsole.messages << Printable(line) << std::endl; });
}

Session::Traces::~Traces() { DivertTraces({}); }

Session::Session(std::filesystem::path iFile, Console& ioConsole)
    : console_(ioConsole),
      file_(std::move(iFile), [this](const std::string& text) { Remark(text); }),
      traces_(console_),
      dialogs_(console_),
      application_(dialogs_),
      history_(file_.Path(), [this](const std::string& sentence) {
        console_.messages << "biwplan: " << Printable(sentence) << '\n' << std::flush;
      }) {}

// What is told was done: it does not fail for want of words.
void Session::Remark(const std::string& text) {
  try {
    console_.messages << "biwplan: " << Printable(text) << std::endl;
  } catch (const std::bad_alloc&) {
    console_.TellMemoryEnds();
  }
}

Session::~Session() {
  try {
    DropLabels();
  } catch (const std::bad_alloc&) {
    // They end with the view.
  }
}

embedded::Document& Session::Document() {
  if (!HasDocument()) {
    if (!file_.Exists()) {
      throw embedded::InputError("there is no document " + File().string() + "; 'new' makes it");
    }
    ReadFile();
    TellLost();
    Restore(history_.Text());
    if (const auto& lost = application_.Edited()->Lost()) {
      Warn("The plan is opened without its process database: " + lost->reason);
    }
  }
  return *application_.Edited();
}

void Session::RequireNoLostDatabase() {
  const auto& lost = Document().Lost();
  if (!lost) return;
  throw embedded::InputError("this needs the process database, but " + lost->reason +
                             "; 'external attach FILE' takes another one, 'external detach' none");
}

void Session::Begin(embedded::Owned<embedded::Document> iDocument, bool iReplaces) {
  if (!history_.HasBegun()) ReadFile();
  iReplaces ? file_.AcceptAsItIs() : file_.ExpectNone();
  DropLabels();
  application_.Edit(std::move(iDocument));
  Adopt();
  Changed();
}

void Session::Reload() {
  ReadFile();
  Restore(history_.Text());
  isChanged_ = isUnrecorded_ = false;
}

void Session::PrepareChange() {
  if (!staysAlone_) return;
  file_.Lock();
  // Another one may have been first since a question was answered.
  if (HasDocument() && !isChanged_ && file_.IsAnother()) Reload();
}

void Session::Save(bool iOverwrites) {
  Document();
  Record("save");
  const PlanFile::Alone alone(file_);
  const Interruption::Deferral whole;
  if (!iOverwrites) file_.RequireKnown();
  history_.BeforeSaving();
  try {
    file_.Write(history_.Text(), iOverwrites);
  } catch (...) {
    history_.SavingFailed();
    throw;
  }
  isChanged_ = false;
  try {
    history_.AfterSaving();
  } catch (const std::bad_alloc&) {
    // The plan is saved; the history catches up when it is opened next.
    console_.TellMemoryEnds();
  }
}

void Session::ReadFile() { history_.Begin(file_.Exists() ? file_.Read() : std::string()); }

void Session::TellLost() {
  if (file_.Exists() && !std::exchange(hasToldLost_, true)) Steps().TellLost();
}

void Session::Restore(const std::string& text) {
  embedded::Owned<embedded::Document> document = embedded::ReadDocument(text, File().string());
  DropLabels();
  application_.Edit(std::move(document));
  Adopt();
}

void Session::Record(const std::string& iCommand) {
  if (!isUnrecorded_) return;
  history_.Record(iCommand,
                  embedded::WriteDocument(Document(), embedded::FollowLinks(File()).parent_path()));
  isUnrecorded_ = false;
  isChanged_ = !history_.IsSaved();
}

void Session::TakeBack() {
  if (!isUnrecorded_) return;
  Restore(history_.Text());
  isUnrecorded_ = false;
  isChanged_ = !history_.IsSaved();
}

History& Session::Steps() {
  if (!history_.HasBegun()) ReadFile();
  return history_;
}

void Session::Go(History::Move iMove) {
  Restore(iMove.text);
  history_.Take(std::move(iMove));
  isChanged_ = !history_.IsSaved();
}

void Session::Recover(const History::Lost& iLost, bool iOverwrites) {
  History::Move move = Steps().WayTo(iLost, iOverwrites);
  Restore(move.text);
  history_.Recover(iLost, std::move(move));
  isChanged_ = !history_.IsSaved();
}

void Session::SwitchUpdate(bool iOn) {
  embedded::Document& document = Document();
  if (iOn == static_cast<bool>(update_)) return;
  if (iOn) {
    Subscribe();
  } else {
    update_->RemoveUpdateCallback();
    update_ = nullptr;
    document.settings.updateThrough.clear();
  }
  Changed();
}

void Session::KeepUpdate() {
  if (!update_ || Document().FindActivity(Document().settings.updateThrough)) return;
  SwitchUpdate(false);
  SwitchUpdate(true);
}

void Session::Adopt() {
  update_ = nullptr;
  isColouring_ = false;
  dialogs_.JoinLines(HasLineEnds(*application_.Edited()));
  const embedded::Document::Settings& settings = application_.Edited()->settings;
  application_.SetPartLoadConstraint(settings.partLoadConstraint);
  if (!settings.updateThrough.empty()) Subscribe();
}

void Session::Subscribe() {
  embedded::Document& document = *application_.Edited();
  const embedded::Activity* through = document.FindActivity(document.settings.updateThrough);
  update_ = through ? through->Identity() : nullptr;
  for (const auto& activity : document.Activities()) {
    if (!update_) update_ = activity->Identity();
  }
  if (!update_ || Failed(update_->AddUpdateCallback())) {
    update_ = nullptr;
    throw embedded::InputError("no activity of the process can be subscribed through");
  }
  // This subscription stays when the update is switched off, so one serves the whole document.
  if (!isColouring_) isColouring_ = Succeeded(update_->AddWeldColorUpdateCallback());
  document.settings.updateThrough = NameOf(update_);
}

bool Session::ShowLabels(ZefListValZefBaseUnknown_var& iWelds) {
  DropLabels();
  return Succeeded(TuvBIWServices::ActivateListWeldVisualization(&iWelds, labels_));
}

int Session::DropLabels() {
  const int count = labels_.Size();
  if (count > 0) TuvBIWServices::DeactivateListWeldVisualization(labels_);
  return count;
}

Progress Session::Watch(const std::string& iWhat, std::size_t iTotal) const {
  return {console_.isWatched ? &console_.terminal : nullptr, iWhat, iTotal};
}

void Session::Warn(const std::string& iMessage) {
  dialogs_.Show({nullptr, "Warning", 0, Printable(iMessage), "WARNING"});
}

std::vector<DialogRequest> Session::TakeWarnings() {
  std::vector<DialogRequest> warnings = dialogs_.Shown();
  dialogs_.Forget();
  application_.Idle();
  return warnings;
}

}  // namespace biwplan
