#include <filesystem>
#include <istream>

#include "embedded/Error.h"
#include "planner/Session.h"
#include "planner/commands/Commands.h"
#include "planner/import/DocumentBuilder.h"
#include "planner/import/ListReader.h"
#include "planner/import/PartsList.h"
#include "planner/import/PlanSize.h"
#include "planner/import/ProcessList.h"
#include "planner/import/Values.h"
#include "planner/import/WeldList.h"
#include "planner/language/CommandTable.h"
#include "planner/language/Syntax.h"
#include "planner/report/Text.h"

namespace biwplan {

namespace {

// Reads a list behind a bar; one that cannot be opened is refused as elsewhere.
template <class Read>
auto ReadList(const Session& session, const std::string& path, const Read& read) {
  OpenList(path);
  std::error_code error;
  const std::uintmax_t size = std::filesystem::file_size(path, error);
  Progress progress = session.Watch(path, error ? 0 : static_cast<std::size_t>(size));
  WatchedFile file(path, progress);
  std::istream stream(&file);
  return read(stream);
}

// A list of which no row is kept is most likely the wrong one: it makes no plan, and above all it
// replaces none.
void RequireWelds(const WeldList& welds) {
  if (!welds.welds.empty()) return;
  RefuseFaults(welds.source, welds.rowsRead, welds.dropped);
  throw embedded::InputError(welds.source +
                             " has no row below its header; a plan begins with a weld or a point");
}

Json DescribeDropped(const WeldList& welds) {
  Json rows = Json::array();
  for (const RowFault& fault : welds.dropped) {
    rows.push_back({{"line", fault.line}, {"kind", Describe(fault.kind)}, {"reason", fault.text}});
  }
  return rows;
}

class New : public Command {
 public:
  void Declare(Syntax& ioSyntax) override {
    ioSyntax.RequiredOption(NameKind::File, "--parts", "FILE", parts_, "The parts list, CSV.");
    ioSyntax.RequiredOption(NameKind::File, "--welds", "FILE", welds_, "The weld list, CSV.");
    ioSyntax.RequiredOption(NameKind::File, "--process", "FILE", process_,
                            "The list of stations and operations, CSV.");
    ioSyntax.Option(NameKind::Word, "--name", "NAME", name_, "Of the process itself.");
    ioSyntax.Flag("--strict", isStrict_, "Fails where a row of the weld list would be dropped.");
    ioSyntax.Option(NameKind::Word, "--columns", "ORDER", columns_,
                    "Of a weld list without header, such as id,x,y,z,parts.");
    ioSyntax.Flag("--replace", isReplaced_, "Also when the document exists.");
    ioSyntax.Note("docs/formats.md describes the lists.");
  }

  bool MayChange() const override { return true; }
  Answer Run(Session& ioSession) override {
    const bool exists = ioSession.HasDocument() || ioSession.Plan().Exists();
    if (exists && !isReplaced_) {
      throw embedded::InputError("the document " + ioSession.File().string() +
                                 " exists already; --replace begins anew");
    }
    const PartsList parts = ReadList(
        ioSession, parts_, [&](std::istream& stream) { return ReadPartsList(stream, parts_); });
    const WeldList welds = ReadList(ioSession, welds_, [&](std::istream& stream) {
      return ReadWeldList(stream, welds_, parts.Index(), {columns_, isStrict_});
    });
    RequireWelds(welds);
    const ProcessList process = ReadList(ioSession, process_, [&](std::istream& stream) {
      return ReadProcessList(stream, process_, parts);
    });
    CheckTitle("--name", name_);
    RequireRoom(parts, welds, process);
    ioSession.Begin(BuildDocument(parts, welds, process, name_), isReplaced_);
    return {Describe(parts, welds, process)};
  }

  std::string InWords(const Json& iData) const override {
    std::string text;
    for (const Json& row : iData.at("dropped")) {
      text += Printable(welds_) + ", line " + std::to_string(row.at("line").get<long>()) + ": " +
              Printable(row.at("reason").get<std::string>()) + "\n";
    }
    for (const Json& note : iData.at("notes")) text += Printable(note.get<std::string>()) + "\n";
    return text + Printable(iData.at("summary").get<std::string>()) + "\n" +
           Counted(iData.at("parts").get<std::size_t>(), "part") + ", " +
           Counted(iData.at("welds").get<std::size_t>(), "weld") + ", " +
           Counted(iData.at("activities").get<std::size_t>(), "activity") + "\n";
  }

 private:
  static Json Describe(const PartsList& parts, const WeldList& welds, const ProcessList& process) {
    Json notes = Json::array();
    for (const auto* const list : {&parts.notes, &welds.notes, &process.notes}) {
      for (const std::string& note : *list) notes.push_back(note);
    }
    return {{"parts", parts.parts.size()},
            {"welds", welds.CountWelds()},
            {"activities", process.activities.size()},
            {"dropped", DescribeDropped(welds)},
            {"notes", notes},
            {"summary", welds.Summary()}};
  }

  std::string parts_;
  std::string welds_;
  std::string process_;
  std::string columns_;
  std::string name_ = "Process";
  bool isStrict_ = false;
  bool isReplaced_ = false;
};

}  // namespace

void AddNewCommand(CommandTable& ioTable) {
  ioTable.Add<New>("new", "Makes the document of a parts, a weld and a process list.");
}

}  // namespace biwplan
