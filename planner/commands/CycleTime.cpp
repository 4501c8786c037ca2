#include "embedded/Error.h"
#include "planner/Session.h"
#include "planner/commands/Commands.h"
#include "planner/import/RowFault.h"
#include "planner/language/CommandTable.h"
#include "planner/language/Syntax.h"
#include "planner/report/Text.h"
#include "services/TuvBIWActivityIntelligenceServices.h"

namespace biwplan {

namespace {

class CycleTime : public Command {
 public:
  void Declare(Syntax& ioSyntax) override {
    ioSyntax.Optional(NameKind::Activity, "ACTIVITY", name_, "All activities when none is named.");
    ioSyntax.Note(
        "Activities that weld take a fixed time and a time for each spot weld; those that\n"
        "make seams the seams' lengths over a speed.");
  }

  bool MayChange() const override { return true; }
  Answer Run(Session& ioSession) override {
    const embedded::Document& document = ioSession.Document();
    const std::vector<double> before = Times(document);
    Answer answer;
    Json& rows = answer.data["activities"] = Json::array();
    if (name_.empty()) {
      TuvBIWActivityIntelligenceServices::UpdateAllCycleTimeActivities();
      for (const auto& activity : document.Activities()) AddRow(*activity, rows);
    } else {
      Update(ioSession.Find().ActivityOf(name_), rows);
    }
    if (Times(document) != before) ioSession.Changed();
    return answer;
  }

  std::string InWords(const Json& iData) const override {
    Table table({{"activity"}, {"seconds", true}});
    double sum = 0;
    for (const Json& row : iData.at("activities")) {
      const double seconds = row.at("seconds").get<double>();
      table.Add({row.at("activity").get<std::string>(), Number(seconds)});
      sum += seconds;
    }
    if (!name_.empty()) return table.Text();
    return table.Text() + "together " + Number(sum) + " s\n";
  }

 private:
  static std::vector<double> Times(const embedded::Document& document) {
    std::vector<double> times;
    for (const auto& activity : document.Activities()) times.push_back(activity->CycleTime());
    return times;
  }

  static void AddRow(const embedded::Activity& activity, Json& rows) {
    if (activity.Data().task == embedded::ActivityData::Task::None) return;
    rows.push_back({{"activity", activity.Data().key}, {"seconds", activity.CycleTime()}});
  }

  static void Update(embedded::Activity& activity, Json& rows) {
    const ZefISPPActivity_var handle = activity.Identity();
    if (Failed(TuvBIWActivityIntelligenceServices::UpdateCycleTimeForWelding(handle))) {
      throw embedded::InputError("the activity " + Quoted(activity.Data().key) +
                                 " neither welds nor makes seams; 'activities' shows the tasks");
    }
    AddRow(activity, rows);
  }

  std::string name_;
};

}  // namespace

void AddCycleTimeCommand(CommandTable& ioTable) {
  ioTable.Add<CycleTime>("cycle-time", "Computes cycle times anew.");
}

}  // namespace biwplan
