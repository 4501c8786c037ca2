#include <filesystem>

#include "embedded/Error.h"
#include "embedded/processdb/CsvImport.h"
#include "embedded/processdb/ProcessDatabase.h"
#include "host/processdb/ProcessDb.h"
#include "host/values/Each.h"
#include "planner/Session.h"
#include "planner/commands/Commands.h"
#include "planner/import/RowFault.h"
#include "planner/language/CommandTable.h"
#include "planner/language/Syntax.h"
#include "planner/report/Describe.h"
#include "planner/report/Text.h"
#include "services/TuvBIWServices.h"

namespace biwplan {

namespace {

embedded::ProcessDatabase& RequireDatabase(Session& session) {
  if (embedded::ProcessDatabase* const database = session.Document().Database()) return *database;
  session.RequireNoLostDatabase();
  throw embedded::InputError(
      "no external process database is attached; 'external attach FILE' attaches one");
}

Json DescribeImport(const std::vector<embedded::ImportedFile>& files) {
  Json rows = Json::array();
  for (const embedded::ImportedFile& file : files) {
    rows.push_back({{"file", file.file.filename().string()}, {"rows", file.rows}});
  }
  return rows;
}

// Fills a database from lists.
class Fill : public Command {
 public:
  std::string InWords(const Json& iData) const override {
    std::string text = Printable(iData.at("database").get<std::string>()) + "\n";
    for (const Json& file : iData.at("files")) {
      text += "  " + Printable(file.at("file").get<std::string>()) + ": " +
              Counted(file.at("rows").get<std::size_t>(), "row") + "\n";
    }
    return text;
  }

 protected:
  void DeclareSources(Syntax& syntax) {
    syntax.OneOrMore(NameKind::File, "SOURCE", sources_,
                     "Folders with lists in CSV, or single lists: processes.csv, parents.csv, "
                     "versions.csv, activities.csv, assignments.csv, version_lists.csv.");
  }
  std::vector<std::filesystem::path> Sources() const { return {sources_.begin(), sources_.end()}; }

 private:
  std::vector<std::string> sources_;
};

class ExternalCreate : public Fill {
 public:
  void Declare(Syntax& ioSyntax) override {
    ioSyntax.Required(NameKind::File, "FILE", file_, "The new database.");
    DeclareSources(ioSyntax);
  }

  bool MayChange() const override { return true; }
  Answer Run(Session& ioSession) override {
    embedded::Document& document = ioSession.Document();
    const auto files = embedded::CreateFromCsv(file_, Sources());
    document.AttachDatabase(embedded::ProcessDatabase::Open(file_));
    ioSession.Changed();
    return {{{"database", file_}, {"files", DescribeImport(files)}}};
  }

 private:
  std::string file_;
};

class ExternalFill : public Fill {
 public:
  void Declare(Syntax& ioSyntax) override { DeclareSources(ioSyntax); }

  Answer Run(Session& ioSession) override {
    embedded::ProcessDatabase& database = RequireDatabase(ioSession);
    const auto files = embedded::ImportCsv(database, Sources());
    return {{{"database", database.File().string()}, {"files", DescribeImport(files)}}};
  }
};

class ExternalAttach : public Command {
 public:
  void Declare(Syntax& ioSyntax) override {
    ioSyntax.Required(NameKind::File, "FILE", file_, "A process database.");
  }

  bool MayChange() const override { return true; }
  Answer Run(Session& ioSession) override {
    ioSession.Document().AttachDatabase(embedded::ProcessDatabase::Open(file_));
    ioSession.Changed();
    return {{{"database", file_}}};
  }

  std::string InWords(const Json& iData) const override {
    return Printable(iData.at("database").get<std::string>()) + " is attached\n";
  }

 private:
  std::string file_;
};

class ExternalDetach : public Command {
 public:
  void Declare(Syntax& ioSyntax) override {
    ioSyntax.Note("The file stays as it is. Status 1 when none is attached.");
  }

  bool MayChange() const override { return true; }
  Answer Run(Session& ioSession) override {
    embedded::Document& document = ioSession.Document();
    const auto& lost = document.Lost();
    const bool isThere = lost || document.Database();
    if (!isThere) return {{{"database", ""}}, true};
    const std::string file = (lost ? lost->file : document.Database()->File()).string();
    document.AttachDatabase(nullptr);
    ioSession.Changed();
    return {{{"database", file}}};
  }

  std::string InWords(const Json& iData) const override {
    const std::string file = Printable(iData.at("database").get<std::string>());
    return file.empty() ? "no database is attached\n" : file + " is detached\n";
  }
};

// Asks the database about welds.
class ExternalQuestion : public Command {
 public:
  void Declare(Syntax& ioSyntax) override {
    ioSyntax.OneOrMore(NameKind::Weld, "WELD", words_, "Names, patterns or FIRST..LAST.");
    ioSyntax.Note("Status 1 when a weld is not assigned there.");
  }

  Answer Run(Session& ioSession) override {
    RequireDatabase(ioSession);
    Answer answer;
    Json& welds = answer.data["welds"] = Json::array();
    for (const auto& weld : Each<ZefBaseUnknown>(ioSession.Find().Welds(words_))) {
      Json row = {{"weld", NameOf(weld)}};
      row["answer"] = Ask(weld);
      answer.isNo = answer.isNo || IsNo(row["answer"]);
      welds.push_back(std::move(row));
    }
    return answer;
  }

  std::string InWords(const Json& iData) const override {
    std::string text;
    for (const Json& row : iData.at("welds")) {
      text += Printable(row.at("weld").get<std::string>()) + ": " + Words(row.at("answer")) + "\n";
    }
    return text;
  }

 protected:
  virtual Json Ask(const ZefBaseUnknown_var& weld) const = 0;
  virtual bool IsNo(const Json& answer) const = 0;
  virtual std::string Words(const Json& answer) const = 0;

 private:
  std::vector<std::string> words_;
};

class ExternalAssigned : public ExternalQuestion {
  Json Ask(const ZefBaseUnknown_var& weld) const override {
    return TuvBIWServices::IsWeldAssignedInPask(weld) != 0;
  }
  bool IsNo(const Json& answer) const override { return answer == false; }
  std::string Words(const Json& answer) const override {
    return IsNo(answer) ? "not assigned in the database" : "assigned in the database";
  }
};

class ExternalCount : public ExternalQuestion {
  Json Ask(const ZefBaseUnknown_var& weld) const override {
    return TuvBIWServices::GetNumberOfPaskAssignments(weld);
  }
  bool IsNo(const Json& answer) const override { return answer == 0; }
  std::string Words(const Json& answer) const override {
    return Counted(answer.get<std::size_t>(), "assignment");
  }
};

class ExternalText : public ExternalQuestion {
  Json Ask(const ZefBaseUnknown_var& weld) const override {
    ZefUnicodeString text;
    TuvBIWServices::AddPaskAssignmentToText(weld, text);
    return text.Bytes();
  }
  bool IsNo(const Json& answer) const override { return answer == ""; }
  std::string Words(const Json& answer) const override {
    return Printable(answer.get<std::string>());
  }
};

class ExternalChain : public Command {
 public:
  void Declare(Syntax& ioSyntax) override {
    ioSyntax.Required(NameKind::Activity, "NAME", name_,
                      "A process of the database, or an activity that belongs to one.");
  }

  Answer Run(Session& ioSession) override {
    RequireDatabase(ioSession);
    const ZefIIPDAdapter_var adapter = ioSession.Document().Identity();
    const Handle<IUnknown> process = FindProcess(ioSession, *adapter);
    ZefListValZefUnicodeString identifiers;
    TuvBIWServices::GetListPaskObjectIDsTillRoot(process, adapter, identifiers);
    Answer answer;
    Json& chain = answer.data["chain"] = Json::array();
    for (int i = 1; i <= identifiers.Size(); ++i) chain.push_back(identifiers[i].Bytes());
    return answer;
  }

  std::string InWords(const Json& iData) const override {
    std::string text;
    for (const Json& process : iData.at("chain")) {
      text += (text.empty() ? "" : " > ") + Printable(process.get<std::string>());
    }
    return text + "\n";
  }

 private:
  Handle<IUnknown> FindProcess(Session& session, ZefIIPDAdapter& adapter) const {
    Handle<IUnknown> process;
    if (Succeeded(adapter.GetObjectFromID(name_, process.Put())) && process) return process;
    const embedded::Activity* const activity = session.Document().FindActivity(name_);
    if (!activity) {
      throw embedded::InputError("neither a process of the database nor an activity is called " +
                                 Quoted(name_));
    }
    const bool isKnown = Succeeded(adapter.GetIPDObject(activity->Identity(), process.Put()));
    if (isKnown && process) return process;
    throw embedded::InputError("the activity " + Quoted(name_) +
                               " belongs to no process of the database");
  }

  std::string name_;
};

}  // namespace

void AddExternalCommands(CommandTable& ioTable) {
  ioTable.Add<ExternalCreate>("external create", "Makes a database from lists and attaches it.");
  ioTable.Add<ExternalFill>("external fill", "Adds lists to the attached database.");
  ioTable.Add<ExternalAttach>("external attach", "Attaches a database to the document.");
  ioTable.Add<ExternalDetach>("external detach", "Takes the database off the document.");
  ioTable.Add<ExternalAssigned>("external assigned", "Says whether it assigns welds.");
  ioTable.Add<ExternalCount>("external count", "Counts its assignments of welds.");
  ioTable.Add<ExternalText>("external text", "Names its assignments of welds.");
  ioTable.Add<ExternalChain>("external chain", "Names the processes from the root to one.");
}

}  // namespace biwplan
