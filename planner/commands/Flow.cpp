#include "embedded/Error.h"
#include "embedded/storage/FileReplacement.h"
#include "planner/Session.h"
#include "planner/commands/Commands.h"
#include "planner/flow/FlowDot.h"
#include "planner/flow/Picture.h"
#include "planner/language/CommandTable.h"
#include "planner/language/Syntax.h"
#include "planner/report/Text.h"

namespace biwplan {

namespace {

class Flow : public Command {
 public:
  void Declare(Syntax& ioSyntax) override {
    ioSyntax.Optional(NameKind::Activity, "ACTIVITY", name_,
                      "Drawn with what is nested in it; the process by default.");
    ioSyntax.RequiredOption(NameKind::File, "--output", "FILE", file_,
                            "The picture: a .dot, .svg or .png file.");
    ioSyntax.Note(
        "Shows stations with their operations, flows, assemblies and welds, conflicts in red. A "
        "file "
        "that is there already is replaced.");
  }

  Answer Run(Session& ioSession) override {
    const std::string format = Format();
    embedded::Document& document = ioSession.Document();
    const embedded::Activity& top =
        name_.empty() ? *document.Root() : ioSession.Find().ActivityOf(name_);
    const FlowChart chart = ChartOf(document, top);
    const std::string dot = DotOf(chart);
    embedded::ReplaceFile(file_, format == "dot" ? dot : Draw(dot, format));
    return {Describe(chart)};
  }

  std::string InWords(const Json& iData) const override {
    const Json& conflicts = iData.at("conflicts");
    const auto counted = [&iData](const char* field, const char* noun) {
      return Counted(iData.at(field).get<std::size_t>(), noun);
    };
    std::string text =
        Printable(iData.at("file").get<std::string>()) + ": " + counted("stations", "station") +
        ", " + counted("flows", "flow") + ", " + counted("welds", "weld") + ", " +
        std::to_string(iData.at("unassigned").get<std::size_t>()) + " on no activity; " +
        (conflicts.empty() ? "no conflicts" : Counted(conflicts.size(), "conflict")) + "\n";
    for (const Json& conflict : conflicts) {
      text += "  " + Printable(conflict.at("activity").get<std::string>()) + ": " +
              Printable(conflict.at("reason").get<std::string>()) + "\n";
    }
    return text;
  }

 private:
  std::string Format() const {
    for (const std::string format : {"dot", "svg", "png"}) {
      if (file_.ends_with('.' + format)) return format;
    }
    throw embedded::InputError(Printable(file_) +
                               ": the ending of the name says what to draw; it must be .dot, .svg "
                               "or .png");
  }

  Json Describe(const FlowChart& chart) const {
    std::size_t flows = 0;
    for (const FlowChart::Arrow& arrow : chart.arrows) flows += arrow.isFlow;
    Json conflicts = Json::array();
    for (const FlowChart::Box& box : chart.boxes) {
      for (const std::string& reason : box.conflicts) {
        conflicts.push_back({{"activity", box.activity->Key()}, {"reason", reason}});
      }
    }
    return {{"file", file_},        {"stations", CountStations(chart)}, {"flows", flows},
            {"welds", chart.welds}, {"unassigned", chart.unassigned},   {"conflicts", conflicts}};
  }

  std::string name_;
  std::string file_;
};

}  // namespace

void AddFlowCommand(CommandTable& ioTable) {
  ioTable.Add<Flow>("flow", "Draws the process as a picture.");
}

}  // namespace biwplan
