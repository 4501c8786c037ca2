#include "embedded/Error.h"
#include "embedded/storage/DocumentFile.h"
#include "embedded/storage/FileReplacement.h"
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
    ioSyntax.Flag("--overwrite", isOverwriting_,
                  "Also when somebody else has changed the document since it was read.");
  }

  bool MayChange() const override { return file_.empty(); }
  Answer Run(Session& ioSession) override {
    if (file_.empty() || (isReplaced_ && ioSession.Plan().IsAt(file_))) {
      ioSession.Save(isOverwriting_ || isReplaced_);
      return {{{"file", ioSession.File().string()}}};
    }
    PlanFile copy(file_, {});
    if (!isReplaced_ && copy.Exists()) {
      throw embedded::InputError(file_ + " exists already; --replace replaces it");
    }
    copy.Write(
        embedded::WriteDocument(ioSession.Document(), embedded::FollowLinks(file_).parent_path()),
        isReplaced_);
    return {{{"file", file_}}};
  }

  std::string InWords(const Json& iData) const override {
    return "saved " + Printable(iData.at("file").get<std::string>()) + "\n";
  }

 private:
  std::string file_;
  bool isReplaced_ = false;
  bool isOverwriting_ = false;
};

class Reload : public Command {
 public:
  Answer Run(Session& ioSession) override {
    const bool isChanged = ioSession.IsChanged();
    ioSession.Reload();
    return {{{"file", ioSession.File().string()}, {"dropped", isChanged}}};
  }

  std::string InWords(const Json& iData) const override {
    return "read " + Printable(iData.at("file").get<std::string>()) + " again" +
           (iData.at("dropped") == true ? "; the changes made here are dropped\n" : "\n");
  }
};

}  // namespace

void AddDocumentCommands(CommandTable& ioTable) {
  AddNewCommand(ioTable);
  ioTable.Add<Save>("save", "Writes the document back, or a copy of it.");
  ioTable.Add<Reload>("reload", "Reads the document anew and drops changes that are not saved.");
  AddShowCommand(ioTable);
}

}  // namespace biwplan
