#include "planner/Session.h"

#include <utility>

#include "embedded/Error.h"
#include "embedded/dialog/ConsoleDialogs.h"
#include "embedded/storage/DocumentFile.h"
#include "planner/import/RowFault.h"
#include "services/TuvBIWServices.h"

namespace biwplan {

int Session::Dialogs::Show(const DialogRequest& iRequest) {
  console_.results.flush();
  embedded::ConsoleDialogs(console_.messages).Show(iRequest);
  return RecordedDialogs::Show(iRequest);
}

Session::Session(std::filesystem::path iFile, Console& ioConsole)
    : file_(std::move(iFile)), console_(ioConsole), dialogs_(console_), application_(dialogs_) {}

Session::~Session() { DropLabels(); }

embedded::Document& Session::Document() {
  if (!HasDocument()) {
    if (!std::filesystem::exists(file_)) {
      throw embedded::InputError("there is no document " + file_.string() + "; 'new' makes it");
    }
    application_.Edit(embedded::LoadDocument(file_));
  }
  return *application_.Edited();
}

void Session::Begin(embedded::Owned<embedded::Document> iDocument) {
  DropLabels();
  application_.Edit(std::move(iDocument));
  isChanged_ = true;
}

void Session::Save() {
  embedded::SaveDocument(Document(), file_);
  isChanged_ = false;
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
  return {console_.isWatched ? &console_.messages : nullptr, iWhat, iTotal};
}

std::vector<DialogRequest> Session::TakeWarnings() {
  std::vector<DialogRequest> warnings = dialogs_.Shown();
  dialogs_.Forget();
  application_.Idle();
  return warnings;
}

}  // namespace biwplan
