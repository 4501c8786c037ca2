#include "host/values/Each.h"
#include "planner/Session.h"
#include "planner/check/LoadedParts.h"
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

constexpr char kWeldsHelp[] = "Names, patterns or FIRST..LAST; by default what is on no activity.";

// Which of the welds an activity may get, and why not the others.
class Judgement {
 public:
  Judgement(embedded::Activity& activity, const Objects& welds)
      : activity_(activity.Identity()), loadable_(welds), loaded_(LoadedAt(activity)) {
    Services::ValidateListOfFastenersForAssignmentToActivity(loadable_, activity_);
  }

  // Empty for a weld that may be assigned.
  std::string ReasonAgainst(const ZefBaseUnknown_var& weld) {
    if (Services::IsValidWeldForActivity(weld, activity_) == 0) {
      return "the activity does not take this kind of weld";
    }
    if (loadable_.Locate(weld) == 0) return NotLoaded(weld);
    TuvIBIWFastener_var fastener = weld;
    if (Services::IsValidProcessVersion(activity_, fastener) == 0) {
      return "its process version does not go with the activity's";
    }
    return {};
  }

 private:
  std::string NotLoaded(const ZefBaseUnknown_var& weld) const {
    Objects joined;
    TuvIBIWFastener_var(weld)->GetJointedParts(joined);
    Objects missing;
    for (const auto& part : Each<ZefBaseUnknown>(joined)) {
      if (loaded_.Locate(part) == 0) missing.Append(part);
    }
    if (joined.Size() == 0) return "it joins no part";
    return (missing.Size() == 1 ? "part not loaded: " : "parts not loaded: ") +
           Listed(NamesOf(&missing));
  }

  ZefISPPActivity_var activity_;
  Objects loadable_;
  Objects loaded_;
};

class Validate : public Command {
 public:
  void Declare(Syntax& ioSyntax) override {
    ioSyntax.Required(NameKind::Activity, "ACTIVITY", name_, "Would get the welds.");
    ioSyntax.AnyNumber(NameKind::Weld, "WELD", words_, kWeldsHelp);
    ioSyntax.Flag("--apply", isApplied_, "Assigns those that may be assigned.");
    ioSyntax.Note(
        "Parts count only while 'settings part-load-constraint' is on. Status 1 when a weld is\n"
        "refused.");
  }

  bool MayChange() const override { return isApplied_; }
  Answer Run(Session& ioSession) override {
    ioSession.RequireNoLostDatabase();
    embedded::Activity& place = ioSession.Find().ActivityOf(name_);
    const ZefISPPActivity_var activity = place.Identity();
    const Objects candidates =
        words_.empty() ? Unassigned(ioSession) : ioSession.Find().Welds(words_);
    Judgement judgement(place, candidates);
    Objects valid;
    Json refused = Json::array();
    for (const auto& weld : Each<ZefBaseUnknown>(candidates)) {
      const std::string reason = judgement.ReasonAgainst(weld);
      if (reason.empty()) valid.Append(weld);
      if (!reason.empty()) refused.push_back({{"weld", NameOf(weld)}, {"reason", reason}});
    }
    const bool isChanged = isApplied_ && valid.Size() > 0 &&
                           Succeeded(Services::AssignListOfWelds(&valid, activity, nullptr, 0));
    if (isChanged) ioSession.Changed();
    return {{{"activity", NameOf(activity)},
             {"valid", NamesAsJson(&valid)},
             {"refused", refused},
             {"assigned", isChanged}},
            !refused.empty()};
  }

  std::string InWords(const Json& iData) const override {
    const Json& valid = iData.at("valid");
    const std::string verb = iData.at("assigned") == true ? " assigned to " : " may go to ";
    std::string text = Counted(valid.size(), "weld") + verb +
                       Printable(iData.at("activity").get<std::string>()) + "\n" +
                       Wrapped(valid, 2);
    for (const Json& refused : iData.at("refused")) {
      text += Printable(refused.at("weld").get<std::string>()) + ": no, " +
              Printable(refused.at("reason").get<std::string>()) + "\n";
    }
    return text;
  }

 private:
  static Objects Unassigned(Session& session) {
    Objects welds;
    for (const auto& weld : Each<ZefBaseUnknown>(session.Find().AllWelds())) {
      if (ActivitiesOf(weld).Size() == 0) welds.Append(weld);
    }
    return welds;
  }

  std::string name_;
  std::vector<std::string> words_;
  bool isApplied_ = false;
};

class ValidVersion : public Command {
 public:
  void Declare(Syntax& ioSyntax) override {
    ioSyntax.Required(NameKind::Activity, "ACTIVITY", name_, "Belongs to a process version.");
    ioSyntax.Required(NameKind::Weld, "WELD", weld_, "May belong to versions of processes.");
    ioSyntax.Note("Outside of a process database the answer is yes. Status 1 when it is no.");
  }

  Answer Run(Session& ioSession) override {
    ioSession.RequireNoLostDatabase();
    const ZefISPPActivity_var activity = ioSession.Find().ActivityOf(name_).Identity();
    TuvIBIWFastener_var weld = ioSession.Find().WeldOf(weld_);
    const bool isValid = Services::IsValidProcessVersion(activity, weld) != 0;
    return {{{"activity", NameOf(activity)}, {"weld", NameOf(weld)}, {"answer", isValid}},
            !isValid};
  }

  std::string InWords(const Json& iData) const override {
    return iData.at("answer") == true ? "yes\n" : "no\n";
  }

 private:
  std::string name_;
  std::string weld_;
};

class Settings : public Command {
 public:
  void Declare(Syntax& ioSyntax) override {
    ioSyntax.Choice({"on", "off", "status"}, word_,
                    "On: welds may only be assigned where their parts are loaded.");
  }

  bool MayChange() const override { return word_ != "status"; }
  Answer Run(Session& ioSession) override {
    bool& isOn = ioSession.Document().settings.partLoadConstraint;
    if (word_ != "status" && isOn != (word_ == "on")) {
      isOn = word_ == "on";
      ioSession.Application().SetPartLoadConstraint(isOn);
      ioSession.Changed();
    }
    return {{{"partLoadConstraint", isOn}}};
  }

  std::string InWords(const Json& iData) const override {
    return iData.at("partLoadConstraint") == true
               ? "welds may only be assigned where their parts are loaded\n"
               : "welds may be assigned wherever they are taken\n";
  }

 private:
  std::string word_;
};

}  // namespace

void AddValidationCommands(CommandTable& ioTable) {
  ioTable.Add<Validate>("validate",
                        "Says which welds an activity may get, and why not the others.");
  ioTable.Add<ValidVersion>("valid-version", "Says whether a weld's process version fits.");
  ioTable.Add<Settings>("settings part-load-constraint", "Whether parts must be loaded.");
}

}  // namespace biwplan
