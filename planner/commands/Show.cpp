#include <algorithm>
#include <utility>
#include <vector>

#include "planner/Session.h"
#include "planner/commands/Commands.h"
#include "planner/language/CommandTable.h"
#include "planner/language/Syntax.h"
#include "planner/report/Describe.h"
#include "planner/report/Text.h"

namespace biwplan {

namespace {

// Deeper activities are not indented further.
constexpr std::size_t kMostLevels = 20;

// The activity and those below it, each before those below it, with its depth. Trees are as deep
// as their author likes, so nothing recurs.
std::vector<std::pair<const embedded::Activity*, std::size_t>> Walk(const embedded::Activity& top) {
  std::vector<std::pair<const embedded::Activity*, std::size_t>> found;
  std::vector<std::pair<const embedded::Activity*, std::size_t>> open = {{&top, 0}};
  while (!open.empty()) {
    const auto [activity, depth] = open.back();
    open.pop_back();
    found.emplace_back(activity, depth);
    const auto& children = activity->Children();
    for (auto child = children.rbegin(); child != children.rend(); ++child) {
      open.emplace_back(*child, depth + 1);
    }
  }
  return found;
}

class Show : public Command {
 public:
  void Declare(Syntax& ioSyntax) override {
    ioSyntax.Optional(NameKind::Activity, "ACTIVITY", name_, "Shows it and what is below it.");
    ioSyntax.Flag("--brief", isBrief_, "Counts the welds without naming them.");
  }

  Answer Run(Session& ioSession) override {
    const embedded::Document& document = ioSession.Document();
    const embedded::Activity& top =
        name_.empty() ? *document.Root() : ioSession.Find().ActivityOf(name_);
    Answer answer;
    Json& rows = answer.data["activities"] = Json::array();
    for (const auto& [activity, depth] : Walk(top)) {
      const ZefListValZefBaseUnknown_var welds = WeldsOn(*activity);
      Json row = DescribeActivity(*activity);
      row["depth"] = depth;
      row["welds"] = NamesAsJson(&welds);
      rows.push_back(std::move(row));
    }
    if (!name_.empty()) return answer;
    const ZefListValZefBaseUnknown_var all = ioSession.Find().AllWelds();
    answer.data["welds"] = all.Size();
    answer.data["unassigned"] = CountUnassigned(all);
    return answer;
  }

  std::string InWords(const Json& iData) const override {
    std::string text;
    for (const Json& row : iData.at("activities")) text += Line(row);
    if (!iData.contains("welds")) return text;
    return text + Counted(iData.at("welds").get<std::size_t>(), "weld") + ", " +
           std::to_string(iData.at("unassigned").get<std::size_t>()) + " on no activity\n";
  }

 private:
  static std::size_t CountUnassigned(const ZefListValZefBaseUnknown_var& welds) {
    std::size_t count = 0;
    for (int i = 1; i <= welds.Size(); ++i) count += ActivitiesOf(welds[i]).Size() == 0;
    return count;
  }

  // "OP10  Weld inner panel  (operation, welding): 12 welds, 48 s", then the welds.
  std::string Line(const Json& row) const {
    const auto text = [&row](const char* field) {
      return Printable(row.at(field).get<std::string>());
    };
    const std::size_t level = std::min(row.at("depth").get<std::size_t>(), kMostLevels);
    const Json& welds = row.at("welds");
    std::string line = std::string(2 * level, ' ') + text("activity");
    if (text("label") != text("activity")) line += "  " + text("label");
    line += "  (" + text("role") + (text("task").empty() ? "" : ", " + text("task")) + ")";
    if (!welds.empty()) line += ": " + Counted(welds.size(), "weld");
    const double seconds = row.at("seconds").get<double>();
    if (seconds > 0) line += (welds.empty() ? ": " : ", ") + Number(seconds) + " s";
    return line + "\n" + (isBrief_ ? std::string() : Wrapped(welds, 2 * level + 4));
  }

  std::string name_;
  bool isBrief_ = false;
};

}  // namespace

void AddShowCommand(CommandTable& ioTable) {
  ioTable.Add<Show>("show", "Prints the process with the welds of each activity.");
}

}  // namespace biwplan
