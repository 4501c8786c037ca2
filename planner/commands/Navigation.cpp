#include "planner/Session.h"
#include "planner/commands/Commands.h"
#include "planner/language/CommandTable.h"
#include "planner/language/Syntax.h"
#include "planner/report/Describe.h"
#include "planner/report/Text.h"
#include "services/TuvBIWServices.h"

namespace biwplan {

namespace {

using Objects = ZefListValZefBaseUnknown_var;
using Services = TuvBIWServices;

class Hierarchy : public Command {
 public:
  void Declare(Syntax& ioSyntax) override {
    ioSyntax.Required(NameKind::Activity, "ACTIVITY", name_, "Somewhere in the process.");
    ioSyntax.Note("Status 1 for the process itself.");
  }

  Answer Run(Session& ioSession) override {
    const ZefISPPActivity_var activity = ioSession.Find().ActivityOf(name_).Identity();
    ZefUnicodeString path;
    const bool isFound = Succeeded(Services::GetActivityHierarchy(activity, path));
    return {{{"activity", NameOf(activity)}, {"path", path.Bytes()}}, !isFound};
  }

  std::string InWords(const Json& iData) const override {
    const std::string path = Printable(iData.at("path").get<std::string>());
    return path.empty() ? Printable(iData.at("activity").get<std::string>()) + " is the process\n"
                        : path + "\n";
  }

 private:
  std::string name_;
};

// Which activities a service finds from one.
using Finder = void (*)(const ZefISPPActivity_var&, Objects&);

void FindPredecessor(const ZefISPPActivity_var& activity, Objects& found) {
  Objects* none = nullptr;
  const ZefISPPActivity_var first = Services::GetPredecessorActivity(activity, none);
  if (first) found.Append(first);
}

void FindPredecessors(const ZefISPPActivity_var& activity, Objects& found) {
  Services::GetPredecessors(activity, found);
}

void FindAllPredecessors(const ZefISPPActivity_var& activity, Objects& found) {
  Services::GetAllPredecessors(activity, found);
}

void FindPrevious(const ZefISPPActivity_var& activity, Objects& found) {
  Objects* list = &found;
  Services::GetPreviousActivities(activity, list);
}

void FindDescendants(const ZefISPPActivity_var& activity, Objects& found) {
  Services::GetDescendants(activity, found);
}

template <Finder find>
class Activities : public Command {
 public:
  void Declare(Syntax& ioSyntax) override {
    ioSyntax.Required(NameKind::Activity, "ACTIVITY", name_, "The search begins here.");
    ioSyntax.Note("Status 1 when there is none.");
  }

  Answer Run(Session& ioSession) override {
    const ZefISPPActivity_var activity = ioSession.Find().ActivityOf(name_).Identity();
    Objects found;
    find(activity, found);
    return {{{"activity", NameOf(activity)}, {"activities", NamesAsJson(&found)}},
            found.Size() == 0};
  }

  std::string InWords(const Json& iData) const override {
    const Json& activities = iData.at("activities");
    return activities.empty() ? "none\n" : Wrapped(activities, 0);
  }

 private:
  std::string name_;
};

}  // namespace

void AddNavigationCommands(CommandTable& ioTable) {
  ioTable.Add<Hierarchy>("hierarchy", "Prints the way from the process down to an activity.");
  ioTable.Add<Activities<FindPredecessor>>("predecessor", "Prints the first activity before one.");
  ioTable.Add<Activities<FindPredecessors>>("predecessors",
                                            "Prints the activities just before one.");
  ioTable.Add<Activities<FindAllPredecessors>>("all-predecessors",
                                               "Prints everything before an activity in the flow.");
  ioTable.Add<Activities<FindPrevious>>(
      "previous",
      "Prints everything before it, in the flow and in the tree, as often as it is met.");
  ioTable.Add<Activities<FindDescendants>>("descendants", "Prints everything below an activity.");
}

}  // namespace biwplan
