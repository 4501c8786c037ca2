#include <unordered_map>
#include <utility>

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

// Asks one question of each weld that the user names.
class Question : public Command {
 public:
  Answer Run(Session& ioSession) override {
    Answer answer;
    Json& welds = answer.data["welds"] = Json::array();
    const ZefListValZefBaseUnknown_var subjects = Subjects(ioSession);
    Progress progress = ioSession.Watch("welds", static_cast<std::size_t>(subjects.Size()));
    for (const auto& weld : Each<ZefBaseUnknown>(subjects)) {
      progress.Advance();
      const bool isYes = IsYes(weld);
      welds.push_back({{"weld", NameOf(weld)}, {"answer", isYes}});
      const std::string reason = isYes ? std::string() : Reason(weld);
      if (!reason.empty()) welds.back()["reason"] = reason;
      answer.isNo = answer.isNo || !isYes;
    }
    return answer;
  }

  std::string InWords(const Json& iData) const override {
    std::string text;
    for (const Json& weld : iData.at("welds")) {
      text += Printable(weld.at("weld").get<std::string>()) + ": " +
              (weld.at("answer") == true ? Yes() : No(weld)) + "\n";
    }
    return text;
  }

 protected:
  // What is asked about; prepares for the questions.
  virtual ZefListValZefBaseUnknown_var Subjects(Session& session) = 0;
  virtual bool IsYes(const ZefBaseUnknown_var& weld) = 0;
  virtual std::string Yes() const = 0;
  virtual std::string No() const = 0;
  // Why the answer is no, where that differs from weld to weld.
  virtual std::string Reason(const ZefBaseUnknown_var&) const { return {}; }

  std::vector<std::string> words_;

 private:
  std::string No(const Json& weld) const {
    return weld.contains("reason") ? Printable(weld.at("reason").get<std::string>()) : No();
  }
};

class IsAssigned : public Question {
 public:
  void Declare(Syntax& ioSyntax) override {
    ioSyntax.OneOrMore(NameKind::Weld, "WELD", words_, "Names, patterns or FIRST..LAST.");
    ioSyntax.Note(
        "Asks for spot welds, on any activity or in the external database; of seams the\n"
        "answer is no, 'activities-of' knows them. Status 1 when an answer is no.");
  }

 private:
  ZefListValZefBaseUnknown_var Subjects(Session& session) override {
    session.RequireNoLostDatabase();
    assigned_ = WeldsOn(*session.Document().Root(), true);
    return session.Find().Welds(words_);
  }
  bool IsYes(const ZefBaseUnknown_var& weld) override {
    return TuvBIWServices::IsWeldAssigned(weld, &assigned_) != 0;
  }
  std::string Yes() const override { return "assigned"; }
  std::string No() const override { return "not assigned"; }

  ZefListValZefBaseUnknown_var assigned_;
};

class IsValidFor : public Question {
 public:
  void Declare(Syntax& ioSyntax) override {
    ioSyntax.Required(NameKind::Activity, "ACTIVITY", name_, "Judges the welds.");
    ioSyntax.OneOrMore(NameKind::Weld, "WELD", words_, "Names, patterns or FIRST..LAST.");
    ioSyntax.Note("Status 1 when an answer is no.");
  }

 private:
  ZefListValZefBaseUnknown_var Subjects(Session& session) override {
    activity_ = session.Find().ActivityOf(name_).Identity();
    return session.Find().Welds(words_);
  }
  bool IsYes(const ZefBaseUnknown_var& weld) override {
    return TuvBIWServices::IsValidWeldForActivity(weld, activity_) != 0;
  }
  std::string Yes() const override { return "of a kind that " + Printable(name_) + " takes"; }
  std::string No() const override { return "not of a kind that " + Printable(name_) + " takes"; }

  std::string name_;
  ZefISPPActivity_var activity_;
};

class CheckAssignment : public Question {
 public:
  void Declare(Syntax& ioSyntax) override {
    ioSyntax.Required(NameKind::Activity, "ACTIVITY", name_, "Would take the welds.");
    ioSyntax.OneOrMore(NameKind::Weld, "WELD", words_, "In this order.");
    ioSyntax.Note(
        "A weld may be assigned that is of a kind that the activity takes and neither on it nor\n"
        "named before in the same command, and, while 'settings part-load-constraint' is on,\n"
        "whose parts are loaded there. Status 1 when an answer is no.");
  }

 private:
  // A weld that is named twice is asked about twice.
  ZefListValZefBaseUnknown_var Subjects(Session& session) override {
    const Names names = session.Find();
    activity_ = names.ActivityOf(name_).Identity();
    ZefListValZefBaseUnknown_var welds;
    for (const std::string& word : words_) welds.Append(names.Welds({word}));
    for (LackingParts& lacking :
         KeptOffByParts(session.Document(), names.ActivityOf(name_), welds)) {
      keptOff_.emplace(lacking.weld.Get(), std::move(lacking.parts));
    }
    return welds;
  }
  bool IsYes(const ZefBaseUnknown_var& weld) override {
    reason_ = ReasonAgainst(weld);
    if (reason_.empty()) pending_.Append(weld);
    return reason_.empty();
  }
  std::string Reason(const ZefBaseUnknown_var&) const override { return reason_; }

  std::string ReasonAgainst(const ZefBaseUnknown_var& weld) {
    if (Failed(TuvBIWServices::CheckWeldAssignement(weld, activity_, &pending_, 0))) return No();
    if (TuvBIWServices::IsValidWeldForActivity(weld, activity_) == 0) {
      return "not of a kind that " + name_ + " takes";
    }
    const auto lacking = keptOff_.find(weld.Get());
    if (lacking == keptOff_.end()) return {};
    if (lacking->second.Size() == 0) return "joins no part";
    return "lacks on " + name_ + ": " + Listed(NamesOf(&lacking->second));
  }
  std::string Yes() const override { return "may be assigned to " + Printable(name_); }
  std::string No() const override { return "would be on " + Printable(name_) + " twice"; }

  std::string name_;
  ZefISPPActivity_var activity_;
  ZefListValZefBaseUnknown_var pending_;
  // With what each lacks.
  std::unordered_map<const ZefBaseUnknown*, ZefListValZefBaseUnknown_var> keptOff_;
  // Why the weld that was asked about last may not be assigned.
  std::string reason_;
};

class ActivitiesOfWeld : public Command {
 public:
  void Declare(Syntax& ioSyntax) override {
    ioSyntax.OneOrMore(NameKind::Weld, "WELD", words_, "Names, patterns or FIRST..LAST.");
    ioSyntax.Note("Status 1 when a weld is on no activity.");
  }

  Answer Run(Session& ioSession) override {
    Answer answer;
    Json& welds = answer.data["welds"] = Json::array();
    for (const auto& weld : Each<ZefBaseUnknown>(ioSession.Find().Welds(words_))) {
      const ZefListValZefBaseUnknown_var activities = ActivitiesOf(weld);
      welds.push_back({{"weld", NameOf(weld)}, {"activities", NamesAsJson(&activities)}});
      answer.isNo = answer.isNo || activities.Size() == 0;
    }
    return answer;
  }

  std::string InWords(const Json& iData) const override {
    std::string text;
    for (const Json& weld : iData.at("welds")) {
      const Json& activities = weld.at("activities");
      text += Printable(weld.at("weld").get<std::string>()) + ": " +
              (activities.empty() ? "on no activity" : "on " + Listed(activities)) + "\n";
    }
    return text;
  }

 private:
  std::vector<std::string> words_;
};

}  // namespace

void AddQuestionCommands(CommandTable& ioTable) {
  ioTable.Add<CheckAssignment>("check-assignment", "Says whether welds may still be assigned.");
  ioTable.Add<ActivitiesOfWeld>("activities-of", "Names the activities that have a weld.");
  ioTable.Add<IsAssigned>("is-assigned", "Says whether welds are assigned anywhere.");
  ioTable.Add<IsValidFor>("is-valid-for", "Says whether an activity takes welds of their kind.");
}

}  // namespace biwplan
