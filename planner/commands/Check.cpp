#include "embedded/Error.h"
#include "planner/Session.h"
#include "planner/check/DocumentCheck.h"
#include "planner/commands/Commands.h"
#include "planner/import/RowFault.h"
#include "planner/import/Values.h"
#include "planner/language/CommandTable.h"
#include "planner/language/Syntax.h"
#include "planner/report/Csv.h"
#include "planner/report/Text.h"

namespace biwplan {

namespace {

class Check : public Command {
 public:
  void Declare(Syntax& ioSyntax) override {
    ioSyntax.Option(NameKind::Word, "--pitch", "MM", pitch_,
                    "Spot welds closer than this are reported, 20 by default.");
    ioSyntax.Flag("--csv", isCsv_, "One line for each finding, with commas.");
    ioSyntax.Note("Status 1 when something is found.");
  }

  Answer Run(Session& ioSession) override {
    CheckOptions options;
    if (!pitch_.empty()) options.pitch = ParsePitch();
    Answer answer;
    Json& findings = answer.data["findings"] = Json::array();
    for (const Finding& finding : CheckDocument(ioSession.Document(), options)) {
      findings.push_back({{"kind", finding.kind},
                          {"weld", finding.weld},
                          {"activity", finding.activity},
                          {"part", finding.part},
                          {"message", finding.message}});
    }
    answer.isNo = !findings.empty();
    return answer;
  }

  std::string InWords(const Json& iData) const override {
    return isCsv_ ? AsCsv(iData.at("findings")) : AsText(iData.at("findings"));
  }

 private:
  double ParsePitch() const {
    try {
      const double pitch = ParseNumber("--pitch", pitch_);
      if (pitch >= 0) return pitch;
    } catch (const RowError&) {
      // Said below, for both faults.
    }
    throw embedded::InputError("--pitch " + Quoted(pitch_) +
                               " is no distance; give millimetres, such as 20");
  }

  static std::string AsCsv(const Json& findings) {
    const std::vector<std::string> titles = {"kind", "weld", "activity", "part", "message"};
    std::string text = CsvLine(titles);
    for (const Json& finding : findings) {
      std::vector<std::string> fields;
      for (const std::string& title : titles) fields.push_back(finding.at(title));
      text += CsvLine(fields);
    }
    return text;
  }

  static std::string AsText(const Json& findings) {
    std::string text;
    std::string kind;
    for (const Json& finding : findings) {
      if (finding.at("kind") != kind) {
        kind = finding.at("kind").get<std::string>();
        text += kind + "\n";
      }
      text += "  " + Printable(finding.at("message").get<std::string>()) + "\n";
    }
    return text + Counted(findings.size(), "finding") + "\n";
  }

  std::string pitch_;
  bool isCsv_ = false;
};

}  // namespace

void AddCheckCommand(CommandTable& ioTable) {
  ioTable.Add<Check>("check", "Looks for what a planner should mend.");
}

}  // namespace biwplan
