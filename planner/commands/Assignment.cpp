#include <map>

#include "host/values/Each.h"
#include "planner/Session.h"
#include "planner/check/PartConstraint.h"
#include "planner/commands/Commands.h"
#include "planner/language/CommandTable.h"
#include "planner/language/Syntax.h"
#include "planner/report/Describe.h"
#include "planner/report/Text.h"
#include "services/TuvBIWServices.h"

namespace biwplan {

namespace {

constexpr char kWeldsHelp[] = "Names, patterns with * and ?, or FIRST..LAST.";

using Objects = ZefListValZefBaseUnknown_var;

// The first list's elements that the second has, or has not.
Objects Among(const Objects& welds, const Objects& others, bool isAmong) {
  Objects found;
  for (const auto& weld : Each<ZefBaseUnknown>(welds)) {
    if ((others.Locate(weld) > 0) == isAmong) found.Append(weld);
  }
  return found;
}

// Those that the activity accepts, or those that it refuses.
Objects Accepted(const Objects& welds, const ZefISPPActivity_var& activity, bool isAccepted) {
  Objects found;
  for (const auto& weld : Each<ZefBaseUnknown>(welds)) {
    const bool isValid = TuvBIWServices::IsValidWeldForActivity(weld, activity) != 0;
    if (isValid == isAccepted) found.Append(weld);
  }
  return found;
}

constexpr char kAnyway[] = "Also where the constraint on loaded parts keeps welds off.";

// Takes the welds that the constraint keeps off out of the list; what each lacks.
Json TakeOutLacking(Session& session, const embedded::Activity& activity, Objects& welds) {
  embedded::Document& document = session.Document();
  Json rows = Json::array();
  Objects keptOff;
  embedded::Activity& target = *document.FindActivity(activity.Key());
  for (const LackingParts& lacking : KeptOffByParts(document, target, welds)) {
    rows.push_back({{"weld", NameOf(lacking.weld)}, {"parts", NamesAsJson(&lacking.parts)}});
    keptOff.Append(lacking.weld);
  }
  welds = Among(welds, keptOff, false);
  return rows;
}

// The welds in a line for each group that lacks the same.
std::string LackingLines(const Json& rows) {
  std::vector<std::string> titles;
  std::map<std::string, Json> groups;
  for (const Json& row : rows) {
    const Json& parts = row.at("parts");
    const std::string title = parts.empty() ? "joining no part" : "lacking " + Listed(parts);
    const auto [group, isNew] = groups.emplace(title, Json::array());
    if (isNew) titles.push_back(title);
    group->second.push_back(row.at("weld"));
  }
  std::string text;
  for (const std::string& title : titles) text += ListedLine(title, groups.at(title));
  return text.empty() ? text : text + "  --anyway takes them all the same\n";
}

// What assigning, unassigning and reallocating have in common.
class Change : public Command {
 public:
  bool MayChange() const override { return true; }

 protected:
  // The welds that the user named.
  Objects Welds(Session& session) const { return session.Find().Welds(words_); }

  std::vector<std::string> words_;
  // Loaded parts do not matter.
  bool isAnyway_ = false;
};

class Assign : public Change {
 public:
  void Declare(Syntax& ioSyntax) override {
    ioSyntax.Required(NameKind::Activity, "ACTIVITY", activity_, "Takes the welds.");
    ioSyntax.OneOrMore(NameKind::Weld, "WELD", words_, kWeldsHelp);
    ioSyntax.Flag("--anyway", isAnyway_, kAnyway);
    ioSyntax.Note(
        "Welds of a kind that the activity does not take are left out, and welds that it\n"
        "has already are ignored with a warning. While 'settings part-load-constraint' is on,\n"
        "so are welds whose parts are not loaded there. Status 1 when none was assigned.");
  }

  Answer Run(Session& ioSession) override {
    const embedded::Activity& target = ioSession.Find().ActivityOf(activity_);
    const ZefISPPActivity_var activity = target.Identity();
    const Objects named = Welds(ioSession);
    const Objects before = WeldsOn(target);
    const Objects refused = Accepted(named, activity, false);
    Objects accepted = Among(Accepted(named, activity, true), before, false);
    const Json lacking = isAnyway_ ? Json::array() : TakeOutLacking(ioSession, target, accepted);
    accepted.Append(Among(Accepted(named, activity, true), before, true));
    TuvBIWServices::AssignListOfWelds(&accepted, activity, nullptr, 0);
    const Objects duplicates = Among(accepted, before, true);
    const Objects assigned = Among(Among(accepted, before, false), WeldsOn(target), true);
    if (assigned.Size() > 0) ioSession.Changed();
    return {{{"activity", target.Data().key},
             {"assigned", NamesAsJson(&assigned)},
             {"duplicates", NamesAsJson(&duplicates)},
             {"refused", NamesAsJson(&refused)},
             {"lacking", lacking}},
            assigned.Size() == 0};
  }

  std::string InWords(const Json& iData) const override {
    return Counted(iData.at("assigned").size(), "weld") + " assigned to " +
           Printable(iData.at("activity").get<std::string>()) + "\n" +
           ListedLine("there already", iData.at("duplicates")) +
           ListedLine("not of a kind that it takes", iData.at("refused")) +
           LackingLines(iData.at("lacking"));
  }

 private:
  std::string activity_;
};

class Unassign : public Change {
 public:
  void Declare(Syntax& ioSyntax) override {
    ioSyntax.Required(NameKind::Activity, "ACTIVITY", activity_, "Gives the welds up.");
    ioSyntax.OneOrMore(NameKind::Weld, "WELD", words_, kWeldsHelp);
    ioSyntax.Note("Status 1 when none of them was there.");
  }

  Answer Run(Session& ioSession) override {
    const embedded::Activity& source = ioSession.Find().ActivityOf(activity_);
    const ZefISPPActivity_var activity = source.Identity();
    const Objects named = Welds(ioSession);
    const Objects before = WeldsOn(source);
    Objects there = Among(named, before, true);
    const Objects missing = Among(named, before, false);
    TuvBIWServices::UnassignListOfWelds(&there, activity);
    const Objects removed = Among(there, WeldsOn(source), false);
    if (removed.Size() > 0) ioSession.Changed();
    return {{{"activity", source.Data().key},
             {"unassigned", NamesAsJson(&removed)},
             {"missing", NamesAsJson(&missing)}},
            removed.Size() == 0};
  }

  std::string InWords(const Json& iData) const override {
    return Counted(iData.at("unassigned").size(), "weld") + " unassigned from " +
           Printable(iData.at("activity").get<std::string>()) + "\n" +
           ListedLine("not there", iData.at("missing"));
  }

 private:
  std::string activity_;
};

class Reallocate : public Change {
 public:
  void Declare(Syntax& ioSyntax) override {
    ioSyntax.Required(NameKind::Activity, "FROM", from_, "The activity that gives the welds up.");
    ioSyntax.Required(NameKind::Activity, "TO", to_, "The activity that takes them.");
    ioSyntax.OneOrMore(NameKind::Weld, "WELD", words_, kWeldsHelp);
    ioSyntax.Flag("--anyway", isAnyway_, kAnyway);
    ioSyntax.Note(
        "Only welds that FROM has, TO has not, and TO takes are moved. Status 1 when none\n"
        "was moved.");
  }

  Answer Run(Session& ioSession) override {
    const embedded::Activity& from = ioSession.Find().ActivityOf(from_);
    const embedded::Activity& to = ioSession.Find().ActivityOf(to_);
    const ZefISPPActivity_var source = from.Identity();
    const ZefISPPActivity_var target = to.Identity();
    const Objects named = Welds(ioSession);
    const Objects missing = Among(named, WeldsOn(from), false);
    const Objects there = Among(named, WeldsOn(from), true);
    const Objects duplicates = Among(there, WeldsOn(to), true);
    Objects fresh = Among(there, WeldsOn(to), false);
    const Objects refused = Accepted(fresh, target, false);
    const Json lacking = isAnyway_ ? Json::array() : TakeOutLacking(ioSession, to, fresh);
    TuvBIWServices::ReallocateWeld(source, target, &fresh);
    const Objects moved = Among(fresh, WeldsOn(to), true);
    if (moved.Size() > 0) ioSession.Changed();
    return {{{"from", from.Data().key},
             {"to", to.Data().key},
             {"reallocated", NamesAsJson(&moved)},
             {"missing", NamesAsJson(&missing)},
             {"duplicates", NamesAsJson(&duplicates)},
             {"refused", NamesAsJson(&refused)},
             {"lacking", lacking}},
            moved.Size() == 0};
  }

  std::string InWords(const Json& iData) const override {
    const std::string from = Printable(iData.at("from").get<std::string>());
    const std::string to = Printable(iData.at("to").get<std::string>());
    return Counted(iData.at("reallocated").size(), "weld") + " moved from " + from + " to " + to +
           "\n" + ListedLine("not on " + from, iData.at("missing")) +
           ListedLine("on " + to + " already", iData.at("duplicates")) +
           ListedLine("not of a kind that " + to + " takes", iData.at("refused")) +
           LackingLines(iData.at("lacking"));
  }

 private:
  std::string from_;
  std::string to_;
};

}  // namespace

void AddAssignmentCommands(CommandTable& ioTable) {
  ioTable.Add<Assign>("assign", "Assigns welds to an activity.");
  ioTable.Add<Unassign>("unassign", "Takes welds off an activity.");
  ioTable.Add<Reallocate>("reallocate", "Moves welds from one activity to another.");
}

}  // namespace biwplan
