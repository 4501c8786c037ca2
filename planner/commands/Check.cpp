#include <algorithm>
#include <utility>

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
    ioSyntax.Option(NameKind::Word, "--kind", "KIND", kind_,
                    "Looks for findings of this kind alone.");
    ioSyntax.Flag("--all", isWhole_, "Prints all findings, not just the first 20 of a kind.");
    ioSyntax.Note("Status 1 when something is found. JSON and --csv have all findings.\nKinds: " +
                  Listed(FindingKinds()) + ".");
  }

  Answer Run(Session& ioSession) override {
    CheckOptions options;
    if (!pitch_.empty()) options.pitch = ParsePitch();
    RequireKind();
    Json counts = Json::object();
    Json findings = Json::array();
    for (const Finding& finding : CheckDocument(ioSession.Document(), options)) {
      if (!kind_.empty() && finding.kind != kind_) continue;
      Json& count = counts[finding.kind];
      count = count.is_null() ? 1 : count.get<std::size_t>() + 1;
      findings.push_back({{"kind", finding.kind},
                          {"weld", finding.weld},
                          {"activity", finding.activity},
                          {"part", finding.part},
                          {"message", finding.message}});
    }
    const bool isNo = !findings.empty();
    return {{{"counts", std::move(counts)}, {"findings", std::move(findings)}}, isNo};
  }

  std::string InWords(const Json& iData) const override {
    return isCsv_ ? AsCsv(iData.at("findings")) : AsText(iData);
  }

 private:
  void RequireKind() const {
    const std::vector<std::string>& kinds = FindingKinds();
    if (kind_.empty() || std::find(kinds.begin(), kinds.end(), kind_) != kinds.end()) return;
    throw embedded::InputError("there are no findings of a kind " + Quoted(kind_) +
                               "; the kinds are " + Listed(kinds));
  }

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

  std::string AsText(const Json& data) const {
    constexpr std::size_t kMost = 20;
    const Json& findings = data.at("findings");
    std::string text;
    std::size_t next = 0;
    for (const auto& [kind, number] : data.at("counts").items()) {
      const std::size_t count = number.get<std::size_t>();
      const std::size_t shown = isWhole_ ? count : std::min(count, kMost);
      text += kind + ": " + std::to_string(count) + "\n";
      for (std::size_t i = next; i < next + shown; ++i) {
        text += "  " + Printable(findings[i].at("message").get<std::string>()) + "\n";
      }
      if (shown < count) {
        text += "  ... and " + std::to_string(count - shown) + " more; --all prints them\n";
      }
      next += count;
    }
    return text + Counted(findings.size(), "finding") + "\n";
  }

  std::string pitch_;
  std::string kind_;
  bool isCsv_ = false;
  bool isWhole_ = false;
};

}  // namespace

void AddCheckCommand(CommandTable& ioTable) {
  ioTable.Add<Check>("check", "Looks for what a planner should mend.");
}

}  // namespace biwplan
