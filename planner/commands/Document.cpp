#include <filesystem>

#include "embedded/Error.h"
#include "embedded/storage/DocumentFile.h"
#include "planner/Session.h"
#include "planner/commands/Commands.h"
#include "planner/language/CommandTable.h"
#include "planner/language/Syntax.h"
#include "planner/report/Printable.h"

namespace biwplan {

namespace {

class Save : public Command {
 public:
  void Declare(Syntax& ioSyntax) override {
    ioSyntax.Optional(NameKind::File, "FILE", file_,
                      "Gets a copy; the document stays where it is.");
    ioSyntax.Flag("--replace", isReplaced_, "Also when FILE exists.");
  }

  Answer Run(Session& ioSession) override {
    if (file_.empty()) {
      ioSession.Save();
      return {{{"file", ioSession.File().string()}}};
    }
    if (!isReplaced_ && std::filesystem::exists(file_)) {
      throw embedded::InputError(file_ + " exists already; --replace replaces it");
    }
    embedded::SaveDocument(ioSession.Document(), file_);
    return {{{"file", file_}}};
  }

  std::string InWords(const Json& iData) const override {
    return "saved " + Printable(iData.at("file").get<std::string>()) + "\n";
  }

 private:
  std::string file_;
  bool isReplaced_ = false;
};

}  // namespace

void AddDocumentCommands(CommandTable& ioTable) {
  AddNewCommand(ioTable);
  ioTable.Add<Save>("save", "Writes the document back, or a copy of it.");
  AddShowCommand(ioTable);
}

}  // namespace biwplan
